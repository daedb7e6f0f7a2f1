#include "radio/faults.h"

#include <algorithm>
#include <array>
#include <random>

#include "base/error.h"
#include "base/number_text.h"

namespace memwright::radio {
namespace {

struct NamedKind {
    std::string_view name;
    FaultKind kind;
};

constexpr std::array<NamedKind, 10> kKinds = {{
    {"checksum", FaultKind::checksum},
    {"missing-byte", FaultKind::missing_byte},
    {"extra-byte", FaultKind::extra_byte},
    {"silence", FaultKind::silence},
    {"garbage", FaultKind::garbage},
    {"hang-up", FaultKind::hang_up},
    {"block-number", FaultKind::block_number},
    {"trickle", FaultKind::trickle},
    {"flipped-bit", FaultKind::flipped_bit},
    {"doubled", FaultKind::doubled},
}};

constexpr std::uint8_t kExtraByte = 0x55;
constexpr unsigned kGarbageSeed = 120;
constexpr std::uint8_t kFlipped = 0x80;

[[noreturn]] void refuse(const std::string& fault, const std::string& cause) {
    throw ConversionError("No such fault: \"" + fault + "\": " + cause + ".");
}

int number_from(std::string_view text, std::string_view whole) {
    const auto number = whole_number(text);
    if (!number || *number < 0) {
        refuse(std::string(whole), "\"" + std::string(text) + "\" is no number");
    }
    return *number;
}

int block_from(std::string_view text, std::string_view whole) {
    if (text == "opening") return kOpening;
    if (text == "closing") return kClosing;
    const int number = number_from(text, whole);
    if (number >= kBlocks) refuse(std::string(whole), "blocks are 0 to 239, opening and closing");
    return number;
}

// The lowest and the highest `byte` of a kind of fault, beside 0.
struct Range {
    int lowest;
    int highest;
};

Range range_of_byte(const Fault& fault) {
    const int size = frame_size_at(fault.block);
    switch (fault.kind) {
        case FaultKind::missing_byte:
        case FaultKind::garbage:
        case FaultKind::flipped_bit:
            return {0, size - 1};
        case FaultKind::extra_byte:
        case FaultKind::hang_up:
        case FaultKind::silence:
        case FaultKind::trickle:
        case FaultKind::doubled:
            return {0, size};
        case FaultKind::block_number:
            return {layout::kImageBlocks, 0xFF};
        case FaultKind::checksum:
            break;
    }
    return {0, 0};
}

}  // namespace

void check(const Fault& fault) {
    if (fault.block < kOpening || fault.block > kClosing) {
        refuse(text_of(fault), "blocks are 0 to 239, opening and closing");
    }
    if (fault.kind == FaultKind::block_number &&
        (fault.block < 0 || fault.block >= layout::kImageBlocks)) {
        refuse(text_of(fault), "only blocks 0 to 230 can carry the number of a later one");
    }
    const auto [lowest, highest] = range_of_byte(fault);
    if (fault.byte != 0 && (fault.byte < lowest || fault.byte > highest)) {
        refuse(text_of(fault), highest == 0 ? "this kind of fault takes no byte"
                                            : "its byte is " + std::to_string(lowest) + " to " +
                                                  std::to_string(highest));
    }
}

Fault fault_from_text(std::string_view text) {
    const auto at = text.find('@');
    const auto kind = std::ranges::find(kKinds, text.substr(0, at), &NamedKind::name);
    if (kind == kKinds.end()) {
        std::string names;
        for (const auto& [name, ignored] : kKinds)
            names += (names.empty() ? "" : ", ") + std::string(name);
        refuse(std::string(text), "the kinds are " + names);
    }
    if (at == std::string_view::npos) refuse(std::string(text), "it is written KIND@BLOCK[:BYTE]");
    const auto place = text.substr(at + 1);
    const auto colon = place.find(':');
    Fault fault{kind->kind, block_from(place.substr(0, colon), text)};
    if (colon != std::string_view::npos) fault.byte = number_from(place.substr(colon + 1), text);
    check(fault);
    return fault;
}

std::string text_of(const Fault& fault) {
    const auto kind = std::ranges::find(kKinds, fault.kind, &NamedKind::kind);
    std::string text = std::string(kind == kKinds.end() ? "?" : kind->name) + "@";
    if (fault.block == kOpening) {
        text += "opening";
    } else if (fault.block == kClosing) {
        text += "closing";
    } else {
        text += std::to_string(fault.block);
    }
    if (fault.byte != 0) text += ":" + std::to_string(fault.byte);
    return text;
}

void damage(Bytes& frame, const Fault& fault) {
    switch (fault.kind) {
        case FaultKind::checksum:
            ++frame.back();
            break;
        case FaultKind::missing_byte:
            frame.erase(frame.begin() + fault.byte);
            break;
        case FaultKind::extra_byte:
            frame.insert(frame.begin() + fault.byte, kExtraByte);
            break;
        case FaultKind::garbage: {
            std::mt19937 random(kGarbageSeed + static_cast<unsigned>(fault.block - kOpening));
            std::generate(frame.begin() + fault.byte, frame.end(),
                          [&] { return static_cast<std::uint8_t>(random() >> 24); });
            break;
        }
        case FaultKind::block_number:
            frame[kBlockNumber] =
                static_cast<std::uint8_t>(fault.byte == 0 ? layout::kImageBlocks : fault.byte);
            frame.back() = frame_sum(frame);
            break;
        case FaultKind::flipped_bit:
            frame[static_cast<std::size_t>(fault.byte)] ^= kFlipped;
            break;
        case FaultKind::doubled: {
            const auto count =
                fault.byte == 0 ? frame.size() : static_cast<std::size_t>(fault.byte);
            const Bytes again(frame.begin(), frame.begin() + static_cast<std::ptrdiff_t>(count));
            frame.insert(frame.begin(), again.begin(), again.end());
            break;
        }
        case FaultKind::silence:
        case FaultKind::hang_up:
        case FaultKind::trickle:
            break;
    }
}

}  // namespace memwright::radio
