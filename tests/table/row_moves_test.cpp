// Moving the selected block by one row, down and up.

#include "table/editing_test.h"

namespace memwright {
namespace {

using namespace columns;

class RowMoves : public EditingTest {
  protected:
    void fill_all(int from, int to) {
        for (int row = from; row <= to; ++row) fill(row);
    }
    std::vector<std::vector<std::string>> all_rows() const {
        std::vector<std::vector<std::string>> texts;
        for (int row = 0; row <= kLastRow; ++row) texts.push_back(fields(row));
        return texts;
    }
    // A row of the block that moved: four texts that were copied, and ten empty ones.
    static std::vector<std::string> moved(int from) {
        auto texts = filled(from);
        texts.resize(14);
        return texts;
    }
    // The row that made way: four texts of the neighbour, and what stood there in the others.
    static std::vector<std::string> made_way(int neighbour, int there) {
        auto texts = filled(there, 14);
        const auto came = filled(neighbour);
        std::copy(came.begin(), came.end(), texts.begin());
        return texts;
    }
};

TEST_F(RowMoves, down_swaps_the_block_with_the_row_below_it) {
    fill_all(4, 9);
    select(5, 7);
    rows.Command1_Click();
    EXPECT_EQ(fields(4), filled(4, 14));
    EXPECT_EQ(fields(5), made_way(8, 5));
    EXPECT_EQ(fields(6), moved(5));
    EXPECT_EQ(fields(7), moved(6));
    EXPECT_EQ(fields(8), moved(7));
    EXPECT_EQ(fields(9), filled(9, 14));
    expect_selected(6, 8);
    EXPECT_EQ(grid.marked_rows.get(), (RowRange{6, 8}));
}

TEST_F(RowMoves, up_swaps_the_block_with_the_row_above_it) {
    fill_all(3, 8);
    select(5, 7);
    rows.Command2_Click();
    EXPECT_EQ(fields(3), filled(3, 14));
    EXPECT_EQ(fields(4), moved(5));
    EXPECT_EQ(fields(5), moved(6));
    EXPECT_EQ(fields(6), moved(7));
    EXPECT_EQ(fields(7), made_way(4, 7));
    EXPECT_EQ(fields(8), filled(8, 14));
    expect_selected(4, 6);
    EXPECT_EQ(grid.marked_rows.get(), (RowRange{4, 6}));
}

TEST_F(RowMoves, one_row_moves_down_and_back_with_its_visible_fields) {
    fill_all(5, 6);
    select(5, 5);
    rows.Command1_Click();
    rows.Command2_Click();
    expect_selected(5, 5);
    EXPECT_EQ(fields(5, 4), filled(5));
    EXPECT_EQ(fields(6, 4), filled(6));
}

TEST_F(RowMoves, down_stops_at_row_640_after_filling_the_buffer) {
    for (const int top : {638, 640}) {
        fill_all(638, 640);
        rows.reset_buffer();
        select(top, 640);
        const auto before = all_rows();
        rows.Command1_Click();
        EXPECT_EQ(all_rows(), before);
        expect_selected(top, 640);
        ASSERT_EQ(rows.RowBuffer().size(), static_cast<std::size_t>(641 - top));
        EXPECT_EQ(rows.RowBuffer().back()[0], "r640c1");
    }
}

TEST_F(RowMoves, down_reaches_row_640) {
    fill_all(639, 640);
    select(639, 639);
    rows.Command1_Click();
    EXPECT_EQ(fields(640), moved(639));
    EXPECT_EQ(fields(639), made_way(640, 639));
    expect_selected(640, 640);
}

TEST_F(RowMoves, up_stops_at_row_1_after_filling_the_buffer) {
    fill_all(1, 3);
    select(1, 2);
    const auto before = all_rows();
    rows.Command2_Click();
    EXPECT_EQ(all_rows(), before);
    expect_selected(1, 2);
    ASSERT_EQ(rows.RowBuffer().size(), 2U);
    EXPECT_EQ(rows.RowBuffer()[1][3], "r2c4");
}

TEST_F(RowMoves, up_reaches_row_1) {
    fill_all(1, 2);
    select(2, 2);
    rows.Command2_Click();
    EXPECT_EQ(fields(1), moved(2));
    EXPECT_EQ(fields(2), made_way(1, 2));
    EXPECT_EQ(text(0, kTag), "Tag");
    expect_selected(1, 1);
}

TEST_F(RowMoves, without_a_selection_down_leaves_even_the_buffer_and_up_refills_it) {
    fill_all(1, 3);
    const auto before = all_rows();
    select(2, 2);
    rows.mnuCopy_Click();
    click(0, kLabel);
    rows.Command1_Click();
    ASSERT_EQ(rows.RowBuffer().size(), 1U);
    EXPECT_EQ(rows.RowBuffer()[0][0], "r2c1");
    rows.Command2_Click();
    EXPECT_TRUE(rows.RowBuffer().empty());
    EXPECT_EQ(all_rows(), before);
    expect_selected(0, 0);
}

TEST_F(RowMoves, a_selection_that_takes_in_the_headings_does_not_move) {
    fill_all(1, 4);
    const auto before = all_rows();
    select(0, 2);
    rows.Command1_Click();
    rows.Command2_Click();
    EXPECT_EQ(all_rows(), before);
    expect_selected(0, 2);
    EXPECT_EQ(rows.RowBuffer().size(), 2U);
}

TEST_F(RowMoves, put_the_block_into_the_copy_buffer) {
    fill_all(5, 8);
    for (const bool down : {true, false}) {
        rows.reset_buffer();
        select(5, 7);
        down ? rows.Command1_Click() : rows.Command2_Click();
        EXPECT_EQ(rows.RowBuffer().size(), 3U);
        fill_all(4, 8);
    }
}

TEST_F(RowMoves, recolour_no_row_and_keep_the_current_cell) {
    fill_all(4, 8);
    grey(5);
    grid.set_text(6, kMasked, "True");
    select(5, 6);
    rows.Command1_Click();
    expect_colour(5, kGrey);
    expect_colour(6, 0);
    expect_colour(7, 0);
    rows.Command2_Click();
    expect_colour(5, kGrey);
    expect_cell(5, kLabel);
}

TEST_F(RowMoves, of_639_rows_are_one_change_each) {
    fill_all(1, 640);
    select(1, 639);
    const CountedSignals down(grid);
    rows.Command1_Click();
    EXPECT_EQ(down.count, 1);
    EXPECT_EQ(down.last.first_row, 1);
    EXPECT_EQ(down.last.last_row, 640);
    const CountedSignals up(grid);
    rows.Command2_Click();
    EXPECT_EQ(up.count, 1);
    EXPECT_EQ(up.last.first_row, 1);
    EXPECT_EQ(up.last.last_row, 640);
}

TEST_F(RowMoves, walk_a_block_through_the_whole_table_and_back) {
    for (int row = 1; row <= kLastRow; ++row) grid.set_text(row, kTag, std::to_string(row));
    select(1, 3);
    for (int i = 0; i < 700; ++i) rows.Command1_Click();
    expect_selected(638, 640);
    EXPECT_EQ(text(638, kTag), "1");
    EXPECT_EQ(text(637, kTag), "640");
    EXPECT_EQ(text(1, kTag), "4");
    for (int i = 0; i < 700; ++i) rows.Command2_Click();
    expect_selected(1, 3);
    for (int row = 1; row <= kLastRow; ++row) EXPECT_EQ(text(row, kTag), std::to_string(row));
}

}  // namespace
}  // namespace memwright
