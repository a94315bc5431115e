#pragma once

#include <atomic>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "framework/Lockable.h"
#include "logging/LogLine.h"
#include "logging/LogLines.h"
#include "logging/LogWriter.h"

// A line-buffering log. Text is collected until a newline; each finished line, with its
// indent, goes to one list shared by every Logging object, from which the writers take
// it. The writer list is shared too, so a writer added to one log receives the lines of
// all of them.
//
// Lock order: the object's own lock, then that of the shared line list, then the writer's.
class Logging : public Lockable {
public:
    // A null name gives the base name " ".
    explicit Logging(const char* name = nullptr);
    virtual ~Logging() = default;

    void Enable();
    void Disable();
    void SetOutput(bool take);
    // True only while the log is enabled and takes text.
    bool GetOutput();
    // Hands each finished line to the writers at once.
    void LogStraightToStream(bool straight);
    // Adds the writer to the shared list; false if it is null or already there.
    bool AddWriter(LogWriter* writer);
    // Empties the shared line list if enabled.
    void ClearLog();
    void ClearWriters();
    void SetLogBaseName(const char* name);
    void SetIndentCharStep(char step);
    void SetIndentCharFollow(char follow);
    // Both do nothing and answer false while disabled; a decrease below 0 sets 0 and
    // answers false.
    bool IndentIncrease(int steps = 1);
    bool IndentDecrease(int steps = 1);
    int GetIndent() const;
    // Finishes the line being built; a stream given also receives the finished text.
    void FinishLine(std::ostream* echo = nullptr);
    // Writes the waiting lines to the writer, or to every listed writer when null, then
    // empties the list.
    void ToStream(LogWriter* writer = nullptr);

    Logging& operator<<(const char* text);
    Logging& operator<<(const std::string& text);
    Logging& operator<<(int value);
    Logging& operator<<(unsigned value);
    Logging& operator<<(unsigned long value);
    Logging& operator<<(long value);
    Logging& operator<<(long long value);
    Logging& operator<<(unsigned long long value);
    Logging& operator<<(double value);
    Logging& operator<<(long double value);
    Logging& operator<<(float value);
    Logging& operator<<(const void* pointer);

    // Both only report whether the log is enabled.
    bool ResetTime(const char* label);
    bool PrintTime(const char* label);
    // Logs the meaning of errno, or of the code given.
    void PrintError();
    void PrintError(int code);

    static std::string getUsername();
    static std::string getProcessName();
    uint32_t getRunningTime() const;
    static int getPID();
    static uint32_t nowMSec();
    static std::string nowTime();

private:
    template <typename T>
    Logging& Render(const T& value);
    // Both expect the object's lock to be held.
    void TakeText(const std::string& text);
    void FinishLocked(std::ostream* echo);
    std::string BuildIndent() const;
    LogLine MakeLine(const std::string& message) const;
    // Writes the waiting lines to the writer or the listed writers (when asked), then
    // empties the list if enabled; takes the object's lock unless it is held already.
    void Drain(bool write, LogWriter* writer);

    std::atomic<bool> enabled{true};
    std::atomic<int> indent{0};
    std::atomic<bool> straightToStream{false};
    bool output = true;
    std::string baseName;
    char indentBase = '|';
    char indentStep = '-';
    char indentFollow = ' ';
    std::string line;
    uint32_t startTime;

    static LogLines logLines;
    // Ids of the writers; guarded by the lock of logLines.
    static std::vector<int> logOut;
};
