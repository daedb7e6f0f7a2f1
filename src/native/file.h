#pragma once

// The few file calls that the standard library does not offer alike on every system. Failures
// return null, nothing or false with the cause in errno.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace memwright::native {

// File names are bytes (platform/file_system.h); paths are the standard library's.
std::filesystem::path path_of(const std::string& name);
std::string name_of(const std::filesystem::path& path);

// As std::fopen, without a buffer: what was written has left the program.
std::FILE* open_file(const std::filesystem::path& path, const char* mode);

// Opens a file for reading, without a buffer. Nothing is waited for, whatever it turns out to be:
// the other end of a pipe, a device.
std::FILE* open_for_reading(const std::filesystem::path& path);

// What an open file is, and how many bytes it holds.
struct Facts {
    std::filesystem::file_type type{};
    std::uint64_t size = 0;
};
std::optional<Facts> facts_of(std::FILE* file);

// Makes an empty file, also where a link leads to none; one that has come into being meanwhile is
// not harmed.
bool make_file(const std::filesystem::path& path);

// Writes every byte, however many calls it takes.
bool write_all(std::FILE* file, std::span<const std::uint8_t> bytes);

// The next bytes of a file, however many calls it takes; fewer at its end, or if std::ferror says
// so.
std::size_t read_all(std::FILE* file, std::span<std::uint8_t> bytes);

// Returns once the file's bytes are on the disk.
bool bring_to_disk(std::FILE* file);

}  // namespace memwright::native
