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
    std::string run(const Plan& plan, const MemoryImage& held) {
        const Expected expected = plan.reads() ? expected_read(plan, held, bench_.owned())
                                               : expected_write(plan);
        radio::SimulatedRadio radio(held, plan.options());
        std::string wrong = run(plan, expected, radio);
        if (!plan.reads()) wrong += check_written(expected, held, radio);
        port_.plug(none_);
        return wrong.empty() ? "" : text_of(plan) + ":\n" + wrong;
    }

    // A transfer in which nothing goes wrong comes well.
    std::string run_good(bool reading, const MemoryImage& held) {
        const Plan plan{.radio_is = reading ? radio::Direction::sending
                                            : radio::Direction::receiving};
        return run(plan, held);
    }

    const MemoryImage& owned() const { return bench_.owned(); }
    End ended() const { return bench_.ended(); }

  private:
    std::string run(const Plan& plan, const Expected& expected, radio::SimulatedRadio& radio) {
        port_.plug(radio);
        port_.bytes_end_waits = plan.bytes_wake_it;
        port_.sent.clear();
        const Time cancel_at =
            plan.cancelled_at ? Time(static_cast<Time::rep>(*plan.cancelled_at * 1000)) : kPatience;
        const int number = ++transfers_;
        // Whoever waits in vain has to wait till then, and not a moment longer.
        time_.after(cancel_at, [this, number] {
            if (number == transfers_ && bench_.running()) bench_.escape();
        });
        time_.end = time_.now() + 2 * kPatience;
        const Time start = time_.now();
        std::string wrong = bench_.transfer(plan, expected);
        ++transfers_;
        if (expected.waits && time_.now() - start < kPatience) wrong += "it did not wait\n";
        if (bench_.ended() == End::cancelled && time_.now() - start > cancel_at) {
            wrong += "it went on after it was cancelled\n";
        }
        return wrong;
    }

    // What was sent is a beginning of the one right sequence, all of it if the write is complete;
    // the radio has taken it as a whole or not at all.
    std::string check_written(const Expected& expected, const MemoryImage& held,
                              radio::SimulatedRadio& radio) {
        std::vector<std::uint8_t> sent;
        for (const auto& piece : port_.sent) {
            sent.insert(sent.end(), piece.bytes.begin(), piece.bytes.end());
        }
        const auto right = bytes_of_write(bench_.owned());
        const bool whole = bench_.ended() == End::complete;
        std::string wrong;
        if (sent.size() > right.size() || (whole && sent.size() != right.size()) ||
            !std::equal(sent.begin(), sent.end(), right.begin())) {
            wrong += "other bytes were sent\n";
        }
        time_.run_for(std::chrono::seconds(1));
        const bool taken = whole && expected.outcome.radio_complete;
        if (radio.memory() != (taken ? bench_.owned() : held)) {
            wrong += taken ? "the radio did not take it\n" : "the radio took it\n";
        }
        return wrong;
    }

    fakes::VirtualTime time_;
    radio::SimulatedRadio none_{MemoryImage{}, {.mode = radio::Mode::receive}};
    fakes::SimulatedPort port_{time_, none_};
    TransferBench bench_{port_, time_, time_};
    int transfers_ = 0;
};

}  // namespace memwright::transfer_tests
