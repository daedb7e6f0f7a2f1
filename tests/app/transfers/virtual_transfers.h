#pragma once

// Transfers in virtual time, one after the other in one run of the program, each with a radio of
// its own.

#include <string>

#include "app/transfers/transfer_bench.h"
#include "fakes/simulated_port.h"
#include "fakes/virtual_time.h"

namespace memwright::transfer_tests {

class VirtualTransfers {
  public:
    using Time = fakes::VirtualTime::Time;

    // How long a transfer that waits is watched before the user gives it up: longer than any takes.
    static constexpr Time kPatience = std::chrono::minutes(3);

    // What is wrong with a transfer that goes as planned; "" if nothing is.
    std::string run(const Plan& plan, const MemoryImage& held);

    // A transfer in which nothing goes wrong comes well: now and then a read; else a write, which
    // tells, too, what image and table are.
    std::string run_good(const MemoryImage& held);

    End ended() const { return bench_.ended(); }

  private:
    std::string run(const Plan& plan, const Expected& expected, radio::SimulatedRadio& radio);
    std::string check_written(const Expected& expected, const MemoryImage& held,
                              radio::SimulatedRadio& radio);

    fakes::VirtualTime time_;
    radio::SimulatedRadio none_{MemoryImage{}, {.mode = radio::Mode::receive}};
    fakes::SimulatedPort port_{time_, none_};
    TransferBench bench_{port_, time_, time_};
    const std::vector<std::uint8_t> right_ = bytes_of_write(bench_.owned());
    int transfers_ = 0;
};

}  // namespace memwright::transfer_tests
