#pragma once

// Locks on the files themselves. The system frees those of a process that has ended. Saving puts
// another file in the place of the locked one, so whoever waited for that looks anew.

#include <chrono>

#include "platform/change_lock.h"

namespace memwright {

class NativeChangeLocks final : public ChangeLocks {
  public:
    // A change takes milliseconds; one that takes so long is stuck.
    static constexpr std::chrono::milliseconds kPatience{10'000};

    // How long the file may stay the same while it is waited for.
    explicit NativeChangeLocks(std::chrono::milliseconds patience = kPatience)
        : patience_(patience) {}

    std::unique_ptr<ChangeLock> lock(const std::string& path) override;

  private:
    std::chrono::milliseconds patience_;
};

}  // namespace memwright
