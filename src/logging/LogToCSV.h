#pragma once

#include <fstream>
#include <string>
#include <vector>

#include "framework/Lockable.h"
#include "logging/LogWriter.h"

// Writes lines to rotating CSV files "<base>_0.csv", "<base>_1.csv", ... Each file starts
// with the header of the seven columns. The first file takes maxLines + 1 lines below its
// header, each later one maxLines. A file that cannot be opened is not reported: writes
// to it are lost.
class LogToCSV : public LogWriter, public Lockable {
public:
    static constexpr int defaultMaxLines = 50000;

    explicit LogToCSV(const char* base, int maxLines = defaultMaxLines);

    void Write(std::vector<LogLine>& lines) override;
    // Sets the line count at which the next file is opened; values below 1 are refused.
    bool SetMaxLines(int lines);
    // Closes the current file, if any, and opens the next one with its header.
    bool OpenFile();

private:
    // Both expect the object's lock to be held.
    bool OpenNext();
    void WriteLine(const LogLine& line);

    std::string baseName;
    std::ofstream file;
    int fileIndex = 0;
    int lineCount = 0;
    int maxLines;
};
