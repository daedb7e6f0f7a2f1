#pragma once

// Locks of several runs within one process.

#include <functional>
#include <memory>
#include <set>
#include <string>

#include "platform/run_lock.h"

namespace memwright::fakes {

class HeldLocks final : public RunLocks {
  public:
    std::set<std::string> held;                             // by whichever run
    std::function<void(const std::string&)> while_locking;  // what another run does meanwhile

    std::unique_ptr<RunLock> lock(const std::string& path) override {
        if (while_locking) while_locking(path);
        if (!held.insert(path).second) return nullptr;
        return std::make_unique<Held>(*this, path);
    }

  private:
    class Held final : public RunLock {
      public:
        Held(HeldLocks& locks, std::string path) : locks_(locks), path_(std::move(path)) {}
        ~Held() override { locks_.held.erase(path_); }

      private:
        HeldLocks& locks_;
        std::string path_;
    };
};

}  // namespace memwright::fakes
