#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "client/LibClientLocal.h"
#include "support/ServerProcess.h"
#include "support/TempDir.h"
#include "support/WaitUntil.h"
#include "system/SystemToXML.h"

namespace {

// The server writes its log into the working directory: keep it out of the build tree.
class LocalServer : public ::testing::Test {
protected:
    void SetUp() override { std::filesystem::current_path(directory.path); }
    void TearDown() override { std::filesystem::current_path(previous); }
    std::filesystem::path previous = std::filesystem::current_path();
    TempDir directory;
    int port = ServerProcess::FreePort();
    LibClientLocal client;
};

}  // namespace

TEST_F(LocalServer, StartsTheRealServerTalksToItAndShutsItDown) {
    ASSERT_TRUE(client.StartCheckConnect(port));
    ASSERT_GT(client.GetServerProcessId(), 0);
    ASSERT_TRUE(client.RequestResources());
    EXPECT_TRUE(WaitUntil([&] { return client.Read(&LibProcessor::libVersion) == "beta"; }));

    e_System_* system = NewSystemIndoor(nullptr);
    NewAccessPoint(system, "ap");
    NewSamplePoint(system, "sp");
    std::string sent, returned;
    SystemToString(system, sent);
    ASSERT_TRUE(client.BounceSystem(system));
    ASSERT_TRUE(WaitUntil([&] { return client.GetSystemReply() != nullptr; }));
    e_System_* reply = client.GetSystemReply();
    SystemToString(reply, returned);
    EXPECT_EQ(returned, sent);
    DeleteSystem(&reply);
    DeleteSystem(&system);

    EXPECT_TRUE(client.StopCheckServer());
    EXPECT_FALSE(client.IsServerProcessRunning());
    EXPECT_TRUE(std::filesystem::exists(directory.File("server_0.csv")));
}

TEST_F(LocalServer, KillsTheServerItStartedByItsProcessId) {
    ASSERT_TRUE(client.StartTheServerProcess(port, 0));
    EXPECT_TRUE(WaitUntil([&] { return ServerProcess::PortListening(port); }));
    EXPECT_TRUE(client.KillTheServerProcess());
    EXPECT_FALSE(client.IsServerProcessRunning());
    EXPECT_FALSE(ServerProcess::PortListening(port));
}
