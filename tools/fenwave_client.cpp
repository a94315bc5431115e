// A command-line client of a Fenwave server: prints the server's version and catalogues
// and, given a system file, has the system simulated (or bounced) and prints the signals
// that come back: per sample point and access point the received power, the path loss and
// the number of paths.
//
//   fenwave_client [--host H] [--port P] [--timeout S] [--bounce] [--quiet] [--serial]
//                  [--unthreaded] [--csv FILE] [SYSTEM]

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
#include <string>
#include <thread>

#include "client/CatalogueListing.h"
#include "client/LibClientRemote.h"
#include "client/ResultTable.h"
#include "system/SystemToXML.h"

namespace {

enum ExitCode { exitSuccess = 0, exitUsage = 1, exitConnection = 2, exitFile = 3, exitTimeout = 4 };

struct Options {
    std::string host = "127.0.0.1";
    int port = 12000;
    int timeoutSeconds = 600;
    bool bounce = false;
    bool help = false;
    bool quiet = false;
    bool serial = false;
    bool unthreaded = false;
    std::string csvFile;
    std::string systemFile;
};

void PrintUsage(std::ostream& out) {
    out << "usage: fenwave_client [--host H] [--port P] [--timeout S] [--bounce] [--quiet] "
           "[--serial] [--unthreaded] [--csv FILE] [SYSTEM]\n"
           "  --host H     server host name or address (default 127.0.0.1)\n"
           "  --port P     server port (default 12000)\n"
           "  --timeout S  seconds to wait for each answer (default 600)\n"
           "  --bounce     have the server return the system unsimulated\n"
           "  --quiet      do not ask for the version and catalogues\n"
           "  --serial     have the server trace on one thread\n"
           "  --unthreaded have the server run the trace in its main loop\n"
           "  --csv FILE   also write the results to FILE as CSV\n"
           "  SYSTEM       a system file to simulate\n";
}

bool ParseNumber(const std::string& text, int& value) {
    try {
        size_t used = 0;
        value = std::stoi(text, &used);
        return used == text.size() && value > 0;
    } catch (const std::exception&) {
        return false;
    }
}

// Reads the command line; false with a complaint on standard error if it is wrong.
bool ParseOptions(int argc, char** argv, Options& options) {
    for (int index = 1; index < argc; ++index) {
        std::string argument = argv[index];
        bool hasValue = index + 1 < argc;
        if (argument == "--bounce") {
            options.bounce = true;
        } else if (argument == "--quiet") {
            options.quiet = true;
        } else if (argument == "--serial") {
            options.serial = true;
        } else if (argument == "--unthreaded") {
            options.unthreaded = true;
        } else if (argument == "-h" || argument == "--help") {
            options.help = true;
        } else if (argument == "--host" && hasValue) {
            options.host = argv[++index];
        } else if (argument == "--csv" && hasValue) {
            options.csvFile = argv[++index];
        } else if (argument == "--port" && hasValue) {
            if (!ParseNumber(argv[++index], options.port) || options.port > 65535) {
                std::cerr << "fenwave_client: bad port " << argv[index] << "\n";
                return false;
            }
        } else if (argument == "--timeout" && hasValue) {
            if (!ParseNumber(argv[++index], options.timeoutSeconds)) {
                std::cerr << "fenwave_client: bad time limit " << argv[index] << "\n";
                return false;
            }
        } else if (argument.rfind("-", 0) != 0 && options.systemFile.empty()) {
            options.systemFile = argument;
        } else {
            std::cerr << "fenwave_client: unexpected argument " << argument << "\n";
            return false;
        }
    }
    return true;
}

// Waits until `done` answers true, the client loses its connection or the time is up.
bool WaitFor(LibClient& client, int seconds, const std::function<bool()>& done) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (!done()) {
        if (!client.IsConnected() || std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

int Fail(int code, const std::string& message) {
    std::cerr << "fenwave_client: " << message << "\n";
    return code;
}

int FailWaiting(LibClient& client, const Options& options, const std::string& what) {
    if (!client.IsConnected()) return Fail(exitConnection, "the server closed the connection");
    return Fail(exitTimeout,
                "no " + what + " within " + std::to_string(options.timeoutSeconds) + " s");
}

// Asks for the version and catalogues and prints them. The server answers the data
// location last, so once that answer is in, the catalogues before it are stored.
int ShowCatalogues(LibClient& client, const std::atomic<bool>& locationAnswered,
                   const Options& options) {
    if (!client.RequestResources()) return Fail(exitConnection, "sending the requests failed");
    if (!WaitFor(client, options.timeoutSeconds, [&] { return locationAnswered.load(); })) {
        return FailWaiting(client, options, "answer to the catalogue requests");
    }
    CatalogueListing(client).Print(std::cout);
    return exitSuccess;
}

const e_AccessPoint_* FindAccessPoint(const e_System_* system, const char* name) {
    for (const e_AccessPoint_* ap = system->accessPoints; ap != nullptr; ap = ap->next) {
        if (ap->name != nullptr && name != nullptr && std::strcmp(ap->name, name) == 0) return ap;
    }
    return nullptr;
}

// The server works out a path loss only for signals that expected one; for the others it is
// the access point's power plus the gains of both ends minus the power received.
void CompletePathLoss(e_System_* system) {
    for (e_SamplePoint_* point = system->samplePoints; point != nullptr; point = point->next) {
        for (e_ReceivedSignal_* signal = point->signals; signal != nullptr; signal = signal->next) {
            const e_AccessPoint_* ap = FindAccessPoint(system, signal->apName);
            if (signal->receivedPathLoss_dB != 0 || ap == nullptr || ap->power <= 0) continue;
            double transmit_dBm = 10 * std::log10(ap->power) + 30;
            signal->receivedPathLoss_dB =
                transmit_dBm + ap->gain + point->gain - signal->receivedPower_dBm;
        }
    }
}

int WriteResults(e_System_* result, const Options& options) {
    CompletePathLoss(result);
    ResultTable table(result);
    std::cout << "\n";
    table.PrintText(std::cout);
    if (!options.csvFile.empty() && !table.WriteCSV(options.csvFile)) {
        return Fail(exitFile, "cannot write " + options.csvFile);
    }
    return exitSuccess;
}

int RunSystem(LibClient& client, const Options& options) {
    e_System_* system = NewSystemIndoor(nullptr);
    if (!SystemFromFile(system, options.systemFile.c_str())) {
        DeleteSystem(&system);
        return Fail(exitFile, "cannot read a system from " + options.systemFile);
    }
    bool sent = options.bounce ? client.BounceSystem(system) : client.ProcessSystem(system);
    DeleteSystem(&system);
    if (!sent) return Fail(exitConnection, "sending the system failed");
    if (!WaitFor(client, options.timeoutSeconds,
                 [&] { return client.GetSystemReply() != nullptr; })) {
        return FailWaiting(client, options, "result");
    }
    e_System_* result = client.GetSystemReply();
    int code = WriteResults(result, options);
    DeleteSystem(&result);
    return code;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!ParseOptions(argc, argv, options)) {
        PrintUsage(std::cerr);
        return exitUsage;
    }
    if (options.help) {
        PrintUsage(std::cout);
        return exitSuccess;
    }
    std::atomic<bool> locationAnswered{false};
    LibClientRemote client;
    client.AddReceiveMesageCallback([&](ClientServerMessage& msg) {
        if (msg.TestType(MSGTYPE_GETREPLY) && msg.TestMsg(MSG_DATALOCATION)) {
            locationAnswered = true;
        }
    });
    if (!client.ConnectToServer(options.host.c_str(), options.port)) {
        return Fail(exitConnection,
                    "cannot connect to " + options.host + ":" + std::to_string(options.port));
    }
    int code = options.quiet ? exitSuccess : ShowCatalogues(client, locationAnswered, options);
    if (options.serial) client.SendMsg(MSGTYPE_SET, MSG_SERVERPARALLEL, false);
    if (options.unthreaded) client.SendMsg(MSGTYPE_SET, MSG_SERVERTHREADED, false);
    if (code == exitSuccess && !options.systemFile.empty()) code = RunSystem(client, options);
    if (client.IsConnected()) client.Disconnect(false);
    return code;
}
