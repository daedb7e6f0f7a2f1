// Opening the window: its place, what it restores, and the file named on the command line.

#include <QScreen>

#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

class Start : public WindowTest {
  protected:
    QRect place() { return window().frameGeometry(); }
};

TEST_F(Start, the_first_window_is_in_the_middle_of_the_screen_in_its_design_size) {
    start();
    EXPECT_TRUE(wait_until([&] { return place().size() == QSize(666, 470); }))
        << place().width() << " x " << place().height();
    const QSize screen = window().screen()->geometry().size();
    EXPECT_EQ(place().left(), (screen.width() - 666) / 2);
    EXPECT_EQ(place().top(), (screen.height() - 470) / 2);
    EXPECT_TRUE(widget<QPlainTextEdit>("Text1").isVisible());
    EXPECT_FALSE(window().isMaximized());
}

TEST_F(Start, the_caption_tells_the_program_its_version_and_its_makers) {
    start();
    EXPECT_EQ(caption(), "Memwright v1.0 - By the Memwright developers");
}

TEST_F(Start, the_status_line_is_empty_and_nothing_of_a_transfer_is_shown) {
    start();
    EXPECT_EQ(widget<QLabel>("Label1").text(), "");
    for (const char* const name : {"ReceivedLabel", "TransferProgress", "TransferButton"}) {
        EXPECT_FALSE(widget<QWidget>(name).isVisible()) << name;
    }
}

TEST_F(Start, the_status_window_is_empty) {
    start();
    EXPECT_EQ(widget<QPlainTextEdit>("Text1").toPlainText(), "");
    EXPECT_EQ(widget<QPlainTextEdit>("Text1").placeholderText(), "");
}

TEST_F(Start, the_window_comes_back_where_it_was) {
    store_setting("Top", "600");
    store_setting("Height", "9000");
    store_setting("Left", "900");
    store_setting("Width", "12000");
    start();
    EXPECT_TRUE(wait_until([&] { return place() == QRect(60, 40, 800, 600); }))
        << place().left() << ", " << place().top() << ", " << place().width() << " x "
        << place().height();
}

TEST_F(Start, a_maximised_window_comes_back_maximised) {
    store_setting("WindowState", "2");
    store_setting("Width", "12000");
    start();
    EXPECT_TRUE(wait_until([&] { return window().isMaximized(); }));
    EXPECT_GE(window().width(), window().screen()->availableGeometry().width() - 10);
    EXPECT_GT(form().MSFlexGrid1.width.get(), 12000);
}

TEST_F(Start, a_window_far_off_the_screen_or_of_no_size_is_skipped_too) {
    for (const char* const key : {"Top", "Left"}) store_setting(key, "1e30");
    for (const char* const key : {"Height", "Width"}) store_setting(key, "-5000");
    start();
    EXPECT_TRUE(window().isVisible());
    EXPECT_GE(place().height(), window().minimumHeight());
}

TEST_F(Start, a_hidden_status_window_stays_hidden) {
    store_setting("DebugWin", "False");
    start();
    EXPECT_FALSE(widget<QAction>("mnuShwDbg").isChecked());
    EXPECT_FALSE(widget<QPlainTextEdit>("Text1").isVisible());
    EXPECT_EQ(form().MSFlexGrid1.height, form().Label1.top - 300);
}

TEST_F(Start, the_last_folder_is_entered) {
    std::filesystem::create_directory(folder_.path() / "images");
    store_setting("FilePath", folder_.file("images").c_str());
    start();
    EXPECT_EQ(std::filesystem::current_path(), folder_.path() / "images");
}

TEST_F(Start, a_file_named_on_the_command_line_is_opened) {
    const MemoryImage image = some_image();
    const std::string path = folder_.put("radio.120", {image.bytes().begin(), image.bytes().end()});
    start(path);
    ASSERT_TRUE(wait_until([&] { return grid().isEnabled(); }));
    EXPECT_EQ(caption(), "Memwright v1.0 - " + path);
    EXPECT_NE(form().MSFlexGrid1.TextMatrix(1, 2), "");
}

TEST_F(Start, a_file_that_cannot_be_opened_is_told_and_the_program_goes_on) {
    const auto seen = answering({press(QMessageBox::Ok)}, [&] { start(folder_.path().string()); });
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].title, "Memwright");
    EXPECT_EQ(seen[0].icon, QMessageBox::Critical);
    EXPECT_TRUE(seen[0].text.contains(qt::from_utf8(folder_.path().string())));
    EXPECT_EQ(caption(), "Memwright v1.0 - By the Memwright developers");
    EXPECT_FALSE(grid().isEnabled());
    ASSERT_EQ(program().notices.of_this_run().size(), 1U);
    EXPECT_EQ(qt::from_utf8(program().notices.of_this_run()[0].notice.text), seen[0].text);
}

}  // namespace
}  // namespace memwright::gui
