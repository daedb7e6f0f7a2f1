// Copying, cutting and deleting the selected block.

#include "table/editing_test.h"

namespace memwright {
namespace {

using namespace columns;

class RowBuffer : public EditingTest {
  protected:
    // The texts of a record that are not empty, which must be the first ones.
    std::vector<std::string> record_texts(std::size_t index) const {
        const auto& record = rows.RowBuffer().at(index);
        std::vector<std::string> texts(record.begin(), record.end());
        while (!texts.empty() && texts.back().empty()) texts.pop_back();
        return texts;
    }
    std::size_t records() const { return rows.RowBuffer().size(); }
    void fill_and_select(int from, int to) {
        for (int row = from; row <= to; ++row) fill(row);
        select(from, to);
    }
};

TEST_F(RowBuffer, is_one_empty_record_after_its_reset) {
    fill_and_select(5, 7);
    rows.mnuCopy_Click();
    rows.reset_buffer();
    ASSERT_EQ(records(), 1U);
    EXPECT_TRUE(record_texts(0).empty());
}

TEST_F(RowBuffer, holds_a_record_of_14_texts_for_each_copied_row_with_the_first_four_filled) {
    fill_and_select(5, 7);
    rows.mnuCopy_Click();
    ASSERT_EQ(records(), 3U);
    EXPECT_EQ(rows.RowBuffer()[0].size(), 14U);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(record_texts(static_cast<std::size_t>(i)), filled(5 + i));
    }
}

TEST_F(RowBuffer, starts_afresh_with_every_copy) {
    fill_and_select(5, 9);
    rows.mnuCopy_Click();
    fill_and_select(20, 21);
    rows.mnuCopy_Click();
    ASSERT_EQ(records(), 2U);
    EXPECT_EQ(record_texts(0), filled(20));
    EXPECT_EQ(record_texts(1), filled(21));
}

TEST_F(RowBuffer, takes_no_headings) {
    fill(1);
    select(0, 1);
    rows.mnuCopy_Click();
    ASSERT_EQ(records(), 1U);
    EXPECT_EQ(record_texts(0), filled(1));
}

TEST_F(RowBuffer, is_empty_if_nothing_was_selected_to_copy) {
    rows.reset_buffer();
    rows.mnuCopy_Click();
    EXPECT_EQ(records(), 0U);
}

TEST_F(RowBuffer, takes_the_last_row_and_all_rows) {
    fill_and_select(1, 640);
    rows.mnuCopy_Click();
    ASSERT_EQ(records(), 640U);
    EXPECT_EQ(record_texts(0), filled(1));
    EXPECT_EQ(record_texts(639), filled(640));
}

TEST_F(RowBuffer, copying_changes_nothing_else) {
    fill_and_select(5, 7);
    const CountedSignals changes(grid);
    rows.mnuCopy_Click();
    EXPECT_EQ(changes.count, 0);
    expect_selected(5, 7);
    expect_cell(5, kLabel);
}

TEST_F(RowBuffer, survives_a_rebuilt_table) {
    fill_and_select(5, 7);
    rows.mnuCopy_Click();
    table.ParseVR120Data();
    EXPECT_EQ(record_texts(2), filled(7));
}

TEST_F(RowBuffer, cutting_copies_the_block_and_empties_it) {
    for (const int row : {4, 8}) fill(row);
    fill_and_select(5, 7);
    rows.mnuCut_Click();
    ASSERT_EQ(records(), 3U);
    EXPECT_EQ(record_texts(2), filled(7));
    for (int row = 5; row <= 7; ++row) {
        EXPECT_EQ(fields(row), std::vector<std::string>(14)) << row;
        EXPECT_EQ(text(row, kLabel), "Bank 0 - " + std::to_string(row - 1));
    }
    EXPECT_EQ(fields(4), filled(4, 14));
    EXPECT_EQ(fields(8), filled(8, 14));
    expect_selected(5, 7);
}

TEST_F(RowBuffer, cutting_leaves_the_headings_and_makes_column_1_current) {
    fill(1);
    select(0, 1);
    rows.mnuCut_Click();
    EXPECT_EQ(text(0, kTag), "Tag");
    EXPECT_EQ(fields(1), std::vector<std::string>(14));
    expect_cell(0, kTag);
    select(6, 5);
    rows.mnuCut_Click();
    expect_cell(6, kTag);
}

TEST_F(RowBuffer, cutting_recolours_rows_1_to_240_and_none_below) {
    fill_and_select(240, 241);
    for (const int row : {2, 240, 241}) grey(row);
    grid.set_text(3, kMasked, "True");
    grid.set_text(300, kMasked, "True");
    rows.mnuCut_Click();
    expect_colour(2, 0);
    expect_colour(3, kGrey);
    expect_colour(240, 0);
    expect_colour(241, kGrey);
    expect_colour(300, 0);
}

TEST_F(RowBuffer, deleting_empties_the_block_and_leaves_it_grey) {
    fill_and_select(5, 6);
    for (const int row : {5, 6}) grey(row);
    grid.set_text(9, kMasked, "True");
    rows.Command3_Click();
    for (const int row : {5, 6}) {
        EXPECT_EQ(fields(row), std::vector<std::string>(14));
        expect_colour(row, kGrey);
    }
    expect_colour(9, 0);
    expect_selected(5, 6);
    expect_cell(5, kLabel);
}

TEST_F(RowBuffer, deleting_sizes_the_buffer_and_copies_nothing_into_it) {
    fill_and_select(5, 7);
    rows.mnuCopy_Click();
    fill_and_select(10, 14);
    rows.Command3_Click();
    ASSERT_EQ(records(), 5U);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(record_texts(static_cast<std::size_t>(i)), filled(5 + i));
    }
    EXPECT_TRUE(record_texts(3).empty());
    EXPECT_TRUE(record_texts(4).empty());
    select(20, 20);
    rows.Command3_Click();
    ASSERT_EQ(records(), 1U);
    EXPECT_EQ(record_texts(0), filled(5));
}

TEST_F(RowBuffer, deleting_skips_the_headings) {
    for (const int row : {1, 2}) fill(row);
    select(0, 2);
    rows.Command3_Click();
    EXPECT_EQ(text(0, kTag), "Tag");
    EXPECT_EQ(fields(2), std::vector<std::string>(14));
    EXPECT_EQ(records(), 2U);
}

TEST_F(RowBuffer, with_nothing_selected_deleting_and_cutting_empty_no_row) {
    for (const int row : {1, 2}) fill(row);
    go_to(1, kFreq);
    rows.reset_buffer();
    rows.Command3_Click();
    EXPECT_EQ(records(), 0U);
    rows.mnuCut_Click();
    for (const int row : {1, 2}) EXPECT_EQ(fields(row), filled(row, 14));
    EXPECT_EQ(text(0, kTag), "Tag");
    EXPECT_EQ(records(), 0U);
}

TEST_F(RowBuffer, cutting_and_deleting_all_rows_is_one_change_each) {
    fill_and_select(1, 640);
    for (int row = 1; row <= 240; ++row) grey(row);
    const CountedSignals changes(grid);
    rows.mnuCut_Click();
    EXPECT_EQ(changes.count, 1);
    EXPECT_EQ(changes.last.first_row, 1);
    EXPECT_EQ(changes.last.last_row, 640);
    EXPECT_EQ(changes.last.first_col, 1);
    for (int row = 1; row <= 640; ++row) fill(row);
    const CountedSignals more(grid);
    rows.Command3_Click();
    EXPECT_EQ(more.count, 1);
    EXPECT_EQ(more.last.first_row, 1);
    EXPECT_EQ(more.last.last_row, 640);
}

TEST_F(RowBuffer, the_save_and_load_buttons_move_the_table_into_the_image_and_back) {
    put(5, {"145.50000", "ABC"});
    rows.Command4_Click();
    EXPECT_EQ(label(0, 4), "ABC   ");
    grid.set_text(5, kTag, "XYZ");
    grid.set_text(6, kTag, "XYZ");
    rows.Command5_Click();
    EXPECT_EQ(text(5, kTag), "ABC");
    EXPECT_EQ(text(6, kTag), "");
}

}  // namespace
}  // namespace memwright
