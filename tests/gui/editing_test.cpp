// What is typed, pasted, dropped and composed into the text box over a cell, and what the cell then
// holds.

#include <gmock/gmock.h>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QSignalSpy>

#include "gui/support/editing_test.h"

namespace memwright::gui {
namespace {

using ::testing::Pair;

constexpr int kEmptyRow = 600;

class Editing : public EditingTest {
  protected:
    void SetUp() override {
        EditingTest::SetUp();
        for (int row = kEmptyRow - 5; row <= kEmptyRow + 5; ++row) {
            for (int col = 1; col <= 14; ++col) set_cell(row, col, "");
        }
    }
    std::string text() { return qt::to_utf8(box().text()); }
};

TEST_F(Editing, a_double_click_opens_the_text_box_with_the_text_of_the_cell_selected) {
    for (const int col : {1, 2}) {
        set_cell(3, col, col == 1 ? "SOME" : "145.50000");
        open(3, col);
        EXPECT_EQ(open_overlay(), "TxtGrid");
        EXPECT_EQ(focused(), "TxtGrid");
        EXPECT_EQ(text(), cell(3, col));
        EXPECT_EQ(qt::to_utf8(box().selectedText()), cell(3, col));
        EXPECT_THAT(current(), Pair(3, col));
    }
}

TEST_F(Editing, opening_and_closing_changes_nothing) {
    const std::string frequency = cell(3, 2);
    const QSignalSpy changes(grid().model(), &QAbstractItemModel::dataChanged);
    open(3, 2);
    key(Qt::Key_Escape);
    open(3, 3);
    key(Qt::Key_Escape);
    EXPECT_EQ(changes.size(), 0);
    EXPECT_EQ(cell(3, 2), frequency);
}

TEST_F(Editing, a_single_click_a_label_and_a_heading_open_nothing) {
    click(place_of_cell(3, 2).center());
    EXPECT_EQ(open_overlay(), "none");
    double_click(place_of_label(4).center());
    EXPECT_EQ(open_overlay(), "none");
    QHeaderView& headings = *grid().horizontalHeader();
    double_click(place_of(*headings.viewport(), headings.viewport()->rect()).center());
    EXPECT_EQ(open_overlay(), "none");
    EXPECT_EQ(focused(), "MSFlexGrid1");
}

TEST_F(Editing, abc_in_a_tag_becomes_ABC) {
    open(kEmptyRow, 1);
    type("abc");
    EXPECT_EQ(text(), "ABC");
    EXPECT_EQ(cell(kEmptyRow, 1), "ABC");
    EXPECT_EQ(cell(kEmptyRow, 3), "");
}

TEST_F(Editing, hashes_and_accents_are_dropped_between_what_is_taken) {
    open(kEmptyRow, 1);
    type(
        QString::fromUtf8("a#b\xC3\xA9\xE2\x82\xAC\xE6\x97\xA5"
                          "c"));
    EXPECT_EQ(cell(kEmptyRow, 1), "ABC");
    EXPECT_EQ(text(), "ABC");
}

TEST_F(Editing, a_seventh_character_leaves_six_and_the_caret_where_it_was) {
    open(kEmptyRow, 1);
    type("abcdefg");
    EXPECT_EQ(text(), "ABCDEF");
    EXPECT_EQ(cell(kEmptyRow, 1), "ABCDEF");
    EXPECT_EQ(box().cursorPosition(), 6);
    key(Qt::Key_Home);
    type("x");
    EXPECT_EQ(text(), "XABCDE");
    EXPECT_EQ(cell(kEmptyRow, 1), "XABCDE");
    EXPECT_EQ(box().cursorPosition(), 1);
}

TEST_F(Editing, a_frequency_takes_digits_and_ten_characters) {
    open(kEmptyRow, 2);
    type("1a2#,-+ 3.4567890123");
    EXPECT_EQ(text(), "123.456789");
}

TEST_F(Editing, typing_replaces_the_selected_text_and_backspace_and_delete_work) {
    set_cell(kEmptyRow, 1, "OLD");
    open(kEmptyRow, 1);
    type("new");
    EXPECT_EQ(cell(kEmptyRow, 1), "NEW");
    key(Qt::Key_Backspace);
    EXPECT_EQ(cell(kEmptyRow, 1), "NE");
    key(Qt::Key_Home);
    key(Qt::Key_Delete);
    EXPECT_EQ(cell(kEmptyRow, 1), "E");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(cell(kEmptyRow, 1), text());
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    EXPECT_EQ(cell(kEmptyRow, 1), "");
}

TEST_F(Editing, alt_gr_types_and_control_does_not) {
    open(kEmptyRow, 1);
    QTest::sendKeyEvent(QTest::Click, &box(), Qt::Key_Slash, "/",
                        Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(cell(kEmptyRow, 1), "/");
    key(Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(cell(kEmptyRow, 1), "/");
}

TEST_F(Editing, what_is_pasted_is_one_cell_of_what_the_column_takes) {
    open(kEmptyRow, 1);
    paste("ABC\r\nDEF");
    EXPECT_EQ(text(), "ABC");
    EXPECT_EQ(cell(kEmptyRow, 1), "ABC");
    box().selectAll();
    paste(QString::fromUtf8(" caf\xC3\xA9#1234567"));
    EXPECT_EQ(text(), "CAF123");
    EXPECT_EQ(cell(kEmptyRow, 1), "CAF123");
    open(kEmptyRow, 2);
    paste(" 145,5\t");
    EXPECT_EQ(text(), "145.5");
    EXPECT_EQ(cell(kEmptyRow, 2), "145.50000");
    EXPECT_EQ(cell(kEmptyRow, 3), "NFM");
}

TEST_F(Editing, what_is_pasted_into_a_text_meets_the_rules_with_what_stands_around_it) {
    open(kEmptyRow, 2);
    type("145.5");
    key(Qt::Key_Home);
    paste("1.2");
    EXPECT_EQ(text(), "12145.5");
    // The point goes with what is replaced.
    box().selectAll();
    paste("99,9");
    EXPECT_EQ(text(), "99.9");
    EXPECT_EQ(cell(kEmptyRow, 2), "99.90000");
}

TEST_F(Editing, a_paste_of_which_nothing_is_taken_leaves_the_selected_text) {
    set_cell(kEmptyRow, 1, "OLD");
    open(kEmptyRow, 1);
    for (const char* const nothing : {"#", "\n", "", "\tABC"}) {
        paste(nothing);
        EXPECT_EQ(box().selectedText(), "OLD");
        EXPECT_EQ(cell(kEmptyRow, 1), "OLD");
    }
}

TEST_F(Editing, what_is_pasted_from_the_text_boxs_menu_obeys_the_same_rules) {
    QGuiApplication::clipboard()->setText("abc\n");
    open(kEmptyRow, 1);
    const QPoint middle = box().rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, middle, box().mapToGlobal(middle));
    QCoreApplication::sendEvent(&box(), &event);
    ASSERT_TRUE(wait_until([] { return QApplication::activePopupWidget() != nullptr; }));
    QTest::keyClick(QApplication::activePopupWidget(), 'P');
    EXPECT_EQ(cell(kEmptyRow, 1), "ABC");
}

TEST_F(Editing, a_long_paste_into_a_frequency_is_ten_characters_and_formatted) {
    open(kEmptyRow, 2);
    paste("  145.123456789");
    EXPECT_EQ(text(), "145.123456");
    EXPECT_EQ(cell(kEmptyRow, 2).substr(0, 7), "145.123");
    EXPECT_EQ(cell(kEmptyRow, 2).size(), 9U);
    EXPECT_EQ(cell(kEmptyRow, 3), "NFM");
}

TEST_F(Editing, a_character_that_the_radio_lacks_is_shown_as_what_is_stored) {
    open(kEmptyRow, 1);
    paste(
        QString::fromUtf8("A\xE6\x97\xA5"
                          "B"));
    EXPECT_EQ(text(), "AB");
    EXPECT_EQ(cell(kEmptyRow, 1), "AB");
}

TEST_F(Editing, a_huge_paste_is_taken_at_once) {
    open(kEmptyRow, 1);
    const QSignalSpy changes(grid().model(), &QAbstractItemModel::dataChanged);
    paste(QString(100'000, 'x') + "\n" + QString(100'000, 'y'));
    EXPECT_EQ(cell(kEmptyRow, 1), "XXXXXX");
    EXPECT_EQ(text(), "XXXXXX");
    EXPECT_LE(changes.size(), 2);
}

TEST_F(Editing, a_drop_obeys_the_same_rules) {
    open(kEmptyRow, 1);
    drop(box(), "dropped\ntext");
    EXPECT_EQ(cell(kEmptyRow, 1), "DROPPE");
    EXPECT_EQ(text(), "DROPPE");
    open(kEmptyRow, 2);
    drop(box(), " 88,3");
    EXPECT_EQ(text(), "88.3");
    EXPECT_EQ(cell(kEmptyRow, 2), "88.30000");
    EXPECT_EQ(cell(kEmptyRow, 4), "Off");
    drop(box(), ".#");
    EXPECT_EQ(text(), "88.3");
}

TEST_F(Editing, the_number_pads_decimal_key_is_a_point_in_every_layout) {
    open(kEmptyRow, 2);
    const auto press_decimal_key = [](Qt::KeyboardModifiers modifiers) {
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_Comma, ",",
                            modifiers);
    };
    type("145");
    press_decimal_key(Qt::NoModifier);
    EXPECT_EQ(text(), "145");
    press_decimal_key(Qt::KeypadModifier);
    type("5");
    EXPECT_EQ(text(), "145.5");
    // As the first key on a cell too.
    key(Qt::Key_Escape);
    set_current(kEmptyRow + 1, 2);
    press_decimal_key(Qt::KeypadModifier);
    EXPECT_EQ(text(), ".");
    set_current(kEmptyRow, 3);
    form().MSFlexGrid1.double_clicked();
    press_decimal_key(Qt::KeypadModifier);
    EXPECT_EQ(cell(kEmptyRow, 3), ".");
}

TEST_F(Editing, what_an_input_method_commits_is_filtered_as_it_is_when_typed) {
    open(kEmptyRow, 1);
    commit(QString::fromUtf8("A\xC3\xA9\xC3\xA6\xC2\xBD\xE2\x82\xACz"));
    EXPECT_EQ(cell(kEmptyRow, 1), "AZ");
    EXPECT_EQ(text(), "AZ");
    commit("bcdefgh");
    EXPECT_EQ(cell(kEmptyRow, 1), "AZBCDE");
    open(kEmptyRow, 2);
    commit(QString::fromUtf8("1\xC2\xBD"));
    EXPECT_EQ(text(), "1");
    EXPECT_EQ(cell(kEmptyRow, 2), "1.00000");
    EXPECT_EQ(cell(kEmptyRow, 3), "NFM");
    commit("45.5.5");
    EXPECT_EQ(text(), "145.55");
    EXPECT_EQ(cell(kEmptyRow, 2), "145.55000");
}

TEST_F(Editing, a_character_that_is_typed_in_two_parts_is_dropped) {
    open(kEmptyRow, 1);
    type("a");
    QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown,
                        QString::fromUtf8("\xF0\x9F\x98\x80"), Qt::NoModifier);
    type("b");
    EXPECT_EQ(cell(kEmptyRow, 1), "AB");
    EXPECT_EQ(text(), "AB");
}

TEST_F(Editing, an_accent_of_its_own_is_dropped_with_its_letter) {
    open(kEmptyRow, 1);
    commit(
        QString::fromUtf8("e\xCC\x81"
                          "A"));
    EXPECT_EQ(cell(kEmptyRow, 1), "A");
}

TEST_F(Editing, a_commit_takes_the_place_of_what_is_selected_unless_all_of_it_is_dropped) {
    set_cell(kEmptyRow, 1, "OLD");
    open(kEmptyRow, 1);
    commit(QString::fromUtf8("\xC3\xA9#"));
    EXPECT_EQ(cell(kEmptyRow, 1), "OLD");
    EXPECT_EQ(box().selectedText(), "OLD");
    commit("new");
    EXPECT_EQ(cell(kEmptyRow, 1), "NEW");
}

TEST_F(Editing, a_commit_that_replaces_what_stands_before_the_caret_does_so) {
    set_cell(kEmptyRow, 1, "AB");
    open(kEmptyRow, 1);
    key(Qt::Key_End);
    QInputMethodEvent event;
    event.setCommitString("xy", -1, 1);
    QCoreApplication::sendEvent(&box(), &event);
    EXPECT_EQ(cell(kEmptyRow, 1), "AXY");
}

TEST_F(Editing, a_held_key_costs_one_cell_a_change) {
    open(kEmptyRow, 1);
    type("1");
    const QSignalSpy changes(grid().model(), &QAbstractItemModel::dataChanged);
    type("11111");
    ASSERT_EQ(changes.size(), 5);
    for (const auto& change : changes) {
        EXPECT_EQ(change[0].toModelIndex(), index(kEmptyRow, 1));
        EXPECT_EQ(change[1].toModelIndex(), index(kEmptyRow, 1));
    }
}

}  // namespace
}  // namespace memwright::gui
