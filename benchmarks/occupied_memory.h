#pragma once

// A memory image with a channel in each of its 640 memories, and the table above it.

#include <array>
#include <string>

#include "fakes/memory_files.h"
#include "image/mod_vr120.h"
#include "table/channel_table.h"

namespace memwright::benchmarks {

inline constexpr std::array<const char*, 3> kModes = {"NFM", "WFM", "AM"};
inline constexpr std::array<const char*, 4> kFractions = {"00", "25", "50", "75"};

// Calls `visit` with the bank and the number of every memory.
template <class Visit>
void for_each_memory(Visit visit) {
    for (int bank = 0; bank < layout::kBanks; ++bank) {
        for (int number = 0; number < layout::kMemoriesPerBank; ++number) visit(bank, number);
    }
}

// The channel that memory `index` holds: no two are alike, none lies in a blocked range.
struct Channel {
    explicit Channel(int index)
        : frequency(std::to_string(118 + index % 200) + "." + std::to_string(100 + index) +
                    kFractions[static_cast<std::size_t>(index) % kFractions.size()]),
          label("CH" + std::to_string(1000 + index)),
          mode(kModes[static_cast<std::size_t>(index) % kModes.size()]),
          preference(index % 2 == 0 ? "Off" : "On") {}

    std::string frequency;
    std::string label;
    std::string mode;
    std::string preference;
};

inline void occupy(modVR120& store) {
    for_each_memory([&](int bank, int number) {
        Channel channel(bank * layout::kMemoriesPerBank + number);
        store.SetMemByte(bank, number, 0);
        store.SetMemFreq(bank, number, channel.frequency);
        store.SetMemTag(bank, number, channel.label);
        store.SetMode(bank, number, channel.mode);
        store.SetPref(bank, number, channel.preference);
    });
}

struct OccupiedTable {
    OccupiedTable() {
        occupy(store);
        table.ParseVR120Data();
        table.SetChangeCheck();
    }

    fakes::MemoryFiles files;
    modVR120 store{files};
    MSFlexGrid grid{"MSFlexGrid1"};
    MenuEntry mnuSaveOnly{"mnuSaveOnly", "&Save"};
    ChannelTable table{store, grid, mnuSaveOnly};
};

}  // namespace memwright::benchmarks
