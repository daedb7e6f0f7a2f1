#pragma once

// Locks on lock files. The system itself frees those of a process that has ended, whatever became
// of its number since: programs in containers have the same one in every run.

#include "platform/run_lock.h"

namespace memwright {

class NativeRunLocks final : public RunLocks {
  public:
    // The file is made, and removed with the lock. The folder has to be there.
    std::unique_ptr<RunLock> lock(const std::string& path) override;
};

}  // namespace memwright
