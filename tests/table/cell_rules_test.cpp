// The rules of a cell, without any control.

#include "table/cell_rules.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "table/columns.h"

namespace memwright {
namespace {

using namespace columns;

// The characters of all 256 that a column takes behind a text, as it takes them.
std::string taken(int col, const std::string& text) {
    std::string characters;
    for (int code = 0; code < 256; ++code) {
        char c = static_cast<char>(code);
        if (cell_rules::takes(col, text, c)) characters += c;
    }
    return characters;
}

TEST(CellRules, a_label_takes_capitals_digits_and_a_few_signs_and_makes_capitals) {
    const std::string capitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    EXPECT_EQ(taken(kTag, ""), "\b ()*+-/0123456789" + capitals + capitals);
    EXPECT_EQ(taken(kTag, "ABCDEF"), taken(kTag, ""));
}

TEST(CellRules, a_frequency_and_a_shift_take_digits_and_one_full_stop) {
    for (const int col : {kFreq, kShift}) {
        EXPECT_EQ(taken(col, ""), "\b.0123456789");
        EXPECT_EQ(taken(col, "145"), "\b.0123456789");
        EXPECT_EQ(taken(col, "145.5"), "\b0123456789");
    }
}

TEST(CellRules, every_other_column_takes_everything_as_it_is) {
    std::string all;
    for (int code = 0; code < 256; ++code) all += static_cast<char>(code);
    for (int col = kMode; col < kCount; ++col) {
        EXPECT_EQ(taken(col, ".") == all, col != kShift) << col;
    }
}

TEST(CellRules, texts_are_edited_in_five_columns_and_have_a_limit_in_two) {
    for (int col = kTag; col < kCount; ++col) {
        const bool text = col == kTag || col == kFreq || col == kShift || col == kNameless;
        EXPECT_EQ(cell_rules::is_edited_as_text(col), text) << col;
        const bool number = col == kFreq || col == kShift;
        EXPECT_EQ(cell_rules::most_characters(col), number ? 10U : 0U) << col;
    }
}

struct Pasted {
    int col;
    std::string given;
    std::string around;
    std::string taken;
};

const std::vector<Pasted> kPasted = {
    // The first line, up to a tab, without the blanks at its ends.
    {kTag, "ABC\n", "", "ABC"},
    {kTag, "ABC\r\nDEF", "", "ABC"},
    {kTag, "ABC\tDEF", "", "ABC"},
    {kTag, "  A B  ", "", "A B"},
    {kTag, "\tABC", "", ""},
    {kTag, "\nABC", "", ""},
    {kMode, "AM\n", "", "AM"},
    {kMode, " AM ", "", "AM"},
    {kMode,
     "\xA0"
     "AM\xA0",
     "", "AM"},
    {kFreq, " 145.5", "", "145.5"},
    {kFreq, "145.5\r", "", "145.5"},
    {kNameless, std::string("a\0b", 3), "", "a"},
    // As far as the column takes it.
    {kTag, "abc", "", "ABC"},
    {kTag, "caf\xE9#12", "", "CAF12"},
    {kTag, "a\bb", "", "AB"},
    {kMode, "A\x1BM\x7F", "", "AM"},
    {kTag, "ABCDEFGH", "", "ABCDEFGH"},
    {kTag, "1,5.5", "", "155"},
    {kFreq, "145.5 MHz", "", "145.5"},
    {kFreq, "-145e6", "", "1456"},
    {kFreq, "145.5.5", "", "145.55"},
    {kFreq, "abc", "", ""},
    {kFreq, "", "", ""},
    {kShift, "000600", "", "000600"},
    {kMode, "a, b.c", "", "a, b.c"},
    {kTone, "67,0", "", "67,0"},
    {kNameless, "x,\xE9#", "", "x,\xE9#"},
    // A decimal comma.
    {kFreq, "145,5", "", "145.5"},
    {kShift, "0,6", "", "0.6"},
    {kFreq, ",5", "", ".5"},
    {kFreq, "1,299.5", "", "1299.5"},
    {kFreq, "1.299,5", "", "1299.5"},
    {kFreq, "145,5,5", "", "145.55"},
    // Beside a point there is no second one.
    {kFreq, "5.5", "145.", "55"},
    {kFreq, "5,5", "14.", "55"},
    {kFreq, "5.5", "145", "5.5"},
    {kTag, "A.", ".", "A"},
};

TEST(CellRules, a_pasted_text_is_one_cell_of_what_the_column_takes) {
    for (const auto& [col, given, around, taken] : kPasted) {
        EXPECT_EQ(cell_rules::pasted_text(col, given, around), taken)
            << col << ": " << given << " beside " << around;
    }
}

TEST(CellRules, a_huge_pasted_text_is_taken_at_once) {
    EXPECT_EQ(cell_rules::pasted_text(kTag, std::string(100'000, 'x')).size(), 100'000U);
    EXPECT_EQ(cell_rules::pasted_text(kFreq, std::string(100'000, '.') + "5"), ".5");
}

TEST(CellRules, a_label_is_cut_to_six_characters_and_nothing_else_is) {
    EXPECT_EQ(cell_rules::kept_text(kTag, "caf\xE9 #12"), "caf\xE9 #");
    EXPECT_EQ(cell_rules::cell_text(kTag, "caf\xE9 #12"), "caf\xE9 #");
    EXPECT_EQ(cell_rules::kept_text(kTag, "ABCDEF"), "ABCDEF");
    for (const int col : {kFreq, kMode, kShift, kNameless}) {
        EXPECT_EQ(cell_rules::kept_text(col, "0123456789abc"), "0123456789abc") << col;
    }
}

TEST(CellRules, only_a_frequency_comes_into_its_usual_form) {
    const std::map<std::string, std::string> forms = {{"", "0.00000"},
                                                      {"145.5", "145.50000"},
                                                      {"2000", "1299.00000"},
                                                      {"145.51233", "145.51200"},
                                                      {"384", "385.00000"}};
    for (const auto& [typed, form] : forms) {
        EXPECT_EQ(cell_rules::cell_text(kFreq, typed), form);
        for (const int col : {kMode, kShift, kNameless}) {
            EXPECT_EQ(cell_rules::cell_text(col, typed), typed);
        }
    }
}

class CellDefaults : public testing::Test {
  protected:
    CellDefaults() {
        grid.set_cols(kCount);
        grid.set_rows(3);
    }
    std::vector<std::string> row() {
        std::vector<std::string> texts;
        for (int col = kTag; col < kCount; ++col) texts.push_back(grid.TextMatrix(1, col));
        return texts;
    }

    MSFlexGrid grid{""};
};

TEST_F(CellDefaults, a_typed_frequency_gives_a_row_without_a_mode_its_mode_and_preference) {
    grid.set_text(1, kPref, "On");
    cell_rules::add_defaults_of_typed_frequency(grid, 1);
    EXPECT_EQ(row(), (std::vector<std::string>{"", "", "NFM", "Off", "", "", "", "", "", "", "", "",
                                               "", ""}));
}

TEST_F(CellDefaults, a_copied_frequency_fills_the_hidden_columns_too) {
    cell_rules::add_defaults_of_copied_frequency(grid, 1);
    EXPECT_EQ(row(), (std::vector<std::string>{"", "", "NFM", "Off", "5 KHz", "False", "SIMP",
                                               "000000", "OFF", "100.0", "023", "MAX", "", ""}));
}

TEST_F(CellDefaults, a_row_with_a_mode_keeps_everything) {
    grid.set_text(1, kMode, "WFM");
    cell_rules::add_defaults_of_typed_frequency(grid, 1);
    cell_rules::add_defaults_of_copied_frequency(grid, 1);
    EXPECT_EQ(row(), (std::vector<std::string>{"", "", "WFM", "", "", "", "", "", "", "", "", "",
                                               "", ""}));
}

}  // namespace
}  // namespace memwright
