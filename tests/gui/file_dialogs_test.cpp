// Open, Save and Save As through the system's file dialogs.

#include <gmock/gmock.h>

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QTreeView>

#include "gui/support/appearance.h"
#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FileDialog : public StartedWindowTest {
  protected:
    std::vector<Seen> choosing(const char* entry, const std::vector<Reply>& replies) {
        return answering(replies, [this, entry] { choose("mnuFile", entry); });
    }

    std::string whole(const char* name) { return folder_.file(name); }
    Reply type(const std::string& name) { return type_name(qt::from_file_name(name)); }

    std::string caption_of(const char* name) { return "Memwright v1.0 - " + whole(name); }

    void put_image(const char* name) {
        const MemoryImage image = some_image();
        folder_.put(name, {image.bytes().begin(), image.bytes().end()});
    }

    static std::vector<std::string> filters(const QDialog& dialog) {
        std::vector<std::string> shown;
        const auto* const list = dialog.findChild<QComboBox*>("fileTypeCombo");
        for (int i = 0; list != nullptr && i < list->count(); ++i) {
            shown.push_back(qt::to_utf8(list->itemText(i)));
        }
        return shown;
    }

    static int chosen_filter(const QDialog& dialog) {
        return dialog.findChild<QComboBox*>("fileTypeCombo")->currentIndex();
    }

    static std::string folder_shown(const QDialog& dialog) {
        return qt::to_file_name(
            dynamic_cast<const QFileDialog&>(dialog).directory().absolutePath());
    }
};

TEST_F(FileDialog, open_has_its_title_its_filters_and_starts_in_the_last_used_folder) {
    std::filesystem::create_directory(folder_.path() / "images");
    store_setting("FilePath", whole("images").c_str());
    restart();
    const auto check = [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Open File");
        EXPECT_THAT(filters(dialog), ElementsAre("VR-120 Files (*.120 *.tk1)", "All Files (*.*)"));
        EXPECT_EQ(chosen_filter(dialog), 0);
        EXPECT_EQ(folder_shown(dialog), whole("images"));
        EXPECT_EQ(dialog.parentWidget(), &window());
        EXPECT_TRUE(dialog.findChild<QLineEdit*>("fileNameEdit")->hasFocus());
        EXPECT_THAT(clipped_texts(dialog), IsEmpty());
    };
    choosing("mnuOpen", {look(check, press_key(Qt::Key_Escape))});
}

TEST_F(FileDialog, save_as_has_its_title_its_filters_and_starts_in_the_current_folder) {
    open_some_image();
    std::filesystem::create_directory(folder_.path() / "images");
    std::filesystem::current_path(folder_.path() / "images");
    const auto check = [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Save File As..");
        EXPECT_THAT(filters(dialog), ElementsAre("VR-120 Files (*.120)", "All Files (*.*)"));
        EXPECT_EQ(chosen_filter(dialog), 0);
        EXPECT_EQ(folder_shown(dialog), whole("images"));
        EXPECT_EQ(dialog.parentWidget(), &window());
        EXPECT_THAT(clipped_texts(dialog), IsEmpty());
    };
    choosing("mnuSave", {look(check, press_key(Qt::Key_Escape))});
}

TEST_F(FileDialog, open_shows_its_places_and_the_dates_of_files_whole_and_readable) {
    // In a folder whose hidden folders are not listed, as homes are.
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString(whole(".local/share")));
    std::filesystem::create_directories(whole(".local/share/memwright/radio images"));
    store_setting("FilePath", folder_.path().c_str());
    put_image("mine.120");
    restart();
    const auto check = [&](QDialog& dialog) {
        auto* const places = dialog.findChild<QListView*>("sidebar");
        auto* const files = dialog.findChild<QTreeView*>("treeView");
        ASSERT_TRUE(places != nullptr && files != nullptr);
        EXPECT_TRUE(wait_until([&] { return files->model()->rowCount(files->rootIndex()) > 0; }));
        const auto found =
            places->model()->match(places->model()->index(0, 0), Qt::DisplayRole, "radio images");
        ASSERT_EQ(found.size(), 1);
        const QRect place = places->visualRect(found[0]);
        EXPECT_TRUE(places->viewport()->rect().contains(place));
        const QImage picture = picture_of(*places->viewport(), place);
        EXPECT_GE(contrast(ink_of(picture), background_of(picture)), 7);
        for (const QAbstractItemView* const list :
             std::initializer_list<QAbstractItemView*>{places, files}) {
            EXPECT_FALSE(list->horizontalScrollBar()->isVisible());
        }
        constexpr int kDates = 3;
        EXPECT_GE(files->columnWidth(kDates),
                  static_cast<const QAbstractItemView*>(files)->sizeHintForColumn(kDates));
    };
    // Qt remembers the places, and then looks for them at another moment.
    for (int i = 0; i < 2; ++i) choosing("mnuOpen", {look(check, press_key(Qt::Key_Escape))});
}

TEST_F(FileDialog, open_opens_the_file_whose_name_is_typed) {
    put_image("radio.120");
    EXPECT_EQ(choosing("mnuOpen", {type(whole("radio.120"))}).size(), 1U);
    EXPECT_EQ(caption(), caption_of("radio.120"));
    EXPECT_TRUE(grid().isEnabled());
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(std::filesystem::current_path(), folder_.path());
}

TEST_F(FileDialog, open_takes_the_other_extension_none_and_names_beyond_ascii) {
    for (const char* const name : {"radio.tk1", "radio",
                                   "Gr\xC3\xBC\xC3\x9F"
                                   "e \xE2\x82\xAC.120",
                                   "two words, and a comma.120"}) {
        put_image(name);
        choosing("mnuOpen", {type(whole(name))});
        EXPECT_EQ(caption(), caption_of(name));
    }
}

TEST_F(FileDialog, a_cancelled_open_changes_nothing) {
    choosing("mnuOpen", {press_key(Qt::Key_Escape)});
    EXPECT_FALSE(grid().isEnabled());
    const std::string path = open_some_image();
    choosing("mnuOpen", {press_key(Qt::Key_Escape)});
    EXPECT_EQ(caption(), "Memwright v1.0 - " + path);
    EXPECT_TRUE(grid().isEnabled());
}

TEST_F(FileDialog, open_does_not_demand_that_the_file_exists) {
    choosing("mnuOpen", {type(whole("new.120"))});
    EXPECT_EQ(caption(), caption_of("new.120"));
    EXPECT_TRUE(folder_.get("new.120").empty());
}

TEST_F(FileDialog, open_asks_about_changes_first) {
    open_some_image();
    put_image("other.120");
    change_table();
    EXPECT_EQ(choosing("mnuOpen", {press(QMessageBox::Cancel)}).size(), 1U);
    EXPECT_EQ(caption(), caption_of("radio.120"));
    EXPECT_EQ(form().MSFlexGrid1.TextMatrix(1, 2), "145.50000");

    const auto seen = choosing("mnuOpen", {press(QMessageBox::No), type(whole("other.120"))});
    EXPECT_EQ(seen[0].title, "Memwright");
    EXPECT_EQ(seen[0].text, "The VR120 data has changed.\nDo you want to save the changes?");
    EXPECT_EQ(caption(), caption_of("other.120"));
}

TEST_F(FileDialog, save_writes_to_the_current_file_without_a_question) {
    open_some_image();
    const auto before = folder_.get("radio.120");
    change_table();
    EXPECT_TRUE(choosing("mnuSaveOnly", {}).empty());
    EXPECT_NE(folder_.get("radio.120"), before);
    EXPECT_EQ(folder_.get("radio.120").size(), 7392U);
}

TEST_F(FileDialog, save_without_a_file_is_save_as) {
    form().EnableGui();
    const auto seen = choosing("mnuSaveOnly", {type(whole("first.120"))});
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].title, "Save File As..");
    EXPECT_EQ(caption(), caption_of("first.120"));
    EXPECT_EQ(folder_.get("first.120").size(), 7392U);
}

TEST_F(FileDialog, save_as_adds_the_extension_to_a_name_without_a_dot) {
    open_some_image();
    choosing("mnuSave", {type(whole("mem"))});
    EXPECT_EQ(caption(), caption_of("mem.120"));
    choosing("mnuSave", {type(whole("mem.bak"))});
    EXPECT_EQ(caption(), caption_of("mem.bak"));
    EXPECT_THAT(folder_.names(), ::testing::IsSupersetOf({"mem.120", "mem.bak", "radio.120"}));
    EXPECT_EQ(folder_.get("mem.120"), folder_.get("radio.120"));
}

TEST_F(FileDialog, save_as_asks_before_it_replaces_a_file_and_does_so_once) {
    open_some_image();
    folder_.put("old.120", {1, 2, 3});
    const auto seen = choosing("mnuSave", {type(whole("old.120")), press(QMessageBox::Yes)});
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[1].title, "Save As");
    EXPECT_EQ(qt::to_utf8(seen[1].text),
              whole("old.120") + " already exists.\nDo you want to replace it?");
    EXPECT_EQ(seen[1].icon, QMessageBox::Warning);
    EXPECT_EQ(seen[1].buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    EXPECT_EQ(folder_.get("old.120"), folder_.get("radio.120"));
    EXPECT_EQ(caption(), caption_of("old.120"));
}

TEST_F(FileDialog, no_asks_for_another_name_and_the_declined_one_stays_in_the_caption) {
    open_some_image();
    folder_.put("old.120", {1, 2, 3});
    choosing("mnuSave", {type(whole("old.120")), press(QMessageBox::No), type(whole("new.120"))});
    EXPECT_EQ(folder_.get("old.120"), (std::vector<std::uint8_t>{1, 2, 3}));
    EXPECT_EQ(folder_.get("new.120"), folder_.get("radio.120"));
    EXPECT_EQ(caption(), caption_of("old.120"));
}

TEST_F(FileDialog, cancel_at_any_question_of_save_as_writes_nothing) {
    open_some_image();
    folder_.put("old.120", {1, 2, 3});
    choosing("mnuSave", {press_key(Qt::Key_Escape)});
    choosing("mnuSave", {type(whole("old.120")), press(QMessageBox::Cancel)});
    choosing("mnuSave", {type(whole("old.120")), press_key(Qt::Key_Escape)});
    EXPECT_EQ(folder_.get("old.120"), (std::vector<std::uint8_t>{1, 2, 3}));
    EXPECT_EQ(caption(), caption_of("radio.120"));
}

TEST_F(FileDialog, a_very_long_name_is_asked_about_in_a_box_that_fits_on_the_screen) {
    open_some_image();
    const std::string name = std::string(200, 'n') + ".120";
    folder_.put(name, {1});
    const auto check = [&](QDialog& box) {
        EXPECT_LE(box.width(), window().screen()->availableGeometry().width() * 3 / 4);
        EXPECT_THAT(clipped_texts(box), IsEmpty());
    };
    choosing("mnuSave", {type(folder_.file(name)), look(check, press(QMessageBox::Cancel))});
}

}  // namespace
}  // namespace memwright::gui
