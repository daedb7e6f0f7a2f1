// The grid as such: what its signals tell, and when.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/error.h"
#include "table/ms_flex_grid.h"

namespace memwright {
namespace {

class GridTest : public testing::Test {
  protected:
    GridTest() {
        grid.set_rows(10);
        grid.set_cols(5);
        changed =
            grid.changed.connect([this](const GridChange& change) { changes.push_back(change); });
        current_changed = grid.current_changed.connect([this] { ++moves; });
    }

    MSFlexGrid grid{"MSFlexGrid1"};
    std::vector<GridChange> changes;
    int moves = 0;
    Connection changed;
    Connection current_changed;
};

TEST_F(GridTest, starts_with_empty_cells_in_the_users_own_colour) {
    EXPECT_EQ(grid.Rows(), 10);
    EXPECT_EQ(grid.Cols(), 5);
    EXPECT_EQ(grid.TextMatrix(9, 4), "");
    EXPECT_EQ(grid.colour(9, 4), 0U);
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_EQ(grid.Col(), 0);
    EXPECT_TRUE(grid.Redraw());
    EXPECT_EQ(grid.ColWidth(4), 960);
    EXPECT_EQ(grid.RowHeight(9), 240);
}

TEST_F(GridTest, marks_rows_from_the_first_to_the_last_and_never_the_headings) {
    for (int row = 0; row < 8; ++row) EXPECT_FALSE(grid.is_marked(row)) << "none at first";
    grid.marked_rows = RowRange{3, 5};
    for (int row = 0; row < 8; ++row) EXPECT_EQ(grid.is_marked(row), row >= 3 && row <= 5) << row;
    grid.marked_rows = RowRange{0, 1};
    for (int row = 0; row < 8; ++row) EXPECT_EQ(grid.is_marked(row), row == 1) << row;
    grid.marked_rows = RowRange{};
    for (int row = 0; row < 8; ++row) EXPECT_FALSE(grid.is_marked(row)) << row;
}

TEST_F(GridTest, a_text_or_a_colour_signals_its_cell) {
    grid.set_text(3, 2, "145.00000");
    grid.set_colour(4, 1, 0xC0C0C0);
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[0].first_row, 3);
    EXPECT_EQ(changes[0].last_row, 3);
    EXPECT_EQ(changes[0].first_col, 2);
    EXPECT_EQ(changes[0].last_col, 2);
    EXPECT_FALSE(changes[0].layout);
    EXPECT_EQ(changes[1].first_row, 4);
    EXPECT_EQ(changes[1].last_col, 1);
    EXPECT_EQ(grid.TextMatrix(3, 2), "145.00000");
    EXPECT_EQ(grid.colour(4, 1), 0xC0C0C0U);
}

TEST_F(GridTest, what_stays_as_it_was_signals_nothing) {
    grid.set_text(3, 2, "");
    grid.set_colour(3, 2, 0);
    grid.set_rows(10);
    grid.set_cols(5);
    grid.set_row(0);
    grid.set_col(0);
    grid.set_row_height(1, grid.RowHeight(1));
    grid.set_col_width(1, grid.ColWidth(1));
    grid.set_col_alignment(1, grid.ColAlignment(1));
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(moves, 0);
}

TEST_F(GridTest, sizes_and_alignments_signal_the_layout) {
    grid.set_rows(11);
    grid.set_cols(6);
    grid.set_row_height(1, 320);
    grid.set_col_width(1, 1200);
    grid.set_col_alignment(1, 1);
    ASSERT_EQ(changes.size(), 5U);
    for (const GridChange& change : changes) {
        EXPECT_TRUE(change.layout);
        EXPECT_LT(change.last_row, change.first_row) << "no cell changed";
    }
    EXPECT_EQ(grid.RowHeight(1), 320);
    EXPECT_EQ(grid.ColWidth(1), 1200);
    EXPECT_EQ(grid.ColAlignment(1), 1);
}

TEST_F(GridTest, a_batch_signals_once_at_its_end_and_covers_all_that_changed) {
    {
        const MSFlexGrid::Batch batch(grid);
        grid.set_text(7, 1, "a");
        {
            const MSFlexGrid::Batch inner(grid);
            grid.set_text(2, 3, "b");
        }
        grid.set_row_height(0, 320);
        EXPECT_TRUE(changes.empty());
    }
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].first_row, 2);
    EXPECT_EQ(changes[0].last_row, 7);
    EXPECT_EQ(changes[0].first_col, 1);
    EXPECT_EQ(changes[0].last_col, 3);
    EXPECT_TRUE(changes[0].layout);
}

TEST_F(GridTest, a_batch_without_a_change_signals_nothing) {
    { const MSFlexGrid::Batch batch(grid); }
    EXPECT_TRUE(changes.empty());
}

TEST_F(GridTest, without_redraw_changes_wait_for_it) {
    grid.set_redraw(false);
    grid.set_text(1, 1, "a");
    { const MSFlexGrid::Batch batch(grid); }
    EXPECT_TRUE(changes.empty());
    grid.set_redraw(true);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].first_row, 1);
    grid.set_redraw(true);
    EXPECT_EQ(changes.size(), 1U);
}

TEST_F(GridTest, redraw_inside_a_batch_waits_for_the_batch) {
    {
        const MSFlexGrid::Batch batch(grid);
        grid.set_redraw(false);
        grid.set_text(1, 1, "a");
        grid.set_redraw(true);
        EXPECT_TRUE(changes.empty());
    }
    EXPECT_EQ(changes.size(), 1U);
}

TEST_F(GridTest, clear_empties_every_cell_and_keeps_the_layout) {
    grid.set_text(0, 0, "#");
    grid.set_text(9, 4, "x");
    grid.set_colour(9, 4, 0xC0C0C0);
    grid.set_row_height(3, 320);
    grid.set_col_width(3, 1200);
    changes.clear();
    grid.Clear();
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].first_row, 0);
    EXPECT_EQ(changes[0].last_row, 9);
    EXPECT_EQ(changes[0].first_col, 0);
    EXPECT_EQ(changes[0].last_col, 4);
    for (int row = 0; row < 10; ++row) {
        for (int col = 0; col < 5; ++col) {
            EXPECT_EQ(grid.TextMatrix(row, col), "");
            EXPECT_EQ(grid.colour(row, col), 0U);
        }
    }
    EXPECT_EQ(grid.RowHeight(3), 320);
    EXPECT_EQ(grid.ColWidth(3), 1200);
}

TEST_F(GridTest, the_current_cell_moves_with_a_signal) {
    grid.set_row(4);
    grid.set_col(2);
    EXPECT_EQ(moves, 2);
    EXPECT_EQ(grid.Row(), 4);
    EXPECT_EQ(grid.Col(), 2);
    EXPECT_TRUE(changes.empty());
}

TEST_F(GridTest, a_smaller_grid_takes_the_current_cell_along) {
    grid.set_row(9);
    grid.set_col(4);
    grid.set_rows(3);
    grid.set_cols(2);
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_EQ(grid.Col(), 1);
    grid.set_rows(0);
    grid.set_cols(0);
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_EQ(grid.Col(), 0);
}

TEST_F(GridTest, a_larger_grid_keeps_what_stands_in_it) {
    grid.set_text(9, 4, "x");
    grid.set_rows(12);
    grid.set_cols(7);
    EXPECT_EQ(grid.TextMatrix(9, 4), "x");
    EXPECT_EQ(grid.TextMatrix(11, 6), "");
}

TEST_F(GridTest, rows_and_columns_outside_of_it_are_index_errors) {
    EXPECT_THROW(grid.TextMatrix(10, 0), IndexError);
    EXPECT_THROW(grid.TextMatrix(-1, 0), IndexError);
    EXPECT_THROW(grid.TextMatrix(0, 5), IndexError);
    EXPECT_THROW(grid.TextMatrix(0, -1), IndexError);
    EXPECT_THROW(grid.set_text(10, 0, "x"), IndexError);
    EXPECT_THROW(grid.set_colour(0, 5, 1), IndexError);
    EXPECT_THROW(grid.RowHeight(10), IndexError);
    EXPECT_THROW(grid.ColWidth(5), IndexError);
    EXPECT_THROW(grid.ColAlignment(5), IndexError);
    EXPECT_THROW(grid.set_row_height(10, 1), IndexError);
    EXPECT_THROW(grid.set_col_width(5, 1), IndexError);
    EXPECT_THROW(grid.set_col_alignment(5, 1), IndexError);
    EXPECT_THROW(grid.set_row(10), IndexError);
    EXPECT_THROW(grid.set_col(5), IndexError);
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_EQ(grid.Col(), 0);
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(moves, 0);
}

}  // namespace
}  // namespace memwright
