#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "client/FakeServer.h"
#include "client/LibClient.h"
#include "client/LibClientLocal.h"
#include "client/LibClientRemote.h"
#include "support/TempDir.h"
#include "support/LogCapture.h"
#include "system/SystemRecords.h"

namespace {

// Answers every GET as a server with catalogues would.
void AnswerCatalogues(FakeServer& server, ClientServerMessage& request) {
    if (!request.TestType(MSGTYPE_GET)) return;
    eMsg code = MSG_NONE;
    request.GetMsg(code);
    ClientServerMessage reply;
    reply.SetType(MSGTYPE_GETREPLY);
    reply.SetMsg(code);
    if (code == MSG_VERSION) reply.SetMsg("beta");
    if (code == MSG_DATALOCATION) reply.SetMsg("/data");
    if (code == MSG_LASTERROR) reply.SetMsg("last one");
    if (code == MSG_APDETAILS) {
        AccessPointOption option;
        option.name = "ap-x";
        option.antennaCount = 2;
        reply.SetMsg(std::vector<AccessPointOption>{option});
    } else if (code == MSG_ANTDETAILS) {
        AntennaOption option;
        option.name = "ant-y";
        reply.SetMsg(std::vector<AntennaOption>{option});
    } else {
        reply.SetMsg(std::vector<std::string>{"list " + std::to_string(code), "second"});
    }
    server.Send(reply);
}

// Returns each system it receives as the result of a run.
void EchoSystem(FakeServer& server, ClientServerMessage& request) {
    e_System_* system = nullptr;
    if (!request.TestType(MSGTYPE_CONTROL) || !request.GetMsg(&system)) return;
    system->xMax = 99;
    ClientServerMessage reply;
    reply.SetType(MSGTYPE_CONTROL);
    reply.SetMsg(MSG_SYSTEMRESULT);
    reply.SetMsg(system);
    server.Send(reply);
}

// Takes and releases the system that the last result left behind.
void ReleaseReceivedSystem(LibClient& client) {
    e_System_* system = client.GetSystemReply();
    DeleteSystem(&system);
    clientReceivedSystem = nullptr;
}

std::vector<eMsg> ReceivedCodes(FakeServer& server) {
    std::vector<eMsg> codes;
    for (const ReceivedMessage& message : server.Received()) codes.push_back(message.msg);
    return codes;
}

}  // namespace

TEST(LibClient, RepliesFillVersionAndCatalogues) {
    FakeServer server;
    server.SetResponder(AnswerCatalogues);
    LibClientRemote client;
    ASSERT_TRUE(client.ConnectToServer("127.0.0.1", server.Port()));
    EXPECT_TRUE(client.listenerRunning);
    ASSERT_TRUE(client.RequestResources());
    ASSERT_TRUE(WaitUntil([&] { return client.Read(&LibProcessor::lastError) == "last one"; }));

    EXPECT_EQ(ReceivedCodes(server),
              (std::vector<eMsg>{MSG_VERSION, MSG_MATERIALNAMES, MSG_MATERIALDESC, MSG_APNAMES,
                                 MSG_APDESC, MSG_APDETAILS, MSG_ANTNAMES, MSG_ANTDESC,
                                 MSG_ANTDETAILS, MSG_DATALOCATION, MSG_ERRORLOG, MSG_LASTERROR}));
    EXPECT_EQ(client.Read(&LibProcessor::libVersion), "beta");
    EXPECT_EQ(client.Read(&LibProcessor::materialNames),
              (std::vector<std::string>{"list 17", "second"}));
    EXPECT_EQ(client.Read(&LibProcessor::materialDescriptions)[0], "list 18");
    EXPECT_EQ(client.Read(&LibProcessor::apNames)[0], "list 19");
    EXPECT_EQ(client.Read(&LibProcessor::apDescriptions)[0], "list 20");
    EXPECT_EQ(client.Read(&LibProcessor::antennaNames)[0], "list 22");
    EXPECT_EQ(client.Read(&LibProcessor::antennaDescriptions)[0], "list 23");
    EXPECT_EQ(client.Read(&LibProcessor::errorList)[0], "list 29");
    EXPECT_EQ(client.Read(&LibProcessor::dataLocation), "/data");
    std::vector<AccessPointOption> accessPoints = client.Read(&LibProcessor::apOptions);
    ASSERT_EQ(accessPoints.size(), 1u);
    EXPECT_EQ(accessPoints[0].name, "ap-x");
    EXPECT_EQ(accessPoints[0].antennaCount, 2);
    std::vector<AntennaOption> antennas = client.Read(&LibProcessor::antennaOptions);
    ASSERT_EQ(antennas.size(), 1u);
    EXPECT_EQ(antennas[0].name, "ant-y");

    // A second round replaces the options rather than adding to them.
    server.SetResponder([](FakeServer& fake, ClientServerMessage& request) {
        if (!request.TestMsg(MSG_LASTERROR)) return AnswerCatalogues(fake, request);
        ClientServerMessage reply;
        reply.SetType(MSGTYPE_GETREPLY);
        reply.SetMsg(MSG_LASTERROR);
        reply.SetMsg("last two");
        fake.Send(reply);
    });
    ASSERT_TRUE(client.RequestResources());
    ASSERT_TRUE(WaitUntil([&] { return client.Read(&LibProcessor::lastError) == "last two"; }));
    EXPECT_EQ(client.Read(&LibProcessor::apOptions).size(), 1u);
    EXPECT_EQ(client.Read(&LibProcessor::antennaOptions).size(), 1u);
}

TEST(LibClient, StateUpdatesAndStatusReplies) {
    LogCapture capture;
    FakeServer server;
    LibClientRemote client;
    ASSERT_TRUE(client.ConnectToServer("localhost", server.Port()));
    ASSERT_TRUE(WaitUntil([&] { return server.Connected(); }));

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
    ASSERT_TRUE(WaitUntil([&] { return !client.IsConnected(); }));
    ASSERT_TRUE(WaitUntil([&] { return !server.Connected(); }));
    EXPECT_EQ(ReceivedCodes(server), std::vector<eMsg>{MSG_DISCONNECT});
    EXPECT_FALSE(client.listenerRunning);
}

TEST(LibClient, ServerDisconnectIsAnswered) {
    FakeServer server;
    LibClientLocal client;
    ASSERT_TRUE(client.ConnectToServer(server.Port()));
    ASSERT_TRUE(WaitUntil([&] { return server.Connected(); }));
    server.Send(MSGTYPE_CONTROL, MSG_DISCONNECT);
    ASSERT_TRUE(WaitUntil([&] { return !client.IsConnected(); }));
    ASSERT_TRUE(WaitUntil([&] { return server.Received().size() == 1; }));
    EXPECT_TRUE(server.Received()[0].type == MSGTYPE_CONTROL);
    EXPECT_EQ(server.Received()[0].msg, MSG_DISCONNECT);
}

TEST(LibClient, ReturnedSystemLandsInTheGlobalAndTheCallerKeepsItsOwn) {
    TempDir directory;
    std::string osmFile = directory.File("map.osm");
    std::ofstream(osmFile) << "<osm version='0.6'/>";

    FakeServer server;
    server.SetResponder(EchoSystem);
    LibClientRemote client;
    ASSERT_TRUE(client.ConnectToServer("127.0.0.1", server.Port()));

    e_System_* system = NewSystemIndoor(nullptr);
    system->osmFile = CopyString(osmFile.c_str());
    NewAccessPoint(system, "ap1");
    ASSERT_TRUE(client.BounceSystem(system));
    EXPECT_TRUE(client.processing);
    EXPECT_FALSE(client.updateSuccessful);
    ASSERT_TRUE(WaitUntil([&] { return client.GetSystemReply() != nullptr; }));

    e_System_* result = client.GetSystemReply();
    EXPECT_DOUBLE_EQ(result->xMax, 99);
    ASSERT_NE(result->accessPoints, nullptr);
    EXPECT_STREQ(result->accessPoints->name, "ap1");
    EXPECT_STREQ(system->osmContent, "<osm version='0.6'/>");
    std::vector<ReceivedMessage> received = server.Received();
    ASSERT_EQ(received.size(), 1u);
    EXPECT_EQ(received[0].msg, MSG_BOUNCESYSTEM);
    EXPECT_TRUE(received[0].hadSystem);
    EXPECT_EQ(received[0].osmContent, "<osm version='0.6'/>");

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
        bool hasSystem = msg.GetMsg(&system);
        calls.push_back(hasSystem ? "second with system" : "second without system");
        DeleteSystem(&system);
    });
    client.AddReceiveMesageCallback([&](ClientServerMessage& msg) {
        std::lock_guard<std::mutex> guard(lock);
        calls.push_back(msg.TestMsg(MSG_SYSTEMRESULT) ? "third result" : "third other");
    });
    ASSERT_TRUE(client.ConnectToServer("127.0.0.1", server.Port()));
    ASSERT_TRUE(WaitUntil([&] { return server.Connected(); }));

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
    std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(printed, "received msg .. error\n");
    EXPECT_NE(client.GetSystemReply(), nullptr);
    EXPECT_EQ(calls, (std::vector<std::string>{"second with system", "third result",
                                               "second without system", "third other"}));
    ReleaseReceivedSystem(client);
}

TEST(LibClient, SecondDisconnectOnlyLogs) {
    LogCapture capture;
    FakeServer server;
    LibClientRemote client;
    ASSERT_TRUE(client.ConnectToServer("127.0.0.1", server.Port()));
    ASSERT_TRUE(WaitUntil([&] { return server.Connected(); }));
    EXPECT_TRUE(client.Disconnect(false));
    EXPECT_FALSE(client.IsConnected());
    EXPECT_FALSE(client.listenerRunning);
    ASSERT_TRUE(WaitUntil([&] { return !server.Connected(); }));
    EXPECT_EQ(ReceivedCodes(server), std::vector<eMsg>{MSG_DISCONNECT});
    EXPECT_FALSE(capture.Contains("LibClient::Disconnect() - not connected\n"));

    EXPECT_FALSE(client.Disconnect(false));
    EXPECT_TRUE(capture.Contains("LibClient::Disconnect() - not connected\n"));
    EXPECT_EQ(server.Received().size(), 1u);
    EXPECT_EQ(server.Connections(), 1);
}

TEST(LibClient, ServerClosingEndsTheConnection) {
    LogCapture capture;
    FakeServer server;
    LibClientRemote client;
    ASSERT_TRUE(client.ConnectToServer("127.0.0.1", server.Port()));
    ASSERT_TRUE(WaitUntil([&] { return server.Connected(); }));
    server.CloseClient();
    ASSERT_TRUE(WaitUntil([&] { return !client.IsConnected(); }));
    ASSERT_TRUE(WaitUntil([&] { return !client.listenerRunning.load(); }));

    EXPECT_FALSE(client.GetState());
    EXPECT_TRUE(capture.Contains("LibClient::SendRawMessage() - but not connected\n"));
    ClientServerMessage msg;
    EXPECT_FALSE(client.GetMsg(msg));
    EXPECT_TRUE(capture.Contains("LibClient::GetMsg() - but not connected\n"));

    // The same client connects again once the old connection is gone.
    ASSERT_TRUE(client.ConnectToServer("127.0.0.1", server.Port()));
    ASSERT_TRUE(WaitUntil([&] { return server.Connections() == 2; }));
    EXPECT_TRUE(client.StopProcessing());
    ASSERT_TRUE(WaitUntil([&] { return server.Received().size() == 1; }));
    EXPECT_EQ(server.Received()[0].msg, MSG_STOPPROCESSING);
}

TEST(LibClient, ConnectionFailuresAreReported) {
    LogCapture capture;
    int port = 0;
    {
        FakeServer closed;
        port = closed.Port();
    }
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
    server.SetResponder([](FakeServer& fake, ClientServerMessage& request) {
        if (request.TestMsg(MSG_SHUTDOWN)) fake.CloseClient();
        AnswerCatalogues(fake, request);
    });
    LibClientLocal client;
    ASSERT_TRUE(client.ConnectToServer(server.Port()));
    EXPECT_TRUE(client.SetDataLocation("/tmp/somewhere"));
    EXPECT_TRUE(client.SetServerThreaded(false));
    EXPECT_TRUE(client.SetServerParallel(true));
    std::string location = "unset";
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
