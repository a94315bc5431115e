#pragma once

#include <ostream>
#include <vector>

#include "logging/LogWriter.h"

// Writes each line to an output stream as "|" and the seven fields separated by "|",
// with no line end of its own.
class LogToStream : public LogWriter {
public:
    explicit LogToStream(std::ostream& stream);

    void Write(std::vector<LogLine>& lines) override;

private:
    std::ostream& stream;
};
