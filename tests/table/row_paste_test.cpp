// Pasting the copy buffer at the current row.

#include "table/editing_test.h"

namespace memwright {
namespace {

using namespace columns;

class Paste : public EditingTest {
  protected:
    void copy(int from, int to) {
        for (int row = from; row <= to; ++row) fill(row);
        select(from, to);
        rows.mnuCopy_Click();
    }
    void paste_at(int row, int col = kTag) {
        go_to(row, col);
        rows.mnuPaste_Click();
    }
    // Columns 1 to 14 of a row into which a copied row was pasted.
    static std::vector<std::string> pasted(int from) {
        auto texts = filled(from);
        texts.resize(14);
        return texts;
    }
};

TEST_F(Paste, writes_the_copied_rows_from_the_current_row_on) {
    copy(5, 7);
    for (const int row : {20, 24}) fill(row);
    paste_at(21, kMode);
    EXPECT_TRUE(messages.shown.empty());
    for (int i = 0; i < 3; ++i) EXPECT_EQ(fields(21 + i), pasted(5 + i));
    for (const int row : {20, 24, 5, 6, 7}) EXPECT_EQ(fields(row), filled(row, 14));
    EXPECT_EQ(text(21, kLabel), "Bank 0 - 20");
}

TEST_F(Paste, empties_the_hidden_columns_of_its_targets) {
    copy(5, 5);
    fill(30);
    grid.set_text(30, kTag, "");
    grid.set_text(30, kFreq, "");
    paste_at(30);
    EXPECT_EQ(fields(30), pasted(5));
}

TEST_F(Paste, asks_nothing_where_no_target_has_a_label_or_a_frequency) {
    copy(5, 7);
    for (int row = 20; row <= 22; ++row) {
        for (int col = kMode; col < 15; ++col) grid.set_text(row, col, "x");
    }
    for (const int row : {19, 23}) fill(row);
    paste_at(20);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(fields(22), pasted(7));
}

TEST_F(Paste, asks_before_it_overwrites_a_label_or_a_frequency) {
    for (const int col : {kTag, kFreq}) {
        for (const int row : {20, 21, 22}) {
            copy(5, 7);
            grid.set_text(row, col, "x");
            messages.shown.clear();
            messages.answers = {Answer::yes};
            paste_at(20);
            ASSERT_EQ(messages.shown.size(), 1U);
            EXPECT_EQ(messages.shown[0].text,
                      "There is already data in the cells to be pasted to. Overwrite?");
            EXPECT_EQ(messages.shown[0].title, "Memwright");
            EXPECT_EQ(messages.shown[0].buttons, Buttons::yes_no);
            EXPECT_EQ(messages.shown[0].icon, Icon::question);
            EXPECT_EQ(fields(row), pasted(row - 15));
            select(20, 22);
            rows.Command3_Click();
        }
    }
}

TEST_F(Paste, does_nothing_on_No) {
    copy(5, 7);
    fill(21);
    messages.answers = {Answer::no};
    const CountedSignals changes(grid);
    paste_at(20);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(changes.count, 0);
    EXPECT_EQ(fields(20), std::vector<std::string>(14));
    EXPECT_EQ(fields(21), filled(21, 14));
    expect_selected(5, 7);
    EXPECT_EQ(rows.RowBuffer().size(), 3U);
}

TEST_F(Paste, drops_what_would_lie_beyond_the_last_row) {
    copy(5, 7);
    paste_at(639);
    EXPECT_EQ(fields(639), pasted(5));
    EXPECT_EQ(fields(640), pasted(6));
    EXPECT_EQ(grid.Rows(), 641);
    expect_selected(639, 640);
}

TEST_F(Paste, into_the_last_row_writes_one) {
    copy(5, 7);
    paste_at(640);
    EXPECT_EQ(fields(639), std::vector<std::string>(14));
    EXPECT_EQ(fields(640), pasted(5));
    expect_selected(640, 640);
}

TEST_F(Paste, selects_and_marks_the_pasted_block_and_keeps_the_current_cell) {
    copy(5, 7);
    paste_at(20, kMode);
    expect_selected(20, 22);
    EXPECT_EQ(grid.marked_rows.get(), (RowRange{20, 22}));
    expect_cell(20, kMode);
}

TEST_F(Paste, recolours_rows_1_to_240_and_none_below) {
    copy(5, 6);
    for (const int row : {2, 240, 241, 500}) grey(row);
    grid.set_text(3, kMasked, "True");
    paste_at(240);
    expect_colour(2, 0);
    expect_colour(3, kGrey);
    expect_colour(240, 0);
    expect_colour(241, kGrey);
    expect_colour(500, kGrey);
}

TEST_F(Paste, over_the_copied_rows_themselves_takes_what_was_copied) {
    copy(5, 7);
    messages.answers = {Answer::yes};
    paste_at(6);
    EXPECT_EQ(fields(5), filled(5, 14));
    EXPECT_EQ(fields(6), pasted(5));
    EXPECT_EQ(fields(7), pasted(6));
    EXPECT_EQ(fields(8), pasted(7));
}

TEST_F(Paste, may_be_repeated) {
    copy(5, 6);
    paste_at(20);
    paste_at(30);
    EXPECT_EQ(fields(21), pasted(6));
    EXPECT_EQ(fields(31), pasted(6));
}

TEST_F(Paste, after_a_cut_moves_the_block) {
    for (const int row : {5, 6}) fill(row);
    select(5, 6);
    rows.mnuCut_Click();
    paste_at(20);
    EXPECT_EQ(fields(20), pasted(5));
    EXPECT_EQ(fields(21), pasted(6));
    EXPECT_EQ(fields(5), std::vector<std::string>(14));
}

TEST_F(Paste, after_a_delete_writes_as_many_rows_as_were_deleted) {
    copy(5, 5);
    for (int row = 10; row <= 12; ++row) fill(row);
    select(10, 12);
    rows.Command3_Click();
    for (int row = 20; row <= 23; ++row) fill(row);
    messages.answers = {Answer::yes};
    paste_at(20);
    EXPECT_EQ(fields(20), pasted(5));
    EXPECT_EQ(fields(21), std::vector<std::string>(14));
    EXPECT_EQ(fields(22), std::vector<std::string>(14));
    EXPECT_EQ(fields(23), filled(23, 14));
    expect_selected(20, 22);
}

TEST_F(Paste, of_the_buffer_at_start_empties_one_row) {
    rows.reset_buffer();
    for (const int row : {20, 21}) fill(row);
    messages.answers = {Answer::yes};
    paste_at(20);
    EXPECT_EQ(fields(20), std::vector<std::string>(14));
    EXPECT_EQ(fields(21), filled(21, 14));
}

TEST_F(Paste, of_no_records_writes_nothing_and_asks_nothing) {
    rows.mnuCopy_Click();
    ASSERT_TRUE(rows.RowBuffer().empty());
    fill(20);
    paste_at(20);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(fields(20), filled(20, 14));
    expect_selected(0, 0);
}

TEST_F(Paste, on_the_headings_does_nothing) {
    copy(5, 7);
    const CountedSignals changes(grid);
    paste_at(0);
    EXPECT_EQ(changes.count, 0);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(text(0, kTag), "Tag");
    expect_selected(5, 7);
}

TEST_F(Paste, of_all_rows_is_one_change) {
    copy(1, 640);
    for (int row = 1; row <= 240; ++row) grey(row);
    messages.answers = {Answer::yes};
    const CountedSignals changes(grid);
    paste_at(1);
    EXPECT_EQ(changes.count, 1);
    EXPECT_EQ(changes.last.first_row, 1);
    EXPECT_EQ(changes.last.last_row, 640);
    EXPECT_EQ(changes.last.last_col, 14);
    EXPECT_FALSE(changes.last.layout);
}

}  // namespace
}  // namespace memwright
