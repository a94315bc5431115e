#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "client/LibClientLocal.h"
#include "support/ServerProcess.h"
#include "support/TempDir.h"
#include "system/SystemToXML.h"

namespace {

// Polls `condition` for up to five seconds.
template <typename Condition>
bool eventually(Condition condition) {
    for (int turn = 0; turn < 250; ++turn) {
        if (condition()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return condition();
}

// The server writes its log into the working directory: keep it out of the build tree.
class LocalServer : public ::testing::Test {
protected:
    void SetUp() override {
        previous = std::filesystem::current_path();
        std::filesystem::current_path(directory.path);
    }
    void TearDown() override { std::filesystem::current_path(previous); }
    TempDir directory;
    std::filesystem::path previous;
};

}  // namespace

TEST_F(LocalServer, StartsTheRealServerTalksToItAndShutsItDown) {
    int port = ServerProcess::FreePort();
    LibClientLocal client;
    ASSERT_TRUE(client.StartCheckConnect(port));
    ASSERT_GT(client.GetServerProcessId(), 0);

    ASSERT_TRUE(client.RequestResources());
    EXPECT_TRUE(eventually([&] { return client.Read(&LibProcessor::libVersion) == "beta"; }));

    e_System_* system = NewSystemIndoor(nullptr);
    NewAccessPoint(system, "ap");
    NewSamplePoint(system, "sp");
    std::string sent;
    SystemToString(system, sent);
    ASSERT_TRUE(client.BounceSystem(system));
    ASSERT_TRUE(eventually([&] { return client.GetSystemReply() != nullptr; }));
    e_System_* reply = client.GetSystemReply();
    std::string returned;
    SystemToString(reply, returned);
    EXPECT_EQ(returned, sent);
    DeleteSystem(&reply);
    DeleteSystem(&system);

    EXPECT_TRUE(client.StopCheckServer());
    EXPECT_FALSE(client.IsServerProcessRunning());
    EXPECT_TRUE(std::filesystem::exists(directory.File("server_0.csv")));
}

TEST_F(LocalServer, KillsTheServerItStartedByItsProcessId) {
    int port = ServerProcess::FreePort();
    LibClientLocal client;
    ASSERT_TRUE(client.StartTheServerProcess(port, 0));
    EXPECT_TRUE(eventually([&] { return ServerProcess::PortListening(port); }));
    EXPECT_TRUE(client.KillTheServerProcess());
    EXPECT_FALSE(client.IsServerProcessRunning());
    EXPECT_FALSE(ServerProcess::PortListening(port));
}
