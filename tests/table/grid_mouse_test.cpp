// Mouse buttons over the grid: the current cell, the value that a left click picks and a right
// click copies, and the selected block.

#include "table/editing_test.h"

namespace memwright {
namespace {

using namespace columns;

class GridMouse : public EditingTest {
  protected:
    void right_click(int row, int col) { click(row, col, MouseButton::right); }
};

TEST_F(GridMouse, any_button_makes_the_cell_under_it_current) {
    for (const MouseButton button : {MouseButton::left, MouseButton::right, MouseButton::other}) {
        go_to(1, 1);
        mouse_down(640, 4, button);
        expect_cell(640, 4);
    }
    mouse_down(0, 3);
    expect_cell(0, 3);
    mouse_down(7, 0);
    expect_cell(7, 0);
}

TEST_F(GridMouse, the_column_becomes_current_before_the_row) {
    go_to(1, 1);
    std::vector<std::pair<int, int>> way;
    const Connection connection =
        grid.current_changed.connect([&] { way.emplace_back(grid.Row(), grid.Col()); });
    mouse_down(5, 3);
    EXPECT_EQ(way, (std::vector<std::pair<int, int>>{{1, 3}, {5, 3}}));
}

TEST_F(GridMouse, the_right_button_on_the_label_column_pops_the_menu_up_and_does_nothing_else) {
    go_to(5, kLabel);
    mouse_down(9, kFreq, MouseButton::right);
    EXPECT_EQ(pop_ups, 1);
    expect_cell(5, kLabel);
    mouse_down(0, 0, MouseButton::right);
    EXPECT_EQ(pop_ups, 2);
    expect_cell(5, kLabel);
}

TEST_F(GridMouse, no_menu_pops_up_for_another_button_or_from_another_column) {
    go_to(5, kLabel);
    mouse_down(6, kLabel, MouseButton::left);
    mouse_down(6, kLabel, MouseButton::other);
    go_to(5, kTag);
    mouse_down(6, kLabel, MouseButton::right);
    EXPECT_EQ(pop_ups, 0);
    expect_cell(6, kLabel);
}

TEST_F(GridMouse, nothing_is_picked_at_the_start) {
    EXPECT_EQ(editor.PickedText, "");
    EXPECT_EQ(editor.PickedCol, 0);
    fill(5);
    for (int col = 1; col < 15; ++col) mouse_down(5, col, MouseButton::right);
    EXPECT_EQ(fields(5), filled(5, 14));
    mouse_down(5, kLabel, MouseButton::right);
    EXPECT_EQ(text(5, kLabel), "Bank 0 - 4");
}

TEST_F(GridMouse, a_left_click_picks_a_cells_text_and_column) {
    fill(5);
    click(5, kMode);
    EXPECT_EQ(editor.PickedText, "r5c3");
    EXPECT_EQ(editor.PickedCol, kMode);
    expect_cell(5, kMode);
}

TEST_F(GridMouse, releasing_another_button_picks_nothing_and_moves_nothing) {
    fill(5);
    click(5, kMode);
    for (const MouseButton button : {MouseButton::right, MouseButton::other}) {
        rows.MSFlexGrid1_MouseUp(button, {6, kFreq});
        expect_cell(5, kMode);
        EXPECT_EQ(editor.PickedText, "r5c3");
        EXPECT_EQ(editor.PickedCol, kMode);
    }
}

TEST_F(GridMouse, the_cell_where_the_left_button_is_released_is_picked) {
    fill(8);
    mouse_down(5, kMode);
    rows.MSFlexGrid1_MouseUp(MouseButton::left, {8, kTag});
    expect_cell(8, kTag);
    EXPECT_EQ(editor.PickedText, "r8c1");
    EXPECT_EQ(editor.PickedCol, kTag);
    expect_selected(0, 0);
}

TEST_F(GridMouse, a_right_click_copies_the_picked_value_within_its_column) {
    for (const int col : {kTag, kMode, kPref}) {
        fill(5);
        fill(6);
        click(5, col);
        right_click(6, col);
        EXPECT_EQ(text(6, col), "r5c" + std::to_string(col));
        expect_cell(6, col);
    }
}

TEST_F(GridMouse, a_right_click_in_another_column_or_on_headings_and_labels_copies_nothing) {
    fill(5);
    fill(6);
    click(5, kTag);
    right_click(6, kMode);
    EXPECT_EQ(fields(6), filled(6, 14));
    right_click(0, kTag);
    EXPECT_EQ(text(0, kTag), "Tag");
    right_click(6, kLabel);
    EXPECT_EQ(text(6, kLabel), "Bank 0 - 5");
}

TEST_F(GridMouse, a_left_click_copies_nothing) {
    fill(5);
    fill(6);
    click(5, kTag);
    mouse_down(6, kTag);
    mouse_down(6, kTag, MouseButton::other);
    EXPECT_EQ(fields(6), filled(6, 14));
}

TEST_F(GridMouse, an_empty_pick_blanks_any_cell_but_a_label) {
    for (int col = 1; col < 15; ++col) {
        fill(6);
        click(5, col);
        ASSERT_EQ(editor.PickedText, "");
        mouse_down(6, col, MouseButton::right);
        EXPECT_EQ(text(6, col), col == kTag ? "r6c1" : "") << col;
    }
}

TEST_F(GridMouse, a_frequency_that_is_copied_into_an_empty_row_brings_all_defaults) {
    put(5, {"145.50000", "A", "AM", "On"});
    click(5, kFreq);
    right_click(300, kFreq);
    EXPECT_EQ(fields(300),
              (std::vector<std::string>{"", "145.50000", "NFM", "Off", "5 KHz", "False", "SIMP",
                                        "000000", "OFF", "100.0", "023", "MAX", "", ""}));
    expect_colour(300, 0);
}

TEST_F(GridMouse, defaults_replace_what_stood_in_a_row_without_a_mode) {
    fill(6);
    grid.set_text(6, kMode, "");
    grid.set_text(6, kMasked, "True");
    grey(6);
    grid.set_text(5, kFreq, "145.50000");
    click(5, kFreq);
    right_click(6, kFreq);
    EXPECT_EQ(fields(6),
              (std::vector<std::string>{"r6c1", "145.50000", "NFM", "Off", "5 KHz", "False", "SIMP",
                                        "000000", "OFF", "100.0", "023", "MAX", "r6c13", "r6c14"}));
    expect_colour(6, 0);
}

TEST_F(GridMouse, a_row_that_has_a_mode_gets_no_defaults) {
    fill(6);
    grid.set_text(5, kFreq, "145.50000");
    click(5, kFreq);
    right_click(6, kFreq);
    auto expected = filled(6, 14);
    expected[1] = "145.50000";
    EXPECT_EQ(fields(6), expected);
}

TEST_F(GridMouse, other_columns_bring_no_defaults) {
    grid.set_text(5, kTag, "A");
    click(5, kTag);
    right_click(6, kTag);
    EXPECT_EQ(fields(6, 4), (std::vector<std::string>{"A", "", "", ""}));
}

TEST_F(GridMouse, a_copied_value_recolours_its_row_by_its_masked_text) {
    fill(5);
    click(5, kTag);
    grid.set_text(300, kMasked, "True");
    right_click(300, kTag);
    expect_colour(300, kGrey);
    grid.set_text(300, kMasked, "true");
    right_click(300, kTag);
    expect_colour(300, 0);
    grid.set_text(300, kMasked, "True");
    mouse_down(300, kMode, MouseButton::right);
    expect_colour(300, 0);  // nothing was copied, and nothing recoloured
}

TEST_F(GridMouse, an_empty_pick_over_a_label_recolours_the_row_all_the_same) {
    click(5, kTag);
    grid.set_text(6, kMasked, "True");
    right_click(6, kTag);
    expect_colour(6, kGrey);
}

TEST_F(GridMouse, a_copied_frequency_is_drawn_once) {
    grid.set_text(5, kFreq, "145.50000");
    click(5, kFreq);
    const CountedSignals changes(grid);
    right_click(6, kFreq);
    EXPECT_EQ(changes.count, 1);
    EXPECT_EQ(changes.last.first_row, 6);
    EXPECT_EQ(changes.last.last_row, 6);
}

TEST_F(GridMouse, labels_select_the_rows_between_the_current_one_and_the_one_under_the_mouse) {
    select(5, 7);
    expect_selected(5, 7);
    select(9, 3);
    expect_selected(3, 9);
    select(640, 1);
    expect_selected(1, 640);
    click(12, kLabel);
    expect_selected(12, 12);
    EXPECT_EQ(editor.PickedCol, 0) << "a label is not picked";
}

TEST_F(GridMouse, a_drag_that_began_on_a_label_selects_wherever_it_ends) {
    mouse_down(5, kLabel);
    rows.MSFlexGrid1_MouseUp(MouseButton::left, {8, kMode});
    expect_selected(5, 8);
    expect_cell(5, kLabel);
}

TEST_F(GridMouse, every_button_that_is_released_in_the_label_column_selects) {
    for (const MouseButton button : {MouseButton::right, MouseButton::other}) {
        select(1, 1);
        go_to(5, kLabel);
        rows.MSFlexGrid1_MouseUp(button, {7, kLabel});
        expect_selected(5, 7);
    }
}

TEST_F(GridMouse, a_drag_that_began_on_a_cell_does_not_select) {
    select(1, 2);
    mouse_down(5, kTag);
    rows.MSFlexGrid1_MouseUp(MouseButton::left, {8, kLabel});
    expect_selected(1, 2);
    expect_cell(8, kLabel);
}

TEST_F(GridMouse, the_selected_rows_are_marked) {
    EXPECT_FALSE(grid.is_marked(1));
    select(5, 7);
    EXPECT_EQ(grid.marked_rows.get(), (RowRange{5, 7}));
    select(0, 3);
    expect_selected(0, 3);
    for (const int row : {1, 2, 3}) EXPECT_TRUE(grid.is_marked(row));
    for (const int row : {0, 4}) EXPECT_FALSE(grid.is_marked(row)) << "the headings never are";
    click(0, kLabel);
    expect_selected(0, 0);
    for (const int row : {0, 1}) EXPECT_FALSE(grid.is_marked(row));
}

TEST_F(GridMouse, the_selection_survives_a_rebuilt_table) {
    select(5, 7);
    table.ParseVR120Data();
    expect_selected(5, 7);
    EXPECT_EQ(grid.marked_rows.get(), (RowRange{5, 7}));
}

TEST_F(GridMouse, the_edit_menu_offers_its_entries_only_while_a_block_is_selected) {
    const auto offered = [&] {
        rows.mnuEdit_Click();
        EXPECT_EQ(mnuCut.enabled.get(), mnuCopy.enabled.get());
        EXPECT_EQ(mnuCut.enabled.get(), mnuPaste.enabled.get());
        return mnuCut.enabled.get();
    };
    EXPECT_FALSE(offered());
    select(5, 5);
    EXPECT_TRUE(offered());
    select(0, 5);
    EXPECT_FALSE(offered());
    select(1, 640);
    EXPECT_TRUE(offered());
}

}  // namespace
}  // namespace memwright
