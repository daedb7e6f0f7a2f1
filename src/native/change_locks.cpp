#include "native/change_locks.h"

#include <algorithm>
#include <cerrno>
#include <thread>

#include "base/error.h"
#include "native/file.h"

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

enum class Attempt { locked, held, impossible };

#ifdef _WIN32

using Handle = HANDLE;
const Handle kNone = INVALID_HANDLE_VALUE;

Handle opened(const std::string& path) {
    constexpr DWORD kSharedWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return CreateFileW(native::path_of(path).c_str(), GENERIC_READ | GENERIC_WRITE, kSharedWithAll,
                       nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

void close_handle(Handle file) { CloseHandle(file); }

Attempt try_to_lock(Handle file) {
    // Nobody else can read bytes that are locked: it is one that no image has.
    OVERLAPPED place{};
    place.OffsetHigh = 0x7FFFFFFF;
    if (LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place)) {
        return Attempt::locked;
    }
    return GetLastError() == ERROR_LOCK_VIOLATION ? Attempt::held : Attempt::impossible;
}

bool is_at(Handle file, const std::string& path) {
    const Handle now = opened(path);
    if (now == kNone) return false;
    BY_HANDLE_FILE_INFORMATION own{}, there{};
    const bool known =
        GetFileInformationByHandle(file, &own) != 0 && GetFileInformationByHandle(now, &there) != 0;
    close_handle(now);
    return !known ||
           (own.dwVolumeSerialNumber == there.dwVolumeSerialNumber &&
            own.nFileIndexHigh == there.nFileIndexHigh && own.nFileIndexLow == there.nFileIndexLow);
}

#else

using Handle = int;
constexpr Handle kNone = -1;

// An ordinary file: opening another one may do something.
Handle opened(const std::string& path) {
    struct stat there {};
    if (stat(path.c_str(), &there) != 0 || !S_ISREG(there.st_mode)) return kNone;
    Handle file = kNone;
    do {
        // For writing, too: some file systems lock nothing else.
        file = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    } while (file < 0 && errno == EINTR);
    return file;
}

void close_handle(Handle file) { close(file); }

Attempt try_to_lock(Handle file) {
    int result = 0;
    do {
        result = flock(file, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result == 0) return Attempt::locked;
    return errno == EWOULDBLOCK ? Attempt::held : Attempt::impossible;
}

// Does the path still lead to the file? It does if that cannot be told.
bool is_at(Handle file, const std::string& path) {
    struct stat own {
    }, there{};
    if (stat(path.c_str(), &there) != 0) return errno != ENOENT;
    return fstat(file, &own) != 0 || (own.st_ino == there.st_ino && own.st_dev == there.st_dev);
}

#endif

// Closing the file unlocks it.
class NativeChangeLock final : public ChangeLock {
  public:
    explicit NativeChangeLock(const std::string& path) : path_(path), file_(opened(path)) {}
    NativeChangeLock(const NativeChangeLock&) = delete;
    NativeChangeLock& operator=(const NativeChangeLock&) = delete;
    ~NativeChangeLock() override {
        if (is_open()) close_handle(file_);
    }

    bool is_open() const { return file_ != kNone; }
    Attempt attempt() const { return try_to_lock(file_); }
    bool is_current() const { return is_at(file_, path_); }

  private:
    std::string path_;
    Handle file_;
};

// Tries until it is locked, cannot be, or is not the current file any more.
Attempt wait_for(const NativeChangeLock& file, const std::string& path,
                 std::chrono::milliseconds patience) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds kLongestStep{50};
    const auto end = Clock::now() + patience;
    std::chrono::milliseconds step{1};
    for (;;) {
        const Attempt attempt = file.attempt();
        if (attempt != Attempt::held || !file.is_current()) return attempt;
        if (Clock::now() >= end) {
            throw FileError("Cannot change " + path +
                            ": it is being changed by another program.\nNothing was changed "
                            "there. Wait for that program, or end it, and try again.");
        }
        std::this_thread::sleep_for(step);
        step = std::min(2 * step, kLongestStep);
    }
}

}  // namespace

std::unique_ptr<ChangeLock> NativeChangeLocks::lock(const std::string& path) {
    // Where a file has another number at every look, there is no end to it.
    constexpr int kMostFiles = 1000;
    for (int i = 0; i < kMostFiles; ++i) {
        auto file = std::make_unique<NativeChangeLock>(path);
        if (!file->is_open()) return nullptr;
        const Attempt attempt = wait_for(*file, path, patience_);
        if (attempt == Attempt::impossible) return nullptr;
        if (attempt == Attempt::locked && file->is_current()) return file;
    }
    return nullptr;
}

}  // namespace memwright
