#pragma once

// Locks that one run of a program holds and that vanish with it, however it ends.

#include <memory>
#include <string>

namespace memwright {

class RunLock {
  public:
    virtual ~RunLock() = default;  // unlocks
};

class RunLocks {
  public:
    virtual ~RunLocks() = default;

    // Locks a file name; null if another run holds it. FileError if it cannot be locked.
    virtual std::unique_ptr<RunLock> lock(const std::string& path) = 0;
};

}  // namespace memwright
