// The keys that move from cell to cell while an overlay is open.

#include "table/editing_test.h"

namespace memwright {
namespace {

using namespace columns;

class EditorKeys : public EditingTest {
  protected:
    struct Step {
        int row, col;
        int to_row, to_col;
    };

    // Every step works the same in the overlay of either kind, and opens the new cell's.
    void expect_tab(bool back, const std::vector<Step>& steps) {
        for (const Step& step : steps) {
            SCOPED_TRACE(std::to_string(step.row) + ", " + std::to_string(step.col));
            go_to(step.row, step.col);
            EXPECT_TRUE(editor.TxtGrid_KeyDown(Key::tab, back));
            expect_open(step.to_row, step.to_col);
            go_to(step.row, step.col);
            EXPECT_TRUE(editor.CboGrid_KeyDown(Key::tab, back));
            expect_open(step.to_row, step.to_col);
        }
    }
    void expect_open(int row, int col) const {
        expect_cell(row, col);
        const bool as_text = col < 3 || col == 8 || col == 14;
        EXPECT_EQ(TxtGrid.visible.get(), as_text);
        EXPECT_EQ(CboGrid.visible.get(), !as_text);
        EXPECT_EQ(as_text ? TxtGrid.text.get() : CboGrid.text.get(), text(row, col));
        ASSERT_FALSE(places.shown.empty());
        EXPECT_EQ(places.shown.back().row, row);
        EXPECT_EQ(places.shown.back().col, col);
    }
    void open_with_caret(int row, int col, const std::string& cell, std::size_t caret) {
        grid.set_text(row, col, cell);
        open(row, col);
        TxtGrid.caret = caret;
    }
};

TEST_F(EditorKeys, tab_walks_the_visible_columns_and_on_to_the_next_row) {
    for (const int row : {1, 2, 499, 500, 501, 640}) fill(row);
    expect_tab(false, {{1, 1, 1, 2},
                       {1, 2, 1, 3},
                       {1, 3, 1, 4},
                       {1, 4, 2, 1},
                       {2, 4, 3, 1},
                       {499, 1, 499, 2},
                       {499, 2, 499, 3},
                       {499, 4, 500, 1}});
}

TEST_F(EditorKeys, from_row_500_on_tab_stays_in_its_row) {
    for (const int row : {500, 501, 640}) fill(row);
    expect_tab(false, {{500, 1, 500, 2},
                       {500, 2, 500, 3},
                       {500, 4, 500, 1},
                       {501, 4, 501, 1},
                       {640, 1, 640, 2},
                       {640, 2, 640, 3},
                       {640, 4, 640, 1}});
}

TEST_F(EditorKeys, shift_and_tab_walk_back_and_stay_in_row_1) {
    for (const int row : {1, 2, 498, 499, 500, 639, 640}) fill(row);
    expect_tab(true, {{1, 4, 1, 3},
                      {1, 2, 1, 1},
                      {1, 1, 1, 4},
                      {2, 4, 2, 3},
                      {2, 2, 2, 1},
                      {2, 1, 1, 4},
                      {499, 2, 499, 1},
                      {499, 1, 498, 4},
                      {500, 4, 500, 3},
                      {500, 1, 499, 4},
                      {640, 2, 640, 1},
                      {640, 1, 639, 4}});
}

TEST_F(EditorKeys, tab_leads_out_of_the_hidden_columns) {
    fill(5);
    fill(6);
    for (int col = 5; col < 15; ++col) {
        expect_tab(false, {{5, col, 6, 1}});
        expect_tab(true, {{5, col, 5, col - 1}});
    }
}

TEST_F(EditorKeys, a_tab_walk_of_a_row_never_visits_a_hidden_column) {
    open(1, kTag);
    for (int step = 1; step <= 4 * 499; ++step) {
        press(Key::tab);
        expect_cell(1 + step / 4, 1 + step % 4);
    }
    for (int step = 1; step <= 8; ++step) press(Key::tab);
    expect_cell(500, 1);
}

TEST_F(EditorKeys, up_moves_to_the_row_above_and_not_from_the_first) {
    for (const int row : {2, 499, 500, 640}) {
        for (const int col : {1, 2}) {
            open(row, col);
            EXPECT_TRUE(press(Key::up));
            expect_open(row - 1, col);
        }
    }
    for (const int col : {1, 2}) {
        open_with_caret(1, col, "1", 0);
        places.shown.clear();
        EXPECT_TRUE(press(Key::up)) << "it never acts inside the text";
        expect_cell(1, col);
        EXPECT_TRUE(places.shown.empty()) << "nothing was opened anew";
        EXPECT_EQ(TxtGrid.text.get(), "1");
    }
}

TEST_F(EditorKeys, enter_and_down_move_to_the_row_below) {
    for (const Key key : {Key::enter, Key::down}) {
        for (const int row : {1, 2, 499, 500, 639}) {
            for (const int col : {1, 2}) {
                fill(row);
                fill(row + 1);
                open(row, col);
                EXPECT_TRUE(press(key));
                expect_open(row + 1, col);
                EXPECT_EQ(fields(row, 4), filled(row)) << "the cell that was left keeps its text";
            }
        }
    }
}

TEST_F(EditorKeys, enter_in_the_last_row_empties_the_text_box_and_keeps_the_cell) {
    for (const Key key : {Key::enter, Key::down}) {
        for (const int col : {1, 2}) {
            fill(640);
            open(640, col);
            places.shown.clear();
            const CountedSignals changes(grid);
            EXPECT_TRUE(press(key));
            expect_cell(640, col);
            EXPECT_EQ(TxtGrid.text.get(), "");
            EXPECT_TRUE(TxtGrid.visible);
            EXPECT_EQ(text(640, col), "r640c" + std::to_string(col));
            EXPECT_EQ(changes.count, 0);
            EXPECT_TRUE(places.shown.empty());
        }
    }
}

TEST_F(EditorKeys, typing_after_enter_in_the_last_row_starts_the_cell_anew) {
    grid.set_text(640, kTag, "OLD");
    open(640, kTag);
    press(Key::enter);
    TxtGrid.caret = 0;
    type("N");
    EXPECT_EQ(text(640, kTag), "N");
}

TEST_F(EditorKeys, enter_goes_down_a_column_of_frequencies) {
    open(1, kFreq);
    for (const char* frequency : {"145.5", "433", "87.6"}) {
        TxtGrid.caret = 0;
        type(frequency);
        press(Key::enter);
    }
    EXPECT_EQ(fields(1, 4), (std::vector<std::string>{"", "145.50000", "NFM", "Off"}));
    EXPECT_EQ(fields(2, 4), (std::vector<std::string>{"", "433.00000", "NFM", "Off"}));
    EXPECT_EQ(fields(3, 4), (std::vector<std::string>{"", "87.60000", "NFM", "Off"}));
    expect_cell(4, kFreq);
}

TEST_F(EditorKeys, right_moves_from_the_end_of_a_label_to_the_frequency) {
    open_with_caret(7, kTag, "ABC", 3);
    EXPECT_TRUE(press(Key::right));
    expect_open(7, kFreq);
    open_with_caret(7, kTag, "", 0);
    EXPECT_TRUE(press(Key::right));
    expect_open(7, kFreq);
}

TEST_F(EditorKeys, right_acts_inside_the_text_everywhere_else) {
    open_with_caret(7, kTag, "ABC", 2);
    EXPECT_FALSE(press(Key::right));
    expect_cell(7, kTag);
    for (const int col : {kFreq, kShift, kNameless}) {
        for (const std::size_t caret : {0U, 1U, 2U}) {
            open_with_caret(7, col, "12", caret);
            EXPECT_FALSE(press(Key::right));
            expect_cell(7, col);
        }
    }
}

TEST_F(EditorKeys, left_moves_from_the_start_of_a_text_to_the_column_before) {
    for (const int col : {kFreq, kShift, kNameless}) {
        open_with_caret(7, col, "12", 0);
        EXPECT_TRUE(press(Key::left));
        expect_open(7, col - 1);
    }
}

TEST_F(EditorKeys, left_acts_inside_the_text_everywhere_else) {
    open_with_caret(7, kFreq, "12", 1);
    EXPECT_FALSE(press(Key::left));
    expect_cell(7, kFreq);
    for (const std::size_t caret : {0U, 1U, 2U}) {
        open_with_caret(7, kTag, "AB", caret);
        EXPECT_FALSE(press(Key::left));
        expect_cell(7, kTag);
    }
}

TEST_F(EditorKeys, other_keys_act_inside_the_text) {
    open_with_caret(7, kFreq, "12", 0);
    EXPECT_FALSE(press(Key::other));
    expect_cell(7, kFreq);
}

TEST_F(EditorKeys, a_list_knows_tab_alone) {
    fill(7);
    open(7, kMode);
    for (const Key key : {Key::enter, Key::up, Key::down, Key::left, Key::right, Key::other}) {
        for (const bool shift : {false, true}) EXPECT_FALSE(editor.CboGrid_KeyDown(key, shift));
    }
    expect_open(7, kMode);
    EXPECT_EQ(fields(7, 4), filled(7));
}

TEST_F(EditorKeys, moving_changes_no_cell) {
    for (const int row : {1, 2, 499, 500, 639, 640}) fill(row);
    const CountedSignals changes(grid);
    for (const int row : {1, 2, 499, 500, 640}) {
        for (const int col : {1, 2, 4}) {
            for (const Key key :
                 {Key::tab, Key::enter, Key::up, Key::down, Key::left, Key::right, Key::other}) {
                open(row, col);
                press(key, false);
                open(row, col);
                press(key, true);
            }
        }
    }
    EXPECT_EQ(changes.count, 0);
}

}  // namespace
}  // namespace memwright
