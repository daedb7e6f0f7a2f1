// The dialog that asks which rows are printed, without its window.

#include "app/frm_print.h"

#include <gmock/gmock.h>

#include "base/error.h"

namespace memwright {
namespace {

using Range = frmPrint::Range;

class PrintDialogForm : public testing::Test {
  protected:
    PrintDialogForm() {
        closed_ = form_.closed.connect([this] { ++times_closed_; });
    }

    void select_all() {
        form_.Option1.selected = true;
        form_.Option2.selected = false;
    }
    void select_range() {
        form_.Option1.selected = false;
        form_.Option2.selected = true;
    }
    // What a user's typing does, at one stroke.
    static void type(TextBox& box, const std::string& text) {
        box.text = text;
        box.edited();
    }
    static std::string left_with(TextBox& box, const std::string& text) {
        box.text = text;
        box.focus_lost();
        return box.text;
    }

    frmPrint form_;
    int times_closed_ = 0;
    Connection closed_;
};

TEST_F(PrintDialogForm, opens_with_its_captions_the_first_35_rows_and_all_rows_selected) {
    EXPECT_EQ(form_.Option1.caption.get(), "&All");
    EXPECT_EQ(form_.Option2.caption.get(), "&Memory Range:");
    EXPECT_EQ(form_.Label1.caption.get(), "to");
    EXPECT_EQ(form_.Command1.caption.get(), "&OK");
    EXPECT_EQ(form_.Command2.caption.get(), "&Cancel");
    EXPECT_EQ(form_.Text1.text.get(), "1");
    EXPECT_EQ(form_.Text2.text.get(), "35");
    EXPECT_TRUE(form_.Option1.selected);
    EXPECT_FALSE(form_.Option2.selected);
}

TEST_F(PrintDialogForm, of_all_characters_only_the_digits_and_backspace_are_taken) {
    for (TextBox* const box : {&form_.Text1, &form_.Text2}) {
        for (int code = 0; code < 256; ++code) {
            char key = static_cast<char>(code);
            const bool discarded = (code >= 58 || code <= 47) && code != 8;
            EXPECT_EQ(box->key_press(key), !discarded) << box->name << ", code " << code;
            EXPECT_EQ(key, static_cast<char>(code)) << "it is not changed";
        }
    }
}

TEST_F(PrintDialogForm, a_row_below_1_becomes_1_and_one_above_240_becomes_240_on_leaving) {
    const std::vector<std::pair<std::string, std::string>> kCorrections = {
        {"", "1"},         {"0", "1"},     {"000", "1"},   {"1", "1"},
        {"35", "35"},      {"007", "007"}, {"239", "239"}, {"240", "240"},
        {"241", "240"},    {"999", "240"}, {"1e9", "1e9"}, {"99999999999999999999999", "240"},
        {"35abc", "35abc"}};
    for (TextBox* const box : {&form_.Text1, &form_.Text2}) {
        for (const auto& [typed, corrected] : kCorrections) {
            EXPECT_EQ(left_with(*box, typed), corrected) << box->name << " with " << typed;
        }
    }
}

TEST_F(PrintDialogForm, leaving_one_field_leaves_the_other_as_it_is) {
    form_.Text1.text = "";
    left_with(form_.Text2, "999");
    EXPECT_EQ(form_.Text1.text.get(), "");
}

TEST_F(PrintDialogForm, nothing_is_wanted_before_ok) {
    EXPECT_EQ(form_.wanted(), std::nullopt);
    select_range();
    EXPECT_EQ(form_.wanted(), std::nullopt);
    EXPECT_EQ(times_closed_, 0);
}

TEST_F(PrintDialogForm, ok_with_all_wants_rows_1_to_240_whatever_the_fields_say) {
    form_.Text1.text = "7";
    form_.Text2.text = "9";
    form_.Command1.clicked();
    EXPECT_EQ(form_.wanted(), (Range{1, 240}));
    EXPECT_EQ(times_closed_, 1);
}

TEST_F(PrintDialogForm, ok_with_a_range_wants_its_rows) {
    type(form_.Text1, "7");
    type(form_.Text2, "71");
    form_.Command1.clicked();
    EXPECT_EQ(form_.wanted(), (Range{7, 71}));
    EXPECT_EQ(times_closed_, 1);
}

TEST_F(PrintDialogForm, a_start_above_the_end_is_wanted_as_it_stands) {
    type(form_.Text1, "71");
    type(form_.Text2, "7");
    form_.Command1.clicked();
    EXPECT_EQ(form_.wanted(), (Range{71, 7}));
}

TEST_F(PrintDialogForm, ok_does_nothing_while_neither_option_is_selected) {
    form_.Option1.selected = false;
    form_.Command1.clicked();
    EXPECT_EQ(times_closed_, 0);
    EXPECT_EQ(form_.wanted(), std::nullopt);
    select_all();
    form_.Command1.clicked();
    EXPECT_EQ(times_closed_, 1);
    EXPECT_EQ(form_.wanted(), (Range{1, 240}));
}

TEST_F(PrintDialogForm, cancel_closes_and_wants_nothing) {
    type(form_.Text1, "7");
    form_.Command2.clicked();
    EXPECT_EQ(times_closed_, 1);
    EXPECT_EQ(form_.wanted(), std::nullopt);
}

TEST_F(PrintDialogForm, typing_in_either_field_selects_the_range) {
    for (TextBox* const box : {&form_.Text1, &form_.Text2}) {
        select_all();
        type(*box, "12");
        EXPECT_TRUE(form_.Option2.selected) << box->name;
        EXPECT_FALSE(form_.Option1.selected) << box->name;
    }
}

TEST_F(PrintDialogForm, a_row_past_what_16_bits_hold_is_a_conversion_error) {
    select_range();
    form_.Text2.text = "32767";
    form_.Command1.clicked();
    EXPECT_EQ(form_.wanted(), (Range{1, 32767}));
    form_.Text2.text = "32768";
    EXPECT_THROW(form_.wanted(), ConversionError);
}

}  // namespace
}  // namespace memwright
