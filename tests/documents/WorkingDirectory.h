#pragma once

#include <filesystem>

#include "support/TempDir.h"

// A fresh temporary directory that is the current directory while the object lives, so
// that documents written meanwhile make their temporary file there.
class WorkingDirectory {
public:
    WorkingDirectory() : previous(std::filesystem::current_path()) {
        if (!dir.path.empty()) std::filesystem::current_path(dir.path);
    }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;
    ~WorkingDirectory() { std::filesystem::current_path(previous); }

    std::filesystem::path previous;
    TempDir dir;
};
