#pragma once

#include <string>

#include "system/SystemRecords.h"

// Reads systems from files for the facade: a check that a file holds a system, and the
// load of one into a new record.
class SystemBuilder {
public:
    // True when the file parses and its root is a "System_".
    bool FilehasSystem(const std::string& file) const;
    // A new record filled from the file, or null (logged) when the file holds no system.
    e_System_* SystemFromFile(const std::string& file) const;
};
