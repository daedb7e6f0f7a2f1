#include "radio/simulated_radio.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/error.h"

namespace memwright::radio {
namespace {

constexpr Time kSilenceBeforeSending = std::chrono::seconds(1);

bool ends_with(const Bytes& bytes, std::span<const std::uint8_t> end) {
    return bytes.size() >= end.size() && std::equal(end.rbegin(), end.rend(), bytes.rbegin());
}

Time trickle_gap(int bytes) {
    using std::chrono::milliseconds;
    const Time even = Time{milliseconds(kTrickleMilliseconds)} / bytes;
    return std::min(even, Time{milliseconds(kTrickleGapMilliseconds)});
}

}  // namespace

SimulatedRadio::SimulatedRadio(MemoryImage memory, Options options)
    : memory_(memory), options_(std::move(options)), wire_(options_.pace) {
    for (const Fault& fault : options_.faults) check(fault);
    for (const int block : options_.short_frames_before) {
        if (block >= 0 && block < kBlocks) continue;
        throw IndexError("There is no block " + std::to_string(block) +
                         " for a short frame to come before: blocks are 0 to 239.");
    }
}

void SimulatedRadio::line_opened(Time now) {
    advance(now);
    if (hung_up_ || std::exchange(line_open_, true)) return;
    wire_.mark(Wire::Kind::opened, now);
    advance(now);
}

void SimulatedRadio::line_closed(Time now) {
    advance(now);
    if (hung_up_ || !std::exchange(line_open_, false)) return;
    arrived_.clear();
    wire_.computer_leaves(now);
    wire_.mark(Wire::Kind::closed, now);
    send_at_.reset();
    advance(now);
}

void SimulatedRadio::receive(std::span<const std::uint8_t> bytes, Time now) {
    line_opened(now);
    if (hung_up_ || bytes.empty()) return;
    wire_.put(Wire::Kind::from_computer, bytes, now);
    if (send_at_) send_at_ = wire_.free_at() + kSilenceBeforeSending;
    advance(now);
}

Bytes SimulatedRadio::transmit(Time now) {
    advance(now);
    return std::exchange(arrived_, {});
}

std::optional<Time> SimulatedRadio::next_event() const {
    const auto next = wire_.next();
    if (!next || !send_at_) return next ? next : send_at_;
    return std::min(*next, *send_at_);
}

void SimulatedRadio::advance(Time now) {
    for (auto due = next_event(); due && *due <= now; due = next_event()) {
        // What arrives at the last moment counts as having arrived before it.
        if (wire_.next() == due) {
            handle(wire_.take());
        } else {
            begin_sending(*due);
        }
    }
}

void SimulatedRadio::handle(const Wire::Item& item) {
    const bool is_byte =
        item.kind == Wire::Kind::from_computer || item.kind == Wire::Kind::from_radio;
    if (is_byte && item.heard && line_open_) arrived_.push_back(item.byte);
    switch (item.kind) {
        case Wire::Kind::from_computer:
            hear(item.byte, item.due);
            break;
        case Wire::Kind::from_radio:
            break;
        case Wire::Kind::opened:
            on_opened(item.due);
            break;
        case Wire::Kind::closed:
            on_closed(item.due);
            break;
        case Wire::Kind::dropped:
            drop_line();
            break;
    }
}

void SimulatedRadio::on_opened(Time now) {
    if (options_.mode == Mode::send) begin_sending(now);
    if (options_.mode == Mode::automatic) send_at_ = now + kSilenceBeforeSending;
}

void SimulatedRadio::on_closed(Time now) {
    end_transfer();
    wire_.radio_stops(now);
    send_at_.reset();
    heard_.clear();
}

void SimulatedRadio::hear(std::uint8_t byte, Time now) {
    if (send_at_) send_at_ = now + kSilenceBeforeSending;
    if (state_ == State::silent) return;
    if (state_ == State::receiving) {
        take_byte_of_transfer(byte, now);
        return;
    }
    heard_.push_back(byte);
    look_for_acknowledgement_or_opening(now);
    if (heard_.size() == kShortFrameSize) {
        heard_.erase(heard_.begin());
        if (state_ == State::sending) ++transfer().stray_bytes;
    }
}

void SimulatedRadio::look_for_acknowledgement_or_opening(Time now) {
    if (state_ == State::sending && ends_with(heard_, kAcknowledgement)) {
        transfer().stray_bytes += static_cast<int>(heard_.size() - kAcknowledgement.size());
        heard_.clear();
        send_next(now);
    } else if (options_.mode != Mode::send && Reception::is_opening(heard_)) {
        const Bytes opening_frame = std::exchange(heard_, {});
        begin_receiving(opening_frame, now);
    }
}

Transfer& SimulatedRadio::begin_transfer(Direction direction) {
    end_transfer();
    send_at_.reset();
    heard_.clear();
    state_ = direction == Direction::sending ? State::sending : State::receiving;
    return report_.transfers.emplace_back(Transfer{.direction = direction});
}

void SimulatedRadio::end_transfer() {
    if (state_ != State::idle) transfer().ended = true;
    state_ = State::idle;
    reception_.reset();
    held_.clear();
}

void SimulatedRadio::drop_line() {
    end_transfer();
    hung_up_ = true;
    line_open_ = false;
    send_at_.reset();
    wire_.clear();
}

// Sending

void SimulatedRadio::begin_sending(Time now) {
    begin_transfer(Direction::sending);
    next_place_ = kOpening;
    short_frames_left_ = options_.short_frames_before;
    send_next(now);
}

void SimulatedRadio::send_next(Time now) {
    if (next_place_ > kClosing) {
        transfer().complete = true;
        end_transfer();
        return;
    }
    const auto short_frame = std::ranges::find(short_frames_left_, next_place_);
    if (short_frame != short_frames_left_.end()) {
        short_frames_left_.erase(short_frame);
        ++transfer().frames;
        wire_.put(Wire::Kind::from_radio, kShortFrame, now);
        return;
    }
    send_frame(next_place_++, now);
}

void SimulatedRadio::send_frame(int place, Time now) {
    Bytes frame = frame_at(memory_, place);
    std::size_t slow_bytes = 0;
    bool drops = false;
    bool goes_silent = false;
    for (const Fault& fault : take_faults(place)) {
        transfer().faults.push_back(fault);
        damage(frame, fault);
        if (fault.kind == FaultKind::trickle) {
            slow_bytes = static_cast<std::size_t>(fault.byte == 0 ? kTrickledBytes : fault.byte);
        }
        if (fault.kind == FaultKind::hang_up || fault.kind == FaultKind::silence) {
            frame.resize(std::min(frame.size(), static_cast<std::size_t>(fault.byte)));
            drops = drops || fault.kind == FaultKind::hang_up;
            goes_silent = true;
        }
    }
    const std::span<const std::uint8_t> bytes = frame;
    slow_bytes = std::min(slow_bytes, bytes.size());
    if (slow_bytes > 0) {
        const Time gap = trickle_gap(static_cast<int>(slow_bytes));
        wire_.put(Wire::Kind::from_radio, bytes.first(slow_bytes), now, gap);
    }
    wire_.put(Wire::Kind::from_radio, bytes.subspan(slow_bytes), now);
    if (drops) wire_.mark(Wire::Kind::dropped, now);
    if (goes_silent) {
        state_ = State::silent;
        return;
    }
    ++transfer().frames;
    if (place >= 0 && place < kBlocks) ++transfer().blocks;
}

std::vector<Fault> SimulatedRadio::take_faults(int place) {
    std::vector<Fault> taken;
    std::erase_if(options_.faults, [&](const Fault& fault) {
        if (fault.block != place || std::ranges::find(taken, fault) != taken.end()) return false;
        taken.push_back(fault);
        return true;
    });
    return taken;
}

// Receiving

void SimulatedRadio::begin_receiving(std::span<const std::uint8_t> opening_frame, Time now) {
    wire_.radio_stops(now);
    Transfer& begun = begin_transfer(Direction::receiving);
    if (take_hang_up(kOpening, kShortFrameSize)) {
        drop_line();
        return;
    }
    // However damaged, it is taken for what it was.
    Bytes frame(opening_frame.begin(), opening_frame.end());
    if (!damage_is_due(kOpening)) {
        reception_.emplace(frame, begun);
        return;
    }
    for (const Fault& fault : take_faults(kOpening)) {
        begun.faults.push_back(fault);
        damage(frame, fault);
        if (fault.kind == FaultKind::silence) state_ = State::silent;
    }
    if (state_ == State::receiving) reception_.emplace(frame, begun);
}

void SimulatedRadio::take_byte_of_transfer(std::uint8_t byte, Time now) {
    const int place = reception_->place();
    if (reception_->bytes_of_frame() > 0 || !damage_is_due(place)) {
        take_byte(byte, now);
        return;
    }
    held_.push_back(byte);
    if (take_hang_up(place, static_cast<int>(held_.size()))) {
        drop_line();
    } else if (static_cast<int>(held_.size()) == frame_size_at(place)) {
        take_damaged_frame(place, now);
    }
}

bool SimulatedRadio::damage_is_due(int place) const {
    return std::ranges::any_of(options_.faults, [place](const Fault& fault) {
        return fault.block == place && fault.kind != FaultKind::hang_up &&
               fault.kind != FaultKind::trickle;
    });
}

// All of a frame has come, and its faults happen to it before it is looked at.
void SimulatedRadio::take_damaged_frame(int place, Time now) {
    Bytes frame = std::exchange(held_, {});
    bool goes_silent = false;
    for (const Fault& fault : take_faults(place)) {
        transfer().faults.push_back(fault);
        damage(frame, fault);
        if (fault.kind != FaultKind::silence) continue;
        frame.resize(std::min(frame.size(), static_cast<std::size_t>(fault.byte)));
        goes_silent = true;
    }
    for (const std::uint8_t byte : frame) {
        if (state_ == State::receiving) take_byte(byte, now);
    }
    if (goes_silent && state_ == State::receiving) state_ = State::silent;
}

void SimulatedRadio::take_byte(std::uint8_t byte, Time now) {
    const int place = reception_->place();
    const int bytes = reception_->bytes_of_frame() + 1;
    const auto result = reception_->take(byte, transfer());
    if (take_hang_up(place, bytes)) {
        drop_line();
    } else if (result == Reception::Result::opened_anew) {
        const Bytes opening_frame = reception_->frame();
        begin_receiving(opening_frame, now);
    } else if (result == Reception::Result::ended) {
        if (transfer().complete) memory_ = reception_->image();
        end_transfer();
    }
}

// True if the line is to drop now that `bytes` bytes of a frame have arrived.
bool SimulatedRadio::take_hang_up(int place, int bytes) {
    const auto fault = std::ranges::find_if(options_.faults, [&](const Fault& f) {
        return f.kind == FaultKind::hang_up && f.block == place && f.byte <= bytes;
    });
    if (fault == options_.faults.end()) return false;
    transfer().faults.push_back(*fault);
    options_.faults.erase(fault);
    transfer().complete = false;
    return true;
}

}  // namespace memwright::radio
