#pragma once

// Where everything lies in the VR-120's memory image: 7392 bytes, offsets 0 to 7391, as the radio
// sends them in clone mode and as image files hold them. Multi-byte fields stand most significant
// digit first. Bit 0 is the least significant bit of a byte.

namespace memwright::layout {

inline constexpr int kImageSize = 7392;

// Channel memories: 10 banks of 64. The memory index is bank * 64 + number, 0 to 639.
inline constexpr int kBanks = 10;
inline constexpr int kMemoriesPerBank = 64;
inline constexpr int kMemories = kBanks * kMemoriesPerBank;

// Bytes 0 to 2559: 640 records of 4 bytes, the record of memory index i at 4 * i.
inline constexpr int kRecords = 0;
inline constexpr int kRecordSize = 4;
// Bytes +0 to +2 of a record: the frequency in whole kilohertz. The high nibble of +0 holds the
// hundreds of megahertz as a binary number; five packed decimal digits follow.
inline constexpr int kFrequencySize = 3;
// Byte +3 of a record: the flags.
inline constexpr int kFlags = 3;

// Bits of the flags byte.
inline constexpr int kFraction75Bit = 7;
inline constexpr int kFraction50Bit = 6;
inline constexpr int kFraction25Bit = 5;
inline constexpr int kPreferenceBit = 2;
inline constexpr int kModeHighBit = 1;
inline constexpr int kModeLowBit = 0;

// Bytes 2560 to 6399: 640 labels of 6 characters, the label of memory index i at 2560 + 6 * i,
// padded on the right with spaces.
inline constexpr int kLabels = 2560;
inline constexpr int kLabelSize = 6;

// Bytes 6400 to 7391: radio-wide settings and search limits.
inline constexpr int kRadioSettings = 6400;

// Settings of a whole byte: the position of the choice in its list.
inline constexpr int kFastStep = 6662;
inline constexpr int kLamp = 6666;
inline constexpr int kBatterySave = 6667;
inline constexpr int kScanResume = 6669;
inline constexpr int kSearchWidth = 6671;

// Settings of one bit, in bytes 6673, 6676 and 6677: 0 or 1 is the position of the choice.
struct BitPlace {
    int offset;
    int bit;
};

inline constexpr BitPlace kAttenuator{6673, 2};
inline constexpr BitPlace kKeypadLock{6673, 6};
inline constexpr BitPlace kAmAntenna{6676, 0};
inline constexpr BitPlace kKeyBeep{6676, 3};
inline constexpr BitPlace kScanMode = kKeyBeep;  // one bit for both
inline constexpr BitPlace kSearch{6676, 4};
inline constexpr BitPlace kFmAntenna{6677, 2};
inline constexpr BitPlace kSmartSearch{6677, 3};
inline constexpr BitPlace kSMeterBeep{6677, 5};
inline constexpr BitPlace kSMeterSensitivity{6677, 6};

// Bytes 6688 and 6689: the banks whose scans are linked, one bit each, bank 0 the lowest of the
// first byte, banks 8 and 9 the lowest two of the second.
constexpr BitPlace linked_bank(int bank) { return {6688 + bank / 8, bank % 8}; }

// Bytes 6912 to 6975: search limits 0 to 15, records of 4 bytes like those of the channels; bytes
// 7152 to 7159: search limits 16 and 17.
inline constexpr int kSearchLimits = 6912;
inline constexpr int kLastSearchLimits = 7152;
inline constexpr int kSearchLimitCount = 18;
inline constexpr int kFirstSearchLimits = 16;  // as many lie at kSearchLimits

// In clone mode the image travels in blocks of 32 bytes: blocks 0 to 230 carry it whole.
inline constexpr int kBlockSize = 32;
inline constexpr int kImageBlocks = kImageSize / kBlockSize;
static_assert(kImageBlocks * kBlockSize == kImageSize);
static_assert(kLabels == kRecords + kMemories * kRecordSize);
static_assert(kRadioSettings == kLabels + kMemories * kLabelSize);

// The offset of search limit 0 to 17.
constexpr int search_limit(int number) {
    return number < kFirstSearchLimits
               ? kSearchLimits + kRecordSize * number
               : kLastSearchLimits + kRecordSize * (number - kFirstSearchLimits);
}

}  // namespace memwright::layout
