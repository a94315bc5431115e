#pragma once

#include "logging/OutputLevel.h"

// A receiver of all text written through Log, piece by piece. The server's
// bridge into its line logs derives from this.
class LoggerExternal {
public:
    virtual ~LoggerExternal() = default;
    virtual void LogLine(const char* text);
    virtual void SetLogLevel(eOutputLevel level);
};
