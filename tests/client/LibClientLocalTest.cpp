#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "client/LibClientLocal.h"
#include "support/LogCapture.h"
#include "support/TempDir.h"

// A stand-in for the server program, a script named like the server that writes its
// arguments next to itself and then waits to be killed.
TEST(LibClientLocal, StartsAndKillsItsOwnServerByProcessId) {
    LogCapture capture;
    TempDir directory;
    LibClientLocal client;
    client.SetServerDirectory(directory.path.string() + "/");
    client.SetCommandStrings("", "-x1");
    EXPECT_EQ(client.GetServerProcessId(), -1);
    EXPECT_FALSE(client.StartTheServerProcess(4321, 2));
    EXPECT_TRUE(capture.Contains(
        "LibClientLocal::StartTheServerProcess() - failed, server not running after 1 second\n"));

    std::string path = directory.File("LibServerMain");
    std::ofstream(path) << "#!/bin/sh\necho \"$@\" > \"" << directory.File("arguments")
                        << "\"\nwhile :; do sleep 0.1; done\n";
    chmod(path.c_str(), 0755);
    ASSERT_TRUE(client.StartTheServerProcess(4321, 2));
    pid_t pid = client.GetServerProcessId();
    ASSERT_GT(pid, 0);
    EXPECT_TRUE(client.IsServerProcessRunning());
    EXPECT_EQ(ReadFile(directory.File("arguments")), "-p4321 -o2 -x1\n");
    std::vector<std::string> names;
    EXPECT_TRUE(client.ListProcessNames(names));
    EXPECT_NE(std::find(names.begin(), names.end(), "LibServerMain"), names.end());

    EXPECT_TRUE(client.KillTheServerProcess());
    EXPECT_FALSE(client.IsServerProcessRunning());
    EXPECT_EQ(kill(pid, 0), -1);
}
