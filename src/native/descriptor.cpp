#include "native/descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <utility>

namespace memwright::native {

namespace fs = std::filesystem;

namespace {

// A folder that may be written to need not let itself be read.
#if defined(O_PATH)
constexpr int kToReachInto = O_PATH;
#elif defined(O_SEARCH)
constexpr int kToReachInto = O_SEARCH;
#else
constexpr int kToReachInto = O_RDONLY;
#endif

}  // namespace

Descriptor::Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
}

Descriptor::~Descriptor() {
    if (is_open()) close(number_);
}

Descriptor open_folder(const fs::path& path) {
    const fs::path folder = path.empty() ? fs::path(".") : path;
    return Descriptor(
        retried([&] { return open(folder.c_str(), kToReachInto | O_DIRECTORY | O_CLOEXEC); }));
}

Descriptor open_in(const Descriptor& folder, const std::string& name, int flags, mode_t mode) {
    constexpr int kWaitForNothing = O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    return Descriptor(retried(
        [&] { return openat(folder.number(), name.c_str(), flags | kWaitForNothing, mode); }));
}

fs::file_type type_of(const struct stat& facts) {
    if (S_ISREG(facts.st_mode)) return fs::file_type::regular;
    if (S_ISDIR(facts.st_mode)) return fs::file_type::directory;
    if (S_ISLNK(facts.st_mode)) return fs::file_type::symlink;
    if (S_ISFIFO(facts.st_mode)) return fs::file_type::fifo;
    if (S_ISSOCK(facts.st_mode)) return fs::file_type::socket;
    if (S_ISBLK(facts.st_mode)) return fs::file_type::block;
    if (S_ISCHR(facts.st_mode)) return fs::file_type::character;
    return fs::file_type::unknown;
}

bool is_same_file(const struct stat& one, const struct stat& other) {
    return one.st_ino == other.st_ino && one.st_dev == other.st_dev;
}

bool write_all(const Descriptor& file, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file.number(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

std::int64_t read_from(const Descriptor& file, std::uint64_t first, std::span<std::uint8_t> bytes) {
    std::size_t count = 0;
    while (count < bytes.size()) {
        const ssize_t got = pread(file.number(), bytes.data() + count, bytes.size() - count,
                                  static_cast<off_t>(first + count));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return -1;
        if (got == 0) break;
        count += static_cast<std::size_t>(got);
    }
    return static_cast<std::int64_t>(count);
}

bool bring_to_disk(const Descriptor& file) {
    // Some file systems have nothing to sync to.
    return retried([&] { return fsync(file.number()); }) == 0 || errno == EINVAL;
}

bool bring_folder_to_disk(const Descriptor& folder) {
    const Descriptor readable = open_in(folder, ".", O_RDONLY | O_DIRECTORY);
    // There is no way to do it for one that may not be read.
    if (!readable.is_open()) return errno == EACCES;
    // Some file systems do it for files alone.
    return bring_to_disk(readable) || errno == EBADF || errno == ENOTSUP;
}

bool has_arrived(const Descriptor& file) {
    const int other = fcntl(file.number(), F_DUPFD_CLOEXEC, 0);
    return other >= 0 && (close(other) == 0 || errno == EINTR);
}

}  // namespace memwright::native
