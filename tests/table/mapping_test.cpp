// Image to table and back, memory by memory.

#include <array>
#include <cstdint>
#include <string>

#include "table/table_test.h"

namespace memwright {
namespace {

using namespace columns;

class TableMapping : public TableTest {
  protected:
    // A memory in the image: three frequency bytes, the flags, and the label.
    void store_memory(int bank, int number, const std::array<std::uint8_t, 4>& record,
                      const std::string& tag) {
        for (int i = 0; i < 4; ++i) {
            store.set_byte(4 * (bank * 64 + number) + i,
                                  record[static_cast<std::size_t>(i)]);
        }
        store.SetMemTag(bank, number, tag);
    }
    void expect_only_a_label(int row) const {
        for (int col = 1; col < 15; ++col) EXPECT_EQ(grid.TextMatrix(row, col), "") << row;
    }
};

TEST_F(TableMapping, a_row_is_occupied_if_its_frequency_starts_with_a_number_other_than_0) {
    for (const char* text : {"145.00000", "0.00025", "1", "1299.00000", "12abc", ".5"}) {
        EXPECT_TRUE(is_occupied(text)) << text;
    }
    for (const char* text : {"", "0", "0.000", "abc", ".", "abc145", "00.0x5"}) {
        EXPECT_FALSE(is_occupied(text)) << text;
    }
}

TEST_F(TableMapping, parse_fills_the_five_fields_of_an_occupied_memory) {
    store_memory(0, 0, {0x14, 0x55, 0x12, 0x46}, "LOCAL");  // 50 Hz code, preference, WFM
    store_memory(9, 63, {0xD0, 0x00, 0x00, 0x03}, "A B");
    table.ParseVR120Data();
    EXPECT_EQ(grid.TextMatrix(1, kFreq), "145.51250");
    EXPECT_EQ(grid.TextMatrix(1, kTag), "LOCAL");
    EXPECT_EQ(grid.TextMatrix(1, kMode), "WFM");
    EXPECT_EQ(grid.TextMatrix(1, kPref), "On");
    EXPECT_EQ(grid.TextMatrix(1, kStep), "46");
    EXPECT_EQ(grid.TextMatrix(640, kFreq), "1300.00000");
    EXPECT_EQ(grid.TextMatrix(640, kTag), "A B");
    EXPECT_EQ(grid.TextMatrix(640, kMode), "AM");
    EXPECT_EQ(grid.TextMatrix(640, kPref), "Off");
    EXPECT_EQ(grid.TextMatrix(640, kStep), "03");
}

TEST_F(TableMapping, parse_fills_no_column_behind_step) {
    store_memory(0, 0, {0x14, 0x55, 0x12, 0x46}, "LOCAL");
    table.ParseVR120Data();
    for (int col = kMasked; col < kCount; ++col) EXPECT_EQ(grid.TextMatrix(1, col), "") << col;
}

TEST_F(TableMapping, parse_puts_bank_b_number_i_into_row_b_times_64_plus_i_plus_1) {
    for (int bank = 0; bank < 10; ++bank) {
        for (int number = 0; number < 64; ++number) {
            std::string freq = std::to_string(bank * 64 + number + 1) + ".0";
            store.SetMemFreq(bank, number, freq);
        }
    }
    table.ParseVR120Data();
    for (int row = 1; row <= 640; ++row) {
        EXPECT_EQ(grid.TextMatrix(row, kFreq), std::to_string(row) + ".00000");
    }
}

TEST_F(TableMapping, parse_leaves_a_memory_whose_frequency_is_0_empty_whatever_else_it_holds) {
    store_memory(0, 0, {0xFF, 0xFF, 0xFF, 0x46}, "GHOST");
    store_memory(0, 1, {0x00, 0x00, 0x00, 0x07}, "GHOST");
    store_memory(0, 2, {0x0A, 0x00, 0x00, 0x07}, "GHOST");  // reads "0", then no number
    table.ParseVR120Data();
    for (int row = 1; row <= 3; ++row) expect_only_a_label(row);
}

TEST_F(TableMapping, an_image_without_any_frequency_gives_640_labelled_rows_that_are_empty) {
    for (const int fill : {0x00, 0xFF}) {
        for (int i = 0; i < layout::kImageSize; ++i) {
            const bool flags = i < layout::kLabels && i % 4 == layout::kFlags;
            store.set_byte(i, static_cast<std::uint8_t>(flags ? 0x07 : fill));
        }
        table.ParseVR120Data();
        for (int row = 1; row <= 640; ++row) {
            EXPECT_TRUE(grid.TextMatrix(row, 0).starts_with("Bank ")) << row;
            expect_only_a_label(row);
        }
    }
}

TEST_F(TableMapping, parse_takes_0_MHz_with_a_fraction_code_for_a_channel) {
    store_memory(0, 0, {0x00, 0x00, 0x00, 0x21}, "ODD");
    table.ParseVR120Data();
    EXPECT_EQ(grid.TextMatrix(1, kFreq), "00025.00000");
    EXPECT_EQ(grid.TextMatrix(1, kTag), "ODD");
}

TEST_F(TableMapping, parse_leaves_nothing_of_the_table_before) {
    table.initgrid();
    for (int row = 1; row <= 640; ++row) {
        for (int col = 0; col < 15; ++col) {
            grid.set_text(row, col, "old");
            grid.set_colour(row, col, 0xC0C0C0);
        }
    }
    table.ParseVR120Data();
    for (int row = 1; row <= 640; ++row) {
        EXPECT_TRUE(grid.TextMatrix(row, 0).starts_with("Bank ")) << row;
        expect_only_a_label(row);
        for (int col = 0; col < 15; ++col) EXPECT_EQ(grid.colour(row, col), 0U);
    }
}

TEST_F(TableMapping, parse_signals_the_whole_table_once) {
    table.initgrid();
    store_memory(3, 7, {0x14, 0x55, 0x12, 0x46}, "LOCAL");
    int signals = 0;
    GridChange last;
    const Connection connection = grid.changed.connect([&](const GridChange& change) {
        ++signals;
        last = change;
    });
    table.ParseVR120Data();
    EXPECT_EQ(signals, 1);
    EXPECT_EQ(last.first_row, 0);
    EXPECT_EQ(last.last_row, 640);
    EXPECT_EQ(last.last_col, 14);
}

TEST_F(TableMapping, parse_works_whether_or_not_the_save_command_is_enabled) {
    mnuSaveOnly.enabled = false;
    store_memory(0, 0, {0x14, 0x55, 0x12, 0x46}, "LOCAL");
    table.ParseVR120Data();
    EXPECT_EQ(grid.TextMatrix(1, kTag), "LOCAL");
}

TEST_F(TableMapping, save_writes_the_fields_of_an_occupied_row) {
    table.initgrid();
    put(1, {"145.51250", "LOCAL", "WFM", "On"});
    put(640, {"1299.00000", "", "AM", "Off"});
    table.SaveVR120Data();
    EXPECT_EQ(record(0, 0), "14551246");
    EXPECT_EQ(label(0, 0), "LOCAL ");
    EXPECT_EQ(record(9, 63), "C9900003");
    EXPECT_EQ(label(9, 63), "      ");
}

TEST_F(TableMapping, save_rebuilds_the_flags_from_the_visible_fields_alone) {
    store_memory(0, 0, {0x14, 0x55, 0x12, 0xFF}, "LOCAL");
    table.initgrid();
    put(1, {"145.51200", "LOCAL", "NFM", "Off"});
    grid.set_text(1, kStep, "FF");
    table.SaveVR120Data();
    EXPECT_EQ(record(0, 0), "14551201");
}

TEST_F(TableMapping, save_leaves_mode_and_preference_0_for_texts_that_it_does_not_know) {
    table.initgrid();
    put(1, {"145.51250", "x", "nfm", "ON"});
    put(2, {"145.51250", "x", "", ""});
    table.SaveVR120Data();
    EXPECT_EQ(record(0, 0), "14551240");
    EXPECT_EQ(record(0, 1), "14551240");
}

TEST_F(TableMapping, save_clears_the_memory_of_an_empty_row_whatever_else_stands_in_it) {
    const std::array<std::string, 4> frequencies = {"0", "0.000", "abc", ""};
    table.initgrid();
    for (std::size_t i = 0; i < frequencies.size(); ++i) {
        const int number = static_cast<int>(i);
        store_memory(0, number, {0x14, 0x55, 0x12, 0x46}, "LOCAL");
        put(number + 1, {frequencies[i], "GHOST", "WFM", "On"});
    }
    table.SaveVR120Data();
    for (int number = 0; number < 4; ++number) {
        EXPECT_EQ(record(0, number), "FFFFFFFF") << number;
        EXPECT_EQ(label(0, number), "      ") << number;
    }
}

TEST_F(TableMapping, save_keeps_the_first_six_characters_of_a_label) {
    table.initgrid();
    put(1, {"145.00000", "ABCDEFGH"});
    put(2, {"145.00000", "  A"});
    table.SaveVR120Data();
    EXPECT_EQ(label(0, 0), "ABCDEF");
    EXPECT_EQ(label(0, 1), "  A   ");
}

TEST_F(TableMapping, save_writes_neither_hidden_columns_nor_anything_behind_the_labels) {
    for (int i = layout::kRadioSettings; i < layout::kImageSize; ++i) {
        store.set_byte(i, static_cast<std::uint8_t>(i & 0xFF));
    }
    table.initgrid();
    put(1, {"145.51250", "LOCAL", "WFM", "On"});
    table.SaveVR120Data();
    const MemoryImage plain = store.MemoryImage;
    for (int col = kStep; col < kCount; ++col) grid.set_text(1, col, "True");
    table.SaveVR120Data();
    EXPECT_EQ(store.MemoryImage, plain);
    for (int i = layout::kRadioSettings; i < layout::kImageSize; ++i) {
        EXPECT_EQ(store.MemoryImage.get(i), i & 0xFF);
    }
}

TEST_F(TableMapping, save_leaves_the_table_as_it_is) {
    table.initgrid();
    put(1, {"145.5", "ABCDEFGH", "nfm", "x"});
    int signals = 0;
    const Connection connection =
        grid.changed.connect([&](const GridChange& /*change*/) { ++signals; });
    table.SaveVR120Data();
    EXPECT_EQ(signals, 0);
    EXPECT_EQ(grid.TextMatrix(1, kFreq), "145.5");
    EXPECT_EQ(grid.TextMatrix(1, kTag), "ABCDEFGH");
}

TEST_F(TableMapping, save_does_nothing_while_the_save_command_is_disabled) {
    store_memory(0, 0, {0x14, 0x55, 0x12, 0x46}, "LOCAL");
    const MemoryImage before = store.MemoryImage;
    table.initgrid();
    put(1, {"433.00000", "OTHER"});
    mnuSaveOnly.enabled = false;
    table.SaveVR120Data();
    EXPECT_EQ(store.MemoryImage, before);
    mnuSaveOnly.enabled = true;
    table.SaveVR120Data();
    EXPECT_NE(store.MemoryImage, before);
}

}  // namespace
}  // namespace memwright
