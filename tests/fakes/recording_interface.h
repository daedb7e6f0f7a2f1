#pragma once

// A user interface that remembers how it was locked and unlocked.

#include <string>
#include <vector>

#include "files/user_interface.h"

namespace memwright::fakes {

class RecordingInterface final : public UserInterface {
  public:
    std::vector<std::string> calls;

    void DisableGui() override { calls.emplace_back("DisableGui"); }
    void EnableGui() override { calls.emplace_back("EnableGui"); }
    void unlock_gui() override { calls.emplace_back("unlock_gui"); }
};

}  // namespace memwright::fakes
