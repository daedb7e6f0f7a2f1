#pragma once

// Putting a new file in the place of an old one: it is written beside that, brought to the disk and
// renamed over it. At every moment the file is the complete old one or the complete new one.
// Errors: FileError.

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace memwright::native {

enum class NewContent {
    start,         // the bytes of the old file past the new ones stay
    whole,         // nothing else
    private_whole  // and for the user alone, whatever the rights of the old file
};

// Symbolic links are followed.
void replace_file(const std::string& path, std::span<const std::uint8_t> bytes, NewContent content);

// The way of each system: replacement_posix.cpp, replacement_windows.cpp. `target` is
// no link; `shown_name` is what messages call it.
void replace_target(const std::string& shown_name, const std::filesystem::path& target,
                    std::span<const std::uint8_t> bytes, NewContent content);

// For the new file until it is renamed: another one at each call.
std::string unfinished_name();

}  // namespace memwright::native
