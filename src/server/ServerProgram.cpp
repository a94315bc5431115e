#include "server/ServerProgram.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include "framework/Usleep.h"
#include "logging/Log.h"
#include "logging/LogToLogging.h"
#include "logging/LogWriter.h"
#include "server/LibServer.h"

SharedValue continueServerLoop(false);
std::atomic<const char*> executionPoint{""};
LogToLogging* logLink = nullptr;
int showException = 2;

namespace {

const char* const helpText =
    "----------------------------------------------------------------------------------:\n"
    "valid command line options are:\n"
    "-h          : show this help message\n"
    "-p<number>  : set the port number to communicate messages to server, \n"
    "              eg add -p12001 to communicate on port 12001\n"
    "-o          : set the output level of this program\n"
    "              eg: -o0 to output nothing\n"
    "                  -o1 to output error messages only\n"
    "                  -o2 to output errors and warnings\n"
    "                  -o3 to output errors, warnings and debug messages \n"
    "                  -o4 to output errors, warnings, debug and informative messages \n"
    "-l<logfile> : set the name of a file to log output to \n"
    "-x          : print a message if an exception is caught. \n"
    "              By default, the exception will be caught silently, and program will exit.\n"
    "              eg: -x0 to not catch exceptions at all.\n"
    "              eg: -x1 (or -x) to catch exceptions silently and exit.\n"
    "              eg: -x2 to catch exceptions, print an error message to screen and exit.\n";

// Signal handlers may only write(2); these helpers keep them to that.
void writeStderr(const char* text) {
    ssize_t ignored = write(STDERR_FILENO, text, strlen(text));
    (void)ignored;
}

const char* signalName(int sig) {
    switch (sig) {
        case SIGINT:
            return "SIGINT";
        case SIGTERM:
            return "SIGTERM";
        case SIGSEGV:
            return "SIGSEGV";
        default:
            return "<unknown>";
    }
}

// The error line of a fatal signal, named after the exception it stands for.
const char* crashLine(int sig, int code) {
    switch (sig) {
        case SIGFPE:
            switch (code) {
                case FPE_INTDIV:
                    return "Error: EXCEPTION_INT_DIVIDE_BY_ZERO\n";
                case FPE_INTOVF:
                    return "Error: EXCEPTION_INT_OVERFLOW\n";
                case FPE_FLTDIV:
                    return "Error: EXCEPTION_FLT_DIVIDE_BY_ZERO\n";
                case FPE_FLTOVF:
                    return "Error: EXCEPTION_FLT_OVERFLOW\n";
                case FPE_FLTUND:
                    return "Error: EXCEPTION_FLT_UNDERFLOW\n";
                case FPE_FLTRES:
                    return "Error: EXCEPTION_FLT_INEXACT_RESULT\n";
                case FPE_FLTINV:
                    return "Error: EXCEPTION_FLT_INVALID_OPERATION\n";
                case FPE_FLTSUB:
                    return "Error: EXCEPTION_ARRAY_BOUNDS_EXCEEDED\n";
            }
            break;
        case SIGILL:
            if (code == ILL_PRVOPC || code == ILL_PRVREG) {
                return "Error: EXCEPTION_PRIV_INSTRUCTION\n";
            }
            return "Error: EXCEPTION_ILLEGAL_INSTRUCTION\n";
        case SIGBUS:
            if (code == BUS_ADRALN) return "Error: EXCEPTION_DATATYPE_MISALIGNMENT\n";
            return "Error: EXCEPTION_IN_PAGE_ERROR\n";
    }
    return "Error: Unrecognized Exception\n";
}

// Reports, then lets the signal's default action end the process: the handler is
// installed once (SA_RESETHAND), so the re-raised signal terminates.
void fatalSignalAction(int sig, siginfo_t* info, void*) {
    CrashHandler(sig, info);
    raise(sig);
}

void installHandler(int sig, void (*action)(int, siginfo_t*, void*), int flags) {
    struct sigaction setting {};
    setting.sa_sigaction = action;
    setting.sa_flags = SA_SIGINFO | flags;
    sigemptyset(&setting.sa_mask);
    sigaction(sig, &setting, nullptr);
}

void caughtSignalAction(int sig, siginfo_t*, void*) { signalHandler(sig); }

void setPoint(const char* point) { executionPoint.store(point); }

// Options carry their value joined to their letter: -p12001, -o4, -lfile, -x2.
bool processArg(const char* arg, RunSettings& settings) {
    char letter = arg[0] == '-' ? arg[1] : '\0';
    const char* value = letter == '\0' ? arg : arg + 2;
    switch (letter) {
        case 'h':
            return false;
        case 'p':
            settings.port = atoi(value);
            return true;
        case 'o':
            settings.outputLevel = static_cast<eOutputLevel>(atoi(value));
            return true;
        case 'l':
            Log::setLogFile(value);
            return true;
        case 'm':
            settings.multiProcess = true;
            return true;
        case 'x':
            showException = (strcmp(value, "0") == 0) ? 0 : (strcmp(value, "1") == 0) ? 1 : 2;
            return true;
        default:
            std::cout << "unknown command line option: " << arg << "\n";
            return false;
    }
}

void serveConnectedClients(LibServer& server) {
    setPoint("Serverloop() - check on processing");
    server.CheckProcessing();
    setPoint("Serverloop() - receive messages");
    while (server.ReceiveMessage()) {
    }
    setPoint("Serverloop() - check clients");
    server.CheckClients();
    Log::log(OUTPUT_DEBUG) << "server - got message\n";
}

}  // namespace

void signalHandler(int sig) {
    if (showException == 2) {
        writeStderr("signalHandler() caught signal ");
        writeStderr(signalName(sig));
        writeStderr(", exiting\n");
    }
    continueServerLoop.StoreFromSignal(0);
    // Returning into a faulting instruction would fault again for ever: end instead.
    if (sig == SIGSEGV) {
        signal(SIGSEGV, SIG_DFL);
        raise(SIGSEGV);
    }
}

int CrashHandler(int sig, const siginfo_t* info) {
    if (showException != 2) return 1;
    writeStderr("at ");
    writeStderr(executionPoint.load());
    writeStderr("\n");
    writeStderr(crashLine(sig, info == nullptr ? 0 : info->si_code));
    return 1;
}

bool SetupHandlers() {
    for (int sig : {SIGINT, SIGTERM, SIGSEGV}) installHandler(sig, caughtSignalAction, SA_RESTART);
    for (int sig : {SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
        installHandler(sig, fatalSignalAction, SA_RESETHAND);
    }
    return true;
}

bool ProcessArgs(int argc, char** argv, RunSettings& settings) {
    setPoint("ProcessArgs() - begin");
    bool good = true;
    for (int i = 1; i < argc; ++i) {
        if (!processArg(argv[i], settings)) good = false;
    }
    if (!good) std::cout << helpText << std::flush;
    setPoint("ProcessArgs() - end");
    return good;
}

bool ServerRun(RunSettings& settings) {
    setPoint("ServerRun() - begin");
    setPoint("ServerRun() - create server");
    LibServer server;
    setPoint("ServerRun() - start");
    bool result = ServerStart(settings, server);
    if (result) {
        setPoint("ServerRun() - loop");
        result = Serverloop(settings, server);
    }
    setPoint("ServerRun() - stop");
    result = ServerStop(server) && result;
    // The bridge leads into this server, which ends here: later text goes to the file only.
    if (logLink != nullptr) Log::RemoveExternalLogger(logLink);
    setPoint("ServerRun() - end");
    return result;
}

bool ServerStart(RunSettings& settings, LibServer& server) {
    setPoint("ServerStart() - begin");
    setPoint("ServerStart() - setting up logging");
    logLink = new LogToLogging(server);
    Log::AddExternalLogger(logLink);
    Log::setPreStr("SERVER");
    setPoint("ServerStart() - setting log level");
    Log::setLevel(settings.outputLevel);
    server.SetLogLevel(settings.outputLevel);
    if (settings.outputLevel > 0) server.SetLogCSV("server");
    server.SetMultiProcess(settings.multiProcess);
    setPoint("ServerStart() - end");
    return true;
}

bool Serverloop(RunSettings& settings, LibServer& server) {
    setPoint("Serverloop() - begin");
    continueServerLoop.Set(true);
    while (true) {
        setPoint("Serverloop() - loop");
        if (!continueServerLoop.Get() || server.IsShuttingDown()) break;
        setPoint("Serverloop() - start listening");
        if (!server.IsListening() && !server.ListenForClients(settings.port, settings.localOnly)) {
            Log::log(OUTPUT_ERROR) << "ListenForClient() on port " << settings.port << " failed\n";
            break;
        }
        Log::log(OUTPUT_DEBUG) << "server waiting for client on port " << settings.port << " ...\n";
        setPoint("Serverloop() - try for new client");
        if (settings.multiProcess || !server.IsConnected()) server.AcceptClient();
        if (server.IsConnected()) serveConnectedClients(server);
        USLEEP(50000);
        Log::Flush();
    }
    setPoint("Serverloop() - end");
    return true;
}

bool ServerStop(LibServer& server) {
    setPoint("ServerStop() - begin");
    server.WaitTillClientsComplete();
    if (!server.DisconnectAllClients())
        Log::log(OUTPUT_ERROR) << "DisconnectAllClients() failed()\n";
    if (!server.DisconnectListener()) Log::log(OUTPUT_ERROR) << "DisconnectListener() failed\n";
    setPoint("ServerStop() - wait for server to stop");
    int waited = 0;
    for (int turn = 0; turn < 100 && server.IsListening() && waited < 500000; ++turn) {
        USLEEP(5000);
        waited += 5000;
    }
    setPoint("ServerStop() - end");
    return true;
}

bool ClearLogs() {
    Log::log(OUTPUT_INFORMATIVE) << "ClearLogs() - (can't log when done)\n";
    delete logLink;
    logLink = nullptr;
    LogWriter::ClearAll();
    return true;
}

int ServerMain(int argc, char** argv) {
    setPoint("main() - begin");
    RunSettings settings;
    setPoint("main() - setup handlers");
    bool good = SetupHandlers();
    if (good) {
        setPoint("main() - process args");
        good = ProcessArgs(argc, argv, settings);
    }
    if (good) {
        setPoint("main() - run server");
        good = ServerRun(settings);
    }
    setPoint("main() - clear logs");
    ClearLogs();
    setPoint("main() - end");
    return good ? 0 : -1;
}
