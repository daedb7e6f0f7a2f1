#include <cstdlib>
#include <filesystem>

#include "native/file.h"
#include "platform/user_folders.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;

fs::path from_environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? fs::path() : native::path_of(value);
}

std::string ours(const fs::path& folder, const char* name) {
    return folder.empty() ? std::string() : native::name_of(folder / name);
}

}  // namespace

#ifdef _WIN32

UserFolders native_user_folders() {
    const fs::path local = from_environment("LOCALAPPDATA");
    return {ours(local, "Memwright\\State"), ours(local, "Memwright")};
}

#else

namespace {

// The folder that a variable names, else one below the home folder.
fs::path folder(const char* variable, const char* below_home) {
    const fs::path named = from_environment(variable);
    if (named.is_absolute()) return named;
    const fs::path home = from_environment("HOME");
    return home.empty() ? fs::path() : home / below_home;
}

}  // namespace

UserFolders native_user_folders() {
    return {ours(folder("XDG_STATE_HOME", ".local/state"), "memwright"),
            ours(folder("XDG_DATA_HOME", ".local/share"), "memwright")};
}

#endif

}  // namespace memwright
