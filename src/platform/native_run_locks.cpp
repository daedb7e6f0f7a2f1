#include "platform/native_run_locks.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/error.h"
#include "platform/native_file.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace memwright {
namespace {

[[noreturn]] void fail(const std::string& path, const std::error_code& error) {
    throw FileError(
        "Cannot lock " + path + ": " + error.message() +
        ".\nCheck that its folder may be written to and lies on a disk of this machine.");
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
    NativeRunLock(int file, std::string path) : file_(file), path_(std::move(path)) {}
    NativeRunLock(const NativeRunLock&) = delete;
    NativeRunLock& operator=(const NativeRunLock&) = delete;
    ~NativeRunLock() override {
        // Before it is unlocked: nobody else's file is removed.
        unlink(path_.c_str());
        close(file_);
    }

  private:
    int file_;
    std::string path_;
};

int opened(const std::string& path, int flags) {
    constexpr mode_t kForTheUserAlone = 0600;
    int file = 0;
    do {
        file = open(path.c_str(), O_RDWR | O_CLOEXEC | flags, kForTheUserAlone);
    } while (file < 0 && errno == EINTR);
    return file;
}

// 0 if it is locked now; EWOULDBLOCK if another run has it.
int cause_against_locking(int file) {
    int result = 0;
    do {
        result = flock(file, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    return result == 0 ? 0 : errno;
}

bool is_at(int file, const std::string& path, int& cause) {
    struct stat opened {
    }, there{};
    cause = fstat(file, &opened) == 0 ? 0 : errno;
    if (cause == 0 && stat(path.c_str(), &there) != 0 && errno != ENOENT) cause = errno;
    return cause == 0 && opened.st_ino == there.st_ino && opened.st_dev == there.st_dev;
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
        bool made = true;
        int file = opened(path, O_CREAT | O_EXCL);
        if (file < 0 && errno == EEXIST) {
            made = false;
            file = opened(path, 0);
            if (file < 0 && errno == ENOENT) continue;  // removed between the two calls
        }
        if (file < 0) fail(path, {errno, std::generic_category()});
        int cause = cause_against_locking(file);
        // Whoever had it may have removed it between the two calls.
        if (cause == 0 && is_at(file, path, cause)) {
            return std::make_unique<NativeRunLock>(file, path);
        }
        const bool held = cause == EWOULDBLOCK;
        // Where nothing can be locked, no files are to pile up.
        if (made && cause != 0 && !held) unlink(path.c_str());
        close(file);
        if (held) return nullptr;
        if (cause != 0) fail(path, {cause, std::generic_category()});
    }
    return nullptr;
}

#endif

}  // namespace memwright
