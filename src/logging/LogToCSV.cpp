#include "logging/LogToCSV.h"

#include "logging/Log.h"

LogToCSV::LogToCSV(const char* base, int lines)
    : baseName(base == nullptr ? "" : base), maxLines(lines > 0 ? lines : defaultMaxLines) {
    OpenNext();
}

bool LogToCSV::SetMaxLines(int lines) {
    if (lines < 1) {
        Log::log(OUTPUT_ERROR) << "LogToCSV::SetMaxLines() refused " << lines << "\n";
        return false;
    }
    lock(true);
    maxLines = lines;
    unlock();
    return true;
}

bool LogToCSV::OpenFile() {
    lock(true);
    bool opened = OpenNext();
    unlock();
    return opened;
}

bool LogToCSV::OpenNext() {
    if (file.is_open()) {
        file.flush();
        file.close();
    }
    file.clear();
    file.open(baseName + "_" + std::to_string(fileIndex) + ".csv", std::ios::out | std::ios::trunc);
    file << "logName,pId,procName,timeStamp,runTime,user,'message'\n";
    file.flush();
    fileIndex++;
    lineCount = 0;
    return file.is_open();
}

void LogToCSV::WriteLine(const LogLine& line) {
    std::string message = line.message.substr(0, line.message.find('\n'));
    file << line.logName << "," << line.pId << "," << line.procName << "," << line.timeStamp << ","
         << line.runTime << "," << line.user << ",'" << message << "'\n";
}

void LogToCSV::Write(std::vector<LogLine>& lines) {
    lock(true);
    for (const LogLine& line : lines) {
        WriteLine(line);
        if (lineCount > 0 && lineCount % maxLines == 0) OpenNext();
        lineCount++;
    }
    file.flush();
    unlock();
}
