#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

// A fresh directory under the system's temporary directory, removed with its content.
class TempDirectory {
  public:
    TempDirectory() {
        std::string pattern = (std::filesystem::temp_directory_path() / "fenwave-XXXXXX").string();
        char* made = mkdtemp(pattern.data());
        if (made != nullptr) path = made;
    }
    ~TempDirectory() {
        std::error_code ignored;
        if (!path.empty()) std::filesystem::remove_all(path, ignored);
    }
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;

    std::string File(const std::string& name) const { return (path / name).string(); }

    std::filesystem::path path;
};
