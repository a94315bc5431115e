#include <gtest/gtest.h>

#include <fstream>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "client/CatalogueListing.h"
#include "client/FakeServer.h"
#include "client/LibClientLocal.h"
#include "client/LibClientRemote.h"
#include "support/LogCapture.h"
#include "support/ServerProcess.h"
#include "support/TempDir.h"
#include "support/WaitUntil.h"
#include "system/SystemRecords.h"

namespace {

constexpr double replyWait = 5.0;

// Reads the client's next message into `msg`; it must have the type and code given.
void ExpectNext(RawClient& peer, eMsgType type, eMsg code, ClientServerMessage& msg) {
    msg.Reset();
    ASSERT_TRUE(peer.ReadMessage(msg, replyWait)) << code;
    EXPECT_TRUE(msg.TestType(type)) << code;
    EXPECT_TRUE(msg.TestMsg(code)) << code;
}

void ExpectNext(RawClient& peer, eMsgType type, eMsg code) {
    ClientServerMessage msg;
    ExpectNext(peer, type, code, msg);
}

// Answers a GET as a server with catalogues would: lists named after their code, one
// option of each kind, and a last error that names the round.
void AnswerCatalogue(RawClient& peer, eMsg code, int round) {
    ClientServerMessage reply;
    reply.SetType(MSGTYPE_GETREPLY);
    reply.SetMsg(code);
    reply.SetMsg(std::vector<std::string>{"list " + std::to_string(code), "two\nlines"});
    if (code == MSG_VERSION) reply.SetMsg("beta");
    if (code == MSG_DATALOCATION) reply.SetMsg("/data");
    if (code == MSG_LASTERROR) reply.SetMsg("last " + std::to_string(round));
    if (code == MSG_APDETAILS)
        reply.SetMsg(
            std::vector{AccessPointOption{"Acme", "ap-x", "dual band", "", "", {}, {}, {}, {}, 0}});
    if (code == MSG_ANTDETAILS)
        reply.SetMsg(std::vector{AntennaOption{"", "ant-y", "", "", {}, {}, {}, {}}});
    EXPECT_TRUE(peer.SendMessage(reply));
}

// Returns `system` to the client as the result of a run.
void SendResult(RawClient& peer, e_System_* system) {
    ClientServerMessage result;
    result.SetType(MSGTYPE_CONTROL);
    result.SetMsg(MSG_SYSTEMRESULT);
    result.SetMsg(system);
    EXPECT_TRUE(peer.SendMessage(result));
}

// A remote client connected to a fake server; `peer` is the server's end.
class LibClientTest : public ::testing::Test {
protected:
    void SetUp() override { Reconnect(); }
    void Reconnect() {
        ASSERT_TRUE(client.ConnectToServer("127.0.0.1", server.port));
        ASSERT_TRUE(server.Accept(peer));
    }
    FakeServer server;
    RawClient peer;
    LibClientRemote client;
};

}  // namespace

// Every reply lands in its field, as the catalogue listing shows; a second request
// replaces the options rather than adding to them.
TEST_F(LibClientTest, RequestResourcesFillsVersionAndCatalogues) {
    EXPECT_TRUE(client.listenerRunning);
    for (int round = 1; round <= 2; ++round) {
        ASSERT_TRUE(client.RequestResources());
        for (eMsg code : {MSG_VERSION, MSG_MATERIALNAMES, MSG_MATERIALDESC, MSG_APNAMES, MSG_APDESC,
                          MSG_APDETAILS, MSG_ANTNAMES, MSG_ANTDESC, MSG_ANTDETAILS,
                          MSG_DATALOCATION, MSG_ERRORLOG, MSG_LASTERROR}) {
            ExpectNext(peer, MSGTYPE_GET, code);
            AnswerCatalogue(peer, code, round);
        }
    }
    ASSERT_TRUE(WaitUntil([&] { return client.Read(&LibProcessor::lastError) == "last 2"; }));
    EXPECT_EQ(client.Read(&LibProcessor::dataLocation), "/data");
    EXPECT_EQ(client.Read(&LibProcessor::errorList),
              (std::vector<std::string>{"list 29", "two\nlines"}));
    std::ostringstream listing;
    CatalogueListing(client).Print(listing);
    EXPECT_EQ(listing.str(),
              "server version: beta\n"
              "materials (2)\n    list 17\n    two\n    lines\n"
              "material descriptions (2)\n    list 18\n    two\n    lines\n"
              "access points (2)\n    list 19\n    two\n    lines\n"
              "access point descriptions (2)\n    list 20\n    two\n    lines\n"
              "access point details (1)\n    Acme ap-x: dual band\n"
              "antennas (2)\n    list 22\n    two\n    lines\n"
              "antenna descriptions (2)\n    list 23\n    two\n    lines\n"
              "antenna details (1)\n    ant-y\n");
}

TEST_F(LibClientTest, StateUpdatesAndStatusReplies) {
    LogCapture capture;
    peer.Send(MSGTYPE_STATEUPDATE, MSG_UPDATERUNNING);
    ASSERT_TRUE(WaitUntil([&] { return client.processing.load(); }));
    peer.Send(MSGTYPE_STATEUPDATE, MSG_UPDATESUCCESS);
    ASSERT_TRUE(WaitUntil([&] { return client.updateSuccessful.load(); }));
    EXPECT_FALSE(client.processing);
    peer.Send(MSGTYPE_STATEUPDATE, MSG_UPDATEFAILED);
    ASSERT_TRUE(WaitUntil([&] { return !client.updateSuccessful.load(); }));
    peer.Send(MSGTYPE_STATUSREPLY, MSG_READY);
    ASSERT_TRUE(WaitUntil(
        [&] { return capture.Contains("LibClient::ProcessMessage() - status ... MSG_READY\n"); }));
    EXPECT_TRUE(client.IsConnected());

    // A finished calculation makes the client leave on its own.
    peer.Send(MSGTYPE_STATUSREPLY, MSG_CALCSUCCESS);
    ExpectNext(peer, MSGTYPE_CONTROL, MSG_DISCONNECT);
    EXPECT_TRUE(peer.ClosedByPeer(replyWait));
    EXPECT_TRUE(WaitUntil([&] { return !client.IsConnected() && !client.listenerRunning; }));
}

// The client disconnects once; the server's disconnect is answered; a server that closes
// the connection leaves the client unconnected, and it can connect again.
TEST_F(LibClientTest, DisconnectFromEitherSide) {
    LogCapture capture;
    EXPECT_TRUE(client.Disconnect(false));
    EXPECT_FALSE(client.IsConnected());
    EXPECT_FALSE(client.listenerRunning);
    ExpectNext(peer, MSGTYPE_CONTROL, MSG_DISCONNECT);
    EXPECT_TRUE(peer.ClosedByPeer(replyWait));
    EXPECT_FALSE(capture.Contains("LibClient::Disconnect() - not connected\n"));
    EXPECT_FALSE(client.Disconnect(false));
    EXPECT_TRUE(capture.Contains("LibClient::Disconnect() - not connected\n"));

    Reconnect();
    peer.Send(MSGTYPE_CONTROL, MSG_DISCONNECT);
    ExpectNext(peer, MSGTYPE_CONTROL, MSG_DISCONNECT);
    EXPECT_TRUE(WaitUntil([&] { return !client.IsConnected(); }));

    Reconnect();
    peer.Close();
    ASSERT_TRUE(WaitUntil([&] { return !client.IsConnected() && !client.listenerRunning; }));
    EXPECT_FALSE(client.GetState());
    EXPECT_TRUE(capture.Contains("LibClient::SendRawMessage() - but not connected\n"));
    ClientServerMessage msg;
    EXPECT_FALSE(client.GetMsg(msg));
    EXPECT_TRUE(capture.Contains("LibClient::GetMsg() - but not connected\n"));

    Reconnect();
    EXPECT_TRUE(client.StopProcessing());
    ExpectNext(peer, MSGTYPE_CONTROL, MSG_STOPPROCESSING);
}

// The street map travels with the system; the result lands in the global, and a new
// request forgets it (the caller has taken it).
TEST_F(LibClientTest, SystemsGoOutAndResultsComeBack) {
    TempDir directory;
    std::string osmFile = directory.File("map.osm");
    std::ofstream(osmFile) << "<osm version='0.6'/>";
    e_System_* system = NewSystemIndoor(nullptr);
    system->osmFile = CopyString(osmFile.c_str());
    NewAccessPoint(system, "ap1");

    ASSERT_TRUE(client.BounceSystem(system));
    EXPECT_TRUE(client.processing);
    EXPECT_FALSE(client.updateSuccessful);
    EXPECT_STREQ(system->osmContent, "<osm version='0.6'/>");
    ClientServerMessage request;
    ExpectNext(peer, MSGTYPE_CONTROL, MSG_BOUNCESYSTEM, request);
    e_System_* sent = nullptr;
    ASSERT_TRUE(request.GetMsg(&sent));
    EXPECT_STREQ(sent->osmContent, "<osm version='0.6'/>");
    SendResult(peer, sent);
    ASSERT_TRUE(WaitUntil([&] { return client.GetSystemReply() != nullptr; }));
    e_System_* result = client.GetSystemReply();
    EXPECT_STREQ(result->accessPoints->name, "ap1");

    ASSERT_TRUE(client.ProcessSystem(system));
    EXPECT_EQ(client.GetSystemReply(), nullptr);
    ExpectNext(peer, MSGTYPE_CONTROL, MSG_PROCESSSYSTEM, request);
    DeleteSystem(&result);
    DeleteSystem(&system);

    LogCapture capture;
    EXPECT_FALSE(client.ProcessSystem(nullptr));
    EXPECT_TRUE(capture.Contains("LibClient::ProcessSystem() - failed\n"));
}

TEST_F(LibClientTest, CallbacksRunInOrderEachOnItsOwnParse) {
    std::mutex lock;
    std::vector<std::string> calls;
    client.AddReceiveMesageCallback([&](ClientServerMessage& msg) {
        std::lock_guard<std::mutex> guard(lock);
        e_System_* system = nullptr;
        calls.push_back(msg.GetMsg(&system) ? "second with system" : "second without system");
        DeleteSystem(&system);
    });
    client.AddReceiveMesageCallback([&](ClientServerMessage& msg) {
        std::lock_guard<std::mutex> guard(lock);
        calls.push_back(msg.TestMsg(MSG_SYSTEMRESULT) ? "third result" : "third other");
    });
    testing::internal::CaptureStdout();
    SendResult(peer, NewSystemIndoor(nullptr));
    peer.Send(MSGTYPE_ERROR, MSG_NONE);
    ASSERT_TRUE(WaitUntil([&] {
        std::lock_guard<std::mutex> guard(lock);
        return calls.size() == 4;
    }));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "received msg .. error\n");
    EXPECT_NE(client.GetSystemReply(), nullptr);
    EXPECT_EQ(calls, (std::vector<std::string>{"second with system", "third result",
                                               "second without system", "third other"}));
    e_System_* result = client.GetSystemReply();
    DeleteSystem(&result);
    clientReceivedSystem = nullptr;
}

TEST(LibClient, ConnectionFailuresAreReported) {
    LogCapture capture;
    int port = ServerProcess::FreePort();
    LibClientRemote client;
    EXPECT_FALSE(client.ConnectToServer("127.0.0.1", port));
    EXPECT_TRUE(capture.Contains("Error : Connect Failed \n"));
    EXPECT_FALSE(client.ConnectToServer("", port));
    EXPECT_TRUE(capture.Contains("Failed to resolve hostname <>\n"));
    EXPECT_FALSE(client.IsConnected());
}

TEST(LibClientLocal, SettingsAndShutdownReachTheServer) {
    LogCapture capture;
    FakeServer server;
    RawClient peer;
    LibClientLocal client;
    ASSERT_TRUE(client.ConnectToServer(server.port));
    ASSERT_TRUE(server.Accept(peer));
    EXPECT_TRUE(client.SetDataLocation("/tmp/somewhere"));
    EXPECT_TRUE(client.SetServerThreaded(false));
    EXPECT_TRUE(client.SetServerParallel(true));
    std::string location;
    EXPECT_TRUE(client.GetDataLocation(location));
    ClientServerMessage msg;
    for (auto [code, text] : {std::pair{MSG_DATALOCATION, "/tmp/somewhere"},
                              {MSG_SERVERTHREADED, "false"},
                              {MSG_SERVERPARALLEL, "true"}}) {
        ExpectNext(peer, MSGTYPE_SET, code, msg);
        EXPECT_TRUE(msg.TestMsg(std::string(text))) << text;
    }
    ExpectNext(peer, MSGTYPE_GET, MSG_DATALOCATION);
    AnswerCatalogue(peer, MSG_DATALOCATION, 1);
    ASSERT_TRUE(WaitUntil([&] { return client.Read(&LibProcessor::dataLocation) == "/data"; }));
    EXPECT_FALSE(client.UpdateOnline());
    EXPECT_TRUE(capture.Contains("LibClientLocal::UpdateOnline() - not implemented\n"));

    // The server closes the connection on the shutdown message.
    std::thread serverSide([&] {
        ExpectNext(peer, MSGTYPE_CONTROL, MSG_SHUTDOWN);
        peer.Close();
    });
    EXPECT_TRUE(client.StopServer());
    serverSide.join();
    EXPECT_FALSE(client.IsConnected());
    EXPECT_FALSE(client.StopServer());
    EXPECT_TRUE(capture.Contains("LibClientLocal::StopServer() - not connected to server\n"));
}
