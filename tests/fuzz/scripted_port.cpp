#include "fuzz/scripted_port.h"

#include <array>

#include "radio/frames.h"

namespace memwright::fuzz {
namespace {

constexpr std::size_t kMostWaiting = 30000;  // what the port's buffer is set to

// Each block's bytes are other ones.
MemoryImage memory_of_radio() {
    MemoryImage memory;
    for (int i = 0; i < layout::kImageSize; ++i) {
        memory.set(i, static_cast<std::uint8_t>(i % 251));
    }
    return memory;
}

}  // namespace

void ScriptedPort::PortOpen(bool open) {
    if (open && lost_) throw PortError("Cannot open COM 1: no such device.");
    if (open && !open_) at_ = time_.now();
    if (!open) waiting_.clear();
    open_ = open;
}

void ScriptedPort::Output(std::span<const std::uint8_t> bytes) {
    EXPECT_FALSE(bytes.empty());
    require_open();
    if (!waiting_for_output_) return;
    constexpr Time kAnswerTakes = std::chrono::milliseconds(5);
    waiting_for_output_ = false;
    at_ = time_.now() + kAnswerTakes;
}

int ScriptedPort::InBufferCount() {
    require_open();
    return static_cast<int>(waiting_.size());
}

std::vector<std::uint8_t> ScriptedPort::Input() {
    require_open();
    return std::exchange(waiting_, {});
}

std::optional<ScriptedPort::Time> ScriptedPort::next_event() const {
    if (!open_ || over_) return std::nullopt;
    return at_;
}

void ScriptedPort::bring_up_to(Time now) {
    while (open_ && !over_ && at_ <= now) {
        if (waiting_for_output_ || (script_.empty() && blocks_to_come_ == 0)) {
            over_ = true;
            silent();
        } else if (blocks_to_come_ > 0) {
            --blocks_to_come_;
            block_arrives(next_block_++ % radio::kBlocks, 0);
            if (blocks_to_come_ > 0) wait_for_output();
        } else {
            step();
        }
    }
}

std::uint8_t ScriptedPort::next() {
    if (script_.empty()) return 0;
    const std::uint8_t byte = script_.front();
    script_ = script_.subspan(1);
    return byte;
}

void ScriptedPort::step() {
    constexpr unsigned kKinds = 8;
    const unsigned first = next();
    const unsigned number = first / kKinds;
    static const std::vector<Bytes> kFrames = {
        {radio::kOpeningFrame.begin(), radio::kOpeningFrame.end()},
        {radio::kClosingFrame.begin(), radio::kClosingFrame.end()},
        {radio::kShortFrame.begin(), radio::kShortFrame.end()},
        {radio::kAcknowledgement.begin(), radio::kAcknowledgement.end()}};
    switch (first % kKinds) {
        case 0:
            at_ += std::chrono::milliseconds(next());
            break;
        case 1:
            for (unsigned i = 0; i <= number; ++i) arrive(std::array{next()});
            break;
        case 2:
            block_arrives(next() % radio::kBlocks, number);
            break;
        case 3:
            arrive(kFrames[number % kFrames.size()]);
            break;
        case 4:
            blocks_to_come_ = next();
            if (blocks_to_come_ > 0) wait_for_output();
            break;
        case 5:
            wait_for_output();
            break;
        case 6:
            lost_ = true;
            open_ = false;
            waiting_.clear();
            break;
        default:
            if (number == 0) button_pressed();
            if (number == 1) set_clock();
            break;
    }
}

void ScriptedPort::arrive(std::span<const std::uint8_t> bytes) {
    for (const std::uint8_t byte : bytes) {
        if (waiting_.size() < kMostWaiting) waiting_.push_back(byte);
    }
}

void ScriptedPort::block_arrives(int number, unsigned faults) {
    static const MemoryImage kMemory = memory_of_radio();
    Bytes frame = radio::block_frame(kMemory, number);
    if ((faults & 1U) != 0) frame.back() ^= 1U;
    if ((faults & 2U) != 0) frame.pop_back();
    if ((faults & 4U) != 0) frame.push_back(next());
    if ((faults & 8U) == 0) arrive(radio::kAcknowledgement);
    arrive(frame);
}

void ScriptedPort::wait_for_output() {
    waiting_for_output_ = true;
    at_ += kPatience;
}

void ScriptedPort::set_clock() {
    constexpr unsigned kSecondsInPart = 86400 / 256;
    const unsigned part = next();
    time_.set_time_of_day(part * kSecondsInPart + next());
}

void ScriptedPort::require_open() const {
    if (lost_) throw PortError("Lost COM 1: the other end hung up.");
    if (!open_) throw PortError("COM 1 is not open.");
}

}  // namespace memwright::fuzz
