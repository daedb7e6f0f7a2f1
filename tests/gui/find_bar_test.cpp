// Finding memories and going to one in the window, with keys and the mouse.

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <set>

#include "gui/support/appearance.h"
#include "gui/support/editing_test.h"
#include "table/columns.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class FindBarTest : public EditingTest {
  protected:
    static constexpr int kTag = columns::kTag, kFreq = columns::kFreq;

    void SetUp() override {
        EditingTest::SetUp();
        for (int row = 1; row <= layout::kMemories; ++row) set_cell(row, kTag, "");
        for (const int row : {100, 101, 102, 500}) {
            set_cell(row, kTag, "TWR " + std::to_string(row % 10));
        }
        set_current(1, kTag);
        grid().setFocus();
    }

    QWidget& bar() { return widget<QWidget>("FindBar"); }
    QLineEdit& text() { return widget<QLineEdit>("FindText"); }
    QWidget& go_to_bar() { return widget<QWidget>("GoToBar"); }
    std::string count() { return qt::to_utf8(widget<QLabel>("FindCount").text()); }
    void find(const QString& query) {
        key(Qt::Key_F, Qt::ControlModifier);
        type(query);
    }
    QImage label_picture(int row) {
        const QRect place = place_of_label(row);
        return picture_of(window(), place);
    }
    std::vector<Edit> edits;
    Connection watch;
    void record() {
        watch = program().edits().edited.connect([this](const Edit& edit) {
            if (edit.changes_content()) edits.push_back(edit);
        });
    }
};

TEST_F(FindBarTest, opens_by_its_keys_below_the_form_and_closes_with_the_keys_back_in_the_grid) {
    const double height = window().height();
    const int whole_height = window().frameGeometry().height();
    EXPECT_FALSE(bar().isVisible());
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(focused(), "FindText");
    EXPECT_EQ(window().height(), height);
    EXPECT_EQ(window().frameGeometry().height(), whole_height + bar().parentWidget()->height());
    key(Qt::Key_Escape);
    EXPECT_FALSE(bar().isVisible());
    EXPECT_EQ(focused(), "MSFlexGrid1");
    EXPECT_EQ(window().frameGeometry().height(), whole_height);
}

TEST_F(FindBarTest, finds_as_one_types_and_goes_on_with_keys) {
    find("twr");
    EXPECT_EQ(current(), std::pair(100, kTag));
    EXPECT_EQ(count(), "1 of 4");
    EXPECT_TRUE(is_in_sight(100, kTag));
    EXPECT_EQ(focused(), "FindText");
    EXPECT_EQ(open_overlay(), "none");
    key(Qt::Key_Return);
    EXPECT_EQ(current(), std::pair(101, kTag));
    key(Qt::Key_F3);
    key(Qt::Key_F3);
    EXPECT_EQ(current(), std::pair(500, kTag));
    EXPECT_TRUE(is_in_sight(500, kTag));
    key(Qt::Key_F3);
    EXPECT_EQ(count(), "1 of 4, from the top");
    EXPECT_TRUE(is_in_sight(100, kTag));
    key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(count(), "4 of 4, from the bottom");
    key(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(current(), std::pair(102, kTag));
    type(" 9");
    EXPECT_EQ(count(), "No memory found.");
    EXPECT_EQ(current(), std::pair(102, kTag));
}

TEST_F(FindBarTest, in_the_grid_the_keys_go_on_too_and_an_editor_is_closed_first) {
    find("twr");
    key(Qt::Key_Escape);
    key(Qt::Key_F3);
    EXPECT_EQ(focused(), "MSFlexGrid1");
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(current(), std::pair(101, kTag));
    type("x");
    ASSERT_EQ(open_overlay(), "TxtGrid");
    key(Qt::Key_F3);
    EXPECT_EQ(open_overlay(), "none");
    EXPECT_EQ(current(), std::pair(102, kTag));
    EXPECT_EQ(cell(101, kTag), "X");
    type("y");
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(open_overlay(), "none");
    EXPECT_EQ(focused(), "FindText");
    EXPECT_EQ(text().selectedText(), "twr") << "the old query, to be typed over";
    type("y");
    EXPECT_EQ(count(), "1 of 1");
}

TEST_F(FindBarTest, what_the_radio_cannot_show_cannot_be_typed) {
    find("tw");
    QTest::sendKeyEvent(QTest::Click, &text(), Qt::Key_unknown, QString(QChar(0x65E5)),
                        Qt::NoModifier);
    EXPECT_EQ(text().text(), "tw");
    auto& replacement = widget<QLineEdit>("FindReplacement");
    replacement.setFocus();
    type("a.b#");
    EXPECT_EQ(replacement.text(), "ab");
}

TEST_F(FindBarTest, replace_all_by_its_mnemonic_is_one_edit) {
    find("twr");
    record();
    key(Qt::Key_W, Qt::AltModifier);
    EXPECT_EQ(focused(), "FindReplacement");
    type("ctr");
    key(Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(wait_until([&] { return count() == "4 tags changed."; }));
    EXPECT_EQ(cell(100, kTag), "CTR 0");
    EXPECT_EQ(cell(500, kTag), "CTR 0");
    ASSERT_THAT(edits, SizeIs(1));
    EXPECT_THAT(edits[0].cells, SizeIs(4));
    EXPECT_EQ(focused(), "FindReplacement");
}

TEST_F(FindBarTest, replace_with_the_mouse_goes_on_and_leaves_the_keys) {
    find("twr");
    record();
    widget<QLineEdit>("FindReplacement").setText("");
    click_button("FindReplace");
    EXPECT_EQ(cell(100, kTag), " 0");
    EXPECT_EQ(current(), std::pair(101, kTag));
    EXPECT_EQ(focused(), "FindText");
    EXPECT_THAT(edits, SizeIs(1));
    click_button("FindNext");
    EXPECT_EQ(current(), std::pair(102, kTag));
    click_button("FindPrevious");
    EXPECT_EQ(current(), std::pair(101, kTag));
}

TEST_F(FindBarTest, what_is_marked_can_be_deleted) {
    set_cell(500, kTag, "");
    find("twr");
    click_button("FindMarkAll");
    EXPECT_EQ(marked(), std::pair(100, 102));
    EXPECT_EQ(count(), "3 rows marked.");
    click_button("Command3");
    EXPECT_EQ(cell(100, kTag) + cell(101, kTag) + cell(102, kTag), "");
    EXPECT_EQ(cell(100, kFreq), "");
    EXPECT_EQ(count(), "No memory found.");
}

TEST_F(FindBarTest, finds_have_a_mark_behind_their_labels_that_is_readable) {
    for (const bool dark : {false, true}) {
        const WithPalette palette(dark ? dark_palette() : QApplication::palette());
        find("twr");
        key(Qt::Key_F3);
        QCoreApplication::processEvents();
        const auto end_of = [](const QImage& label) {
            return label.copy(label.width() * 5 / 6, 0, label.width() / 6, label.height());
        };
        const QImage found = end_of(label_picture(100));
        EXPECT_GT(contrast(background_of(found), ink_of(found)), 4.5) << dark;
        const QImage other = end_of(label_picture(99));
        EXPECT_LT(contrast(background_of(other), ink_of(other)), 3) << dark;
        const auto text_of = [](const QImage& label) {
            return label.copy(0, 0, label.width() * 5 / 6, label.height());
        };
        const QImage with_mark = text_of(label_picture(100));
        key(Qt::Key_Escape);
        QCoreApplication::processEvents();
        EXPECT_EQ(text_of(label_picture(100)), with_mark) << "the label stays as it is";
        const QImage closed = end_of(label_picture(100));
        EXPECT_LT(contrast(background_of(closed), ink_of(closed)), 3) << "the mark is gone";
    }
}

TEST_F(FindBarTest, no_label_reaches_the_mark) {
    const auto& labels = *grid().verticalHeader();
    QFont bold = labels.font();
    bold.setBold(true);
    const int widest = QFontMetrics(bold).horizontalAdvance("Bank 9 - 63");
    const int mark = labels.sectionSize(0);
    EXPECT_LT(widest + mark, labels.width());
}

TEST_F(FindBarTest, cannot_be_used_during_a_transfer_and_the_keys_leave_it) {
    find("twr");
    form().DisableGui();
    EXPECT_FALSE(bar().isAncestorOf(QApplication::focusWidget()));
    for (const QWidget* part : bar().findChildren<QWidget*>()) {
        if (part->inherits("QLabel")) continue;
        EXPECT_FALSE(part->isEnabled()) << qt::to_utf8(part->objectName());
    }
    key(Qt::Key_F3);
    EXPECT_EQ(current(), std::pair(100, kTag));
    form().unlock_gui();
    EXPECT_TRUE(text().isEnabled());
    EXPECT_EQ(focused(), "MSFlexGrid1");
}

TEST_F(FindBarTest, tab_visits_its_parts_in_order_and_escape_works_on_each) {
    find("twr");
    std::vector<std::string> visited;
    for (int i = 0; i < 8; ++i) {
        key(Qt::Key_Tab);
        visited.push_back(focused());
    }
    EXPECT_THAT(visited, ElementsAre("FindNext", "FindPrevious", "FindReplacement", "FindReplace",
                                     "FindReplaceAll", "FindMarkAll", "FindClose", "MSFlexGrid1"));
    program().notices.add({.text = "something else to go to"});
    widget<QPushButton>("FindMarkAll").setFocus();
    key(Qt::Key_Escape);
    EXPECT_FALSE(bar().isVisible());
    EXPECT_EQ(focused(), "MSFlexGrid1");
}

TEST_F(FindBarTest, escape_in_it_ends_nothing_else) {
    int cancelled = 0;
    form().TransferButton.visible = true;
    const auto clicks = form().TransferButton.clicked.connect([&] { ++cancelled; });
    find("twr");
    key(Qt::Key_Escape);
    EXPECT_EQ(cancelled, 0);
    key(Qt::Key_Escape);
    EXPECT_EQ(cancelled, 1);
}

TEST_F(FindBarTest, fits_whole_and_readable_into_the_smallest_window_and_with_large_letters) {
    program().notices.add({.text = "one", .action = "&Go to Memory", .act = [] {}});
    find("twr");
    key(Qt::Key_G, Qt::ControlModifier);
    window().resize(10, 10);
    for (const int percent : {100, 150, 200}) {
        QFont font = QApplication::font();
        font.setPointSizeF(font.pointSizeF() * percent / 100);
        bar().setFont(font);
        std::vector<std::string> clipped;
        const auto fits = [&] {
            clipped = clipped_texts(bar());
            std::erase(clipped, "FindCount");
            return clipped.empty();
        };
        EXPECT_TRUE(wait_until(fits)) << percent << testing::PrintToString(clipped);
        EXPECT_GT(text().width(), text().fontMetrics().averageCharWidth() * 10) << percent;
    }
    auto clipped = clipped_texts(go_to_bar());
    std::erase(clipped, "GoToMessage");
    EXPECT_THAT(clipped, IsEmpty());
}

TEST_F(FindBarTest, from_right_to_left_its_parts_stand_the_other_way_round) {
    window().setLayoutDirection(Qt::RightToLeft);
    find("twr");
    QCoreApplication::processEvents();
    EXPECT_GT(place_of(text(), text().rect()).left(),
              place_of(widget<QWidget>("FindNext"), QRect()).left());
    EXPECT_GT(place_of(widget<QWidget>("FindNext"), QRect()).left(),
              place_of(widget<QWidget>("FindClose"), QRect()).left());
}

TEST_F(FindBarTest, marked_letters_are_unique_in_the_whole_window) {
    key(Qt::Key_F, Qt::ControlModifier);
    key(Qt::Key_G, Qt::ControlModifier);
    program().notices.add({.text = "one", .action = "&Undo", .act = [] {}});
    std::multiset<QString> letters;
    const auto add = [&](const QString& caption) {
        const auto at = caption.indexOf('&');
        if (at >= 0) letters.insert(caption.mid(at + 1, 1).toUpper());
    };
    for (const QAction* menu : window().menuBar()->actions()) {
        if (menu->isVisible()) add(menu->text());
    }
    for (const auto* button : window().findChildren<QPushButton*>()) add(button->text());
    for (const auto* label : window().findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) add(label->text());
    }
    EXPECT_THAT(letters, SizeIs(18));
    EXPECT_EQ(std::set<QString>(letters.begin(), letters.end()).size(), letters.size());
}

TEST_F(FindBarTest, a_screen_reader_is_told_what_was_found_and_what_each_part_is) {
    find("twr");
    const auto name_of = [this](const char* part) {
        auto* const spoken = QAccessible::queryAccessibleInterface(&widget<QWidget>(part));
        return qt::to_utf8(spoken->text(QAccessible::Name));
    };
    EXPECT_EQ(name_of("Announcer"), "1 of 4: Bank 1 - 35");
    EXPECT_EQ(name_of("FindCount"), "1 of 4");
    EXPECT_EQ(name_of("FindText"), "Find");
    EXPECT_EQ(name_of("FindReplacement"), "Replace with");
    EXPECT_EQ(name_of("FindClose"), "Close");
    EXPECT_EQ(name_of("FindMarkAll"), "Mark All");
}

TEST_F(FindBarTest, goes_to_a_memory_by_its_bank_and_number) {
    key(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(focused(), "GoToText");
    type("3-64");
    key(Qt::Key_Return);
    EXPECT_EQ(qt::to_utf8(widget<QLabel>("GoToMessage").text()),
              "Bank 0 to 9 and number 0 to 63 wanted, as 3-17.");
    EXPECT_EQ(current(), std::pair(1, kTag));
    type("3-17");
    key(Qt::Key_Return);
    EXPECT_EQ(current(), std::pair(210, kTag));
    EXPECT_TRUE(is_in_sight(210, kTag));
    EXPECT_FALSE(go_to_bar().isVisible());
    EXPECT_EQ(focused(), "MSFlexGrid1");
    key(Qt::Key_G, Qt::ControlModifier);
    key(Qt::Key_Escape);
    EXPECT_FALSE(go_to_bar().isVisible());
    EXPECT_EQ(focused(), "MSFlexGrid1");
}

TEST_F(FindBarTest, its_entries_stand_in_the_menu) {
    choose("mnuEdit", "FindEntry");
    EXPECT_TRUE(bar().isVisible());
    EXPECT_TRUE(wait_until([&] { return focused() == "FindText"; }));
}

}  // namespace
}  // namespace memwright::gui
