#pragma once

// The frames of the clone protocol, 9600 baud, even parity, 8 data bits, 1 stop bit. A block is 38
// bytes: a header of four, its number, 32 bytes of the image, and the sum of the 37 before it
// modulo 256. 240 blocks travel; 0 to 230 carry the image, the others are filler.

#include <array>
#include <cstdint>

#include "image/layout.h"

namespace memwright::clone {

inline constexpr std::array<std::uint8_t, 8> kOpeningFrame = {0x0C, 0x01, 0x41, 0x31,
                                                              0x38, 0x12, 0x00, 0xC9};
inline constexpr std::array<std::uint8_t, 8> kClosingFrame = {0x0C, 0x02, 0x41, 0x31,
                                                              0x38, 0x00, 0x00, 0xB8};
inline constexpr std::array<std::uint8_t, 3> kAcknowledgement = {0x03, 0x06, 0x09};

inline constexpr int kBlocks = 240;
inline constexpr std::array<std::uint8_t, 4> kBlockHeader = {0x03, 0x03, 0x00, 0x00};
inline constexpr std::size_t kBlockNumber = 4;
inline constexpr std::size_t kBlockData = 5;
inline constexpr std::size_t kBlockChecksum = kBlockData + layout::kBlockSize;
inline constexpr std::uint8_t kFiller = 0xFF;

// What the program receives stands behind three bytes that it does not look at.
inline constexpr std::size_t kLeadingBytes = 3;
inline constexpr std::size_t kFrameResponse = kLeadingBytes + kOpeningFrame.size();

// Seconds that a block is given to arrive, or the radio to store one.
inline constexpr double kSettle = 0.1;

}  // namespace memwright::clone
