// What closes an overlay, where the focus goes, and that nothing typed is lost by it.

#include <gmock/gmock.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenuBar>
#include <QScrollBar>

#include "gui/support/editing_test.h"

namespace memwright::gui {
namespace {

using ::testing::Pair;

class EditingFocus : public EditingTest {
  protected:
    // Opens a tag and types into it.
    void edit() {
        open(3, 1);
        type("typed");
        ASSERT_EQ(open_overlay(), "TxtGrid");
    }
    // A value of the list of modes that is not the cell's.
    void edit_list() {
        set_cell(3, 3, "AM");
        open(3, 3);
        ASSERT_EQ(open_overlay(), "CboGrid");
    }
    void expect_closed(const std::string& focus = "MSFlexGrid1") {
        EXPECT_EQ(open_overlay(), "none");
        EXPECT_EQ(focused(), focus);
        EXPECT_EQ(cell(3, 1), "TYPED");
    }
    // Opens a menu with the mouse; it is left open.
    QMenu& open_menu(const char* name) {
        QMenuBar& bar = *window().menuBar();
        auto& menu = widget<QMenu>(name);
        click(place_of(bar, bar.actionGeometry(menu.menuAction())).center());
        EXPECT_TRUE(wait_until([&] { return menu.isVisible(); }));
        return menu;
    }
    std::string saved_tag() {
        NativeFileSystem files;
        modVR120 store(files);
        const auto bytes = folder_.get("radio.120");
        int offset = 0;
        for (const std::uint8_t byte : bytes) store.set_byte(offset++, byte);
        return store.GetMemTag(0, 2);
    }
};

TEST_F(EditingFocus, a_click_on_another_cell_closes_both_overlays) {
    edit();
    click(place_of_cell(6, 2).center());
    expect_closed();
    EXPECT_THAT(current(), Pair(6, 2));
    edit_list();
    click(place_of_cell(6, 2).center());
    expect_closed();
    EXPECT_EQ(cell(3, 3), "AM");
}

TEST_F(EditingFocus, a_double_click_elsewhere_moves_the_overlay_there) {
    edit();
    double_click(place_of_cell(6, 3).center());
    EXPECT_EQ(open_overlay(), "CboGrid");
    EXPECT_EQ(focused(), "CboGrid");
    EXPECT_EQ(cell(3, 1), "TYPED");
    double_click(place_of_cell(4, 1).center());
    EXPECT_EQ(open_overlay(), "TxtGrid");
    EXPECT_EQ(focused(), "TxtGrid");
}

TEST_F(EditingFocus, a_click_on_a_label_or_a_heading_closes_the_overlay) {
    edit();
    click(place_of_label(6).center());
    expect_closed();
    edit();
    QHeaderView& headings = *grid().horizontalHeader();
    click(place_of(*headings.viewport(), headings.viewport()->rect()).center());
    expect_closed();
}

TEST_F(EditingFocus, the_wheel_over_the_grid_closes_the_overlay_and_scrolls) {
    edit();
    turn_wheel(place_of_cell(6, 2).center(), 3);
    EXPECT_GT(grid().verticalScrollBar()->value(), 0);
    expect_closed();
}

TEST_F(EditingFocus, the_wheel_over_an_overlay_scrolls_the_grid_and_changes_no_choice) {
    edit();
    turn_wheel(place_of(box(), box().rect()).center(), 3);
    EXPECT_GT(grid().verticalScrollBar()->value(), 0);
    expect_closed();
    grid().verticalScrollBar()->setValue(0);
    edit_list();
    turn_wheel(place_of(list(), list().rect()).center(), 3);
    EXPECT_GT(grid().verticalScrollBar()->value(), 0);
    expect_closed();
    EXPECT_EQ(cell(3, 3), "AM");
}

TEST_F(EditingFocus, the_scroll_bar_closes_the_overlay) {
    edit();
    QScrollBar& bar = *grid().verticalScrollBar();
    click(place_of(bar, bar.rect()).center());
    EXPECT_GT(bar.value(), 0);
    expect_closed();
}

TEST_F(EditingFocus, the_status_window_takes_the_focus) {
    edit();
    QWidget& log = *widget<QPlainTextEdit>("Text1").viewport();
    click(place_of(log, log.rect()).center());
    expect_closed("Text1");
    edit_list();
    click(place_of(log, log.rect()).center());
    expect_closed("Text1");
}

TEST_F(EditingFocus, a_button_closes_the_overlay_and_the_text_is_kept) {
    edit();
    click_button("Command4");
    expect_closed("Command4");
    EXPECT_EQ(cell(3, 1), "TYPED");
}

TEST_F(EditingFocus, another_window_closes_the_overlay_and_the_focus_comes_back_to_the_grid) {
    edit();
    {
        QWidget other;
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other, kPatience));
        EXPECT_EQ(open_overlay(), "none");
    }
    window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window(), kPatience));
    expect_closed();
}

TEST_F(EditingFocus, a_menu_that_is_opened_and_left_closes_the_overlay) {
    edit();
    open_menu("mnuFile").hide();
    window().activateWindow();
    expect_closed();
    edit_list();
    QMenu& menu = open_menu("mnuFile");
    EXPECT_EQ(open_overlay(), "none");
    menu.hide();
    window().activateWindow();
    expect_closed();
}

TEST_F(EditingFocus, a_shortcut_of_the_menu_bar_closes_the_overlay) {
    edit();
    key(Qt::Key_E, Qt::AltModifier);
    auto& menu = widget<QMenu>("mnuEdit");
    ASSERT_TRUE(wait_until([&] { return menu.isVisible(); }));
    EXPECT_EQ(open_overlay(), "none");
    EXPECT_EQ(cell(3, 1), "TYPED");
    menu.hide();
}

TEST_F(EditingFocus, a_menu_that_is_opened_and_left_by_keys_gives_them_back_to_the_grid) {
    const auto open_and_leave_menu = [this] {
        key(Qt::Key_E, Qt::AltModifier);
        auto& menu = widget<QMenu>("mnuEdit");
        ASSERT_TRUE(wait_until([&] { return menu.isVisible(); }));
        QTest::keyClick(&menu, Qt::Key_Escape);
        ASSERT_TRUE(wait_until([&] { return !menu.isVisible(); }));
        // Off the screen, a menu that closes leaves no window active.
        window().activateWindow();
        // The menu bar has the keys once more, with no menu open.
        key(Qt::Key_Escape);
        EXPECT_EQ(focused(), "MSFlexGrid1");
    };
    edit();
    open_and_leave_menu();
    key(Qt::Key_Down);
    EXPECT_THAT(current(), Pair(4, 1));
    edit_list();
    open_and_leave_menu();
    key(Qt::Key_Down);
    EXPECT_THAT(current(), Pair(4, 3));
    EXPECT_EQ(open_overlay(), "none");
}

TEST_F(EditingFocus, a_dialog_closes_the_overlay_and_gives_the_focus_to_the_grid) {
    edit();
    answering({press_key(Qt::Key_Escape)}, [&] { choose("mnuHelp", "mnuabout"); });
    window().activateWindow();
    expect_closed();
    edit_list();
    answering({press_key(Qt::Key_Escape)}, [&] { choose("mnuOptions", "mnuPort"); });
    window().activateWindow();
    expect_closed();
}

TEST_F(EditingFocus, closing_the_window_asks_about_what_was_typed_last_and_saves_it) {
    edit();
    const auto seen =
        answering({press(QMessageBox::Yes)}, [this] { static_cast<QWidget&>(window()).close(); });
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(saved_tag(), "TYPED");
}

TEST_F(EditingFocus, the_start_of_a_transfer_closes_the_overlay) {
    edit();
    form().DisableGui();
    EXPECT_EQ(open_overlay(), "none");
    EXPECT_EQ(cell(3, 1), "TYPED");
    form().EnableGui();
    expect_closed();
    edit_list();
    form().DisableGui();
    EXPECT_EQ(open_overlay(), "none");
    form().unlock_gui();
    expect_closed();
}

TEST_F(EditingFocus, the_transfers_own_question_finds_the_typed_text) {
    edit();
    const auto seen = answering({press(QMessageBox::No), press(QMessageBox::Cancel)},
                                [&] { choose("mnuTransfer", "mnuRead"); });
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].text, "The VR120 data has changed.\nDo you want to save the changes?");
    window().activateWindow();
    expect_closed();
}

TEST_F(EditingFocus, a_file_that_is_opened_meanwhile_closes_the_overlay) {
    edit();
    answering({press(QMessageBox::No)}, [&] { open_some_image("other.120"); });
    window().activateWindow();
    EXPECT_EQ(open_overlay(), "none");
    EXPECT_EQ(focused(), "MSFlexGrid1");
    EXPECT_NE(cell(3, 1), "TYPED");
}

TEST_F(EditingFocus, an_overlays_own_menu_leaves_it_open) {
    const auto look_at_menu_of = [this](QLineEdit& line, const std::string& overlay) {
        Robot robot;
        robot.when([] { return QApplication::activePopupWidget() != nullptr; },
                   [&] {
                       EXPECT_EQ(open_overlay(), overlay);
                       QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
                   });
        robot.during([&] {
            const QPoint middle = line.rect().center();
            QContextMenuEvent event(QContextMenuEvent::Mouse, middle, line.mapToGlobal(middle));
            QCoreApplication::sendEvent(&line, &event);
        });
        EXPECT_EQ(open_overlay(), overlay);
    };
    edit();
    look_at_menu_of(box(), "TxtGrid");
    edit_list();
    look_at_menu_of(*list().lineEdit(), "CboGrid");
}

TEST_F(EditingFocus, an_overlay_follows_its_cell_when_the_window_is_resized) {
    edit();
    window().resize(window().size() + QSize(90, 70));
    QCoreApplication::processEvents();
    EXPECT_EQ(open_overlay(), "TxtGrid");
    EXPECT_EQ(focused(), "TxtGrid");
    EXPECT_TRUE(place_of_cell(3, 1).contains(place_of(box(), box().rect()).center()));
    type("x");
    EXPECT_EQ(cell(3, 1), "TYPEDX");
}

// The overlay lies over its cell, which is in sight, and has the focus.
TEST_F(EditingFocus, an_overlay_stays_in_the_grid_when_the_window_shrinks_or_grows) {
    const auto expect_over_cell = [this](int row, int col) {
        const std::string overlay = col == 1 ? "TxtGrid" : "CboGrid";
        EXPECT_EQ(open_overlay(), overlay);
        EXPECT_EQ(focused(), overlay);
        EXPECT_TRUE(is_in_sight(row, col));
        auto& shown = widget<QWidget>(overlay.c_str());
        EXPECT_TRUE(place_of_cell(row, col).contains(place_of(shown, shown.rect()).center()));
    };
    const auto resize = [this](QSize size) {
        window().resize(size);
        QCoreApplication::processEvents();
    };
    const QSize small = window().size(), large = small + QSize(100, 300);
    for (const int col : {1, 3}) {
        resize(large);
        const int last = grid().rowAt(grid().viewport()->height() - grid().rowHeight(0)) + 1;
        open(last, col);
        resize(small);
        expect_over_cell(last, col);
        // What the end of the table leaves free is filled from above.
        open(640, col);
        resize(large);
        expect_over_cell(640, col);
        resize(small);
        expect_over_cell(640, col);
        key(Qt::Key_Escape);
    }
}

TEST_F(EditingFocus, keys_go_on_from_the_row_whose_label_was_clicked) {
    grid().verticalScrollBar()->setValue(300);
    click(place_of_label(305).center());
    EXPECT_EQ(focused(), "MSFlexGrid1");
    key(Qt::Key_Down);
    EXPECT_EQ(current().first, 306);
}

}  // namespace
}  // namespace memwright::gui
