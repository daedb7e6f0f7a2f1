#pragma once

// The serial port with a simulated radio at the other end, in virtual time. Like the real one it
// notices a hang-up in the event loop: the port is closed, bytes not yet taken are dropped, and
// every use of it is a PortError until it is opened or closed.

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/error.h"
#include "fakes/virtual_time.h"
#include "platform/ms_comm.h"
#include "radio/simulated_radio.h"

namespace memwright::fakes {

class SimulatedPort final : public MSComm, public VirtualTime::Source {
  public:
    using Time = VirtualTime::Time;
    using Bytes = std::vector<std::uint8_t>;

    struct Sent {
        Time at;
        Bytes bytes;  // in one piece
    };

    SimulatedPort(VirtualTime& time, radio::SimulatedRadio& radio) : time_(time), radio_(&radio) {
        time_.add(*this);
    }
    SimulatedPort(const SimulatedPort&) = delete;
    SimulatedPort& operator=(const SimulatedPort&) = delete;

    std::vector<Sent> sent;
    int openings = 0;
    std::size_t arrived = 0;  // bytes since the last opening
    std::optional<Time> hung_up_at;

    // If not, what arrives is found when the program looks, which is much quicker to simulate.
    bool bytes_end_waits = true;

    // The line takes so many bytes since the opening and then no more.
    std::optional<std::size_t> stops_after;

    std::string opening_fails;  // the PortError's text, if there is to be one
    // Bytes that arrive as others than the radio sent, by their position since the opening.
    std::map<std::size_t, std::uint8_t> replaced;
    // Told of every property set and of every opening, closing, output and input, before it is
    // done.
    std::function<void(const std::string&)> told;
    std::function<void(const Sent&)> sending;

    // Puts another radio at the end of the cable.
    void plug(radio::SimulatedRadio& radio) { radio_ = &radio; }

    void set_properties(const PortProperties& properties) override {
        set("CommPort", std::to_string(properties.CommPort));
        set("Settings", quoted(properties.Settings));
        set("DTREnable", text_of(properties.DTREnable));
        set("EOFEnable", text_of(properties.EOFEnable));
        set("Handshaking", std::to_string(properties.Handshaking));
        set("InBufferSize", std::to_string(properties.InBufferSize));
        set("InputLen", std::to_string(properties.InputLen));
        set("InputMode", std::to_string(properties.InputMode));
        set("NullDiscard", text_of(properties.NullDiscard));
        set("OutBufferSize", std::to_string(properties.OutBufferSize));
        set("ParityReplace", quoted(properties.ParityReplace));
        set("RThreshold", std::to_string(properties.RThreshold));
        set("RTSEnable", text_of(properties.RTSEnable));
        set("SThreshold", std::to_string(properties.SThreshold));
    }

    void PortOpen(bool open) override {
        set("PortOpen", text_of(open));
        if (!open) {
            close();
            lost_.clear();
        } else if (!open_) {
            lost_.clear();
            if (!opening_fails.empty()) throw PortError(opening_fails);
            if (radio_->hung_up()) throw PortError("Cannot open COM 1: no such device.");
            open_ = true;
            ++openings;
            arrived = 0;
            output_ = 0;
            left_at_ = time_.now();
            radio_->line_opened(time_.now());
        }
    }
    bool PortOpen() const override { return open_; }

    void Output(std::span<const std::uint8_t> bytes) override {
        require_open();
        const Sent piece{time_.now(), {bytes.begin(), bytes.end()}};
        if (sending) sending(piece);
        tell("Output of " + std::to_string(bytes.size()));
        sent.push_back(piece);
        const std::size_t taken = std::min(bytes.size(), room());
        output_ += bytes.size();
        left_at_ = std::max(left_at_, time_.now()) + kByte * static_cast<int>(taken);
        radio_->receive(bytes.first(taken), time_.now());
        bring_up_to(time_.now());
    }
    // What has not left is what was output last.
    int unsent_bytes() override {
        require_open();
        const std::size_t kept = stops_after && output_ > *stops_after ? output_ - *stops_after : 0;
        const Time on_line = std::max(left_at_ - time_.now(), Time(0));
        return static_cast<int>(kept) + static_cast<int>((on_line + kByte - Time(1)) / kByte);
    }
    int InBufferCount() override {
        require_open();
        return static_cast<int>(waiting_.size());
    }
    Bytes Input() override {
        require_open();
        tell("Input of " + std::to_string(waiting_.size()));
        return std::exchange(waiting_, {});
    }

    std::optional<Time> next_event() const override {
        return bytes_end_waits ? radio_->next_event() : std::nullopt;
    }
    void bring_up_to(Time now) override {
        for (const std::uint8_t byte : radio_->transmit(now)) {
            const auto other = replaced.find(arrived++);
            waiting_.push_back(other == replaced.end() ? byte : other->second);
        }
        if (!open_ || !radio_->hung_up()) return;
        hung_up_at = now;
        close();
        lost_ = "Lost COM 1: the other end hung up.";
    }

  private:
    static constexpr Time kByte{1146};  // eleven bits at 9600 baud

    // Bytes that the line still takes.
    std::size_t room() const {
        if (!stops_after) return std::string::npos;
        return output_ < *stops_after ? *stops_after - output_ : 0;
    }

    static std::string text_of(bool on) { return on ? "True" : "False"; }
    static std::string quoted(const std::string& text) { return "\"" + text + "\""; }

    void tell(const std::string& what) const {
        if (told) told(what);
    }
    void set(const std::string& property, const std::string& value) const {
        tell(property + " = " + value);
    }
    void close() {
        if (!std::exchange(open_, false)) return;
        waiting_.clear();
        radio_->line_closed(time_.now());
    }
    void require_open() {
        bring_up_to(time_.now());
        if (!lost_.empty()) throw PortError(lost_);
        if (!open_) throw PortError("COM 1 is not open.");
    }

    VirtualTime& time_;
    radio::SimulatedRadio* radio_;
    bool open_ = false;
    std::string lost_;
    Bytes waiting_;
    std::size_t output_ = 0;  // bytes since the opening
    Time left_at_{0};         // the last byte that the line took
};

}  // namespace memwright::fakes
