#pragma once

// The computer's side of the cable in virtual time, as plainly as it can be told.

#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "radio/simulated_radio.h"

namespace memwright::radio {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

// The time that bytes need on the line, one right after the other: 11 bits each at 9600 baud.
inline Time line_time(std::int64_t bytes) { return Time{bytes * 11 * 1'000'000 / 9600}; }

inline Bytes bytes_of(const MemoryImage& image) {
    return {image.bytes().begin(), image.bytes().end()};
}

// Bytes `first` to `end` - 1.
inline Bytes part_of(const Bytes& bytes, std::ptrdiff_t first, std::ptrdiff_t end) {
    return {bytes.begin() + first, bytes.begin() + end};
}

inline MemoryImage random_image(unsigned seed) {
    std::mt19937 random(seed);
    MemoryImage image;
    for (int i = 0; i < layout::kImageSize; ++i) {
        image.set(i, static_cast<std::uint8_t>(random() >> 24));
    }
    return image;
}

class Computer {
  public:
    explicit Computer(SimulatedRadio& radio, Time start = seconds(1000))
        : radio_(radio), now_(start) {}

    Time now() const { return now_; }

    void open() { radio_.line_opened(now_); }
    void close() { radio_.line_closed(now_); }

    void send(const Bytes& bytes) {
        collect();
        radio_.receive(bytes, now_);
        collect();
    }
    void acknowledge() { send({0x03, 0x06, 0x09}); }

    void pass(Time duration) {
        now_ += duration;
        collect();
    }

    // Until so many bytes are waiting, to the microsecond. False if they are not there in time.
    bool wait_for(std::size_t count, Time limit = seconds(10)) {
        const Time end = now_ + limit;
        collect();
        while (waiting_.size() < count) {
            const auto next = radio_.next_event();
            if (!next || *next > end) {
                now_ = end;
                return false;
            }
            now_ = std::max(now_, *next);
            collect();
        }
        return true;
    }

    // Everything that is waiting.
    Bytes take() {
        collect();
        return std::exchange(waiting_, {});
    }

    // Acknowledges and takes what comes: all that has arrived 0.1 seconds after the eleventh byte.
    // Empty if fewer come.
    Bytes response() {
        acknowledge();
        if (!wait_for(11)) return {};
        pass(milliseconds(100));
        return take();
    }

  private:
    void collect() {
        const auto bytes = radio_.transmit(now_);
        waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
    }

    SimulatedRadio& radio_;
    Time now_;
    Bytes waiting_;
};

// What a read of the whole radio brings.
struct Read {
    Bytes opening;
    std::vector<Bytes> responses;  // those that are as long as short frames too
    int blocks = 0;                // the others
    Bytes closing;
    bool finished = false;
};

// Reads as the radio's owner would: opens the line, waits, and leaves it when all is done or
// nothing comes.
inline Read read_radio(Computer& computer) {
    Read read;
    computer.open();
    if (computer.wait_for(8)) {
        read.opening = computer.take();
        while (read.blocks < 240) {
            read.responses.push_back(computer.response());
            if (read.responses.back().empty()) break;
            if (read.responses.back().size() != 11) ++read.blocks;
        }
        if (read.blocks == 240) {
            computer.acknowledge();
            if (computer.wait_for(11)) {
                read.closing = computer.take();
                computer.acknowledge();
                read.finished = true;
            }
        }
    }
    computer.close();
    computer.pass(seconds(1));
    return read;
}

// The data of all blocks that carry a number below 231.
inline Bytes image_of(const Read& read) {
    Bytes image;
    for (const Bytes& response : read.responses) {
        if (response.size() < 41 || response[7] >= 231) continue;
        image.insert(image.end(), response.begin() + 8, response.begin() + 40);
    }
    return image;
}

// The frames of a write, one by one: opening, 240 blocks, closing twice.
inline std::vector<Bytes> frames_of_write(const MemoryImage& image) {
    std::vector<Bytes> frames = {{0x0C, 0x01, 0x41, 0x31, 0x38, 0x12, 0x00, 0xC9}};
    for (int number = 0; number < 240; ++number) {
        Bytes frame = {0x03, 0x03, 0x00, 0x00, static_cast<std::uint8_t>(number)};
        unsigned sum = 6 + static_cast<unsigned>(number);
        for (int i = 32 * number; i < 32 * number + 32; ++i) {
            frame.push_back(i < 7392 ? image.get(i) : std::uint8_t{0xFF});
            sum += frame.back();
        }
        frame.push_back(static_cast<std::uint8_t>(sum & 0xFF));
        frames.push_back(frame);
    }
    frames.insert(frames.end(), 2, {0x0C, 0x02, 0x41, 0x31, 0x38, 0x00, 0x00, 0xB8});
    return frames;
}

// Writes without looking at what comes back, 0.1 seconds after each frame.
inline void write_frames(Computer& computer, const std::vector<Bytes>& frames) {
    for (const Bytes& frame : frames) {
        computer.send(frame);
        computer.pass(milliseconds(100));
    }
}

inline Bytes joined(const std::vector<Bytes>& frames) {
    Bytes all;
    for (const Bytes& frame : frames) all.insert(all.end(), frame.begin(), frame.end());
    return all;
}

}  // namespace memwright::radio
