#pragma once

// How long bytes that were handed to a serial device are still on their way over the line. The
// system's count of waiting bytes ends at the device, which sends what it has taken (16 bytes of a
// UART, a few hundred of an adapter) one after the other: a start bit, the data bits, the parity
// bit and the stop bits of each at the line's speed.

#include <chrono>
#include <cstdint>

#include "qt/serial/line_settings.h"

namespace memwright {

class Transmission {
  public:
    using Clock = std::chrono::steady_clock;
    using Time = Clock::time_point;

    // More than any device holds at 9600 baud is not waited for.
    static constexpr std::chrono::seconds kLongest{1};

    // Nothing is on its way.
    void begin(const LineSettings& line);

    // The device has taken so many bytes more by `now`.
    void add(std::int64_t bytes, Time now);

    // Bytes that have not left the line by `now`, begun ones among them; 0 if all have.
    std::int64_t bytes_left(Time now) const;

  private:
    Clock::duration byte_{0};
    Time over_{};  // when the last byte has left
};

}  // namespace memwright
