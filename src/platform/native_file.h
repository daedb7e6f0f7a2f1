#pragma once

// The few file calls that the standard library does not offer alike on every system. Failures
// return null or false with the cause in errno.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <span>
#include <string>

namespace memwright::native {

// File names are bytes (platform/file_system.h); paths are the standard library's.
std::filesystem::path path_of(const std::string& name);
std::string name_of(const std::filesystem::path& path);

// As std::fopen, without a buffer: what was written has left the program.
std::FILE* open_file(const std::filesystem::path& path, const char* mode);

// Writes every byte, however many calls it takes.
bool write_all(std::FILE* file, std::span<const std::uint8_t> bytes);

// The next bytes of a file, however many calls it takes; fewer at its end, or if std::ferror says
// so.
std::size_t read_all(std::FILE* file, std::span<std::uint8_t> bytes);

// It is closed in any case, also if a signal came in between.
bool close_file(std::FILE* file);

// Returns once the file's bytes are on the disk.
bool bring_to_disk(std::FILE* file);

// Brings a folder's entry for `path` to the disk, where the system can. False if the disk refuses.
bool bring_folder_to_disk(const std::filesystem::path& path);

// Gives `to` the owner (where allowed) and the permissions of `from`.
void keep_owner_and_permissions(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace memwright::native
