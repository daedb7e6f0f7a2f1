#pragma once

// Time and the event loop, handed in so that tests own them.

#include <chrono>
#include <functional>
#include <string>

#include "base/signal.h"

namespace memwright {

class Clock {
  public:
    virtual ~Clock() = default;

    // Local time of day in seconds, 0 to less than 86400, with the clock's full resolution.
    virtual double seconds_since_midnight() = 0;

    // Local date and time of day as the user's desktop writes them.
    virtual std::string date_and_time() = 0;

    // The same for the names of files, "2026-11-21 12.34.56": later is greater.
    virtual std::string timestamp() = 0;
};

class EventLoop {
  public:
    virtual ~EventLoop() = default;

    // Handles the events that have come; if none have, sleeps until one does or `at_most` is over.
    virtual void wait(std::chrono::microseconds at_most) = 0;

    // Runs `tick` every `interval` from now on, as long as the Connection lives.
    [[nodiscard]] virtual Connection every(std::chrono::milliseconds interval,
                                           std::function<void()> tick) = 0;
};

}  // namespace memwright
