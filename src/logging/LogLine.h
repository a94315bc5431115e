#pragma once

#include <string>

// One finished line of a Logging object. The fields, in this order, are also the
// columns of the CSV log.
struct LogLine {
    std::string logName;    // base name of the Logging object that made the line
    int pId = 0;            // process id
    std::string procName;   // process name (empty)
    std::string timeStamp;  // local time, "YYYY-MM-DD HH:MM:SS.mmm"
    int runTime = 0;        // milliseconds since the Logging object was constructed
    std::string user;       // the USERNAME environment variable, or empty
    std::string message;    // indent and text
};
