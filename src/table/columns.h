#pragma once

// The channel table's rows and columns. Row 0 holds the headings; the memory of bank b and number i
// is in row b * 64 + i + 1.

#include <array>

#include "image/layout.h"

namespace memwright::columns {

inline constexpr int kLabel = 0;
inline constexpr int kTag = 1;
inline constexpr int kFreq = 2;
inline constexpr int kMode = 3;
inline constexpr int kPref = 4;
inline constexpr int kStep = 5;
inline constexpr int kMasked = 6;
inline constexpr int kRepeaterShift = 7;
inline constexpr int kShift = 8;
inline constexpr int kToneSquelch = 9;
inline constexpr int kTone = 10;
inline constexpr int kDcs = 11;
inline constexpr int kTransmitPower = 12;
inline constexpr int kDeviation = 13;
inline constexpr int kNameless = 14;
inline constexpr int kCount = 15;

inline constexpr int kRows = layout::kMemories + 1;
inline constexpr double kRowHeight = 320;  // twips

struct Column {
    const char* heading;
    double width;  // twips; 0 is not seen
};

inline constexpr std::array<Column, kCount> kColumns = {{{"#", 1700},
                                                         {"Tag", 1200},
                                                         {"Freq", 1500},
                                                         {"Mode", 900},
                                                         {"Pref", 800},
                                                         {"Step", 0},
                                                         {"Masked", 0},
                                                         {"RPT SH", 0},
                                                         {"Shift", 0},
                                                         {"TS/DCS", 0},
                                                         {"Tone", 0},
                                                         {"DCS", 0},
                                                         {"TX Pwr", 0},
                                                         {"Dev", 0},
                                                         {"", 0}}};

}  // namespace memwright::columns
