// Unsaved changes, told by the sum of the image's bytes.

#include <string>

#include "table/table_test.h"

namespace memwright {
namespace {

using namespace columns;

class Changes : public TableTest {
  protected:
    Changes() {
        table.initgrid();
        put(1, {"145.51250", "LOCAL", "WFM", "On"});
        put(2, {"433.00000", "OTHER", "NFM", "Off"});
        table.SaveVR120Data();
        table.SetChangeCheck();
    }

    void swap_rows(int a, int b) {
        for (int col = 1; col < 15; ++col) {
            const std::string text = grid.TextMatrix(a, col);
            grid.set_text(a, col, grid.TextMatrix(b, col));
            grid.set_text(b, col, text);
        }
    }
};

TEST(ChangesAtStart, there_are_none_in_an_image_of_zeros) {
    NativeFileSystem files;
    modVR120 store(files);
    MSFlexGrid grid("MSFlexGrid1");
    MenuEntry mnuSaveOnly("mnuSaveOnly", "&Save");
    mnuSaveOnly.enabled = false;
    ChannelTable table(store, grid, mnuSaveOnly);
    EXPECT_EQ(table.ChangeCheckSum(), 0);
    EXPECT_FALSE(table.IsDataChanged());
    store.set_byte(7391, 1);
    EXPECT_TRUE(table.IsDataChanged());
}

TEST_F(Changes, the_check_sum_adds_all_7392_bytes_as_0_to_255) {
    for (int i = 0; i < layout::kImageSize; ++i) store.set_byte(i, 0xFF);
    table.SetChangeCheck();
    EXPECT_EQ(table.ChangeCheckSum(), 7392 * 255);
    for (int i = 0; i < layout::kImageSize; ++i) store.set_byte(i, 0);
    store.set_byte(0, 0x80);
    store.set_byte(7391, 0x81);
    table.SetChangeCheck();
    EXPECT_EQ(table.ChangeCheckSum(), 0x80 + 0x81);
}

TEST_F(Changes, there_are_none_right_after_the_check) { EXPECT_FALSE(table.IsDataChanged()); }

TEST_F(Changes, an_edited_cell_is_one) {
    grid.set_text(1, kTag, "LOCAM");
    EXPECT_TRUE(table.IsDataChanged());
}

TEST_F(Changes, asking_brings_the_table_into_the_image_and_keeps_the_check_sum) {
    const auto sum = table.ChangeCheckSum();
    grid.set_text(1, kTag, "LOCAM");
    EXPECT_TRUE(table.IsDataChanged());
    EXPECT_EQ(label(0, 0), "LOCAM ");
    EXPECT_EQ(table.ChangeCheckSum(), sum);
    EXPECT_TRUE(table.IsDataChanged()) << "asked again";
    grid.set_text(1, kTag, "LOCAL");
    EXPECT_FALSE(table.IsDataChanged());
}

TEST_F(Changes, two_memories_that_swap_places_are_none) {
    swap_rows(1, 2);
    EXPECT_FALSE(table.IsDataChanged());
    EXPECT_EQ(label(0, 0), "OTHER ");
    EXPECT_EQ(label(0, 1), "LOCAL ");
}

TEST_F(Changes, edits_that_balance_each_other_are_none) {
    grid.set_text(1, kTag, "MOCAL");  // one letter up by one
    EXPECT_TRUE(table.IsDataChanged());
    grid.set_text(2, kTag, "OTHEQ");  // and one down by one
    EXPECT_FALSE(table.IsDataChanged());
    EXPECT_EQ(label(0, 0), "MOCAL ");
}

TEST_F(Changes, with_the_save_command_disabled_the_image_is_compared_as_it_is) {
    mnuSaveOnly.enabled = false;
    grid.set_text(1, kTag, "LOCAM");
    EXPECT_FALSE(table.IsDataChanged());
    EXPECT_EQ(label(0, 0), "LOCAL ");
    store.set_byte(7391, 1);
    EXPECT_TRUE(table.IsDataChanged());
}

TEST_F(Changes, hidden_columns_and_colours_are_none) {
    for (int col = kStep; col < kCount; ++col) grid.set_text(1, col, "True");
    table.MaskColor();
    EXPECT_FALSE(table.IsDataChanged());
}

}  // namespace
}  // namespace memwright
