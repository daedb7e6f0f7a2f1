#pragma once

// Notices a status line that has not changed between two ticks of a timer. Deliberate: nothing
// reads the flag, so no transfer ever stops because of it.

#include <chrono>
#include <cstdint>
#include <string>

#include "controls/controls.h"

namespace memwright {

class StallWatch {
  public:
    static constexpr std::chrono::milliseconds kInterval{5000};

    explicit StallWatch(const Label& Label1) : Label1_(Label1) {}

    void Timer1_Timer();
    void mnuforce_Click() { stall_flag_ = 1; }

    std::int16_t stall_flag() const { return stall_flag_; }

  private:
    const Label& Label1_;
    std::string last_status_;
    std::int16_t stall_flag_ = 0;
};

}  // namespace memwright
