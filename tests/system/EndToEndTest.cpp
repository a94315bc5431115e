#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

#include "server/ClientServerMessage.h"
#include "support/RawClient.h"
#include "support/ServerProcess.h"
#include "support/SystemScene.h"
#include "system/SystemToXML.h"

namespace {

using Signals = std::map<std::pair<std::string, std::string>, std::pair<double, int>>;

// A few rooms: two access points, walls of concrete and plasterboard, four sample points.
e_System_* SmallOffice() {
    SystemScene scene;
    scene.AddWall(-10, -5, 10, -5, 1, 0.2);
    scene.AddWall(-10, 5, 10, 5, 1, 0.2);
    scene.AddWall(0, -5, 0, 1, 3, 0.05);
    scene.AddWall(-10, -5, -10, 5, 2, 0.2);
    scene.AddAccessPoint("AP-West", -5, 0);
    scene.AddAccessPoint("AP-East", 5, 2);
    scene.AddSamplePoint("SP-1", -7, 3);
    scene.AddSamplePoint("SP-2", -2, -3);
    scene.AddSamplePoint("SP-3", 3, -2);
    scene.AddSamplePoint("SP-4", 8, 4);
    return scene.Release();
}

bool SendSystem(RawClient& client, eMsg code, e_System_* system) {
    ClientServerMessage msg;
    msg.SetType(MSGTYPE_CONTROL);
    msg.SetMsg(code);
    msg.SetMsg(system);
    return client.SendMessage(msg);
}

bool SendFlag(RawClient& client, eMsg code, bool value) {
    ClientServerMessage msg;
    msg.SetType(MSGTYPE_SET);
    msg.SetMsg(code);
    msg.SetMsg(value);
    return client.SendMessage(msg);
}

// Reads the two answers of a run: the state update, then the system with its signals.
Signals ReadResult(RawClient& client, double seconds = 120) {
    ClientServerMessage state;
    EXPECT_TRUE(client.ReadMessage(state, seconds));
    EXPECT_TRUE(state.TestType(MSGTYPE_STATEUPDATE));
    EXPECT_TRUE(state.TestMsg(MSG_UPDATESUCCESS));
    ClientServerMessage reply;
    EXPECT_TRUE(client.ReadMessage(reply, seconds));
    EXPECT_TRUE(reply.TestType(MSGTYPE_CONTROL));
    EXPECT_TRUE(reply.TestMsg(MSG_SYSTEMRESULT));
    e_System_* system = nullptr;
    Signals signals;
    if (!reply.GetMsg(&system) || system == nullptr) return signals;
    for (e_SamplePoint_* sp = system->samplePoints; sp != nullptr; sp = sp->next) {
        for (e_ReceivedSignal_* s = sp->signals; s != nullptr; s = s->next) {
            signals[{sp->name, s->apName}] = {s->receivedPower_dBm, s->receivedPathCount};
        }
    }
    DeleteSystem(&system);
    return signals;
}

Signals RunSystem(RawClient& client, e_System_* system, bool threaded, bool parallel) {
    EXPECT_TRUE(SendFlag(client, MSG_SERVERTHREADED, threaded));
    EXPECT_TRUE(SendFlag(client, MSG_SERVERPARALLEL, parallel));
    EXPECT_TRUE(SendSystem(client, MSG_PROCESSSYSTEM, system));
    return ReadResult(client);
}

// Every signal of the reference comes back with the same power.
void ExpectSamePowers(const Signals& reference, const Signals& result) {
    ASSERT_EQ(result.size(), reference.size());
    for (const auto& [key, signal] : reference) {
        auto found = result.find(key);
        ASSERT_NE(found, result.end()) << key.first << " " << key.second;
        EXPECT_DOUBLE_EQ(found->second.first, signal.first) << key.first << " " << key.second;
    }
}

int TotalPaths(const Signals& signals) {
    int total = 0;
    for (const auto& entry : signals) total += entry.second.second;
    return total;
}

}  // namespace

TEST(EndToEnd, RunsGiveSignalsAlikeThreadedOrNotParallelOrSerial) {
    ServerProcess server;
    ASSERT_TRUE(server.Start());
    RawClient client;
    ASSERT_TRUE(client.Connect(server.port));

    Signals reference = RunSystem(client, SmallOffice(), true, true);
    ASSERT_EQ(reference.size(), 8u);
    for (const auto& [key, signal] : reference) {
        EXPECT_LT(signal.first, 0) << key.first << " " << key.second;
        EXPECT_GT(signal.first, -120) << key.first << " " << key.second;
    }
    for (auto [threaded, parallel] : {std::pair{false, true}, {true, false}, {false, false}}) {
        SCOPED_TRACE(std::to_string(threaded) + std::to_string(parallel));
        ExpectSamePowers(reference, RunSystem(client, SmallOffice(), threaded, parallel));
    }
}

TEST(EndToEnd, StopRequestEndsTheRunWithAPartialResult) {
    ServerProcess server;
    ASSERT_TRUE(server.Start());
    RawClient client;
    ASSERT_TRUE(client.Connect(server.port));
    e_System_* fine = SmallOffice();
    fine->rayGap = 0.25;
    fine->traceLimit = 8;
    e_System_* copy = SmallOffice();
    copy->rayGap = 0.25;
    copy->traceLimit = 8;
    int full = TotalPaths(RunSystem(client, copy, true, true));

    ASSERT_TRUE(SendSystem(client, MSG_PROCESSSYSTEM, fine));
    ASSERT_TRUE(client.Send(MSGTYPE_CONTROL, MSG_STOPPROCESSING));
    Signals partial = ReadResult(client);
    EXPECT_LT(TotalPaths(partial), full);
}

TEST(EndToEnd, ClientLeavingMidRunLeavesTheServerServingTheNext) {
    ServerProcess server;
    ASSERT_TRUE(server.Start());
    Signals reference;
    {
        RawClient first;
        ASSERT_TRUE(first.Connect(server.port));
        reference = RunSystem(first, SmallOffice(), true, true);
        e_System_* slow = SmallOffice();
        slow->rayGap = 0.25;
        ASSERT_TRUE(SendSystem(first, MSG_PROCESSSYSTEM, slow));
        ASSERT_TRUE(first.Send(MSGTYPE_CONTROL, MSG_DISCONNECT));
        EXPECT_TRUE(first.ClosedByPeer(30));
    }
    RawClient second;
    ASSERT_TRUE(second.Connect(server.port));
    ExpectSamePowers(reference, RunSystem(second, SmallOffice(), true, true));
}

// Under LeakSanitizer a server that leaked ends with a non-zero code at its shutdown.
TEST(EndToEnd, TenRunsOnOneConnectionThenShutdownLeaveNothing) {
    ServerProcess server;
    ASSERT_TRUE(server.Start());
    RawClient client;
    ASSERT_TRUE(client.Connect(server.port));
    Signals first = RunSystem(client, SmallOffice(), true, true);
    for (int run = 1; run < 10; ++run) {
        SCOPED_TRACE(run);
        ExpectSamePowers(first, RunSystem(client, SmallOffice(), run % 2 == 0, run % 3 == 0));
    }
    ASSERT_TRUE(client.Send(MSGTYPE_CONTROL, MSG_SHUTDOWN));
    EXPECT_EQ(server.WaitExit(60), 0) << server.Stderr();
}
