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

// By its descriptor: it may have another name by now.
void close_to_others(const fs::path& path) {
    const Descriptor folder(retried(
        [&] { return open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC); }));
    struct stat facts {};
    if (!folder.is_open() || fstat(folder.number(), &facts) != 0) return;
    constexpr mode_t kBits = 07777, kOfOthers = S_IRWXG | S_IRWXO;
    if (facts.st_uid != geteuid() || (facts.st_mode & kOfOthers) == 0) return;
    std::ignore = fchmod(folder.number(), facts.st_mode & kBits & ~kOfOthers);
}

void make(const fs::path& path, std::error_code& error) {
    const fs::path above = path.parent_path();
    if (!above.empty() && above != path && !fs::is_directory(above, error)) make(above, error);
    constexpr mode_t kForTheUserAlone = S_IRWXU;
    if (mkdir(path.c_str(), kForTheUserAlone) != 0) {
        error.assign(errno, std::generic_category());
        // Another run may have made it meanwhile.
        std::error_code ignored;
        if (fs::is_directory(path, ignored)) error.clear();
        return;
    }
    error.clear();
    // It lets its user in even if other new folders do not (umask). Links are not followed.
    std::ignore = fchmodat(AT_FDCWD, path.c_str(), kForTheUserAlone, AT_SYMLINK_NOFOLLOW);
}

}  // namespace

void make_private_folder(const fs::path& path, std::error_code& error) {
    if (fs::is_directory(path, error)) {
        close_to_others(path);
    } else {
        make(path, error);
    }
}

#endif

}  // namespace memwright::native
