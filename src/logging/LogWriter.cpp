#include "logging/LogWriter.h"

int LogWriter::nextId = 0;
std::map<int, LogWriter*> LogWriter::writerMap;
std::mutex LogWriter::mapLock;

LogWriter::LogWriter() {
    std::lock_guard<std::mutex> guard(mapLock);
    id = nextId++;
    writerMap[id] = this;
}

LogWriter::~LogWriter() {
    std::lock_guard<std::mutex> guard(mapLock);
    writerMap.erase(id);
    id = -1;
}

void LogWriter::Write(std::vector<LogLine>&) {}

int LogWriter::GetId() const { return id; }

LogWriter* LogWriter::GETWRITER(int writerId) {
    std::lock_guard<std::mutex> guard(mapLock);
    auto found = writerMap.find(writerId);
    return found == writerMap.end() ? nullptr : found->second;
}

void LogWriter::ClearAll() {
    for (;;) {
        LogWriter* writer = nullptr;
        {
            std::lock_guard<std::mutex> guard(mapLock);
            if (writerMap.empty()) return;
            writer = writerMap.begin()->second;
        }
        // The destructor takes the map lock to erase itself.
        delete writer;
    }
}
