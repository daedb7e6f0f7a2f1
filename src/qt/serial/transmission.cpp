#include "qt/serial/transmission.h"

#include <algorithm>

namespace memwright {
namespace {

// Half bits, because there are one and a half stop bits.
int half_bits_of_byte(const LineSettings& line) {
    constexpr int kStartBit = 2;
    const int parity_bit = line.parity == QSerialPort::NoParity ? 0 : 2;
    const int stop_bits = line.stop_bits == QSerialPort::OneStop          ? 2
                          : line.stop_bits == QSerialPort::OneAndHalfStop ? 3
                                                                          : 4;
    return kStartBit + 2 * static_cast<int>(line.data_bits) + parity_bit + stop_bits;
}

}  // namespace

void Transmission::begin(const LineSettings& line) {
    byte_ = Clock::duration(std::chrono::seconds(1)) * half_bits_of_byte(line) / (2 * line.baud);
    over_ = {};
}

void Transmission::add(std::int64_t bytes, Time now) {
    over_ = std::min(std::max(over_, now) + byte_ * bytes, now + kLongest);
}

std::int64_t Transmission::bytes_left(Time now) const {
    if (over_ <= now) return 0;
    return (over_ - now + byte_ - Clock::duration(1)) / byte_;
}

}  // namespace memwright
