#pragma once

// A channel table over an image of its own, with nothing else of the main window.

#include <gtest/gtest.h>

#include <string>

#include "base/number_text.h"
#include "image/mod_vr120.h"
#include "native/file_system.h"
#include "table/channel_table.h"
#include "table/columns.h"

namespace memwright {

class TableTest : public testing::Test {
  protected:
    struct Channel {
        std::string freq;
        std::string tag;
        std::string mode = "NFM";
        std::string pref = "Off";
    };

    void put(int row, const Channel& channel) {
        grid.set_text(row, columns::kFreq, channel.freq);
        grid.set_text(row, columns::kTag, channel.tag);
        grid.set_text(row, columns::kMode, channel.mode);
        grid.set_text(row, columns::kPref, channel.pref);
    }

    // The four bytes of a memory's record, and its label.
    std::string record(int bank, int number) const {
        std::string text;
        for (int i = 0; i < layout::kRecordSize; ++i) {
            text += lHex(store.MemoryImage.get(layout::kRecordSize * (bank * 64 + number) + i));
        }
        return text;
    }
    std::string label(int bank, int number) const {
        std::string text;
        for (int i = 0; i < layout::kLabelSize; ++i) {
            text += static_cast<char>(store.MemoryImage.get(
                layout::kLabels + layout::kLabelSize * (bank * 64 + number) + i));
        }
        return text;
    }

    NativeFileSystem files;
    modVR120 store{files};
    MSFlexGrid grid{"MSFlexGrid1"};
    MenuEntry mnuSaveOnly{"mnuSaveOnly", "&Save"};
    ChannelTable table{store, grid, mnuSaveOnly};
};

}  // namespace memwright
