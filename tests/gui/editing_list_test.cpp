// The list over a cell: choosing with the mouse and with keys, and typing into it.

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QSignalSpy>

#include "gui/support/editing_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

class EditingList : public EditingTest {
  protected:
    void open_with(int col, const std::string& text) {
        set_cell(5, col, text);
        open(5, col);
        ASSERT_EQ(open_overlay(), "CboGrid");
    }
    std::vector<std::string> items() {
        std::vector<std::string> texts;
        for (int item = 0; item < list().count(); ++item) {
            texts.push_back(qt::to_utf8(list().itemText(item)));
        }
        return texts;
    }
    void open_popup() {
        click(place_of(list(), list().rect()).center() + QPoint(list().width() / 2 - 4, 0));
        ASSERT_TRUE(QTest::qWaitFor([&] { return list().view()->isVisible(); }, 3000));
    }
    // Points at an entry of the opened list, and clicks.
    void pick(int item) {
        QAbstractItemView& view = *list().view();
        const QPoint place = view.visualRect(view.model()->index(item, 0)).center();
        QTest::mouseMove(view.viewport(), place);
        // A click that comes too soon after the opening still belongs to that.
        constexpr int kLong = 3000;
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                if (view.isVisible()) QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
                return !view.isVisible();
            },
            kLong));
        window().activateWindow();
    }
};

TEST_F(EditingList, opens_with_its_choices_and_the_text_of_the_cell_selected) {
    open_with(3, "WFM");
    EXPECT_THAT(items(), ElementsAre("NFM", "WFM", "AM"));
    EXPECT_EQ(list_text(), "WFM");
    EXPECT_EQ(list().currentIndex(), 1);
    EXPECT_EQ(list().lineEdit()->selectedText(), "WFM");
    EXPECT_EQ(focused(), "CboGrid");
    open_with(4, "On");
    EXPECT_THAT(items(), ElementsAre("Off", "On"));
    EXPECT_EQ(list_text(), "On");
}

TEST_F(EditingList, an_empty_cell_leaves_its_text_empty) {
    open_with(3, "AM");
    open_with(4, "");
    EXPECT_EQ(list_text(), "");
    EXPECT_EQ(list().currentIndex(), -1);
    key(Qt::Key_Tab);
    EXPECT_EQ(cell(5, 4), "");
}

TEST_F(EditingList, a_text_that_is_no_choice_is_shown_and_kept) {
    open_with(3, "XYZ");
    EXPECT_EQ(list_text(), "XYZ");
    key(Qt::Key_Tab);
    EXPECT_EQ(cell(5, 3), "XYZ");
}

TEST_F(EditingList, a_choice_is_picked_with_the_mouse) {
    open_with(3, "NFM");
    open_popup();
    EXPECT_EQ(open_overlay(), "CboGrid");
    pick(2);
    EXPECT_EQ(cell(5, 3), "AM");
    EXPECT_EQ(open_overlay(), "CboGrid");
    EXPECT_EQ(list_text(), "AM");
    EXPECT_EQ(focused(), "CboGrid");
}

TEST_F(EditingList, the_opened_list_stands_below_its_cell_with_every_choice_in_sight) {
    for (const int row : {2, 5}) {
        set_cell(row, 3, "AM");
        open(row, 3);
        open_popup();
        QAbstractItemView& view = *list().view();
        const QRect place(view.viewport()->mapToGlobal(QPoint()), view.viewport()->size());
        const int bottom = list().mapToGlobal(QPoint(0, list().height())).y();
        EXPECT_GE(place.top(), bottom - 1);
        EXPECT_LE(place.top(), bottom + 4);
        for (int item = 0; item < 3; ++item) {
            const QRect entry = view.visualRect(view.model()->index(item, 0));
            EXPECT_TRUE(view.viewport()->rect().contains(entry)) << item;
            EXPECT_GE(entry.width(), view.fontMetrics().horizontalAdvance(list().itemText(item)))
                << item;
        }
        pick(0);
        key(Qt::Key_Escape);
    }
}

TEST_F(EditingList, escape_closes_the_opened_list_first_and_changes_nothing) {
    open_with(3, "NFM");
    open_popup();
    QTest::keyClick(list().view(), Qt::Key_Down);
    QTest::keyClick(list().view(), Qt::Key_Escape);
    ASSERT_TRUE(wait_until([&] { return !list().view()->isVisible(); }));
    window().activateWindow();
    EXPECT_EQ(open_overlay(), "CboGrid");
    EXPECT_EQ(cell(5, 3), "NFM");
    key(Qt::Key_Escape);
    EXPECT_EQ(open_overlay(), "none");
    EXPECT_EQ(focused(), "MSFlexGrid1");
}

TEST_F(EditingList, the_arrows_go_from_choice_to_choice_and_stop_at_the_ends) {
    open_with(3, "NFM");
    const std::vector<std::pair<Qt::Key, const char*>> steps = {
        {Qt::Key_Down, "WFM"}, {Qt::Key_Down, "AM"}, {Qt::Key_Down, "AM"},
        {Qt::Key_Up, "WFM"},   {Qt::Key_Up, "NFM"},  {Qt::Key_Up, "NFM"}};
    for (const auto& [pressed, text] : steps) {
        key(pressed);
        EXPECT_EQ(list_text(), text);
        EXPECT_EQ(cell(5, 3), text);
    }
    EXPECT_THAT(current(), Pair(5, 3));
}

TEST_F(EditingList, from_an_empty_cell_down_is_the_first_choice) {
    open_with(4, "");
    key(Qt::Key_Down);
    EXPECT_EQ(cell(5, 4), "Off");
}

TEST_F(EditingList, left_right_home_end_and_enter_stay_in_the_cell) {
    open_with(3, "WFM");
    for (const Qt::Key inside : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_Left,
                                 Qt::Key_End, Qt::Key_Right, Qt::Key_Return, Qt::Key_Enter}) {
        key(inside);
        EXPECT_THAT(current(), Pair(5, 3));
        EXPECT_EQ(open_overlay(), "CboGrid");
        EXPECT_EQ(cell(5, 3), "WFM");
    }
}

TEST_F(EditingList, the_beginning_of_a_choice_is_completed_and_the_rest_is_selected) {
    open_with(3, "NFM");
    type("w");
    EXPECT_EQ(list_text(), "WFM");
    EXPECT_EQ(list().lineEdit()->selectedText(), "FM");
    EXPECT_EQ(list().currentIndex(), 1);
    EXPECT_EQ(cell(5, 3), "WFM");
    type("f");
    EXPECT_EQ(list().lineEdit()->selectedText(), "M");
    type("m");
    EXPECT_EQ(list_text(), "WFM");
    EXPECT_FALSE(list().lineEdit()->hasSelectedText());
    EXPECT_EQ(cell(5, 3), "WFM");
    open_with(4, "On");
    type("o");
    EXPECT_EQ(cell(5, 4), "Off");
    type("n");
    EXPECT_EQ(list_text(), "On");
    EXPECT_EQ(cell(5, 4), "On");
    // What is in the cell already is shown whole again.
    list().lineEdit()->selectAll();
    type("on");
    EXPECT_EQ(list_text(), "On");
    key(Qt::Key_Tab);
    EXPECT_EQ(cell(5, 4), "On");
}

TEST_F(EditingList, what_begins_no_choice_is_in_the_cell_as_it_is_typed) {
    open_with(3, "NFM");
    type("xw#");
    EXPECT_EQ(cell(5, 3), "xw#");
    EXPECT_EQ(list_text(), "xw#");
    key(Qt::Key_Backspace);
    EXPECT_EQ(cell(5, 3), "xw");
    key(Qt::Key_Tab);
    EXPECT_EQ(cell(5, 3), "xw");
    EXPECT_THAT(current(), Pair(5, 4));
}

TEST_F(EditingList, backspace_and_delete_take_away_what_was_completed_and_bring_nothing_back) {
    open_with(3, "NFM");
    type("w");
    key(Qt::Key_Backspace);
    EXPECT_EQ(list_text(), "W");
    EXPECT_EQ(cell(5, 3), "W");
    key(Qt::Key_Backspace);
    EXPECT_EQ(cell(5, 3), "");
    type("a");
    EXPECT_EQ(cell(5, 3), "AM");
    key(Qt::Key_Delete);
    EXPECT_EQ(list_text(), "A");
    EXPECT_EQ(cell(5, 3), "A");
    key(Qt::Key_Home);
    type("w");
    EXPECT_EQ(cell(5, 3), "wA") << "only what is typed at the end is completed";
}

TEST_F(EditingList, a_choice_that_was_picked_is_selected_so_that_typing_replaces_it) {
    open_with(3, "NFM");
    key(Qt::Key_Down);
    EXPECT_EQ(list().lineEdit()->selectedText(), "WFM");
    type("am");
    EXPECT_EQ(cell(5, 3), "AM");
    open_popup();
    pick(0);
    EXPECT_EQ(list().lineEdit()->selectedText(), "NFM");
}

TEST_F(EditingList, space_opens_the_list_where_it_is_no_part_of_a_text) {
    const auto expect_opened = [&](const std::string& text) {
        type(" ");
        EXPECT_TRUE(wait_until([&] { return list().view()->isVisible(); }));
        EXPECT_EQ(cell(5, 3), text);
        list().hidePopup();
        window().activateWindow();
    };
    open_with(3, "NFM");
    expect_opened("NFM");
    key(Qt::Key_Down);
    expect_opened("WFM");
    key(Qt::Key_End);
    expect_opened("WFM");
    key(Qt::Key_Escape);
    open_with(3, "");
    expect_opened("");
    key(Qt::Key_Escape);
    open_with(3, "XYZ");
    expect_opened("XYZ");
    key(Qt::Key_End);
    type(" ");
    EXPECT_FALSE(list().view()->isVisible());
    EXPECT_EQ(cell(5, 3), "XYZ ");
}

TEST_F(EditingList, tab_in_the_opened_list_takes_the_highlighted_choice_and_goes_on) {
    const auto open_and_highlight_next = [&] {
        open_popup();
        QTest::keyClick(list().view(), Qt::Key_Down);
    };
    open_with(3, "NFM");
    open_and_highlight_next();
    QTest::keyClick(list().view(), Qt::Key_Tab);
    EXPECT_FALSE(list().view()->isVisible());
    EXPECT_EQ(cell(5, 3), "WFM");
    EXPECT_THAT(current(), Pair(5, 4));
    EXPECT_EQ(open_overlay(), "CboGrid");
    EXPECT_EQ(list_text(), cell(5, 4));
    window().activateWindow();
    EXPECT_EQ(focused(), "CboGrid");

    open_with(4, "Off");
    open_and_highlight_next();
    QTest::keyClick(list().view(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(cell(5, 4), "On");
    EXPECT_THAT(current(), Pair(5, 3));
}

TEST_F(EditingList, tab_in_an_opened_list_without_a_highlighted_choice_only_goes_on) {
    open_with(4, "");
    open_popup();
    QTest::keyClick(list().view(), Qt::Key_Tab);
    EXPECT_EQ(cell(5, 4), "");
    EXPECT_THAT(current(), Pair(6, 1));
}

TEST_F(EditingList, what_is_pasted_dropped_or_committed_is_in_the_cell_too) {
    open_with(3, "NFM");
    paste(" pasted text\n");
    EXPECT_EQ(cell(5, 3), "pasted text");
    list().lineEdit()->selectAll();
    commit("committed");
    EXPECT_EQ(cell(5, 3), "committed");
    list().lineEdit()->selectAll();
    paste("am\r\n");
    EXPECT_EQ(cell(5, 3), "AM");
    list().lineEdit()->selectAll();
    commit("w");
    EXPECT_EQ(cell(5, 3), "WFM");
    open_with(4, "");
    drop(*list().lineEdit(), "On\tOff");
    EXPECT_EQ(cell(5, 4), "On");
}

TEST_F(EditingList, a_character_that_the_radio_lacks_is_shown_as_what_is_stored) {
    open_with(3, "");
    paste(
        QString::fromUtf8("A\xE6\x97\xA5"
                          "B"));
    EXPECT_EQ(list_text(), cell(5, 3));
}

TEST_F(EditingList, a_typed_choice_is_the_selected_one_in_the_opened_list) {
    open_with(3, "NFM");
    type("AM");
    EXPECT_EQ(list().currentIndex(), 2);
    key(Qt::Key_Up);
    EXPECT_EQ(cell(5, 3), "WFM");
}

TEST_F(EditingList, a_pick_costs_one_cell) {
    open_with(3, "NFM");
    const QSignalSpy changes(grid().model(), &QAbstractItemModel::dataChanged);
    key(Qt::Key_Down);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex(), index(5, 3));
    EXPECT_EQ(changes[0][1].toModelIndex(), index(5, 3));
}

TEST_F(EditingList, a_masked_row_is_greyed_at_once_by_the_hidden_list) {
    for (const int row : {5, 400}) {
        set_cell(row, 6, "");
        set_current(row, 6);
        form().MSFlexGrid1.double_clicked();
        EXPECT_THAT(items(), ElementsAre("True", "False"));
        form().CboGrid.text = "True";
        form().CboGrid.picked();
        for (const int col : {1, 2, 3, 4}) EXPECT_EQ(colour(row, col), QColor(0xC0, 0xC0, 0xC0));
        form().CboGrid.text = "False";
        form().CboGrid.picked();
        EXPECT_FALSE(index(row, 2).data(Qt::ForegroundRole).isValid());
    }
}

}  // namespace
}  // namespace memwright::gui
