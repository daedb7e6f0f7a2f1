// Rows that are shown in grey.

#include <string>
#include <vector>

#include "table/table_test.h"

namespace memwright {
namespace {

using namespace columns;

constexpr Colour kGrey = 0xC0C0C0;

class Mask : public TableTest {
  protected:
    Mask() { table.initgrid(); }

    void expect_colour(int row, Colour colour) const {
        EXPECT_EQ(grid.colour(row, kLabel), 0U) << "the label of row " << row;
        for (int col = 1; col < 15; ++col) {
            EXPECT_EQ(grid.colour(row, col), colour) << row << ", " << col;
        }
    }
};

TEST_F(Mask, greys_the_rows_from_1_to_240_whose_masked_text_is_True) {
    for (const int row : {1, 100, 240, 241, 640}) grid.set_text(row, kMasked, "True");
    table.MaskColor();
    expect_colour(1, kGrey);
    expect_colour(100, kGrey);
    expect_colour(240, kGrey);
    expect_colour(2, 0);
    expect_colour(241, 0);
    expect_colour(640, 0);
    expect_colour(0, 0);
}

TEST_F(Mask, looks_for_exactly_True) {
    const std::vector<std::string> others = {"true", "TRUE", "True ", " True", "False", "1", ""};
    int row = 0;
    for (const std::string& text : others) grid.set_text(++row, kMasked, text);
    table.MaskColor();
    for (int r = 1; r <= row; ++r) expect_colour(r, 0);
    for (int r = 1; r <= row; ++r) {
        table.MaskColorBOLD(r);
        expect_colour(r, 0);
    }
}

TEST_F(Mask, takes_the_grey_back_from_rows_that_are_masked_no_more) {
    for (const int row : {240, 241}) {
        grid.set_text(row, kMasked, "True");
        table.MaskColorBOLD(row);
        grid.set_text(row, kMasked, "False");
    }
    table.MaskColor();
    expect_colour(240, 0);
    expect_colour(241, kGrey);  // below 240 rows keep what they have
    table.MaskColorBOLD(241);
    expect_colour(241, 0);
}

TEST_F(Mask, MaskColor_leaves_the_current_cell_where_it_was_and_draws_again) {
    grid.set_row(300);
    grid.set_col(3);
    table.MaskColor();
    EXPECT_EQ(grid.Row(), 300);
    EXPECT_EQ(grid.Col(), 3);
    EXPECT_TRUE(grid.Redraw());
}

TEST_F(Mask, MaskColor_is_drawn_once) {
    for (int row = 1; row <= 240; ++row) grid.set_text(row, kMasked, "True");
    int signals = 0;
    GridChange last;
    const Connection connection = grid.changed.connect([&](const GridChange& change) {
        ++signals;
        last = change;
    });
    table.MaskColor();
    EXPECT_EQ(signals, 1);
    EXPECT_EQ(last.first_row, 1);
    EXPECT_EQ(last.last_row, 240);
    EXPECT_EQ(last.first_col, 1);
    EXPECT_EQ(last.last_col, 14);
    table.MaskColor();
    EXPECT_EQ(signals, 1) << "nothing changed";
}

TEST_F(Mask, MaskColorBOLD_colours_any_one_row) {
    for (const int row : {1, 240, 241, 242, 640}) grid.set_text(row, kMasked, "True");
    for (const int row : {1, 241, 640}) table.MaskColorBOLD(row);
    expect_colour(1, kGrey);
    expect_colour(241, kGrey);
    expect_colour(640, kGrey);
    expect_colour(240, 0);
    expect_colour(242, 0);
}

TEST_F(Mask, MaskColorBOLD_leaves_the_current_cell_in_the_rows_last_column) {
    grid.set_row(300);
    grid.set_col(3);
    table.MaskColorBOLD(241);
    EXPECT_EQ(grid.Row(), 241);
    EXPECT_EQ(grid.Col(), 14);
    EXPECT_TRUE(grid.Redraw());
}

TEST_F(Mask, MaskColorBOLD_is_drawn_once) {
    grid.set_text(241, kMasked, "True");
    int signals = 0;
    const Connection connection =
        grid.changed.connect([&](const GridChange& /*change*/) { ++signals; });
    table.MaskColorBOLD(241);
    EXPECT_EQ(signals, 1);
}

TEST_F(Mask, parse_takes_every_grey_away) {
    for (int row = 1; row <= 640; ++row) {
        grid.set_text(row, kMasked, "True");
        table.MaskColorBOLD(row);
    }
    table.ParseVR120Data();
    for (int row = 1; row <= 640; ++row) expect_colour(row, 0);
}

}  // namespace
}  // namespace memwright
