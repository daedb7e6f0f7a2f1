#pragma once

// A serial port at which what happens is told by bytes, in virtual time. Each step is a byte, its
// kind in the lowest three bits and a number 0 to 31 in the others, and what the kind takes more:
//   0  a pause: a byte, so many milliseconds
//   1  number + 1 bytes arrive: these
//   2  the block of a byte's number arrives behind an echo; bits of the number: 1 its sum is wrong,
//      2 its last byte is missing, 4 one is too many, 8 without the echo
//   3  a frame arrives: opening, closing, short, acknowledgement
//   4  blocks in their order: a byte, how many; each after an acknowledgement, with its echo
//   5  nothing more happens until the program sends
//   6  the other end hangs up
//   7  0: the user presses the button; 1: the clock is set, two bytes: 256ths of a day and seconds
// A program that sends nothing for a second, and one that is silent after the last step, is told.

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/error.h"
#include "fakes/virtual_time.h"
#include "fuzz/target.h"
#include "platform/ms_comm.h"

namespace memwright::fuzz {

class ScriptedPort final : public MSComm, public fakes::VirtualTime::Source {
  public:
    using Time = fakes::VirtualTime::Time;

    ScriptedPort(fakes::VirtualTime& time, fuzz::Input script) : time_(time), script_(script) {
        time_.add(*this);
    }
    ScriptedPort(const ScriptedPort&) = delete;
    ScriptedPort& operator=(const ScriptedPort&) = delete;

    std::function<void()> button_pressed;
    std::function<void()> silent;  // from now on nothing happens

    void set_properties(const PortProperties& /*properties*/) override {}
    void PortOpen(bool open) override;
    bool PortOpen() const override { return open_; }
    void Output(std::span<const std::uint8_t> bytes) override;
    int unsent_bytes() override { return 0; }
    int InBufferCount() override;
    std::vector<std::uint8_t> Input() override;

    std::optional<Time> next_event() const override;
    void bring_up_to(Time now) override;

  private:
    std::uint8_t next();
    void step();
    void arrive(std::span<const std::uint8_t> bytes);
    void block_arrives(int number, unsigned faults);
    void wait_for_output();
    void set_clock();
    void require_open() const;

    static constexpr Time kPatience = std::chrono::seconds(1);

    fakes::VirtualTime& time_;
    fuzz::Input script_;
    Time at_{0};  // of the next step, or when waiting ends
    bool waiting_for_output_ = false;
    bool over_ = false;
    int blocks_to_come_ = 0;
    int next_block_ = 0;
    bool open_ = false;
    bool lost_ = false;
    std::vector<std::uint8_t> waiting_;
};

}  // namespace memwright::fuzz
