#pragma once

#include <mutex>
#include <string>

#include "logging/Log.h"

// Collects every piece written through Log while it lives, from any thread.
class LogCapture : public LoggerExternal {
public:
    LogCapture() { Log::AddExternalLogger(this); }
    ~LogCapture() override { Log::RemoveExternalLogger(this); }

    void LogLine(const char* text) override {
        std::lock_guard<std::mutex> guard(lock);
        collected += text;
    }
    std::string Text() {
        std::lock_guard<std::mutex> guard(lock);
        return collected;
    }
    bool Contains(const std::string& piece) { return Text().find(piece) != std::string::npos; }
    void Clear() {
        std::lock_guard<std::mutex> guard(lock);
        collected.clear();
    }

private:
    std::mutex lock;
    std::string collected;
};
