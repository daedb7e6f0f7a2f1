// What was typed into the real window before the program crashed, and how it comes back; the
// archive of images in Open's dialog.

#include <gmock/gmock.h>

#include <QFileDialog>
#include <QListView>
#include <QPlainTextEdit>
#include <QUrl>

#include "files/snapshot.h"
#include "gui/support/editing_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kChanged = "The VR120 data has changed.\nDo you want to save the changes?";

class Recovery : public EditingTest {
  protected:
    std::vector<std::string> snapshots() {
        return NativeFileSystem().files_in(folder_.file("state/memwright"));
    }
    // The newest snapshot on the disk; empty if there is none.
    Snapshot snapshot() {
        for (const std::string& name : snapshots()) {
            if (!name.ends_with(".recovery")) continue;
            return snapshot_from(folder_.get("state/memwright/" + name));
        }
        return {};
    }
    bool has_on_disk(const std::string& text) {
        return wait_until([&] {
            const Snapshot kept = snapshot();
            return std::ranges::find(kept.cells, text) != kept.cells.end();
        });
    }
    void type_into(int row, int col, const QString& text) {
        open(row, col);
        type(text);
    }
    // Without a clean exit.
    void crash() { windowed_.reset(); }
    std::vector<Seen> start_again(const std::vector<Reply>& replies) {
        return answering(replies, [this] {
            start();
            wait_until([] { return true; });
        });
    }
    // As the window's close button does.
    std::vector<Seen> close(const std::vector<Reply>& replies = {}) {
        return answering(replies, [this] { static_cast<QWidget&>(window()).close(); });
    }
};

TEST_F(Recovery, what_was_typed_is_on_the_disk_while_the_cell_is_still_open) {
    type_into(1, 1, "abc");
    EXPECT_TRUE(box().isVisible());
    EXPECT_TRUE(has_on_disk("ABC"));
    type("d");
    EXPECT_TRUE(has_on_disk("ABCD"));
    EXPECT_EQ(snapshot().path, folder_.file("radio.120"));
}

TEST_F(Recovery, after_a_crash_yes_gives_the_table_back_cell_for_cell) {
    type_into(1, 1, "first");
    type_into(640, 1, "last");
    key(Qt::Key_Tab);
    type("145.5");
    ASSERT_TRUE(has_on_disk("145.50000"));
    const auto cells = cells_of(form().MSFlexGrid1);
    crash();

    const auto seen = start_again({press(QMessageBox::Yes)});
    ASSERT_THAT(seen, SizeIs(1));
    EXPECT_EQ(seen[0].title, "Memwright");
    EXPECT_EQ(seen[0].icon, QMessageBox::Question);
    EXPECT_EQ(seen[0].buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_TRUE(seen[0].text.startsWith(qt::from_utf8("Memwright ended before the table of " +
                                                      folder_.file("radio.120") + " was saved.")));
    EXPECT_TRUE(cells_of(form().MSFlexGrid1) == cells);
    EXPECT_EQ(cell(1, 1), "FIRST");
    EXPECT_EQ(cell(640, 2), "145.50000");
    EXPECT_EQ(caption(), "Memwright v1.0 - " + folder_.file("radio.120"));
    EXPECT_TRUE(grid().isEnabled());
    EXPECT_EQ(window().focusWidget(), &grid());
    EXPECT_EQ(widget<QPlainTextEdit>("Text1").toPlainText(), "");

    // It counts as unsaved.
    const auto asked = close({press(QMessageBox::Yes)});
    ASSERT_THAT(asked, SizeIs(1));
    EXPECT_EQ(asked[0].text, kChanged);
    EXPECT_THAT(snapshots(), IsEmpty());
    restart();
    program().open_named(folder_.file("radio.120"));
    EXPECT_EQ(cell(1, 1), "FIRST");
}

TEST_F(Recovery, a_second_crash_right_after_the_restoring_loses_nothing) {
    type_into(1, 1, "abc");
    ASSERT_TRUE(has_on_disk("ABC"));
    for (int i = 0; i < 2; ++i) {
        crash();
        EXPECT_THAT(start_again({press(QMessageBox::Yes)}), SizeIs(1));
        EXPECT_EQ(cell(1, 1), "ABC");
    }
}

TEST_F(Recovery, no_starts_empty_and_keeps_it_aside) {
    type_into(1, 1, "abc");
    ASSERT_TRUE(has_on_disk("ABC"));
    crash();
    EXPECT_THAT(start_again({press(QMessageBox::No)}), SizeIs(1));
    EXPECT_FALSE(grid().isEnabled());
    EXPECT_EQ(caption(), "Memwright v1.0 - By the Memwright developers");
    ASSERT_THAT(snapshots(), SizeIs(1));
    EXPECT_TRUE(snapshots()[0].starts_with("declined ")) << snapshots()[0];
    EXPECT_EQ(snapshot().cells[0], "ABC");
    crash();
    EXPECT_THAT(start_again({}), IsEmpty());
}

TEST_F(Recovery, closing_the_question_is_no) {
    type_into(1, 1, "abc");
    ASSERT_TRUE(has_on_disk("ABC"));
    crash();
    EXPECT_THAT(start_again({press_key(Qt::Key_Escape)}), SizeIs(1));
    EXPECT_FALSE(grid().isEnabled());
    EXPECT_EQ(snapshot().cells[0], "ABC");
}

TEST_F(Recovery, after_a_clean_exit_nothing_is_asked) {
    type_into(1, 1, "abc");
    ASSERT_TRUE(has_on_disk("ABC"));
    close({press(QMessageBox::No)});
    EXPECT_THAT(snapshots(), IsEmpty());
    crash();
    EXPECT_THAT(start_again({}), IsEmpty());
    EXPECT_FALSE(grid().isEnabled());
}

TEST_F(Recovery, a_file_of_the_command_line_is_opened_after_the_question) {
    type_into(1, 1, "abc");
    ASSERT_TRUE(has_on_disk("ABC"));
    const std::string path = folder_.file("radio.120");
    crash();
    const auto seen = answering({press(QMessageBox::Yes), press(QMessageBox::Cancel)}, [&] {
        start(path);
        wait_until([&] { return grid().isEnabled(); });
    });
    ASSERT_THAT(seen, SizeIs(2));
    EXPECT_EQ(seen[1].text, kChanged);
    EXPECT_EQ(cell(1, 1), "ABC") << "what was restored is not lost to the file";
}

TEST_F(Recovery, a_long_name_and_a_foreign_one_are_asked_about_in_a_box_that_fits) {
    const std::string path = open_some_image(std::string(200, 'n') +
                                             "Gr\xC3\xBC\xC3\x9F"
                                             "e \xE2\x82\xAC.120");
    type_into(1, 1, "abc");
    ASSERT_TRUE(has_on_disk("ABC"));
    crash();
    const auto fits = [](QDialog& box) {
        EXPECT_LE(box.width(), box.screen()->availableGeometry().width() * 3 / 4);
    };
    const auto seen = start_again({look(fits, press(QMessageBox::Yes))});
    ASSERT_THAT(seen, SizeIs(1));
    QString text = seen[0].text;
    EXPECT_TRUE(text.remove(QChar(0x200B)).contains(qt::from_utf8(path))) << qt::to_utf8(text);
    EXPECT_EQ(caption(), "Memwright v1.0 - " + path);
}

TEST_F(Recovery, opens_dialog_offers_the_folder_of_the_archive_once_it_is_there) {
    const QUrl archive =
        QUrl::fromLocalFile(qt::from_file_name(folder_.file("data/memwright/radio images")));
    int times = -1;
    bool shown = false;
    const Reply count = look(
        [&](QDialog& dialog) {
            times =
                static_cast<int>(dynamic_cast<QFileDialog&>(dialog).sidebarUrls().count(archive));
            const auto* const bar = dialog.findChild<QListView*>("sidebar");
            shown = bar != nullptr && bar->isVisible() &&
                    !bar->model()
                         ->match(bar->model()->index(0, 0), Qt::DisplayRole, "radio images")
                         .empty();
        },
        press_key(Qt::Key_Escape));
    answering({count}, [this] { choose("mnuFile", "mnuOpen"); });
    EXPECT_EQ(times, 0);
    std::filesystem::create_directories(folder_.file("data/memwright/radio images"));
    for (int i = 0; i < 3; ++i) {
        answering({count}, [this] { choose("mnuFile", "mnuOpen"); });
        EXPECT_EQ(times, 1);
        EXPECT_TRUE(shown);
    }
}

}  // namespace
}  // namespace memwright::gui
