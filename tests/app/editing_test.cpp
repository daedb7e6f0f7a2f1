// What the main window's grid, overlays, Edit menu and row buttons run.

#include "app/program_under_test.h"

namespace memwright {
namespace {

using namespace columns;

class Editing : public ProgramTest {
  protected:
    void SetUp() override { start_with_a_file(); }

    void go_to(int row, int col) {
        grid.set_row(row);
        grid.set_col(col);
    }
    void open(int row, int col) {
        go_to(row, col);
        grid.double_clicked();
    }
    void click(int row, int col, MouseButton button = MouseButton::left) {
        grid.mouse_down(button, {row, col});
        grid.mouse_up(button, {row, col});
        grid.clicked();
    }
    void select(int from, int to) {
        grid.mouse_down(MouseButton::left, {from, kLabel});
        grid.mouse_up(MouseButton::left, {to, kLabel});
    }
    std::string tag(int row) const { return grid.TextMatrix(row, kTag); }
    std::vector<bool> edit_entries() const {
        return {form.mnuCut.enabled, form.mnuCopy.enabled, form.mnuPaste.enabled};
    }

    MSFlexGrid& grid = form.MSFlexGrid1;
};

const std::vector<bool> kAll = {true, true, true};
const std::vector<bool> kNone = {false, false, false};

TEST_F(Editing, a_double_click_opens_the_cells_overlay) {
    open(1, kTag);
    EXPECT_TRUE(form.TxtGrid.visible);
    EXPECT_EQ(form.TxtGrid.text.get(), "A");
    EXPECT_EQ(form.TxtGrid.left.get(), grid.left + 1700 + 40);
    open(1, kMode);
    EXPECT_TRUE(form.CboGrid.visible);
    EXPECT_FALSE(form.TxtGrid.visible);
}

TEST_F(Editing, a_click_a_scroll_and_a_lost_focus_hide_the_overlays) {
    for (const int col : {kTag, kMode}) {
        for (Signal<>* signal : {&grid.clicked, &grid.scrolled, &form.TxtGrid.focus_lost}) {
            open(1, col);
            if (signal == &form.TxtGrid.focus_lost && col == kMode)
                signal = &form.CboGrid.focus_lost;
            (*signal)();
            EXPECT_FALSE(form.TxtGrid.visible || form.CboGrid.visible);
        }
    }
}

TEST_F(Editing, typed_text_is_filtered_and_in_the_cell_at_once) {
    open(1, kTag);
    char key = 'b';
    EXPECT_TRUE(form.TxtGrid.key_press(key));
    EXPECT_EQ(key, 'B');
    key = '#';
    EXPECT_FALSE(form.TxtGrid.key_press(key));
    form.TxtGrid.text = "NEW";
    EXPECT_EQ(tag(1), "NEW");
}

TEST_F(Editing, keys_of_the_text_box_move) {
    open(1, kTag);
    EXPECT_TRUE(form.TxtGrid.key_down(Key::tab, false));
    EXPECT_EQ(grid.Col(), kFreq);
    EXPECT_TRUE(form.TxtGrid.key_down(Key::tab, true));
    EXPECT_EQ(grid.Col(), kTag);
    EXPECT_TRUE(form.TxtGrid.key_down(Key::down, false));
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_FALSE(form.TxtGrid.key_down(Key::other, false));
}

TEST_F(Editing, keys_of_the_list_move) {
    open(1, kMode);
    EXPECT_TRUE(form.CboGrid.key_down(Key::tab, false));
    EXPECT_EQ(grid.Col(), kPref);
    EXPECT_TRUE(form.CboGrid.key_down(Key::tab, true));
    EXPECT_EQ(grid.Col(), kMode);
    EXPECT_FALSE(form.CboGrid.key_down(Key::down, false));
}

TEST_F(Editing, what_the_list_shows_is_in_the_cell_at_once_and_a_picked_mask_greys_its_row) {
    open(1, kMode);
    form.CboGrid.text = "X";
    form.CboGrid.edited();
    EXPECT_EQ(grid.TextMatrix(1, kMode), "X");
    form.CboGrid.text = "AM";
    form.CboGrid.picked();
    EXPECT_EQ(grid.TextMatrix(1, kMode), "AM");
    open(300, kMasked);
    form.CboGrid.text = "True";
    form.CboGrid.picked();
    EXPECT_EQ(grid.colour(300, kTag), 0xC0C0C0U);
}

TEST_F(Editing, a_left_click_picks_and_a_right_click_copies) {
    click(1, kFreq);
    click(9, kFreq, MouseButton::right);
    EXPECT_EQ(grid.TextMatrix(9, kFreq), grid.TextMatrix(1, kFreq));
    EXPECT_EQ(grid.TextMatrix(9, kTransmitPower), "MAX");
}

TEST_F(Editing, the_label_columns_menu_is_the_edit_menu_with_its_entries_prepared) {
    grid.mouse_down(MouseButton::left, {0, kLabel});
    grid.mouse_down(MouseButton::right, {3, kLabel});
    EXPECT_EQ(window.menus_popped_up, std::vector<std::string>{"mnuEdit"});
    EXPECT_EQ(edit_entries(), kNone);
    select(2, 3);
    grid.mouse_down(MouseButton::right, {3, kLabel});
    EXPECT_EQ(window.menus_popped_up.size(), 2U);
    EXPECT_EQ(edit_entries(), kAll);
}

TEST_F(Editing, the_edit_entries_are_enabled_at_the_start_and_prepared_when_the_menu_opens) {
    EXPECT_EQ(edit_entries(), kAll);
    form.mnuEdit.clicked();
    EXPECT_EQ(edit_entries(), kNone);
    select(2, 3);
    EXPECT_EQ(edit_entries(), kNone);
    form.mnuEdit.clicked();
    EXPECT_EQ(edit_entries(), kAll);
}

TEST_F(Editing, the_edit_entries_copy_cut_and_paste) {
    select(1, 1);
    form.mnuCopy.clicked();
    go_to(5, kTag);
    form.mnuPaste.clicked();
    EXPECT_EQ(tag(5), "A");
    EXPECT_EQ(tag(1), "A");
    select(1, 1);
    form.mnuCut.clicked();
    EXPECT_EQ(tag(1), "");
    go_to(5, kTag);
    messages.answers = {Answer::yes};
    form.mnuPaste.clicked();
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(Editing, the_row_buttons_move_and_delete) {
    select(1, 1);
    form.Command1.clicked();
    EXPECT_EQ(tag(1), "");
    EXPECT_EQ(tag(2), "A");
    form.Command2.clicked();
    EXPECT_EQ(tag(1), "A");
    form.Command3.clicked();
    EXPECT_EQ(tag(1), "");
}

TEST_F(Editing, the_copy_buffer_is_one_empty_record_at_the_start) {
    go_to(1, kTag);
    messages.answers = {Answer::yes};
    form.mnuPaste.clicked();
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(tag(1), "");
    EXPECT_EQ(grid.marked_rows.get(), (RowRange{1, 1}));
}

TEST_F(Editing, the_selection_outlives_an_opened_file_and_the_load_button) {
    select(1, 2);
    program.open_named(folder.file("mem.120"));
    form.Command5.clicked();
    EXPECT_EQ(grid.marked_rows.get(), (RowRange{1, 2}));
    form.Command1.clicked();
    EXPECT_EQ(tag(2), "A");
}

TEST_F(Editing, the_open_overlay_follows_its_cell_when_the_window_is_resized) {
    open(1, kTag);
    cells.fixed = CellPlaces::Place{500, 600, 700, 400};
    window.its_width = 12000;
    program.resized();
    EXPECT_EQ(form.TxtGrid.left.get(), grid.left + 500 + 40);
    EXPECT_EQ(form.TxtGrid.top.get(), grid.top + 600 + 40);
    EXPECT_EQ(form.TxtGrid.width.get(), 660);
    EXPECT_EQ(form.TxtGrid.height.get(), 360);
    EXPECT_TRUE(form.TxtGrid.visible);
}

TEST_F(Editing, saving_with_an_overlay_open_saves_what_was_typed) {
    open(1, kTag);
    form.TxtGrid.text = "TYPED";
    form.mnuSaveOnly.clicked();
    EXPECT_EQ(saved_tag("mem.120"), "TYPED");
}

TEST_F(Editing, closing_with_an_overlay_open_asks_about_what_was_typed_and_saves_it) {
    open(1, kTag);
    form.TxtGrid.text = "TYPED";
    messages.answers = {Answer::yes};
    EXPECT_TRUE(program.close_allowed());
    EXPECT_EQ(saved_tag("mem.120"), "TYPED");
}

TEST_F(Editing, a_cell_that_is_not_there_is_reported_and_the_program_goes_on) {
    messages.answers = {Answer::ok};
    grid.mouse_down(MouseButton::left, {641, kTag});
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].icon, Icon::critical);
    messages.answers = {Answer::ok};
    grid.mouse_up(MouseButton::left, {1, 15});
    EXPECT_EQ(messages.shown.size(), 2U);
    open(1, kTag);
    EXPECT_EQ(form.TxtGrid.text.get(), "A");
}

}  // namespace
}  // namespace memwright
