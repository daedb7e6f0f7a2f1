// Printing from the window, all the way to the file.

#include <gmock/gmock.h>

#include <QAction>
#include <QLineEdit>
#include <filesystem>
#include <fstream>

#include "gui/support/window_test.h"
#include "qt/print/pdf_file.h"

namespace memwright::gui {
namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;

// On a computer without a printer documents are PDF files, here in a folder of the test.
class PrintingFromTheWindow : public WindowTest {
  protected:
    PrintingFromTheWindow() {
        for (const char* const name : kVariables) before_[name] = qgetenv(name);
        qputenv("HOME", folder_.file("home").c_str());
        qputenv("XDG_CONFIG_HOME", folder_.file("home/.config").c_str());
    }
    ~PrintingFromTheWindow() override {
        for (const auto& [name, value] : before_) {
            value.isNull() ? qunsetenv(name) : qputenv(name, value);
        }
    }
    void SetUp() override {
        start();
        open_some_image();
    }

    std::string documents() const { return folder_.file("home/Documents"); }
    std::vector<Seen> print(const std::vector<Reply>& replies) {
        return answering(replies, [this] { choose("mnuFile", "mnuPrint"); });
    }
    // The file that a message names, behind such words.
    static std::string named(const Seen& message, const std::string& words) {
        const std::string text = qt::to_utf8(message.text);
        EXPECT_TRUE(text.starts_with(words)) << text;
        return text.size() < words.size() ? "" : text.substr(words.size());
    }

  private:
    static constexpr const char* kVariables[] = {"HOME", "XDG_CONFIG_HOME"};
    std::map<const char*, QByteArray> before_;
};

TEST_F(PrintingFromTheWindow, all_rows_become_a_pdf_file_that_the_last_message_names) {
    const auto seen = print({press_key(Qt::Key_Return), press(QMessageBox::Ok)});
    ASSERT_THAT(seen, SizeIs(2));
    EXPECT_EQ(seen[0].title, "Print to Default Printer...");
    EXPECT_EQ(seen[1].title, "Memwright");
    EXPECT_EQ(seen[1].icon, QMessageBox::Information);
    EXPECT_EQ(seen[1].buttons, QMessageBox::Ok);
    const std::string file = named(seen[1], "Memwright\nPrinting 7 pages to ");
    EXPECT_TRUE(file.starts_with(documents() + "/Memwright ")) << file;
    ASSERT_TRUE(std::filesystem::exists(file)) << file;
    EXPECT_EQ(PdfFile(file).pages(), 7);
    EXPECT_EQ(PdfFile(file).images(), 0);
    std::string text;
    for (const std::string& line : PdfFile(file).lines(1)) text += line + "\n";
    EXPECT_THAT(text, HasSubstr(folder_.file("radio.120")));
    EXPECT_THAT(text, HasSubstr(" - Page 1 of 7"));
    EXPECT_THAT(text, HasSubstr("118.10000"));
}

TEST_F(PrintingFromTheWindow, a_range_prints_its_rows) {
    const auto range = [](QDialog& dialog) {
        auto* const last = dialog.findChild<QLineEdit*>("Text2");
        last->selectAll();
        QTest::keyClicks(last, "71");
    };
    const auto seen = print({look(range, press_key(Qt::Key_Return)), press(QMessageBox::Ok)});
    ASSERT_THAT(seen, SizeIs(2));
    const PdfFile file(named(seen[1], "Memwright\nPrinting 2 pages to "));
    EXPECT_EQ(file.pages(), 2);
    std::string text;
    for (const std::string& line : file.lines(2)) text += line + "\n";
    EXPECT_THAT(text, HasSubstr("Bank 1 - 5"));
    EXPECT_THAT(text, ::testing::Not(HasSubstr("Bank 1 - 6")));
}

TEST_F(PrintingFromTheWindow, cancel_prints_nothing) {
    EXPECT_THAT(print({press_key(Qt::Key_Escape)}), SizeIs(1));
    EXPECT_FALSE(std::filesystem::exists(documents()));
}

TEST_F(PrintingFromTheWindow, a_folder_that_takes_no_file_is_reported_and_the_program_goes_on) {
    std::filesystem::create_directory(folder_.file("home"));
    std::ofstream(documents()) << "in the way";
    const auto seen = print({press_key(Qt::Key_Return), press(QMessageBox::Ok)});
    ASSERT_THAT(seen, SizeIs(2));
    EXPECT_EQ(seen[1].icon, QMessageBox::Critical);
    EXPECT_THAT(qt::to_utf8(seen[1].text), HasSubstr("Cannot save " + documents() + "/Memwright "));
    ASSERT_THAT(program().notices.of_this_run(), SizeIs(1));
    EXPECT_THAT(program().notices.of_this_run()[0].notice.text, HasSubstr("Cannot save "));

    std::filesystem::remove(documents());
    const auto then = print({press_key(Qt::Key_Return), press(QMessageBox::Ok)});
    ASSERT_THAT(then, SizeIs(2));
    EXPECT_TRUE(std::filesystem::exists(named(then[1], "Memwright\nPrinting 7 pages to ")));
}

using PrintEntry = StartedWindowTest;

TEST_F(PrintEntry, is_for_those_who_have_an_image) {
    EXPECT_FALSE(widget<QAction>("mnuPrint").isEnabled());
    open_some_image();
    EXPECT_TRUE(widget<QAction>("mnuPrint").isEnabled());
}

}  // namespace
}  // namespace memwright::gui
