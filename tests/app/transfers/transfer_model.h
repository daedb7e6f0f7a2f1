#pragma once

// What a transfer has to come to, worked out from the rules of the protocol alone: which bytes are
// on the wire at which time, what a reader takes of them, and what it makes of that. Shares no code
// with the program; frames and damage are the simulated radio's, which has tests of its own.

#include <optional>
#include <string>
#include <vector>

#include "image/memory_image.h"
#include "radio/simulated_radio.h"

namespace memwright::transfer_tests {

struct Plan {
    radio::Direction radio_is = radio::Direction::sending;
    radio::Pace pace = radio::Pace::none;
    std::vector<radio::Fault> faults = {};
    std::vector<int> short_frames_before = {};
    // The program sees bytes as they come, or only when it looks by itself.
    bool bytes_wake_it = true;
    // Milliseconds after the line was opened at which the user cancels.
    std::optional<double> cancelled_at = {};

    bool reads() const { return radio_is == radio::Direction::sending; }
    radio::Options options() const;
};

std::string text_of(const Plan& plan);

enum class End { complete, reported, cancelled };

struct Outcome {
    End end = End::complete;
    std::string report = {};  // what the report has to say, if there is one
    // What a complete transfer brings: to the program, or to the radio that takes all of it.
    MemoryImage image = {};
    bool all_received = false;  // by the program, however the read ends
    std::vector<int> doubtful = {};
    bool radio_takes_it = false;
};

struct Expected {
    Outcome outcome;
    // Something falls together in time with something else: it may end differently, but it ends.
    bool close_call = false;
    // How it ends if that something falls the other way, where this is known.
    std::optional<Outcome> otherwise = {};
    // It comes to no end before the user cancels, who did not plan to.
    bool waits = false;
};

// `held`: by the radio; `owned`: by the program before.
Expected expected_read(const Plan& plan, const MemoryImage& held, const MemoryImage& owned);
Expected expected_write(const Plan& plan, const MemoryImage& owned);

}  // namespace memwright::transfer_tests
