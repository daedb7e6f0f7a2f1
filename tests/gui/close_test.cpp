// Closing the window: the settings that are written, and the question about unsaved changes.

#include <QApplication>

#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

constexpr const char* kQuestion = "The VR120 data has changed.\nDo you want to save the changes?";

class Close : public StartedWindowTest {
  protected:
    // Closes the window as its close button does.
    std::vector<Seen> close(const std::vector<Reply>& replies = {}) {
        return answering(replies, [this] { static_cast<QWidget&>(window()).close(); });
    }
};

TEST_F(Close, an_unchanged_table_is_not_asked_about) {
    open_some_image();
    EXPECT_TRUE(close().empty());
    EXPECT_FALSE(window().isVisible());
}

TEST_F(Close, exit_in_the_file_menu_closes_the_window) {
    choose("mnuFile", "mnuexit");
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(setting("WindowState"), "0");
}

TEST_F(Close, writes_the_place_of_the_window_and_the_current_folder) {
    std::filesystem::create_directory(folder_.path() / "images");
    std::filesystem::current_path(folder_.path() / "images");
    window().resize(800, 600);
    window().move(30, 40);
    const QRect place = window().frameGeometry();
    close();
    EXPECT_EQ(setting("FilePath"), folder_.file("images"));
    EXPECT_EQ(setting("WindowState"), "0");
    EXPECT_EQ(setting("Width"), std::to_string(place.width() * 15));
    EXPECT_EQ(setting("Height"), std::to_string(place.height() * 15));
    EXPECT_EQ(setting("Left"), std::to_string(place.left() * 15));
    EXPECT_EQ(setting("Top"), std::to_string(place.top() * 15));
    EXPECT_EQ(setting("DebugWin"), "(none)");
}

TEST_F(Close, the_next_window_is_where_this_one_was_closed) {
    window().resize(820, 610);
    window().move(50, 70);
    choose("mnuOptions", "mnuShwDbg");
    const QRect place = window().frameGeometry();
    close();
    restart();
    EXPECT_TRUE(wait_until([&] { return window().frameGeometry() == place; }));
    EXPECT_FALSE(widget<QPlainTextEdit>("Text1").isVisible());

    // And it does not creep from one run to the next.
    close();
    restart();
    EXPECT_TRUE(wait_until([&] { return window().frameGeometry() == place; }));
}

TEST_F(Close, a_maximised_window_keeps_its_last_normal_place) {
    store_setting("Width", "12345");
    window().showMaximized();
    ASSERT_TRUE(wait_until([&] { return window().isMaximized(); }));
    close();
    EXPECT_EQ(setting("WindowState"), "2");
    EXPECT_EQ(setting("Width"), "12345");
    EXPECT_EQ(setting("Top"), "(none)");
}

TEST_F(Close, a_minimised_window_writes_the_folder_alone) {
    window().showMinimized();
    ASSERT_TRUE(wait_until([&] { return window().isMinimized(); }));
    close();
    EXPECT_NE(setting("FilePath"), "(none)");
    for (const char* const key : {"WindowState", "Width", "Height", "Left", "Top"}) {
        EXPECT_EQ(setting(key), "(none)") << key;
    }
}

TEST_F(Close, yes_saves_the_changes) {
    open_some_image();
    change_table();
    const auto seen = close({press(QMessageBox::Yes)});
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].title, "Memwright");
    EXPECT_EQ(seen[0].text, kQuestion);
    EXPECT_EQ(seen[0].icon, QMessageBox::Warning);
    EXPECT_EQ(seen[0].buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    EXPECT_FALSE(window().isVisible());
    restart();
    program().open_named(folder_.file("radio.120"));
    EXPECT_EQ(form().MSFlexGrid1.TextMatrix(1, 2), "145.50000");
}

TEST_F(Close, cancel_keeps_the_window_and_the_settings_are_written_all_the_same) {
    open_some_image();
    const auto before = folder_.get("radio.120");
    change_table();
    close({press(QMessageBox::Cancel)});
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(folder_.get("radio.120"), before);
    EXPECT_EQ(form().MSFlexGrid1.TextMatrix(1, 2), "145.50000");
    EXPECT_EQ(setting("WindowState"), "0");
    EXPECT_EQ(setting("Width"), std::to_string(window().frameGeometry().width() * 15));
}

TEST_F(Close, escape_in_the_question_is_cancel) {
    open_some_image();
    change_table();
    close({press_key(Qt::Key_Escape)});
    EXPECT_TRUE(window().isVisible());
}

TEST_F(Close, the_program_may_end_with_its_window_open) {
    open_some_image();
    windowed_.reset();
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
}

}  // namespace
}  // namespace memwright::gui
