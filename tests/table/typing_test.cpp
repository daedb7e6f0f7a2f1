// What is typed and picked, on its way into the cells. The rules by themselves: cell_rules_test.cpp.

#include "table/editing_test.h"

namespace memwright {
namespace {

using namespace columns;

using Typing = EditingTest;

TEST_F(Typing, each_character_is_in_the_cell_at_once) {
    open(5, kTag);
    std::string so_far;
    for (const char* key : {"a", "b", "c"}) {
        type(key);
        so_far += static_cast<char>(*key - 'a' + 'A');
        EXPECT_EQ(TxtGrid.text.get(), so_far);
        EXPECT_EQ(text(5, kTag), so_far);
    }
    EXPECT_EQ(so_far, "ABC");
}

TEST_F(Typing, a_seventh_character_of_a_label_leaves_six) {
    open(5, kTag);
    type("abcdefg");
    EXPECT_EQ(TxtGrid.text.get(), "ABCDEF");
    EXPECT_EQ(TxtGrid.caret.get(), 6U);
    EXPECT_EQ(text(5, kTag), "ABCDEF");
}

TEST_F(Typing, a_seventh_character_inside_a_label_pushes_the_last_one_out) {
    open(5, kTag);
    type("abcdef");
    TxtGrid.caret = 2;
    type("x");
    EXPECT_EQ(TxtGrid.text.get(), "ABXCDE");
    EXPECT_EQ(TxtGrid.caret.get(), 3U);
    EXPECT_EQ(text(5, kTag), "ABXCDE");
}

TEST_F(Typing, signs_that_a_label_does_not_take_have_no_effect) {
    open(5, kTag);
    type("a#\xE9.b");
    EXPECT_EQ(TxtGrid.text.get(), "AB");
    EXPECT_EQ(text(5, kTag), "AB");
}

TEST_F(Typing, text_that_passes_no_filter_is_cut_to_a_label_all_the_same) {
    open(5, kTag);
    insert("caf\xE9 #12");
    EXPECT_EQ(TxtGrid.text.get(), "caf\xE9 #");
    EXPECT_EQ(TxtGrid.caret.get(), 6U);
    EXPECT_EQ(text(5, kTag), "caf\xE9 #");
}

TEST_F(Typing, a_second_full_stop_is_dropped) {
    open(5, kFreq);
    type("145.5.5");
    EXPECT_EQ(TxtGrid.text.get(), "145.55");
    EXPECT_EQ(text(5, kFreq), "145.55000");
}

TEST_F(Typing, a_full_stop_may_be_typed_again_once_the_first_is_gone) {
    open(5, kShift);
    type("1.5");
    TxtGrid.text = "15";
    type("..");
    EXPECT_EQ(TxtGrid.text.get(), "15.");
    EXPECT_EQ(text(5, kShift), "15.") << "the shift is no frequency to format";
}

TEST_F(Typing, a_frequency_stands_formatted_in_its_cell_and_as_typed_in_the_text_box) {
    open(5, kFreq);
    const std::vector<std::pair<std::string, std::string>> steps = {
        {"3", "3.00000"},   {"8", "38.00000"},  {"4", "385.00000"},
        {".", "385.00000"}, {"0", "385.00000"}, {"1", "385.00000"}};
    std::string typed;
    for (const auto& [key, cell] : steps) {
        type(key);
        typed += key;
        EXPECT_EQ(TxtGrid.text.get(), typed);
        EXPECT_EQ(text(5, kFreq), cell) << typed;
    }
}

TEST_F(Typing, a_frequency_has_at_most_ten_characters) {
    open(5, kFreq);
    type("1234.567890");
    EXPECT_EQ(TxtGrid.text.get(), "1234.56789");
}

TEST_F(Typing, a_key_sets_the_limit_of_ten_characters_again) {
    for (const int col : {kFreq, kShift}) {
        open(5, col);
        TxtGrid.max_length = 0;
        char key = 'x';
        EXPECT_FALSE(editor.TxtGrid_KeyPress(key));
        EXPECT_EQ(TxtGrid.max_length.get(), 10U);
    }
    open(5, kTag);
    char key = 'X';
    EXPECT_TRUE(editor.TxtGrid_KeyPress(key));
    EXPECT_EQ(TxtGrid.max_length.get(), 0U);
}

TEST_F(Typing, the_first_digit_of_a_frequency_gives_an_empty_row_its_mode_and_preference) {
    open(5, kFreq);
    type("1");
    EXPECT_EQ(fields(5, 4), (std::vector<std::string>{"", "1.00000", "NFM", "Off"}));
    for (int col = 5; col < 15; ++col) EXPECT_EQ(text(5, col), "") << col;
}

TEST_F(Typing, a_row_that_has_a_mode_keeps_it_and_its_preference) {
    grid.set_text(5, kMode, "WFM");
    open(5, kFreq);
    type("1");
    EXPECT_EQ(text(5, kMode), "WFM");
    EXPECT_EQ(text(5, kPref), "");
}

TEST_F(Typing, a_label_gives_no_defaults) {
    open(5, kTag);
    type("A");
    EXPECT_EQ(fields(5, 4), (std::vector<std::string>{"A", "", "", ""}));
}

TEST_F(Typing, emptying_a_frequency_leaves_what_the_empty_text_formats_to) {
    put(5, {"145.50000", "A"});
    open(5, kFreq);
    TxtGrid.text = "";
    EXPECT_EQ(text(5, kFreq), "0.00000");
    table.SaveVR120Data();
    EXPECT_EQ(record(0, 4), "FFFFFFFF");
}

TEST_F(Typing, the_nameless_column_and_the_shift_are_written_as_they_are) {
    for (const int col : {kShift, kNameless}) {
        open(5, col);
        insert("12 345678");
        EXPECT_EQ(text(5, col), "12 345678");
    }
    insert(" and much more");
    EXPECT_EQ(text(5, kNameless), "12 345678 and much more");
}

TEST_F(Typing, one_label_keystroke_is_one_change_of_one_cell) {
    open(5, kTag);
    const CountedSignals changes(grid);
    type("A");
    EXPECT_EQ(changes.count, 1);
    EXPECT_EQ(changes.last.first_row, 5);
    EXPECT_EQ(changes.last.last_row, 5);
    EXPECT_EQ(changes.last.first_col, kTag);
    EXPECT_EQ(changes.last.last_col, kTag);
}

TEST_F(Typing, what_is_picked_from_a_list_is_in_the_cell_at_once) {
    open(5, kMode);
    pick("WFM");
    EXPECT_EQ(text(5, kMode), "WFM");
    pick("AM");
    EXPECT_EQ(text(5, kMode), "AM");
}

TEST_F(Typing, a_list_takes_whatever_is_typed_into_it) {
    open(5, kMode);
    type_in_list("anything \xE9");
    EXPECT_EQ(text(5, kMode), "anything \xE9");
}

TEST_F(Typing, picking_True_in_masked_greys_the_row_at_once_in_any_row) {
    for (const int row : {1, 240, 241, 640}) {
        open(row, kMasked);
        pick("True");
        EXPECT_EQ(text(row, kMasked), "True");
        expect_colour(row, kGrey);
        expect_cell(row, kMasked);
        EXPECT_TRUE(grid.Redraw());
        pick("False");
        expect_colour(row, 0);
    }
    expect_colour(2, 0);
}

TEST_F(Typing, only_exactly_True_greys_a_row) {
    open(5, kMasked);
    for (const char* choice : {"true", "TRUE", "True ", ""}) {
        grey(5);
        pick(choice);
        expect_colour(5, 0);
    }
}

TEST_F(Typing, typing_True_into_the_list_does_not_colour) {
    open(5, kMasked);
    type_in_list("True");
    EXPECT_EQ(text(5, kMasked), "True");
    expect_colour(5, 0);
}

TEST_F(Typing, picking_in_other_columns_does_not_colour) {
    grid.set_text(5, kMasked, "True");
    for (const int col : {3, 4, 5, 7, 9, 10, 11, 12, 13}) {
        open(5, col);
        pick("True");
    }
    expect_colour(5, 0);
}

TEST_F(Typing, edits_reach_the_image_only_when_the_table_is_saved_into_it) {
    open(5, kFreq);
    type("145.5");
    press(Key::left, false);
    open(5, kTag);
    type("ABC");
    EXPECT_EQ(record(0, 4), "00000000");
    EXPECT_TRUE(table.IsDataChanged());
    EXPECT_EQ(label(0, 4), "ABC   ");
}

}  // namespace
}  // namespace memwright
