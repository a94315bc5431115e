#pragma once

#include <string>

#include "logging/Log.h"

// Collects everything written through Log while it exists.
class LogCapture : public LoggerExternal {
  public:
    LogCapture() { Log::AddExternalLogger(this); }
    ~LogCapture() override { Log::RemoveExternalLogger(this); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    void LogLine(const char* text) override { collected += text; }
    bool Contains(const std::string& piece) const {
        return collected.find(piece) != std::string::npos;
    }

    std::string collected;
};
