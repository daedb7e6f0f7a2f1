#pragma once

// Folders that nobody but the user may enter.

#include <filesystem>
#include <system_error>

namespace memwright::native {

// Makes a folder for the user alone, with those above it that are missing. One that is there and
// belongs to the user is closed to all others; what a link leads to is left as it is, for its name
// is another. No error if the system does not let it be closed.
void make_private_folder(const std::filesystem::path& path, std::error_code& error);

}  // namespace memwright::native
