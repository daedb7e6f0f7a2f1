#pragma once

// Lock files that name the process which holds them: those of a process that has ended count as
// free.

#include "platform/run_lock.h"

namespace memwright::qt {

class QtRunLocks final : public RunLocks {
  public:
    std::unique_ptr<RunLock> lock(const std::string& path) override;
};

}  // namespace memwright::qt
