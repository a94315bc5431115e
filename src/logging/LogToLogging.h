#pragma once

#include "logging/LoggerExternal.h"

class LibServer;

// The bridge from Log into the server's line logs: every piece of Log text goes to
// LibServer::LogLine, which appends it to the error log under the server's lock.
class LogToLogging : public LoggerExternal {
public:
    explicit LogToLogging(LibServer& server);
    ~LogToLogging() override;
    void LogLine(const char* text) override;
    void SetLogLevel(eOutputLevel level) override;

private:
    LibServer& server;
};
