#pragma once

// A clock and an event loop in virtual time, in microseconds since the test began. Only waiting
// moves it, straight on to the next thing that happens or to the end of the wait. A test that waits
// for something that never comes ends with VirtualTime::Over.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/time.h"

namespace memwright::fakes {

class VirtualTime final : public Clock, public EventLoop {
  public:
    using Time = std::chrono::microseconds;

    class Over : public std::runtime_error {
      public:
        Over() : std::runtime_error("the virtual time that the test has is over") {}
    };

    // What happens by itself outside of the program: bytes that arrive, say.
    class Source {
      public:
        virtual ~Source() = default;
        virtual std::optional<Time> next_event() const = 0;
        virtual void bring_up_to(Time now) = 0;
    };

    Time end = std::chrono::hours(1);
    int waits = 0;
    Time longest_wait{0};

    Time now() const { return now_; }

    void add(Source& source) { sources_.push_back(&source); }

    // Runs `action` in the wait that reaches its time.
    void after(Time delay, std::function<void()> action) {
        actions_.emplace(now_ + delay, std::move(action));
    }

    // Sets the clock, which time of day it is now.
    void set_time_of_day(double seconds) {
        time_of_day_at_start_ = Time(std::llround(seconds * 1e6)) - now_;
    }

    double seconds_since_midnight() override {
        constexpr Time kDay = std::chrono::hours(24);
        const Time time_of_day = ((time_of_day_at_start_ + now_) % kDay + kDay) % kDay;
        return static_cast<double>(time_of_day.count()) / 1e6;
    }

    std::string date_and_time() override { return "21.11.26 12:34"; }
    std::string timestamp() override { return "2026-11-21 12.34.56"; }

    void wait(Time at_most) override {
        ++waits;
        longest_wait = std::max(longest_wait, at_most);
        Time next = now_ + at_most;
        if (!actions_.empty()) next = std::min(next, actions_.begin()->first);
        for (const Source* source : sources_) {
            next = std::min(next, source->next_event().value_or(next));
        }
        now_ = std::max(now_, next);
        if (now_ > end) throw Over();
        for (Source* source : sources_) source->bring_up_to(now_);
        run_due_actions();
    }

    [[nodiscard]] Connection every(std::chrono::milliseconds interval,
                                   std::function<void()> tick) override {
        auto kept = std::make_shared<const Tick>(std::move(tick));
        repeat(interval, kept);
        return kept;
    }

    void run_for(Time duration) {
        const Time until = now_ + duration;
        while (now_ < until) wait(until - now_);
    }

  private:
    using Tick = std::function<void()>;

    void run_due_actions() {
        while (!actions_.empty() && actions_.begin()->first <= now_) {
            const auto action = std::move(actions_.begin()->second);
            actions_.erase(actions_.begin());
            action();
        }
    }

    void repeat(Time interval, const std::weak_ptr<const Tick>& tick) {
        after(interval, [this, interval, tick] {
            const auto run = tick.lock();
            if (!run) return;
            repeat(interval, tick);
            (*run)();
        });
    }

    Time now_{0};
    Time time_of_day_at_start_ = std::chrono::hours(12);
    std::multimap<Time, std::function<void()>> actions_;
    std::vector<Source*> sources_;
};

}  // namespace memwright::fakes
