// The empty table.

#include <array>
#include <string>

#include "table/table_test.h"

namespace memwright {
namespace {

struct Designed {
    std::string heading;
    double width;
};

const std::array<Designed, 15> kDesigned = {{{"#", 1700},
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

class TableLayout : public TableTest {
  protected:
    void expect_the_empty_table() const {
        ASSERT_EQ(grid.Rows(), 641);
        ASSERT_EQ(grid.Cols(), 15);
        for (int col = 0; col < 15; ++col) {
            const Designed& designed = kDesigned[static_cast<std::size_t>(col)];
            EXPECT_EQ(grid.TextMatrix(0, col), designed.heading);
            EXPECT_EQ(grid.ColWidth(col), designed.width) << designed.heading;
            EXPECT_EQ(grid.ColAlignment(col), 1) << designed.heading;
        }
        for (int row = 0; row <= 640; ++row) EXPECT_EQ(grid.RowHeight(row), 320) << row;
        for (int row = 1; row <= 640; ++row) {
            for (int col = 1; col < 15; ++col) {
                ASSERT_EQ(grid.TextMatrix(row, col), "") << row << ", " << col;
                ASSERT_EQ(grid.colour(row, col), 0U) << row << ", " << col;
            }
        }
    }
};

TEST_F(TableLayout, has_641_rows_of_320_twips_and_15_columns_with_their_headings_and_widths) {
    table.initgrid();
    expect_the_empty_table();
}

TEST_F(TableLayout, labels_every_row_with_its_bank_and_number_counted_from_0) {
    table.initgrid();
    EXPECT_EQ(grid.TextMatrix(1, 0), "Bank 0 - 0");
    EXPECT_EQ(grid.TextMatrix(64, 0), "Bank 0 - 63");
    EXPECT_EQ(grid.TextMatrix(65, 0), "Bank 1 - 0");
    EXPECT_EQ(grid.TextMatrix(577, 0), "Bank 9 - 0");
    EXPECT_EQ(grid.TextMatrix(640, 0), "Bank 9 - 63");
    for (int bank = 0; bank < 10; ++bank) {
        for (int number = 0; number < 64; ++number) {
            EXPECT_EQ(grid.TextMatrix(bank * 64 + number + 1, 0),
                      "Bank " + std::to_string(bank) + " - " + std::to_string(number));
        }
    }
}

TEST_F(TableLayout, leaves_nothing_of_what_the_grid_held_before) {
    grid.set_rows(700);
    grid.set_cols(20);
    for (int row = 0; row < 700; ++row) {
        for (int col = 0; col < 20; ++col) {
            grid.set_text(row, col, "old");
            grid.set_colour(row, col, 0xC0C0C0);
        }
    }
    grid.set_col_width(5, 500);
    grid.set_row_height(5, 500);
    grid.set_col_alignment(5, 4);
    table.initgrid();
    expect_the_empty_table();
    EXPECT_EQ(grid.TextMatrix(1, 0), "Bank 0 - 0");
    EXPECT_EQ(grid.colour(1, 0), 0U);
}

TEST_F(TableLayout, does_not_touch_the_image) {
    store.set_byte(0, 0x14);
    const MemoryImage before = store.MemoryImage;
    table.initgrid();
    EXPECT_EQ(store.MemoryImage, before);
}

TEST_F(TableLayout, keeps_the_current_cell) {
    table.initgrid();
    grid.set_row(300);
    grid.set_col(2);
    table.initgrid();
    EXPECT_EQ(grid.Row(), 300);
    EXPECT_EQ(grid.Col(), 2);
}

TEST_F(TableLayout, is_built_with_one_signal_each_time) {
    int signals = 0;
    GridChange last;
    const Connection connection = grid.changed.connect([&](const GridChange& change) {
        ++signals;
        last = change;
    });
    table.initgrid();
    EXPECT_EQ(signals, 1);
    EXPECT_TRUE(last.layout);
    table.initgrid();
    EXPECT_EQ(signals, 2);
    EXPECT_FALSE(last.layout) << "the layout is as it was";
    EXPECT_EQ(last.first_row, 0);
    EXPECT_EQ(last.last_row, 640);
    EXPECT_EQ(last.first_col, 0);
    EXPECT_EQ(last.last_col, 14);
}

}  // namespace
}  // namespace memwright
