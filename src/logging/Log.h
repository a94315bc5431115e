#pragma once

#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include "logging/LoggerExternal.h"
#include "logging/OutputLevel.h"

// The static log facility of the library: Log::log(level) << "text" << 3 << "\n".
//
// An entry's head ("[pre, LVL] ") reaches the log file only when the level is at or
// below the threshold; the pieces after it always reach the file, and every head and
// piece goes to every external logger whatever the level. A line is complete when a
// piece holds a newline.
class Log {
public:
    static Log& log(int level);

    Log& operator<<(const char* text);
    Log& operator<<(char* text);
    Log& operator<<(const std::string& text);
    Log& operator<<(bool value);
    Log& operator<<(int value);
    Log& operator<<(unsigned value);
    Log& operator<<(long value);
    Log& operator<<(unsigned long value);
    Log& operator<<(long long value);
    Log& operator<<(unsigned long long value);
    Log& operator<<(double value);

    static void setLogFile(const std::string& name);
    static void setLevel(eOutputLevel level);
    static eOutputLevel getLevel();
    static void setPreStr(const std::string& text);
    static void AddExternalLogger(LoggerExternal* logger);
    static void RemoveExternalLogger(LoggerExternal* logger);
    static void Flush();
    static void Distribute(const char* text);
    // Closes the log file, if one is open.
    static void CloseLogFile();

    ~Log();

private:
    Log() = default;
    static void write(const std::string& text);

    static eOutputLevel level;
    static bool newLine;
    static std::ostream* outStream;
    static std::vector<LoggerExternal*> extLoggers;
    static std::string preString;
    // Guards the file stream only; entries from several threads still interleave.
    static std::mutex streamLock;
    // Guards the list of external loggers against a logger leaving mid-entry.
    static std::mutex loggersLock;
    static Log commonLog;
};
