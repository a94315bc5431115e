#include <benchmark/benchmark.h>

#include "server/ClientServerMessage.h"
#include "support/RawClient.h"
#include "support/ServerProcess.h"

// One version query and its reply over loopback, against a server started for the run
// at output level 0 (no log file), so the figure is the protocol path itself.
static void BM_VersionRoundTrip(benchmark::State& state) {
    ServerProcess server;
    if (!server.Start({"-o0"})) {
        state.SkipWithError("server did not start");
        return;
    }
    RawClient client;
    if (!client.Connect(server.port)) {
        state.SkipWithError("no connection");
        return;
    }
    for (auto _ : state) {
        client.Send(MSGTYPE_GET, MSG_VERSION);
        ClientServerMessage reply;
        if (!client.ReadMessage(reply, 5.0)) {
            state.SkipWithError("no reply");
            break;
        }
    }
}
BENCHMARK(BM_VersionRoundTrip)->UseRealTime()->Unit(benchmark::kMicrosecond);
