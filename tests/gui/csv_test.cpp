// CSV export and import through the window, its menu and the system's file dialogs.

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QPushButton>
#include <fstream>

#include "gui/support/appearance.h"
#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

const std::string kHeader = "Ch,MHz,Mode,Pref,Label\r\n";

class Csv : public StartedWindowTest {
  protected:
    void SetUp() override {
        StartedWindowTest::SetUp();
        path_ = open_some_image();
        std::filesystem::current_path(folder_.path());
    }

    std::vector<Seen> choosing(const char* entry, const std::vector<Reply>& replies) {
        return answering(replies, [this, entry] { choose("mnuFile", entry); });
    }
    Reply type(const std::string& name) {
        return type_name(qt::from_file_name(folder_.file(name)));
    }
    void put_text(const std::string& name, const std::string& text) {
        std::ofstream(folder_.path() / name, std::ios::binary) << text;
    }
    std::string text_of(const std::string& name) {
        const auto bytes = folder_.get(name);
        return {bytes.begin(), bytes.end()};
    }
    // What a cell shows.
    std::string cell(int row, int col) {
        return qt::to_utf8(grid().model()->index(row - 1, col).data().toString());
    }

    // Clicks a file in the dialog's list, and then the button.
    static Reply click_file(const QString& name, QDialogButtonBox::StandardButton button) {
        return [name, button](QDialog& dialog) {
            QAbstractItemView* view = nullptr;
            for (auto* const each : dialog.findChildren<QAbstractItemView*>()) {
                const bool files =
                    each->objectName() == "treeView" || each->objectName() == "listView";
                if (files && each->isVisible()) view = each;
            }
            QModelIndexList found;
            if (view == nullptr || !wait_until([&] {
                    found = view->model()->match(
                        view->rootIndex().model()->index(0, 0, view->rootIndex()), Qt::DisplayRole,
                        name, 1, Qt::MatchExactly);
                    return !found.isEmpty();
                })) {
                ADD_FAILURE() << name.toStdString() << " is not listed";
                dialog.reject();
                return;
            }
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                              view->visualRect(found.front()).center());
            QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(button),
                              Qt::LeftButton);
        };
    }

    void check_dialog(QDialog& dialog, const char* title) {
        EXPECT_EQ(dialog.windowTitle(), title);
        const auto* const types = dialog.findChild<QComboBox*>("fileTypeCombo");
        ASSERT_EQ(types->count(), 2);
        EXPECT_EQ(types->itemText(0), "CSV Files (*.csv)");
        EXPECT_EQ(types->itemText(1), "All Files (*.*)");
        EXPECT_EQ(types->currentIndex(), 0);
        EXPECT_EQ(qt::to_file_name(dynamic_cast<QFileDialog&>(dialog).directory().absolutePath()),
                  std::filesystem::current_path().string());
        EXPECT_EQ(dialog.parentWidget(), &window());
        EXPECT_THAT(clipped_texts(dialog), IsEmpty());
    }

    std::string path_;
};

TEST_F(Csv, the_dialogs_have_their_titles_and_filters_and_start_in_the_current_folder) {
    std::filesystem::create_directory(folder_.path() / "lists");
    std::filesystem::current_path(folder_.path() / "lists");
    const auto seen = [this](const char* title) {
        return look([this, title](QDialog& dialog) { check_dialog(dialog, title); },
                    press_key(Qt::Key_Escape));
    };
    choosing("mnuExport", {seen("Save As...")});
    choosing("mnuImport", {seen("Import CSV")});
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path() / "lists"));
    EXPECT_EQ(cell(1, 1), "TOWER");
}

TEST_F(Csv, an_export_writes_the_file_that_is_typed_with_the_ending_that_it_lacks) {
    EXPECT_EQ(choosing("mnuExport", {type("list")}).size(), 1U);
    const std::string text = text_of("list.csv");
    EXPECT_THAT(text, StartsWith(kHeader + "0,118.10000,AM,p,\"TOWER\"\r\n"
                                           "1,118.70000,AM,,\"TOWER2\"\r\n"));
    EXPECT_TRUE(text.ends_with("\"\r\n"));
    EXPECT_EQ(caption(), "Memwright v1.0 - " + path_);
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(form().Text1.text.get(), "");
}

TEST_F(Csv, an_export_over_a_file_that_is_clicked_replaces_it_without_a_question) {
    put_text("old.csv", std::string(100000, 'x'));
    EXPECT_EQ(choosing("mnuExport", {click_file("old.csv", QDialogButtonBox::Save)}).size(), 1U);
    choosing("mnuExport", {type("new.csv")});
    EXPECT_EQ(text_of("old.csv"), text_of("new.csv"));
}

TEST_F(Csv, an_import_of_a_file_that_is_clicked_fills_the_table) {
    put_text("in.csv", kHeader + "0,433.5,NFM,p,\"NEW\"\r\n963,88.3,WFM,,\"LAST\"");
    EXPECT_EQ(choosing("mnuImport", {click_file("in.csv", QDialogButtonBox::Open)}).size(), 1U);
    EXPECT_EQ(cell(1, 1), "NEW");
    EXPECT_EQ(cell(1, 2), "433.50000");
    EXPECT_EQ(cell(1, 3), "NFM");
    EXPECT_EQ(cell(1, 4), "On");
    EXPECT_EQ(cell(2, 1), "TOWER2") << "as it was";
    EXPECT_EQ(cell(640, 1), "LAST");
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(caption(), "Memwright v1.0 - " + path_);
    EXPECT_EQ(folder_.get("radio.120").size(), 7392U);
}

TEST_F(Csv, keys_alone_export_and_import) {
    const auto by_keys = [&](Qt::Key key, const Reply& reply) {
        return answering({reply}, [&] {
            window().activateWindow();
            QTest::keyClick(window().windowHandle(), Qt::Key_F, Qt::AltModifier);
            auto& menu = widget<QMenu>("mnuFile");
            ASSERT_TRUE(wait_until([&] { return menu.isVisible(); }));
            QTest::keyClick(&menu, key);
        });
    };
    EXPECT_EQ(by_keys(Qt::Key_E, type("list.csv")).front().title, "Save As...");
    std::string text = text_of("list.csv");
    text.replace(text.find("TOWER"), 5, "KEYS!");
    put_text("list.csv", text);
    EXPECT_EQ(by_keys(Qt::Key_I, type("list.csv")).front().title, "Import CSV");
    EXPECT_EQ(cell(1, 1), "KEYS!");
    choosing("mnuExport", {type("again.csv")});
    EXPECT_EQ(text_of("again.csv"), text);
}

TEST_F(Csv, what_an_import_brings_is_asked_about_on_closing) {
    put_text("in.csv", kHeader + "0,433.5,NFM,p,\"NEW\"\r\n");
    choosing("mnuImport", {type("in.csv")});
    const auto seen = answering({press(QMessageBox::Cancel)},
                                [this] { static_cast<QWidget&>(window()).close(); });
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_THAT(qt::to_utf8(seen[0].text), HasSubstr("has changed"));
}

TEST_F(Csv, characters_beyond_ascii_come_back) {
    form().MSFlexGrid1.set_text(1, 1, "\xDC\x80\xFF\x9D\"'");
    choosing("mnuExport", {type("list.csv")});
    EXPECT_THAT(text_of("list.csv"), HasSubstr("\"\xDC\x80\xFF\x9D\"'\"\r\n"));
    form().MSFlexGrid1.set_text(1, 1, "");
    choosing("mnuImport", {type("list.csv")});
    EXPECT_EQ(cell(1, 1), "\xC3\x9C\xE2\x82\xAC\xC3\xBF\xC2\x9D\"'");
}

TEST_F(Csv, a_bad_line_is_reported_in_a_box_and_in_the_status_window) {
    put_text("in.csv", kHeader +
                           "0,145.5,NFM,,\"NEW\"\r\n1,339.5,AM,p,\"X\"\r\n"
                           "964,118.1,AM,,\"Y\"\r\n");
    const auto check = [&](QDialog& box) { EXPECT_THAT(clipped_texts(box), IsEmpty()); };
    const auto seen =
        choosing("mnuImport", {type("in.csv"), look(check, press_key(Qt::Key_Return))});
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[1].title, "Memwright");
    EXPECT_EQ(seen[1].icon, QMessageBox::Critical);
    EXPECT_EQ(seen[1].buttons, QMessageBox::Ok);
    const std::string cause =
        "channel 964 is no memory: banks are 0 to 9, memories 0 to 63.\n\n    964,118.1,AM,,\"Y\"";
    EXPECT_THAT(qt::to_utf8(seen[1].text), HasSubstr(cause));
    EXPECT_EQ(widget<QLabel>("NoticeText").text(),
              "in.csv: Line 3 was skipped: the radio cannot receive 339.5 MHz.");
    EXPECT_EQ(cell(1, 1), "NEW");
    EXPECT_EQ(cell(1, 2), "145.5");
    EXPECT_TRUE(grid().isEnabled());
}

TEST_F(Csv, the_longest_report_fits_on_the_screen) {
    put_text("in.csv", kHeader + std::string(2'000'000, 'W'));
    const auto check = [&](QDialog& box) {
        EXPECT_LE(box.width(), window().screen()->availableGeometry().width() * 3 / 4);
        EXPECT_LE(box.height(), window().screen()->availableGeometry().height() / 2);
        EXPECT_THAT(clipped_texts(box), IsEmpty());
    };
    const auto seen = choosing("mnuImport", {type("in.csv"), look(check, press(QMessageBox::Ok))});
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_THAT(qt::to_utf8(seen[1].text), HasSubstr("it is longer than 1048576 characters."));
}

TEST_F(Csv, a_file_that_is_missing_or_a_target_that_cannot_be_written_is_reported) {
    auto seen = choosing("mnuImport", {type("missing.csv"), press(QMessageBox::Ok)});
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_THAT(qt::to_utf8(seen[1].text), StartsWith("Cannot open "));
    seen = choosing("mnuExport", {type("no/such/folder/list.csv"), press(QMessageBox::Ok)});
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_THAT(qt::to_utf8(seen[1].text), StartsWith("Cannot save "));
    EXPECT_THAT(folder_.names(), ElementsAre("radio.120", "settings"));
    EXPECT_EQ(cell(1, 1), "TOWER");
}

}  // namespace
}  // namespace memwright::gui
