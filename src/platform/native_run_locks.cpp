#include "platform/native_run_locks.h"

#include <utility>

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

bool is_at(int file, const std::string& path) {
    struct stat opened {
    }, there{};
    return fstat(file, &opened) == 0 && stat(path.c_str(), &there) == 0 &&
           opened.st_ino == there.st_ino && opened.st_dev == there.st_dev;
}

#endif

}  // namespace

#ifdef _WIN32

std::unique_ptr<RunLock> NativeRunLocks::lock(const std::string& path) {
    constexpr DWORD kSharedWithNobody = 0;
    const HANDLE file = CreateFileW(native::path_of(path).c_str(), GENERIC_READ | GENERIC_WRITE,
                                    kSharedWithNobody, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) return nullptr;
    return std::make_unique<NativeRunLock>(file);
}

#else

std::unique_ptr<RunLock> NativeRunLocks::lock(const std::string& path) {
    constexpr mode_t kForTheUserAlone = 0600;
    for (;;) {
        const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kForTheUserAlone);
        if (file < 0) return nullptr;
        if (flock(file, LOCK_EX | LOCK_NB) != 0) {
            close(file);
            return nullptr;
        }
        // Whoever had it may have removed it between the two calls.
        if (is_at(file, path)) return std::make_unique<NativeRunLock>(file, path);
        close(file);
    }
}

#endif

}  // namespace memwright
