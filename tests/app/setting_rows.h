#pragma once

// The set-mode settings as the radio's memory has them: which list shows which bits, and the texts
// of its entries. The position of the chosen entry is what is stored.

#include <string>
#include <vector>

#include "app/radio_image.h"

namespace memwright {

inline constexpr int kWholeByte = -1;

struct SettingRow {
    const char* name;  // of the list
    const char* caption;
    int offset;
    int bit;  // kWholeByte for all eight
    std::vector<std::string> entries;
};

inline const std::vector<SettingRow>& setting_rows() {
    static const std::vector<SettingRow> rows = {
        {"Combo1",
         "Scan Resume",
         6669,
         kWholeByte,
         {"1 Sec", "2 Sec", "3 Sec", "4 Sec", "5 Sec", "6 Sec", "7 Sec", "8 Sec", "9 Sec", "10 Sec",
          "11 Sec", "12 Sec"}},
        {"Combo2",
         "Battery Save",
         6667,
         kWholeByte,
         {"Off", "1 Sec", "3 Sec", "5 Sec", "7 Sec", "9 Sec"}},
        {"Combo3", "Search Width", 6671, kWholeByte, {"5 MHz", "10 MHz", "50 MHz", "100 MHz"}},
        {"Combo4", "Attenuator", 6673, 2, {"OFF", "ON"}},
        {"Combo5", "AM Antenna", 6676, 0, {"External", "Bar"}},
        {"Combo6", "FM Antenna", 6677, 2, {"External", "Earphone"}},
        {"Combo7", "Key Beep", 6676, 3, {"ON", "OFF"}},
        {"Combo8", "S-Meter Beep", 6677, 5, {"OFF", "ON"}},
        {"Combo9", "S-Meter Sens.", 6677, 6, {"Normal", "Low"}},
        {"Combo10", "Lamp", 6666, kWholeByte, {"AUTO", "ON", "OFF"}},
        {"Combo11", "Smart Search", 6677, 3, {"Single", "Continue"}},
        {"Combo12", "Keypad Lock", 6673, 6, {"OFF", "ON"}},
        {"Combo13",
         "Fast Step",
         6662,
         kWholeByte,
         {"10 KHz", "100 KHz", "1 MHz", "10 MHz", "100 MHz"}},
        {"Combo14", "Search", 6676, 4, {"VFO", "Limit"}}};
    return rows;
}

struct SettingBit {
    int offset;
    int bit;
};

// The scan mode, which is the key beep as well.
inline constexpr SettingBit kScanModeBit{6676, 3};

constexpr SettingBit linked_band_bit(int band) {
    return band < 8 ? SettingBit{6688, band} : SettingBit{6689, band - 8};
}

// Random bytes from an offset on, but for those that a list has to have an entry for.
inline void make_valid(RadioImage& radio, SeededRandom& random, int from = layout::kRadioSettings) {
    radio.randomise(random, from);
    for (const SettingRow& row : setting_rows()) {
        const int last = static_cast<int>(row.entries.size()) - 1;
        if (row.bit == kWholeByte) radio.put(row.offset, random.between(0, last));
    }
}

}  // namespace memwright
