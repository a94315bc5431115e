#pragma once

#include <map>
#include <mutex>
#include <vector>

#include "logging/LogLine.h"

// A destination for finished log lines. Every writer gets an id at construction and is
// registered under it until it is destroyed, so a log can refer to writers by id and
// find out whether one still exists.
class LogWriter {
public:
    LogWriter();
    LogWriter(const LogWriter&) = delete;
    LogWriter& operator=(const LogWriter&) = delete;
    virtual ~LogWriter();

    // Writes the lines; the base writer discards them.
    virtual void Write(std::vector<LogLine>& lines);

    int GetId() const;
    // The writer registered under the id, or null.
    static LogWriter* GETWRITER(int id);
    // Deletes every registered writer.
    static void ClearAll();

private:
    int id;
    static int nextId;
    static std::map<int, LogWriter*> writerMap;
    static std::mutex mapLock;
};
