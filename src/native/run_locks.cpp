#include "native/run_locks.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "native/failures.h"
#include "native/file.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "native/descriptor.h"
#endif

namespace memwright {
namespace {

[[noreturn]] void fail(const std::string& path, const std::error_code& error) {
    native::fail("lock", path, error.message(),
                 "Check that its folder may be written to and lies on a disk of this machine.");
}

#ifdef _WIN32

class NativeRunLock final : public RunLock {
  public:
    explicit NativeRunLock(HANDLE file) : file_(file) {}
    NativeRunLock(const NativeRunLock&) = delete;
    NativeRunLock& operator=(const NativeRunLock&) = delete;
    ~NativeRunLock() override { CloseHandle(file_); }

  private:
    HANDLE file_;
};

#else

class NativeRunLock final : public RunLock {
  public:
    NativeRunLock(native::Descriptor file, std::string path)
        : file_(std::move(file)), path_(std::move(path)) {}
    NativeRunLock(const NativeRunLock&) = delete;
    NativeRunLock& operator=(const NativeRunLock&) = delete;
    // It is unlocked after that: nobody else's file is removed.
    ~NativeRunLock() override { unlink(path_.c_str()); }

  private:
    native::Descriptor file_;
    std::string path_;
};

// Whatever it turns out to be, nothing is waited for.
native::Descriptor opened(const std::string& path, int flags) {
    constexpr mode_t kForTheUserAlone = 0600;
    constexpr int kSafely = O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC;
    return native::Descriptor(native::retried(
        [&] { return open(path.c_str(), O_RDWR | kSafely | flags, kForTheUserAlone); }));
}

void demand_regular(const std::string& path, const struct stat& facts) {
    if (S_ISREG(facts.st_mode)) return;
    native::fail("lock", path, native::kind_of(native::type_of(facts)),
                 "It is no lock file of Memwright. Remove it, or ask who owns it to do so.");
}

// One that is there; not open if it has been removed meanwhile.
native::Descriptor opened_again(const std::string& path) {
    native::Descriptor file = opened(path, 0);
    const int cause = errno;
    struct stat facts {};
    if (file.is_open() && fstat(file.number(), &facts) != 0) {
        fail(path, {errno, std::generic_category()});
    }
    // Some of what is no file does not let itself be opened.
    if (file.is_open() || lstat(path.c_str(), &facts) == 0) demand_regular(path, facts);
    if (!file.is_open() && cause != ENOENT) fail(path, {cause, std::generic_category()});
    return file;
}

// 0 if it is locked now; EWOULDBLOCK if another run has it.
int cause_against_locking(const native::Descriptor& file) {
    const auto lock = [&] { return flock(file.number(), LOCK_EX | LOCK_NB); };
    return native::retried(lock) == 0 ? 0 : errno;
}

bool is_at(const native::Descriptor& file, const std::string& path, int& cause) {
    struct stat opened {
    }, there{};
    cause = fstat(file.number(), &opened) == 0 ? 0 : errno;
    if (cause == 0 && lstat(path.c_str(), &there) != 0 && errno != ENOENT) cause = errno;
    return cause == 0 && native::is_same_file(opened, there);
}

#endif

}  // namespace

#ifdef _WIN32

std::unique_ptr<RunLock> NativeRunLocks::lock(const std::string& path) {
    constexpr DWORD kSharedWithNobody = 0;
    const HANDLE file = CreateFileW(native::path_of(path).c_str(), GENERIC_READ | GENERIC_WRITE,
                                    kSharedWithNobody, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD cause = GetLastError();
        if (cause == ERROR_SHARING_VIOLATION) return nullptr;
        fail(path, {static_cast<int>(cause), std::system_category()});
    }
    return std::make_unique<NativeRunLock>(file);
}

#else

std::unique_ptr<RunLock> NativeRunLocks::lock(const std::string& path) {
    constexpr int kMostTries = 100;
    for (int i = 0; i < kMostTries; ++i) {
        native::Descriptor file = opened(path, O_CREAT | O_EXCL);
        const bool made = file.is_open();
        if (!made && errno != EEXIST) fail(path, {errno, std::generic_category()});
        if (!made) file = opened_again(path);
        if (!file.is_open()) continue;  // removed between the two calls
        int cause = cause_against_locking(file);
        // Whoever had it may have removed it between the two calls.
        if (cause == 0 && is_at(file, path, cause)) {
            return std::make_unique<NativeRunLock>(std::move(file), path);
        }
        const bool held = cause == EWOULDBLOCK;
        // Where nothing can be locked, no files are to pile up.
        if (made && cause != 0 && !held) unlink(path.c_str());
        if (held) return nullptr;
        if (cause != 0) fail(path, {cause, std::generic_category()});
    }
    return nullptr;
}

#endif

}  // namespace memwright
