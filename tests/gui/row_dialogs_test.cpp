// The dialogs that move rows and fill them: the whole way from the menu by keys, and what they say
// against what cannot be done.

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include "app/fill_series.h"
#include "app/move_to.h"
#include "gui/support/dialog_test.h"
#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

class RowDialogs : public DialogTest {
  protected:
    static std::string shown_problem(QDialog& dialog) {
        const auto& label = part<QLabel>(dialog, "ProblemLabel");
        return label.isVisible() ? qt::to_utf8(label.text()) : "";
    }
    static std::string announced(QDialog& dialog) {
        return qt::to_utf8(part(dialog, "Announcer").accessibleName());
    }
    // From a channel on 145.5 MHz.
    static TableRows begun() {
        TableRows rows(3);
        rows[0].at(columns::kFreq).text = "145.50000";
        rows[0].at(columns::kTag).text = "CH09";
        return rows;
    }
    void retype(QDialog& dialog, const QString& text) {
        key(dialog, Qt::Key_A, Qt::ControlModifier);
        type(dialog, text);
    }
};

TEST_F(RowDialogs, a_step_is_typed_over_the_one_that_is_there) {
    FillSeries form(begun(), 5, {});
    show(form, [&](QDialog& dialog) {
        EXPECT_EQ(part<QLabel>(dialog, "RowsLabel").text(), "Fill rows 6-7, going on from row 5:");
        EXPECT_EQ(part<QLineEdit>(dialog, "StepBox").selectedText(), "12.5");
        type(dialog, "x-6,25kHz");
        EXPECT_EQ(part<QLineEdit>(dialog, "StepBox").text(), "-6,25");
        alt(dialog, 'N');
        EXPECT_FALSE(part<QCheckBox>(dialog, "NumberTags").isChecked());
        key(dialog, Qt::Key_Return);
    });
    ASSERT_TRUE(form.wanted());
    EXPECT_EQ(form.wanted()->rows[2].text(columns::kFreq), "145.48750");
    EXPECT_EQ(form.wanted()->rows[2].text(columns::kTag), "CH09");
}

TEST_F(RowDialogs, what_speaks_against_a_series_is_shown_and_said_until_something_changes) {
    FillSeries form(begun(), 5, {});
    show(form, [&](QDialog& dialog) {
        EXPECT_EQ(shown_problem(dialog), "");
        retype(dialog, "-100000");
        alt(dialog, 'O');
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(shown_problem(dialog), "Row 7 would get a frequency of 0 or less.");
        EXPECT_EQ(announced(dialog), shown_problem(dialog));
        EXPECT_EQ(focused(), "StepBox");
        expect_good_looks(dialog);
        part(dialog, "StepBox").setFocus();
        retype(dialog, "5");
        EXPECT_EQ(part<QLineEdit>(dialog, "StepBox").text(), "5");
        EXPECT_EQ(shown_problem(dialog), "");
        key(dialog, Qt::Key_Escape);
    });
    EXPECT_FALSE(form.wanted());
}

TEST_F(RowDialogs, a_place_and_what_becomes_of_it_are_chosen_by_keys) {
    MoveTo form({5, 7});
    show(form, [&](QDialog& dialog) {
        EXPECT_EQ(part<QLabel>(dialog, "RowsLabel").text(), "Move rows 5-7 to:");
        EXPECT_EQ(part<QComboBox>(dialog, "MemoryList").currentText(), "4");
        type(dialog, "3");
        alt(dialog, 'M');
        type(dialog, "63");
        EXPECT_EQ(part<QComboBox>(dialog, "BankList").currentText(), "3");
        EXPECT_EQ(part<QComboBox>(dialog, "MemoryList").currentText(), "63");
        alt(dialog, 'V');
        EXPECT_TRUE(part<QRadioButton>(dialog, "OverwriteOption").isChecked());
        key(dialog, Qt::Key_Return);
    });
    ASSERT_TRUE(form.wanted());
    EXPECT_EQ(form.wanted()->to, 3 * 64 + 63 + 1);
    EXPECT_EQ(form.wanted()->kind, RowMove::Kind::overwrite);
}

TEST_F(RowDialogs, what_speaks_against_a_move_is_shown_and_said_until_something_changes) {
    MoveTo form({5, 7});
    show(form, [&](QDialog& dialog) {
        pick_with_mouse(dialog, "MemoryList", 5);
        click(dialog, "Command1");
        EXPECT_EQ(shown_problem(dialog),
                  "The rows overlap with those that they would be swapped with.");
        EXPECT_EQ(announced(dialog), shown_problem(dialog));
        EXPECT_EQ(focused(), "BankList");
        expect_good_looks(dialog);
        alt(dialog, 'V');
        EXPECT_EQ(shown_problem(dialog), "");
        alt(dialog, 'O');
    });
    ASSERT_TRUE(form.wanted());
    EXPECT_EQ(form.wanted()->to, 6);
}

class RowCommandKeys : public WindowTest {
  protected:
    void SetUp() override {
        start();
        open_some_image();
        form().MSFlexGrid1.marked_rows = RowRange{1, 2};
    }
    // Opens a list of Edit Channels by its letter and picks an item by its own.
    void pick(const char* list_name, char letter, char item) {
        QTest::keyClick(&window(), Qt::Key_E, Qt::AltModifier);
        auto& menu = widget<QMenu>("mnuEdit");
        auto& list = widget<QMenu>(list_name);
        ASSERT_TRUE(wait_until([&] { return menu.isVisible(); }));
        QTest::keyClick(&menu, letter);
        ASSERT_TRUE(wait_until([&] { return list.isVisible(); }));
        QTest::keyClick(&list, item);
        // What is picked is done when the menu is closed.
        QCoreApplication::processEvents();
        window().activateWindow();
    }
    std::string cell(int row, int col) { return form().MSFlexGrid1.TextMatrix(row, col); }
};

TEST_F(RowCommandKeys, rows_are_sorted_and_set_from_the_lists_of_the_menu) {
    form().MSFlexGrid1.set_text(1, 2, "150.00000");
    form().MSFlexGrid1.set_text(2, 2, "140.00000");
    pick("SortRowsMenu", 'S', 'F');
    EXPECT_EQ(cell(1, 2) + " " + cell(2, 2), "140.00000 150.00000");
    pick("SetModeMenu", 'O', 'A');
    EXPECT_EQ(cell(1, 3) + cell(2, 3), "AMAM");
    pick("SetPrefMenu", 'E', 'N');
    EXPECT_EQ(cell(1, 4) + cell(2, 4), "OnOn");
}

TEST_F(RowCommandKeys, rows_are_moved_and_filled_by_their_dialogs) {
    const std::string first = cell(1, 2);
    answering({[](QDialog& dialog) {
                  type(dialog, "9");
                  key(dialog, Qt::Key_Return);
              }},
              [&] { choose("mnuEdit", "MoveToEntry"); });
    EXPECT_EQ(cell(577, 2), first);
    EXPECT_EQ(form().MSFlexGrid1.marked_rows.get(), (RowRange{577, 578}));
    EXPECT_TRUE(
        grid().viewport()->rect().contains(grid().visualRect(grid().model()->index(576, 1))));
    form().MSFlexGrid1.set_text(577, 2, "145.50000");
    answering({[](QDialog& dialog) {
                  type(dialog, "25");
                  key(dialog, Qt::Key_Return);
              }},
              [&] { choose("mnuEdit", "FillSeriesEntry"); });
    EXPECT_EQ(cell(578, 2), "145.52500");
    EXPECT_EQ(form().added.undo.caption.get(), "&Undo Fill rows 577-578");
}

}  // namespace
}  // namespace memwright::gui
