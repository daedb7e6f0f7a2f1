// Keys on the grid itself, without an open editor: the label column, banks, marking and moving
// rows.

#include "table/grid_keys.h"

#include "table/editing_test.h"

namespace memwright {
namespace {

using namespace columns;

constexpr int kPage = 10;  // rows in sight

class GridKeysTest : public EditingTest {
  protected:
    bool press(GridKey key, bool shift = false) { return grid.key_down(key, shift, kPage); }
    // Where a key leads from a cell; {-1, -1} if it is left to the view.
    std::pair<int, int> after(GridKey key, int row, int col) {
        go_to(row, col);
        if (!press(key)) return {-1, -1};
        return {grid.Row(), grid.Col()};
    }
    void mark(int from, int to) {
        go_to(from, kLabel);
        rows.MSFlexGrid1_MouseUp(MouseButton::left, {to, kLabel});
    }

    CommandButton move_up{"Command2"};
    CommandButton move_down{"Command1"};
    CommandButton erase{"Command3"};
    std::vector<Connection> connections = {
        grid.mouse_up.connect(
            [this](MouseButton button, MouseCell cell) { rows.MSFlexGrid1_MouseUp(button, cell); }),
        move_up.clicked.connect([this] { rows.Command2_Click(); }),
        move_down.clicked.connect([this] { rows.Command1_Click(); }),
        erase.clicked.connect([this] { rows.Command3_Click(); }),
        grid.rows_wanted.connect([this](int first, int last) { wanted.emplace_back(first, last); }),
        current_changes()};
    GridKeys keys{grid, {move_up, move_down, erase}};
    std::vector<std::pair<int, int>> wanted;  // rows to be in sight
    int moves = 0;                            // of the current cell

  private:
    Connection current_changes() {
        return grid.current_changed.connect([this] { ++moves; });
    }
};

const std::pair<int, int> kLeftToTheView{-1, -1};

struct Press {
    GridKey key;
    std::pair<int, int> from;
    std::pair<int, int> to;
};

TEST_F(GridKeysTest, lead_into_the_label_column_along_it_and_out_again) {
    const std::vector<Press> steps = {{GridKey::left, {5, kTag}, {5, kLabel}},
                                     {GridKey::left, {5, kLabel}, {5, kLabel}},
                                     {GridKey::right, {5, kLabel}, {5, kTag}},
                                     {GridKey::home, {5, kLabel}, {5, kLabel}},
                                     {GridKey::end, {5, kLabel}, {5, kPref}},
                                     {GridKey::up, {5, kLabel}, {4, kLabel}},
                                     {GridKey::up, {1, kLabel}, {1, kLabel}},
                                     {GridKey::down, {5, kLabel}, {6, kLabel}},
                                     {GridKey::down, {640, kLabel}, {640, kLabel}},
                                     {GridKey::page_up, {25, kLabel}, {15, kLabel}},
                                     {GridKey::page_up, {5, kLabel}, {1, kLabel}},
                                     {GridKey::page_down, {5, kLabel}, {15, kLabel}},
                                     {GridKey::page_down, {635, kLabel}, {640, kLabel}},
                                     {GridKey::first, {300, kLabel}, {1, kLabel}},
                                     {GridKey::last, {300, kLabel}, {640, kLabel}},
                                     {GridKey::down, {0, kLabel}, {1, kLabel}}};
    for (const auto& [key, from, to] : steps) {
        EXPECT_EQ(after(key, from.first, from.second), to) << from.first << ", " << from.second;
    }
}

TEST_F(GridKeysTest, lead_from_bank_to_bank_with_the_same_number_in_any_column) {
    for (const int col : {kLabel, kTag, kPref}) {
        const std::vector<Press> steps = {{GridKey::next_bank, {1, col}, {65, col}},
                                         {GridKey::next_bank, {64, col}, {128, col}},
                                         {GridKey::next_bank, {576, col}, {640, col}},
                                         {GridKey::next_bank, {577, col}, {577, col}},
                                         {GridKey::next_bank, {640, col}, {640, col}},
                                         {GridKey::previous_bank, {65, col}, {1, col}},
                                         {GridKey::previous_bank, {64, col}, {64, col}},
                                         {GridKey::previous_bank, {640, col}, {576, col}}};
        for (const auto& [key, from, to] : steps) {
            EXPECT_EQ(after(key, from.first, col), to) << from.first << ", " << col;
        }
    }
}

TEST_F(GridKeysTest, are_left_to_the_view_between_cells) {
    for (const GridKey key : {GridKey::right, GridKey::up, GridKey::down, GridKey::page_up,
                              GridKey::page_down, GridKey::home, GridKey::end, GridKey::first,
                              GridKey::last, GridKey::mark, GridKey::erase}) {
        for (const int col : {kTag, kFreq, kPref}) EXPECT_EQ(after(key, 5, col), kLeftToTheView);
    }
    EXPECT_EQ(after(GridKey::left, 5, kFreq), kLeftToTheView);
    EXPECT_EQ(after(GridKey::left, 0, kTag), kLeftToTheView);
}

TEST_F(GridKeysTest, mark_rows_with_shift_from_the_current_row_which_stays) {
    go_to(5, kLabel);
    press(GridKey::down, true);
    expect_selected(5, 6);
    press(GridKey::down, true);
    expect_selected(5, 7);
    EXPECT_EQ(wanted.back(), std::pair(5, 7));
    for (int times = 0; times < 3; ++times) press(GridKey::up, true);
    expect_selected(4, 5);
    EXPECT_EQ(wanted.back(), std::pair(5, 4));
    press(GridKey::page_down, true);
    expect_selected(5, 14);
    press(GridKey::next_bank, true);
    expect_selected(5, 78);
    press(GridKey::last, true);
    expect_selected(5, 640);
    press(GridKey::down, true);
    expect_selected(5, 640);
    press(GridKey::first, true);
    expect_selected(1, 5);
    expect_cell(5, kLabel);
}

TEST_F(GridKeysTest, begin_a_block_anew_once_the_current_row_has_changed) {
    go_to(5, kLabel);
    press(GridKey::down, true);
    press(GridKey::down);
    expect_selected(5, 6);
    expect_cell(6, kLabel);
    press(GridKey::down, true);
    expect_selected(6, 7);
    press(GridKey::mark);
    expect_selected(6, 6);
    press(GridKey::down, true);
    expect_selected(6, 7);
}

TEST_F(GridKeysTest, go_on_with_a_block_that_was_marked_with_the_mouse) {
    go_to(5, kLabel);
    grid.mouse_up(MouseButton::left, {8, kLabel});
    press(GridKey::down, true);
    expect_selected(5, 9);
    grid.mouse_up(MouseButton::left, {3, kLabel});
    press(GridKey::down, true);
    expect_selected(4, 5);
}

TEST_F(GridKeysTest, never_mark_from_the_headings_on) {
    go_to(0, kLabel);
    press(GridKey::mark);
    press(GridKey::down, true);
    expect_cell(1, kLabel);
    expect_selected(0, 0);
    press(GridKey::down, true);
    expect_selected(1, 2);
}

TEST_F(GridKeysTest, without_shift_change_the_current_cell_once) {
    go_to(5, kLabel);
    moves = 0;
    press(GridKey::down);
    EXPECT_EQ(moves, 1);
    press(GridKey::next_bank);
    EXPECT_EQ(moves, 2);
}

TEST_F(GridKeysTest, delete_in_the_label_column_is_the_delete_button) {
    for (const int row : {5, 6, 7}) fill(row);
    mark(5, 6);
    EXPECT_TRUE(press(GridKey::erase));
    EXPECT_EQ(fields(5), std::vector<std::string>(14));
    EXPECT_EQ(fields(6), std::vector<std::string>(14));
    EXPECT_EQ(fields(7), filled(7, 14));
    fill(5);
    erase.enabled = false;
    EXPECT_TRUE(press(GridKey::erase));
    EXPECT_EQ(fields(5), filled(5, 14));
}

TEST_F(GridKeysTest, move_keys_are_the_move_buttons_and_the_current_row_goes_along_with_its_block) {
    for (int row = 4; row <= 9; ++row) fill(row);
    mark(5, 7);
    EXPECT_TRUE(press(GridKey::move_down));
    EXPECT_EQ(fields(5, 4), filled(8));
    EXPECT_EQ(fields(6, 4), filled(5));
    expect_selected(6, 8);
    expect_cell(6, kLabel);
    EXPECT_EQ(wanted.back(), std::pair(6, 8));
    EXPECT_TRUE(press(GridKey::move_up));
    EXPECT_TRUE(press(GridKey::move_up));
    expect_selected(4, 6);
    expect_cell(4, kLabel);
    EXPECT_EQ(wanted.back(), std::pair(6, 4));
    // Which can be marked on.
    press(GridKey::down, true);
    expect_selected(4, 5);
    move_up.enabled = false;
    EXPECT_TRUE(press(GridKey::move_up));
    expect_selected(4, 5);
}

TEST_F(GridKeysTest, a_block_that_was_marked_by_keys_is_marked_on_where_it_was_moved_to) {
    go_to(5, kLabel);
    press(GridKey::down, true);
    press(GridKey::down, true);
    press(GridKey::move_down);
    expect_selected(6, 8);
    press(GridKey::down, true);
    expect_selected(6, 9);
}

TEST_F(GridKeysTest, move_keys_work_from_a_cell_while_rows_are_marked_and_leave_it_current) {
    go_to(3, kFreq);
    EXPECT_FALSE(press(GridKey::move_down));
    mark(5, 6);
    go_to(5, kFreq);
    EXPECT_TRUE(press(GridKey::move_down));
    expect_selected(6, 7);
    expect_cell(5, kFreq);
    EXPECT_EQ(wanted.back(), std::pair(6, 7));
}

TEST_F(GridKeysTest, a_block_that_cannot_be_moved_leaves_the_current_row) {
    mark(1, 2);
    EXPECT_TRUE(press(GridKey::move_up));
    expect_selected(1, 2);
    expect_cell(1, kLabel);
    // With nothing marked there is nothing to be seen.
    mark(0, 0);
    go_to(5, kLabel);
    wanted.clear();
    EXPECT_TRUE(press(GridKey::move_down));
    expect_cell(5, kLabel);
    EXPECT_TRUE(wanted.empty());
}

TEST_F(GridKeysTest, a_block_that_is_moved_with_the_buttons_comes_into_sight_too) {
    mark(5, 6);
    move_down.clicked();
    EXPECT_EQ(wanted.back(), std::pair(6, 7));
    expect_cell(5, kLabel);
    move_up.clicked();
    EXPECT_EQ(wanted.back(), std::pair(6, 5));
}

}  // namespace
}  // namespace memwright
