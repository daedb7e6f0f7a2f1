#pragma once

// The texts of what fails on the machine's file system.

#include <filesystem>
#include <string>

namespace memwright::native {

inline constexpr const char* kReadingRemedy =
    "Check that the file can be read, or open another one.";

// FileError: "Cannot <task> <path>: <cause>." and the remedy in a line of its own.
[[noreturn]] void fail(const std::string& task, const std::string& path, const std::string& cause,
                       const std::string& remedy);

// The system's words for an error number.
std::string words_for(int cause);

// And for the one in errno.
std::string last_cause();

// What to do about a file that cannot be written; 0 if it is not the system that refused.
std::string saving_remedy(int cause);

// Why something is refused that is no regular file: "it is a folder".
std::string kind_of(std::filesystem::file_type type);

}  // namespace memwright::native
