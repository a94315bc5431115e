#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

// A fresh directory under the system's temporary directory, removed with its contents
// when the object goes.
class TempDir {
public:
    TempDir() {
        std::string pattern = (std::filesystem::temp_directory_path() / "fenwave-XXXXXX").string();
        if (mkdtemp(pattern.data()) != nullptr) path = pattern;
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    ~TempDir() {
        std::error_code ignored;
        if (!path.empty()) std::filesystem::remove_all(path, ignored);
    }

    std::string File(const std::string& name) const { return (path / name).string(); }

    std::filesystem::path path;
};

// The whole content of a file, or an empty string if it cannot be read.
inline std::string ReadFile(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// The lines of a file, without their line ends.
inline std::vector<std::string> ReadLines(const std::string& name) {
    std::istringstream text(ReadFile(name));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
}
