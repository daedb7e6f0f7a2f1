#pragma once

// What can go wrong on the radio's side of the cable, each fault at a chosen frame, which the radio
// sends or receives. A fault happens once: in the first transfer that reaches its frame. Listed
// twice, it happens in two transfers. Trickle is no matter for a radio that receives.

#include <string>
#include <string_view>

#include "radio/frames.h"

namespace memwright::radio {

// All but silence and hang_up leave the radio ready to go on when it is acknowledged.
enum class FaultKind {
    checksum,      // the checksum is one too high
    missing_byte,  // byte `byte` of the frame is left out
    extra_byte,    // a byte more, before byte `byte` of the frame
    silence,       // `byte` bytes of this frame, and nothing more until the line is opened anew
    garbage,       // from byte `byte` of the frame on, random bytes (the same in every run)
    hang_up,       // the line drops once `byte` bytes of the frame are through, either way
    block_number,  // a block below 231 carries number `byte` (0 stands for 231), checksum in order
    trickle,       // the first `byte` bytes of the frame come slowly (0 stands for 7)
    flipped_bit,   // the highest bit of byte `byte` of the frame is the other one
    doubled,       // the first `byte` bytes of the frame come twice (0 stands for all of it)
};

// Seven slow bytes are the most that a reader notices nothing of that takes everything 0.1 seconds
// after the eleventh byte of its response, three of which are echoes.
inline constexpr int kTrickledBytes = 7;
// A trickled frame takes this much longer, yet the wire is never idle for longer than the gap.
inline constexpr int kTrickleMilliseconds = 350;
inline constexpr int kTrickleGapMilliseconds = 50;

struct Fault {
    FaultKind kind;
    int block;     // 0 to 239, kOpening or kClosing
    int byte = 0;  // where within the frame

    friend bool operator==(const Fault&, const Fault&) = default;
};

// ConversionError for a fault that cannot happen: no such frame, no such byte in it.
void check(const Fault& fault);

// "KIND@BLOCK" or "KIND@BLOCK:BYTE", as in "hang-up@closing:3". ConversionError for any other text.
Fault fault_from_text(std::string_view text);
std::string text_of(const Fault& fault);

// Lets the fault happen to the bytes of a frame. Silence, hang_up and trickle leave them alone.
void damage(Bytes& frame, const Fault& fault);

}  // namespace memwright::radio
