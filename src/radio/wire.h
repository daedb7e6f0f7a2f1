#pragma once

// The single wire of the clone cable: bytes of both sides, one after the other, and the marks of
// the line being opened, closed and dropped, each with the moment at which it is through. At 9600
// baud with parity a byte takes 11 bits: 1145 5/6 microseconds. Moments are absolute: rounding
// never adds up.

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>

namespace memwright::radio {

using Time = std::chrono::microseconds;

enum class Pace { line, none };

class Wire {
  public:
    enum class Kind { from_computer, from_radio, opened, closed, dropped };

    struct Item {
        Time due;
        Kind kind;
        std::uint8_t byte = 0;
        bool heard = true;  // by the computer: the bytes of both sides, while it listens
    };

    explicit Wire(Pace pace) : pace_(pace) {}

    // Puts bytes behind what is on the wire, not before `now`; `gap` more before each of them.
    void put(Kind kind, std::span<const std::uint8_t> bytes, Time now, Time gap = Time{0});

    // Puts a mark behind what is on the wire.
    void mark(Kind kind, Time now);

    // When the next item is through.
    std::optional<Time> next() const;
    Item take();

    // When a byte put on the wire now would start.
    Time free_at() const;

    // Bytes on their way to the computer get lost, those to the radio arrive.
    void computer_leaves(Time now);

    // What the radio has not sent yet it does not send.
    void radio_stops(Time now);

    void clear() { items_.clear(); }

  private:
    void start_no_earlier_than(Time start);
    void remove_radio_bytes(Time now);

    Pace pace_;
    std::deque<Item> items_;
    // `count_` bytes have been put on the wire one right after the other from `origin_` on.
    Time origin_ = Time::min();
    std::int64_t count_ = 0;
};

}  // namespace memwright::radio
