#pragma once

// Locks on files that are read, changed and written back: of several programs that do that with one
// file at once, each works on what the one before has written.

#include <memory>
#include <string>

namespace memwright {

class ChangeLock {
  public:
    virtual ~ChangeLock() = default;  // unlocks
};

class ChangeLocks {
  public:
    virtual ~ChangeLocks() = default;

    // Locks the file that a name leads to, and waits while another program has it locked. Null
    // where nothing can be locked: there is no such file, it may not be written to, or the file
    // system has no locks. FileError if the other program does not come to an end.
    virtual std::unique_ptr<ChangeLock> lock(const std::string& path) = 0;
};

}  // namespace memwright
