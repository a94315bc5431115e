#include "logging/Log.h"

#include <algorithm>
#include <fstream>
#include <sstream>

eOutputLevel Log::level = OUTPUT_ERROR;
bool Log::newLine = true;
std::ostream* Log::outStream = nullptr;
std::vector<LoggerExternal*> Log::extLoggers;
std::string Log::preString;
std::mutex Log::streamLock;
std::mutex Log::loggersLock;
Log Log::commonLog;

namespace {

const char* levelTag(int level) {
    switch (level) {
        case OUTPUT_ERROR:
            return "ERR";
        case OUTPUT_WARNING:
            return "WRN";
        case OUTPUT_DEBUG:
            return "DBG";
        case OUTPUT_INFORMATIVE:
            return "INF";
        default:
            return "   ";
    }
}

template <typename T>
std::string render(const T& value) {
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

}  // namespace

Log& Log::log(int entryLevel) {
    std::string head = "[" + preString + ", " + levelTag(entryLevel) + "] ";
    if (entryLevel <= level) write(head);
    Distribute(head.c_str());
    return commonLog;
}

void Log::write(const std::string& text) {
    std::lock_guard<std::mutex> guard(streamLock);
    if (outStream == nullptr) return;
    *outStream << text;
    outStream->flush();
}

Log& Log::operator<<(const char* text) {
    std::string piece = text == nullptr ? std::string() : std::string(text);
    write(piece);
    Distribute(piece.c_str());
    return *this;
}

Log& Log::operator<<(char* text) { return *this << static_cast<const char*>(text); }
Log& Log::operator<<(const std::string& text) { return *this << text.c_str(); }
Log& Log::operator<<(bool value) { return *this << render(value); }
Log& Log::operator<<(int value) { return *this << render(value); }
Log& Log::operator<<(unsigned value) { return *this << render(value); }
Log& Log::operator<<(long value) { return *this << render(value); }
Log& Log::operator<<(unsigned long value) { return *this << render(value); }
Log& Log::operator<<(long long value) { return *this << render(value); }
Log& Log::operator<<(unsigned long long value) { return *this << render(value); }
Log& Log::operator<<(double value) { return *this << render(value); }

void Log::setLogFile(const std::string& name) {
    auto* file = new std::ofstream(name, std::ios::out | std::ios::trunc);
    if (!file->is_open()) {
        delete file;
        log(OUTPUT_ERROR) << "setting up log to file " << name << " failed\n";
        return;
    }
    CloseLogFile();
    std::lock_guard<std::mutex> guard(streamLock);
    outStream = file;
}

void Log::CloseLogFile() {
    std::lock_guard<std::mutex> guard(streamLock);
    delete outStream;
    outStream = nullptr;
}

void Log::setLevel(eOutputLevel newLevel) { level = newLevel; }
eOutputLevel Log::getLevel() { return level; }
void Log::setPreStr(const std::string& text) { preString = text; }

void Log::AddExternalLogger(LoggerExternal* logger) {
    std::lock_guard<std::mutex> guard(loggersLock);
    extLoggers.push_back(logger);
}

void Log::RemoveExternalLogger(LoggerExternal* logger) {
    std::lock_guard<std::mutex> guard(loggersLock);
    extLoggers.erase(std::remove(extLoggers.begin(), extLoggers.end(), logger), extLoggers.end());
}

void Log::Flush() {
    std::lock_guard<std::mutex> guard(streamLock);
    if (outStream != nullptr) outStream->flush();
}

void Log::Distribute(const char* text) {
    std::lock_guard<std::mutex> guard(loggersLock);
    for (LoggerExternal* logger : extLoggers) logger->LogLine(text);
}

Log::~Log() {
    delete outStream;
    outStream = nullptr;
}
