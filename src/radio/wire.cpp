#include "radio/wire.h"

#include <algorithm>

namespace memwright::radio {
namespace {

constexpr std::int64_t kBitsPerByte = 11;
constexpr std::int64_t kBaud = 9600;
constexpr std::int64_t kMicroseconds = 1'000'000;

constexpr Time time_of_bytes(std::int64_t count) {
    return Time{count * kBitsPerByte * kMicroseconds / kBaud};
}

}  // namespace

void Wire::put(Kind kind, std::span<const std::uint8_t> bytes, Time now, Time gap) {
    for (const std::uint8_t byte : bytes) {
        start_no_earlier_than(std::max(now, free_at() + gap));
        ++count_;
        items_.push_back({free_at(), kind, byte});
    }
}

void Wire::mark(Kind kind, Time now) {
    items_.push_back({items_.empty() ? now : std::max(now, items_.back().due), kind});
}

std::optional<Time> Wire::next() const {
    if (items_.empty()) return std::nullopt;
    return items_.front().due;
}

Wire::Item Wire::take() {
    const Item item = items_.front();
    items_.pop_front();
    return item;
}

Time Wire::free_at() const {
    if (pace_ == Pace::none) return origin_;
    return origin_ + time_of_bytes(count_);
}

void Wire::computer_leaves(Time now) {
    remove_radio_bytes(now);
    for (Item& item : items_) item.heard = false;
}

void Wire::radio_stops(Time now) { remove_radio_bytes(now); }

void Wire::start_no_earlier_than(Time start) {
    if (start <= free_at()) return;
    origin_ = start;
    count_ = 0;
}

void Wire::remove_radio_bytes(Time now) {
    const auto removed =
        std::erase_if(items_, [](const Item& item) { return item.kind == Kind::from_radio; });
    if (removed == 0) return;
    origin_ = items_.empty() ? now : std::max(now, items_.back().due);
    count_ = 0;
}

}  // namespace memwright::radio
