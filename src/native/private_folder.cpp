#include "native/private_folder.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <tuple>

#include "native/descriptor.h"
#endif

namespace memwright::native {

namespace fs = std::filesystem;

#ifdef _WIN32

// The folders of a user are closed to others already.
void make_private_folder(const fs::path& path, std::error_code& error) {
    if (!fs::is_directory(path, error)) fs::create_directories(path, error);
}

#else

namespace {

constexpr mode_t kForTheUserAloneToEnter = 0700;

// By its descriptor: it may have another name by now.
void close_to_others(const fs::path& path, bool is_new) {
    const Descriptor folder(retried(
        [&] { return open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC); }));
    struct stat facts {};
    if (!folder.is_open() || fstat(folder.number(), &facts) != 0) return;
    if (facts.st_uid != geteuid()) return;
    constexpr mode_t kBits = 07777, kOfOthers = S_IRWXG | S_IRWXO;
    const mode_t mode = facts.st_mode & kBits;
    // A new one lets its user in even if other new folders do not.
    const mode_t wanted = (mode & ~kOfOthers) | (is_new ? kForTheUserAloneToEnter : 0);
    if (mode != wanted) std::ignore = fchmod(folder.number(), wanted);
}

bool make_missing(const fs::path& path, std::error_code& error) {
    if (fs::is_directory(path, error)) return false;
    const fs::path above = path.parent_path();
    if (!above.empty() && above != path) make_missing(above, error);
    error.clear();
    if (mkdir(path.c_str(), kForTheUserAloneToEnter) != 0) {
        error.assign(errno, std::generic_category());
    }
    return true;
}

}  // namespace

void make_private_folder(const fs::path& path, std::error_code& error) {
    const bool made = make_missing(path, error);
    if (!error) close_to_others(path, made);
}

#endif

}  // namespace memwright::native
