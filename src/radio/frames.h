#pragma once

// The frames that travel through the clone cable, as the radio writes and knows them. Every frame
// ends with a checksum: the sum of the bytes before it, modulo 256.
//   opening, closing  8 bytes   0C, 01 or 02, "A18", two bytes, checksum
//   block            38 bytes   03 03 00 00, number 0 to 239, 32 data bytes, checksum
//   acknowledgement   3 bytes   03 06 09, from the receiving side

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "base/bytes.h"
#include "image/memory_image.h"

namespace memwright::radio {

// Where a frame stands in a transfer: block 0 to 239, or one of these.
inline constexpr int kOpening = -1;
inline constexpr int kBlocks = 240;
inline constexpr int kClosing = kBlocks;

inline constexpr std::array<std::uint8_t, 8> kOpeningFrame = {0x0C, 0x01, 0x41, 0x31,
                                                              0x38, 0x12, 0x00, 0xC9};
inline constexpr std::array<std::uint8_t, 8> kClosingFrame = {0x0C, 0x02, 0x41, 0x31,
                                                              0x38, 0x00, 0x00, 0xB8};
// What the radio sends now and then where a block is expected.
inline constexpr std::array<std::uint8_t, 8> kShortFrame = {0x0C, 0x03, 0x41, 0x31,
                                                            0x38, 0x00, 0x00, 0xB9};
inline constexpr std::array<std::uint8_t, 3> kAcknowledgement = {0x03, 0x06, 0x09};
inline constexpr std::array<std::uint8_t, 4> kBlockHeader = {0x03, 0x03, 0x00, 0x00};

inline constexpr int kShortFrameSize = 8;
inline constexpr int kBlockFrameSize = 38;
// Byte 4 of a block: its number; bytes 5 to 36: its data.
inline constexpr int kBlockNumber = 4;
inline constexpr int kBlockData = 5;
// The data of blocks that lie past the end of the image, 231 to 239.
inline constexpr std::uint8_t kFiller = 0xFF;

// The sum of all bytes but the last one, modulo 256.
std::uint8_t frame_sum(std::span<const std::uint8_t> frame);

inline bool sum_is_right(std::span<const std::uint8_t> frame) {
    return frame_sum(frame) == frame.back();
}

// The frame of block `number`, 0 to 239.
Bytes block_frame(const MemoryImage& memory, int number);

// The frame at a place of a transfer: kOpening, 0 to 239, kClosing.
Bytes frame_at(const MemoryImage& memory, int place);

inline int frame_size_at(int place) {
    return place == kOpening || place == kClosing ? kShortFrameSize : kBlockFrameSize;
}

}  // namespace memwright::radio
