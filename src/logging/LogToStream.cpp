#include "logging/LogToStream.h"

LogToStream::LogToStream(std::ostream& target) : stream(target) {}

void LogToStream::Write(std::vector<LogLine>& lines) {
    for (const LogLine& line : lines) {
        stream << "|" << line.logName << "|" << line.pId << "|" << line.procName << "|"
               << line.timeStamp << "|" << line.runTime << "|" << line.user << "|" << line.message;
    }
}
