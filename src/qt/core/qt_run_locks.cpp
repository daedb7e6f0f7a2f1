#include "qt/core/qt_run_locks.h"

#include <QLockFile>

#include "qt/core/text.h"

namespace memwright::qt {
namespace {

class QtRunLock final : public RunLock {
  public:
    explicit QtRunLock(const std::string& path) : file_(from_file_name(path)) {
        // However long a run takes, its lock does not grow old.
        file_.setStaleLockTime(0);
    }

    bool try_lock() { return file_.tryLock(0); }

  private:
    QLockFile file_;
};

}  // namespace

std::unique_ptr<RunLock> QtRunLocks::lock(const std::string& path) {
    auto lock = std::make_unique<QtRunLock>(path);
    if (!lock->try_lock()) return nullptr;
    return lock;
}

}  // namespace memwright::qt
