#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "client/FakeServer.h"
#include "client/LibClientLocal.h"
#include "client/LibClientRemote.h"
#include "support/LogCapture.h"
#include "support/ServerProcess.h"
#include "support/TempDir.h"
#include "system/SystemRecords.h"

namespace {

// Answers every GET as a server with catalogues would: lists named after their code, one
// option of each kind, and a last error that counts the requests so far.
void AnswerCatalogues(FakeServer& server, ClientServerMessage& request) {
    eMsg code = MSG_NONE;
    if (!request.TestType(MSGTYPE_GET) || !request.GetMsg(code)) return;
    ClientServerMessage reply;
    reply.SetType(MSGTYPE_GETREPLY);
    reply.SetMsg(code);
    reply.SetMsg(std::vector<std::string>{"list " + std::to_string(code), "second"});
    if (code == MSG_VERSION) reply.SetMsg("beta");
    if (code == MSG_DATALOCATION) reply.SetMsg("/data");
    if (code == MSG_LASTERROR) reply.SetMsg("last " + std::to_string(server.Received().size()));
    AccessPointOption accessPoint;
    accessPoint.name = "ap-x";
    if (code == MSG_APDETAILS) reply.SetMsg(std::vector<AccessPointOption>{accessPoint});
    AntennaOption antenna;
    antenna.name = "ant-y";
    if (code == MSG_ANTDETAILS) reply.SetMsg(std::vector<AntennaOption>{antenna});
    server.Send(reply);
}

// Connects `client` and waits until `server` has taken the connection.
void Connect(LibClientRemote& client, FakeServer& server) {
    int before = server.connections;
    ASSERT_TRUE(client.ConnectToServer("127.0.0.1", server.port));
    ASSERT_TRUE(WaitUntil([&] { return server.connections == before + 1; }));
}

// Takes and releases the system that the last result left behind.
void ReleaseReceivedSystem(LibClient& client) {
    e_System_* system = client.GetSystemReply();
    DeleteSystem(&system);
    clientReceivedSystem = nullptr;
}

}  // namespace

// A second request replaces the options rather than adding to them.
TEST(LibClient, RequestResourcesFillsVersionAndCatalogues) {
    FakeServer server(AnswerCatalogues);
    LibClientRemote client;
    Connect(client, server);
    EXPECT_TRUE(client.listenerRunning);
    for (const char* lastError : {"last 12", "last 24"}) {
        ASSERT_TRUE(client.RequestResources());
        ASSERT_TRUE(WaitUntil([&] { return client.Read(&LibProcessor::lastError) == lastError; }));
    }
    std::vector<eMsg> once = {MSG_VERSION,    MSG_MATERIALNAMES, MSG_MATERIALDESC, MSG_APNAMES,
                              MSG_APDESC,     MSG_APDETAILS,     MSG_ANTNAMES,     MSG_ANTDESC,
                              MSG_ANTDETAILS, MSG_DATALOCATION,  MSG_ERRORLOG,     MSG_LASTERROR};
    std::vector<eMsg> twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(server.ReceivedCodes(), twice);

    EXPECT_EQ(client.Read(&LibProcessor::libVersion), "beta");
    EXPECT_EQ(client.Read(&LibProcessor::dataLocation), "/data");
    using List = std::vector<std::string> LibProcessor::*;
    for (auto [field, code] :
         {std::pair<List, eMsg>{&LibProcessor::materialNames, MSG_MATERIALNAMES},
          {&LibProcessor::materialDescriptions, MSG_MATERIALDESC},
          {&LibProcessor::apNames, MSG_APNAMES},
          {&LibProcessor::apDescriptions, MSG_APDESC},
          {&LibProcessor::antennaNames, MSG_ANTNAMES},
          {&LibProcessor::antennaDescriptions, MSG_ANTDESC},
          {&LibProcessor::errorList, MSG_ERRORLOG}}) {
        EXPECT_EQ(client.Read(field),
                  (std::vector<std::string>{"list " + std::to_string(code), "second"}));
    }
    std::vector<AccessPointOption> accessPoints = client.Read(&LibProcessor::apOptions);
    ASSERT_EQ(accessPoints.size(), 1u);
    EXPECT_EQ(accessPoints[0].name, "ap-x");
    std::vector<AntennaOption> antennas = client.Read(&LibProcessor::antennaOptions);
    ASSERT_EQ(antennas.size(), 1u);
    EXPECT_EQ(antennas[0].name, "ant-y");
}

TEST(LibClient, StateUpdatesAndStatusReplies) {
    LogCapture capture;
    FakeServer server;
    LibClientRemote client;
    Connect(client, server);
    server.Send(MSGTYPE_STATEUPDATE, MSG_UPDATERUNNING);
    ASSERT_TRUE(WaitUntil([&] { return client.processing.load(); }));
    server.Send(MSGTYPE_STATEUPDATE, MSG_UPDATESUCCESS);
    ASSERT_TRUE(WaitUntil([&] { return client.updateSuccessful.load(); }));
    EXPECT_FALSE(client.processing);
    server.Send(MSGTYPE_STATEUPDATE, MSG_UPDATEFAILED);
    ASSERT_TRUE(WaitUntil([&] { return !client.updateSuccessful.load(); }));
    server.Send(MSGTYPE_STATUSREPLY, MSG_READY);
    ASSERT_TRUE(WaitUntil(
        [&] { return capture.Contains("LibClient::ProcessMessage() - status ... MSG_READY\n"); }));
    EXPECT_TRUE(client.IsConnected());

    // A finished calculation makes the client leave on its own.
    server.Send(MSGTYPE_STATUSREPLY, MSG_CALCSUCCESS);
    ASSERT_TRUE(WaitUntil([&] { return !client.IsConnected() && server.connection == -1; }));
    EXPECT_EQ(server.ReceivedCodes(), std::vector<eMsg>{MSG_DISCONNECT});
    EXPECT_FALSE(client.listenerRunning);
}

// The client disconnects once; the server's disconnect is answered; a server that closes
// the connection leaves the client unconnected, and it can connect again.
TEST(LibClient, DisconnectFromEitherSide) {
    LogCapture capture;
    FakeServer server;
    LibClientRemote client;
    Connect(client, server);
    EXPECT_TRUE(client.Disconnect(false));
    EXPECT_FALSE(client.IsConnected());
    EXPECT_FALSE(client.listenerRunning);
    EXPECT_FALSE(capture.Contains("LibClient::Disconnect() - not connected\n"));
    EXPECT_FALSE(client.Disconnect(false));
    EXPECT_TRUE(capture.Contains("LibClient::Disconnect() - not connected\n"));
    ASSERT_TRUE(WaitUntil([&] { return server.connection == -1; }));
    EXPECT_EQ(server.ReceivedCodes(), std::vector<eMsg>{MSG_DISCONNECT});

    Connect(client, server);
    server.Send(MSGTYPE_CONTROL, MSG_DISCONNECT);
    ASSERT_TRUE(WaitUntil([&] { return !client.IsConnected() && server.Received().size() == 2; }));
    EXPECT_EQ(server.Received()[1].type, MSGTYPE_CONTROL);
    EXPECT_EQ(server.Received()[1].msg, MSG_DISCONNECT);

    Connect(client, server);
    server.CloseClient();
    ASSERT_TRUE(WaitUntil([&] { return !client.IsConnected() && !client.listenerRunning; }));
    EXPECT_FALSE(client.GetState());
    EXPECT_TRUE(capture.Contains("LibClient::SendRawMessage() - but not connected\n"));
    ClientServerMessage msg;
    EXPECT_FALSE(client.GetMsg(msg));
    EXPECT_TRUE(capture.Contains("LibClient::GetMsg() - but not connected\n"));

    Connect(client, server);
    EXPECT_TRUE(client.StopProcessing());
    ASSERT_TRUE(WaitUntil([&] { return server.Received().size() == 3; }));
    EXPECT_EQ(server.Received()[2].msg, MSG_STOPPROCESSING);
    EXPECT_EQ(server.connections, 4);
}

TEST(LibClient, ReturnedSystemLandsInTheGlobalAndTheCallerKeepsItsOwn) {
    TempDir directory;
    std::string osmFile = directory.File("map.osm");
    std::ofstream(osmFile) << "<osm version='0.6'/>";
    std::string osmSent;
    // Returns each system it receives, with xMax set, as the result of a run.
    FakeServer server([&](FakeServer& fake, ClientServerMessage& request) {
        e_System_* system = nullptr;
        if (!request.GetMsg(&system)) return;
        osmSent = system->osmContent == nullptr ? "" : system->osmContent;
        system->xMax = 99;
        ClientServerMessage reply;
        reply.SetType(MSGTYPE_CONTROL);
        reply.SetMsg(MSG_SYSTEMRESULT);
        reply.SetMsg(system);
        fake.Send(reply);
    });
    LibClientRemote client;
    Connect(client, server);

    e_System_* system = NewSystemIndoor(nullptr);
    system->osmFile = CopyString(osmFile.c_str());
    NewAccessPoint(system, "ap1");
    ASSERT_TRUE(client.BounceSystem(system));
    EXPECT_TRUE(client.processing);
    EXPECT_FALSE(client.updateSuccessful);
    ASSERT_TRUE(WaitUntil([&] { return client.GetSystemReply() != nullptr; }));
    e_System_* result = client.GetSystemReply();
    EXPECT_DOUBLE_EQ(result->xMax, 99);
    EXPECT_STREQ(result->accessPoints->name, "ap1");
    EXPECT_STREQ(system->osmContent, "<osm version='0.6'/>");
    EXPECT_EQ(osmSent, "<osm version='0.6'/>");
    EXPECT_EQ(server.ReceivedCodes(), std::vector<eMsg>{MSG_BOUNCESYSTEM});

    // A new request forgets the last result, which the caller has taken.
    ASSERT_TRUE(client.ProcessSystem(system));
    EXPECT_EQ(client.GetSystemReply(), nullptr);
    ASSERT_TRUE(WaitUntil([&] { return client.GetSystemReply() != nullptr; }));
    EXPECT_EQ(server.Received()[1].msg, MSG_PROCESSSYSTEM);
    DeleteSystem(&result);
    ReleaseReceivedSystem(client);
    DeleteSystem(&system);

    LogCapture capture;
    EXPECT_FALSE(client.ProcessSystem(nullptr));
    EXPECT_TRUE(capture.Contains("LibClient::ProcessSystem() - failed\n"));
}

TEST(LibClient, CallbacksRunInOrderEachOnItsOwnParse) {
    FakeServer server;
    LibClientRemote client;
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
    Connect(client, server);

    ClientServerMessage result;
    result.SetType(MSGTYPE_CONTROL);
    result.SetMsg(MSG_SYSTEMRESULT);
    result.SetMsg(NewSystemIndoor(nullptr));
    testing::internal::CaptureStdout();
    server.Send(result);
    server.Send(MSGTYPE_ERROR, MSG_NONE);
    ASSERT_TRUE(WaitUntil([&] {
        std::lock_guard<std::mutex> guard(lock);
        return calls.size() == 4;
    }));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "received msg .. error\n");
    EXPECT_NE(client.GetSystemReply(), nullptr);
    EXPECT_EQ(calls, (std::vector<std::string>{"second with system", "third result",
                                               "second without system", "third other"}));
    ReleaseReceivedSystem(client);
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
    FakeServer server([](FakeServer& fake, ClientServerMessage& request) {
        if (request.TestMsg(MSG_SHUTDOWN)) fake.CloseClient();
        AnswerCatalogues(fake, request);
    });
    LibClientLocal client;
    ASSERT_TRUE(client.ConnectToServer(server.port));
    EXPECT_TRUE(client.SetDataLocation("/tmp/somewhere"));
    EXPECT_TRUE(client.SetServerThreaded(false));
    EXPECT_TRUE(client.SetServerParallel(true));
    std::string location;
    EXPECT_TRUE(client.GetDataLocation(location));
    ASSERT_TRUE(WaitUntil([&] { return client.Read(&LibProcessor::dataLocation) == "/data"; }));
    EXPECT_FALSE(client.UpdateOnline());
    EXPECT_TRUE(capture.Contains("LibClientLocal::UpdateOnline() - not implemented\n"));

    EXPECT_TRUE(client.StopServer());
    EXPECT_FALSE(client.IsConnected());
    std::vector<ReceivedMessage> received = server.Received();
    ASSERT_EQ(received.size(), 5u);
    EXPECT_EQ(received[0].type, MSGTYPE_SET);
    EXPECT_NE(received[0].text.find("string=\"/tmp/somewhere\""), std::string::npos);
    EXPECT_EQ(received[1].msg, MSG_SERVERTHREADED);
    EXPECT_NE(received[1].text.find("string=\"false\""), std::string::npos);
    EXPECT_EQ(received[2].msg, MSG_SERVERPARALLEL);
    EXPECT_NE(received[2].text.find("string=\"true\""), std::string::npos);
    EXPECT_EQ(received[3].type, MSGTYPE_GET);
    EXPECT_EQ(received[4].msg, MSG_SHUTDOWN);
    EXPECT_FALSE(client.StopServer());
    EXPECT_TRUE(capture.Contains("LibClientLocal::StopServer() - not connected to server\n"));
}
