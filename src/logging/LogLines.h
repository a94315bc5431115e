#pragma once

#include <vector>

#include "framework/Lockable.h"
#include "logging/LogLine.h"

// The finished lines that wait for the writers, behind their own lock.
class LogLines : public Lockable {
public:
    std::vector<LogLine> lines;
};
