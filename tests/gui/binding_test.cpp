// Every control of the window has its widget, and every widget a name that a screen reader can say.

#include <gmock/gmock.h>

#include <QAccessible>

#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAreArray;

const std::vector<std::string> kControls = {
    "MSFlexGrid1",    "Text1",    "Label1",   "Command1",      "Command2",
    "Command3",       "Command4", "Command5", "ReceivedLabel", "TransferProgress",
    "TransferButton", "TxtGrid",  "CboGrid"};

std::string accessible_name(QObject* object) {
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(object);
    return accessible == nullptr ? "" : qt::to_utf8(accessible->text(QAccessible::Name));
}

class Binding : public StartedWindowTest {
  protected:
    std::vector<std::string> menu_entries() {
        std::vector<std::string> names;
        for (const Form1::Menu& menu : form().menus()) {
            names.push_back(menu.entry.name);
            for (const MenuEntry* entry : menu.items) {
                if (entry->caption.get() != kSeparatorCaption) names.push_back(entry->name);
            }
        }
        return names;
    }
};

TEST_F(Binding, every_control_and_menu_entry_is_bound_and_finds_its_widget) {
    std::vector<std::string> names = kControls;
    const auto entries = menu_entries();
    names.insert(names.end(), entries.begin(), entries.end());
    EXPECT_THAT(window().binder().missing(), IsEmpty());
    EXPECT_THAT(window().binder().bound(), UnorderedElementsAreArray(names));
}

TEST_F(Binding, every_name_belongs_to_one_object_of_the_window) {
    for (const std::string& name : kControls) {
        EXPECT_EQ(window().findChildren<QWidget*>(qt::from_utf8(name)).size(), 1) << name;
    }
    for (const std::string& name : menu_entries()) {
        const QString object_name = qt::from_utf8(name);
        EXPECT_EQ(window().findChildren<QMenu*>(object_name).size() +
                      window().findChildren<QAction*>(object_name).size(),
                  1)
            << name;
    }
    EXPECT_EQ(window().objectName(), "Form1");
}

TEST_F(Binding, a_control_without_a_widget_is_told) {
    QWidget form;
    qt::Binder binder(form);
    Label label("Label9");
    binder.bind(label);
    EXPECT_THAT(binder.missing(), ::testing::ElementsAre("Label9"));
}

TEST_F(Binding, every_control_has_an_accessible_name) {
    form().ReceivedLabel.caption = "7 bytes received";
    form().TransferButton.caption = "Cancel";
    const std::map<std::string, std::string> names = {
        {"MSFlexGrid1", "Channel memories"},
        {"Text1", "Status window"},
        {"Label1", "Status line"},
        {"Command1", "Move down"},
        {"Command2", "Move up"},
        {"Command3", "Delete"},
        {"Command4", "Save"},
        {"Command5", "Load"},
        {"ReceivedLabel", "7 bytes received"},
        {"TransferProgress", "Progress of the transfer"},
        {"TransferButton", "Cancel"},
        {"TxtGrid", "Text of the cell"},
        {"CboGrid", "Choice for the cell"}};
    ASSERT_EQ(names.size(), kControls.size());
    for (const auto& [control, name] : names) {
        EXPECT_EQ(accessible_name(&widget<QWidget>(control.c_str())), name) << control;
    }
}

TEST_F(Binding, the_accessible_name_of_the_status_line_carries_its_text) {
    form().Label1.caption = "Listening...";
    EXPECT_EQ(accessible_name(&widget<QLabel>("Label1")), "Status line: Listening...");
    form().Label1.caption = "";
    EXPECT_EQ(accessible_name(&widget<QLabel>("Label1")), "Status line");
}

TEST_F(Binding, buttons_that_say_the_same_have_different_accessible_names_and_tips) {
    EXPECT_EQ(widget<QPushButton>("Command1").text(), widget<QPushButton>("Command2").text());
    EXPECT_NE(accessible_name(&widget<QPushButton>("Command1")),
              accessible_name(&widget<QPushButton>("Command2")));
    for (const char* const name : {"Command1", "Command2", "Command3", "Command4", "Command5"}) {
        EXPECT_FALSE(widget<QPushButton>(name).toolTip().isEmpty()) << name;
    }
}

TEST_F(Binding, a_screen_reader_can_say_the_cells_and_where_they_are) {
    open_some_image();
    QAccessibleInterface* const table = QAccessible::queryAccessibleInterface(&grid());
    ASSERT_NE(table, nullptr);
    ASSERT_NE(table->tableInterface(), nullptr);
    EXPECT_EQ(table->tableInterface()->rowCount(), 640);
    QAccessibleInterface* const cell = table->tableInterface()->cellAt(0, 2);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(qt::to_utf8(cell->text(QAccessible::Name)), form().MSFlexGrid1.TextMatrix(1, 2));
    EXPECT_EQ(qt::to_utf8(table->tableInterface()->rowDescription(0)), "Bank 0 - 0");
    EXPECT_EQ(qt::to_utf8(table->tableInterface()->columnDescription(2)), "Freq");
}

TEST_F(Binding, what_changes_in_the_core_changes_in_the_window) {
    form().Command3.enabled = false;
    EXPECT_FALSE(widget<QPushButton>("Command3").isEnabled());
    form().Command3.caption = "Clear";
    EXPECT_EQ(widget<QPushButton>("Command3").text(), "Clear");
    form().Text1.visible = false;
    EXPECT_FALSE(widget<QPlainTextEdit>("Text1").isVisible());
    form().Text1.text = "one\r\ntwo\r\n";
    EXPECT_EQ(widget<QPlainTextEdit>("Text1").toPlainText(), "one\ntwo\n");
    form().mnuCut.visible = false;
    EXPECT_FALSE(widget<QAction>("mnuCut").isVisible());
    form().mnuCut.caption = "&Away";
    EXPECT_EQ(widget<QAction>("mnuCut").text(), "&Away");
    form().TransferProgress.percent = 42;
    EXPECT_EQ(widget<QProgressBar>("TransferProgress").value(), 42);
    form().TransferProgress.busy = true;
    EXPECT_EQ(widget<QProgressBar>("TransferProgress").maximum(), 0);
}

TEST_F(Binding, a_text_with_an_ampersand_or_markup_stays_plain_in_the_status_line) {
    form().Label1.caption = "<b>5</b> & 6";
    EXPECT_EQ(widget<QLabel>("Label1").text(), "<b>5</b> & 6");
    EXPECT_EQ(widget<QLabel>("Label1").textFormat(), Qt::PlainText);
}

TEST_F(Binding, the_status_window_is_read_only_and_scrolls_to_its_last_line) {
    auto& log = widget<QPlainTextEdit>("Text1");
    EXPECT_TRUE(log.isReadOnly());
    std::string text;
    for (int line = 0; line < 100; ++line) text += "line " + std::to_string(line) + "\r\n";
    form().Text1.text = text;
    form().Text1.caret = text.size();
    EXPECT_TRUE(log.textCursor().atEnd());
    QTest::keyClicks(&log, "typed");
    EXPECT_EQ(form().Text1.text.get(), text);
    EXPECT_FALSE(log.toPlainText().contains("typed"));
}

TEST_F(Binding, the_core_puts_the_focus_into_the_status_window) {
    open_some_image();
    form().Text1.focus_wanted();
    EXPECT_EQ(window().focusWidget(), &widget<QPlainTextEdit>("Text1"));
}

}  // namespace
}  // namespace memwright::gui
