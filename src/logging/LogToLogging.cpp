#include "logging/LogToLogging.h"

#include "logging/Log.h"
#include "server/LibServer.h"

LogToLogging::LogToLogging(LibServer& server) : server(server) {}

// A deleted bridge must never be called again.
LogToLogging::~LogToLogging() { Log::RemoveExternalLogger(this); }

void LogToLogging::LogLine(const char* text) { server.LogLine(text); }

void LogToLogging::SetLogLevel(eOutputLevel level) { server.SetLogLevel(level); }
