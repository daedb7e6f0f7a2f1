#pragma once

// What can be read of a file; nothing of one that is not there. The files of a process in /proc may
// fail in the middle, because it ends: that is the end of the file, and no error.

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace memwright::systest {

inline std::string read_file(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace memwright::systest
