#pragma once

#include <signal.h>

#include <atomic>

#include "framework/SharedValue.h"
#include "logging/OutputLevel.h"

class LibServer;
class LogToLogging;

// The settings of one run of the server program, filled from the command line.
struct RunSettings {
    int port = 12000;
    bool localOnly = true;  // no option changes it: the server listens on 127.0.0.1
    bool multiProcess = false;
    eOutputLevel outputLevel = OUTPUT_ERROR;
    bool spare = false;
};

// Cleared by a caught signal; the main loop ends at its next pass.
extern SharedValue continueServerLoop;
// The crash-location text: every stage of the program assigns it before its work.
extern std::atomic<const char*> executionPoint;
extern LogToLogging* logLink;
// 2 reports a crash or signal on standard error; 0 and 1 stay silent.
extern int showException;

bool SetupHandlers();
bool ProcessArgs(int argc, char** argv, RunSettings& settings);
bool ServerRun(RunSettings& settings);
bool ServerStart(RunSettings& settings, LibServer& server);
bool Serverloop(RunSettings& settings, LibServer& server);
bool ServerStop(LibServer& server);
bool ClearLogs();
void signalHandler(int sig);
// Reports a fatal signal ("at ", the point, the error line) when showException is 2.
int CrashHandler(int sig, const siginfo_t* info);
// The whole program: handlers, arguments, server, logs. 0 on success, -1 after the help.
int ServerMain(int argc, char** argv);
