#include "logging/Logging.h"

#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <sstream>

LogLines Logging::logLines;
std::vector<int> Logging::logOut;

Logging::Logging(const char* name) : startTime(nowMSec()) { SetLogBaseName(name); }

void Logging::Enable() {
    lock(true);
    enabled = true;
    unlock();
}

void Logging::Disable() {
    lock(true);
    enabled = false;
    unlock();
}

void Logging::SetOutput(bool take) {
    lock(true);
    output = take;
    unlock();
}

bool Logging::GetOutput() {
    lock(true);
    bool taking = enabled && output;
    unlock();
    return taking;
}

void Logging::LogStraightToStream(bool straight) { straightToStream = straight; }

bool Logging::AddWriter(LogWriter* writer) {
    if (writer == nullptr) return false;
    lock(true);
    logLines.lock(true);
    bool listed = std::any_of(logOut.begin(), logOut.end(),
                              [writer](int id) { return LogWriter::GETWRITER(id) == writer; });
    if (!listed) logOut.push_back(writer->GetId());
    logLines.unlock();
    unlock();
    return !listed;
}

void Logging::ClearLog() { Drain(false, nullptr); }

void Logging::ClearWriters() {
    lock(true);
    logLines.lock(true);
    logOut.clear();
    logLines.unlock();
    unlock();
}

void Logging::SetLogBaseName(const char* name) {
    lock(true);
    baseName = name == nullptr ? " " : name;
    unlock();
}

void Logging::SetIndentCharStep(char step) {
    lock(true);
    indentStep = step;
    unlock();
}

void Logging::SetIndentCharFollow(char follow) {
    lock(true);
    indentFollow = follow;
    unlock();
}

bool Logging::IndentIncrease(int steps) {
    if (!enabled) return false;
    indent += steps;
    return true;
}

bool Logging::IndentDecrease(int steps) {
    if (!enabled) return false;
    int current = indent.load();
    int lowered = current - steps;
    while (!indent.compare_exchange_weak(current, std::max(lowered, 0))) {
        lowered = current - steps;
    }
    return lowered >= 0;
}

int Logging::GetIndent() const { return indent; }

void Logging::FinishLine(std::ostream* echo) {
    lock(true);
    FinishLocked(echo);
    unlock();
}

void Logging::ToStream(LogWriter* writer) { Drain(true, writer); }

void Logging::Drain(bool write, LogWriter* writer) {
    // FinishLine arrives here holding the object's lock, so it is only tried.
    bool took = lock(false);
    logLines.lock(true);
    if (write && writer != nullptr) {
        writer->Write(logLines.lines);
    } else if (write) {
        for (int id : logOut) {
            LogWriter* listed = LogWriter::GETWRITER(id);
            if (listed != nullptr) listed->Write(logLines.lines);
        }
    }
    if (enabled) logLines.lines.clear();
    logLines.unlock();
    if (took) unlock();
}

std::string Logging::BuildIndent() const {
    int depth = indent;
    std::string text;
    for (int i = 0; i < depth; i++) {
        if (i % 2 == 0) {
            text += indentBase;
        } else {
            // The last odd position of the indent carries the step character.
            text += depth - i <= 2 ? indentStep : indentFollow;
        }
    }
    return text;
}

LogLine Logging::MakeLine(const std::string& message) const {
    LogLine made;
    made.logName = baseName;
    made.pId = getPID();
    made.procName = getProcessName();
    made.timeStamp = nowTime();
    made.runTime = static_cast<int>(getRunningTime());
    made.user = getUsername();
    made.message = message;
    return made;
}

void Logging::FinishLocked(std::ostream* echo) {
    if (!enabled) return;
    std::string message = BuildIndent() + line;
    if (echo != nullptr) *echo << message << "\n";
    logLines.lock(true);
    logLines.lines.push_back(MakeLine(message));
    logLines.unlock();
    line.clear();
    if (straightToStream) ToStream(nullptr);
}

void Logging::TakeText(const std::string& text) {
    if (!enabled || !output) return;
    std::string::size_type start = 0;
    for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n', start)) {
        line.append(text, start, end - start);
        FinishLocked(nullptr);
        start = end + 1;
    }
    line.append(text, start, std::string::npos);
}

Logging& Logging::operator<<(const std::string& text) {
    lock(true);
    TakeText(text);
    unlock();
    return *this;
}

Logging& Logging::operator<<(const char* text) {
    return *this << std::string(text == nullptr ? "" : text);
}

template <typename T>
Logging& Logging::Render(const T& value) {
    std::ostringstream stream;
    stream << value;
    return *this << stream.str();
}

Logging& Logging::operator<<(int value) { return Render(value); }
Logging& Logging::operator<<(unsigned value) { return Render(value); }
Logging& Logging::operator<<(unsigned long value) { return Render(value); }
Logging& Logging::operator<<(long value) { return Render(value); }
Logging& Logging::operator<<(long long value) { return Render(value); }
Logging& Logging::operator<<(unsigned long long value) { return Render(value); }
Logging& Logging::operator<<(double value) { return Render(value); }
Logging& Logging::operator<<(long double value) { return Render(value); }
Logging& Logging::operator<<(float value) { return Render(value); }
Logging& Logging::operator<<(const void* pointer) { return Render(pointer); }

bool Logging::ResetTime(const char*) { return enabled; }

bool Logging::PrintTime(const char*) { return enabled; }

void Logging::PrintError() { PrintError(errno); }

void Logging::PrintError(int code) {
    switch (code) {
        case E2BIG:
            *this << "errno = E2BIG .. Argument list too long (POSIX.1)  \n";
            break;
        case EACCES:
            *this << "errno = EACCES .. Permission denied (POSIX.1)  \n";
            break;
        default:
            *this << "errno = unknown\n";
    }
}

std::string Logging::getUsername() {
    const char* user = std::getenv("USERNAME");
    return user == nullptr ? std::string() : std::string(user);
}

std::string Logging::getProcessName() { return std::string(); }

uint32_t Logging::getRunningTime() const { return nowMSec() - startTime; }

int Logging::getPID() { return static_cast<int>(getpid()); }

uint32_t Logging::nowMSec() {
    timeval now{};
    gettimeofday(&now, nullptr);
    uint64_t milliseconds = static_cast<uint64_t>(now.tv_sec) * 1000 + now.tv_usec / 1000;
    return static_cast<uint32_t>(milliseconds);
}

std::string Logging::nowTime() {
    timeval now{};
    gettimeofday(&now, nullptr);
    time_t seconds = now.tv_sec;
    tm local{};
    localtime_r(&seconds, &local);
    char clock[50];
    strftime(clock, sizeof(clock), "%F %X", &local);
    char stamp[80];
    snprintf(stamp, sizeof(stamp), "%s.%03ld", clock, static_cast<long>(now.tv_usec / 1000));
    return stamp;
}
