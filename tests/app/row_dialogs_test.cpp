// The commands that move a block of rows to a place and fill rows with a series, with their
// dialogs.

#include "app/fill_series.h"
#include "app/move_to.h"
#include "app/row_commands_test.h"

namespace memwright {
namespace {

using namespace columns;
using testing::ElementsAre;
using testing::IsEmpty;

class RowDialogsTest : public RowCommandsTest {
  protected:
    // Moves the marked rows; gives back what the dialog said against it.
    std::string move_to(const std::string& bank, const std::string& memory,
                        RowMove::Kind kind = RowMove::Kind::swap) {
        std::string problem;
        run->views.in_move_to = [&](MoveTo& dialog) {
            dialog.BankList.text = bank;
            dialog.MemoryList.text = memory;
            dialog.OverwriteOption.selected = kind == RowMove::Kind::overwrite;
            dialog.Command1.clicked();
            if (dialog.ProblemLabel.visible) problem = dialog.ProblemLabel.caption;
        };
        added().move_to.clicked();
        return problem;
    }
    // The same for the series that the first marked row begins.
    std::string fill(const std::string& step) {
        std::string problem;
        run->views.in_fill_series = [&](FillSeries& dialog) {
            dialog.StepBox.text = step;
            dialog.Command1.clicked();
            if (dialog.ProblemLabel.visible) problem = dialog.ProblemLabel.caption;
        };
        added().fill_series.clicked();
        return problem;
    }
};

TEST_F(RowDialogsTest, marked_rows_are_swapped_with_those_at_a_place_and_stay_marked) {
    put_all(5, "ABC");
    put_all(65, "X.Z");
    grid().set_colour(5, kNameless, kGreyText);
    const auto before = whole_table();
    mark(5, 7);
    std::vector<std::pair<int, int>> shown;
    const auto showing =
        grid().rows_wanted.connect([&](int first, int last) { shown.emplace_back(first, last); });
    EXPECT_EQ(move_to("1", "0"), "");
    EXPECT_EQ(tags(5, 7), "X.Z");
    EXPECT_EQ(tags(65, 67), "ABC");
    EXPECT_EQ(grid().cell(65, kNameless), (GridCell{"A14", kGreyText}));
    EXPECT_EQ(grid().marked_rows.get(), (RowRange{65, 67}));
    EXPECT_EQ(grid().Row(), 65);
    EXPECT_THAT(shown, ElementsAre(testing::Pair(67, 65)));
    EXPECT_THAT(run->messages.shown, IsEmpty());
    expect_step("Move rows 5-7 to row 65", before);
    EXPECT_EQ(grid().marked_rows.get(), (RowRange{5, 7}));
}

TEST_F(RowDialogsTest, whole_banks_change_places) {
    put(1, "A");
    put(64, "B");
    put(577, "C");
    mark(1, 64);
    EXPECT_EQ(move_to("9", "0"), "");
    EXPECT_EQ(tags(577, 577) + tags(640, 640) + tags(1, 1) + tags(64, 64), "ABC.");
}

TEST_F(RowDialogsTest, what_is_overwritten_is_asked_about_as_for_paste) {
    put_all(5, "AB");
    put_all(66, "X");
    const auto before = whole_table();
    mark(5, 6);
    run->messages.answers = {Answer::no};
    EXPECT_EQ(move_to("1", "0", RowMove::Kind::overwrite), "");
    EXPECT_EQ(whole_table(), before);
    EXPECT_EQ(grid().marked_rows.get(), (RowRange{5, 6}));
    ASSERT_EQ(run->messages.shown.size(), 1U);
    EXPECT_EQ(run->messages.shown[0].text,
              "There is already data in the cells to be pasted to. Overwrite?");
    run->messages.answers = {Answer::yes};
    move_to("1", "0", RowMove::Kind::overwrite);
    EXPECT_EQ(tags(5, 6) + tags(65, 66), "..AB");
    expect_step("Move rows 5-6 to row 65", before);
    run->messages.shown.clear();
    move_to("2", "0", RowMove::Kind::overwrite);
    EXPECT_EQ(tags(129, 130), "AB");
    EXPECT_THAT(run->messages.shown, IsEmpty()) << "nothing is there";
}

TEST_F(RowDialogsTest, rows_between_overlapping_places_slide_over_without_a_question) {
    put_all(5, "ABCDE");
    const auto before = whole_table();
    mark(5, 7);
    EXPECT_EQ(move_to("0", "6", RowMove::Kind::overwrite), "");
    EXPECT_EQ(tags(5, 9), "DEABC");
    EXPECT_EQ(grid().marked_rows.get(), (RowRange{7, 9}));
    EXPECT_THAT(run->messages.shown, IsEmpty());
    expect_step("Move rows 5-7 to row 7", before);
}

TEST_F(RowDialogsTest, a_move_that_cannot_be_done_is_told_in_the_dialog) {
    put_all(5, "ABCDE");
    const auto before = whole_table();
    mark(5, 7);
    EXPECT_EQ(move_to("9", "62"), "Only 2 rows are left from there to the end of the table.");
    EXPECT_EQ(move_to("0", "5"), "The rows overlap with those that they would be swapped with.");
    EXPECT_EQ(move_to("0", "4"), "The rows are there already.");
    EXPECT_EQ(whole_table(), before);
    EXPECT_EQ(grid().marked_rows.get(), (RowRange{5, 7}));
    run->views.in_move_to = [](MoveTo& dialog) {
        EXPECT_EQ(dialog.RowsLabel.caption.get(), "Move rows 5-7 to:");
        EXPECT_EQ(dialog.BankList.text.get() + "-" + dialog.MemoryList.text.get(), "0-4");
        dialog.Command1.clicked();
        EXPECT_TRUE(dialog.ProblemLabel.visible);
        dialog.MemoryList.text = "20";
        EXPECT_FALSE(dialog.ProblemLabel.visible) << "it is about another place";
        dialog.Command2.clicked();
        EXPECT_FALSE(dialog.wanted());
    };
    added().move_to.clicked();
    EXPECT_EQ(whole_table(), before);
}

TEST_F(RowDialogsTest, marked_rows_go_on_from_the_first_one) {
    put(5, "CH09", "145.50000");
    put(7, "OLD", "430.00000");
    const auto before = whole_table();
    mark(5, 7);
    EXPECT_EQ(fill("6,25"), "");
    EXPECT_EQ(tags(5, 7), "CH09CH10CH11");
    EXPECT_EQ(grid().TextMatrix(6, kFreq), "145.50625");
    EXPECT_EQ(grid().TextMatrix(7, kFreq), "145.51250");
    EXPECT_EQ(grid().TextMatrix(6, kMode), "CH093");
    EXPECT_EQ(grid().TextMatrix(6, kStep), "");
    EXPECT_EQ(grid().TextMatrix(7, kStep), "OLD5");
    EXPECT_THAT(waiting(notices()), IsEmpty());
    expect_step("Fill rows 5-7", before);
}

TEST_F(RowDialogsTest, a_series_keeps_its_choices_for_the_next_one) {
    put(5, "CH09", "145.50000");
    mark(5, 6);
    run->views.in_fill_series = [](FillSeries& dialog) {
        EXPECT_EQ(dialog.RowsLabel.caption.get(), "Fill row 6, going on from row 5:");
        EXPECT_EQ(dialog.StepBox.text.get(), "12.5");
        EXPECT_TRUE(dialog.NumberTags.checked);
        dialog.StepBox.text = "-25";
        dialog.NumberTags.checked = false;
        dialog.Command1.clicked();
    };
    added().fill_series.clicked();
    EXPECT_EQ(grid().TextMatrix(6, kTag), "CH09");
    run->views.in_fill_series = [](FillSeries& dialog) {
        EXPECT_EQ(dialog.StepBox.text.get(), "-25");
        EXPECT_FALSE(dialog.NumberTags.checked);
        dialog.StepBox.text = "5";
        dialog.Command2.clicked();
    };
    added().fill_series.clicked();
    EXPECT_EQ(grid().TextMatrix(6, kFreq), "145.47500");
}

TEST_F(RowDialogsTest, a_series_that_cannot_be_is_told_in_the_dialog) {
    put(5, "A", "1299.00000");
    const auto before = whole_table();
    mark(5, 9);
    EXPECT_EQ(fill("500"), "Row 7 would get 1300 MHz or more.");
    for (const char* const step : {"", "-", "5.123456", "1-2"}) {
        EXPECT_EQ(fill(step), "A step is a number of kHz with at most 5 decimals, such as -6.25.");
    }
    EXPECT_EQ(whole_table(), before);
}

TEST_F(RowDialogsTest, a_series_says_how_many_frequencies_the_radio_cannot_receive) {
    put(5, "A", "338.50000");
    mark(5, 8);
    EXPECT_EQ(fill("500"), "");
    EXPECT_EQ(grid().TextMatrix(6, kFreq), "340.00000");
    EXPECT_THAT(waiting(notices()),
                ElementsAre("Frequencies that the radio cannot receive: 2. They are now at the "
                            "upper edges of their ranges."));
    added().undo.clicked();
    EXPECT_THAT(waiting(notices()), IsEmpty());
}

TEST_F(RowDialogsTest, a_series_needs_a_first_row_with_a_frequency_and_another_one) {
    put(6, "A");
    const auto before = whole_table();
    mark(6, 6);
    fill("25");
    EXPECT_THAT(waiting(notices()),
                ElementsAre("Mark the row that the series begins with, and the rows to fill, in "
                            "the label column first."));
    mark(5, 6);
    fill("25");
    EXPECT_THAT(
        waiting(notices()),
        ElementsAre("Row 5, the first of the marked ones, has no frequency to go on from."));
    EXPECT_EQ(run->views.shown, 0);
    EXPECT_EQ(whole_table(), before);
}

TEST_F(RowDialogsTest, only_what_can_be_in_a_step_is_typed) {
    FillSeries dialog({TableRow{}, TableRow{}}, 1, {});
    std::string typed;
    for (int code = 0; code < 0x100; ++code) {
        char character = static_cast<char>(code);
        if (dialog.StepBox.key_press(character)) typed += character;
    }
    EXPECT_EQ(typed, "\b,-.0123456789");
}

}  // namespace
}  // namespace memwright
