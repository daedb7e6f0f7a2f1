// File > New, which needs to know what the radio is set to, and File > Open Recent.

#include <gmock/gmock.h>

#include "app/notice_texts.h"
#include "app/runs_test.h"

namespace memwright {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::SizeIs;

class NewTableTest : public RunsTest {
  protected:
    void read(Running& run) {
        run.messages.answers = {Answer::ok};
        run.form.mnuRead.clicked();
        ASSERT_EQ(run.form.Label1.caption.get(), "Read from VR-120 complete.");
    }
    static void begin_new(Running& run) { run.form.added.new_table.clicked(); }
};

TEST_F(NewTableTest, is_empty_and_has_the_settings_of_the_radio) {
    const auto run = start();
    const std::string caption = run->form.caption.caption;
    read(*run);
    const MemoryImage of_the_radio = radio::demonstration_memory();
    run->dialogs.names.emplace_back(folder.file("mine.120"));
    run->form.mnuSaveOnly.clicked();
    ASSERT_NE(run->form.caption.caption.get(), caption);
    begin_new(*run);
    EXPECT_EQ(run->form.caption.caption.get(), caption);
    for (int row = 1; row < columns::kRows; ++row) {
        ASSERT_EQ(run->form.MSFlexGrid1.TextMatrix(row, columns::kFreq), "") << row;
    }
    const auto& image = run->program.edits().image().MemoryImage;
    for (int i = layout::kRadioSettings; i < layout::kImageSize; ++i) {
        ASSERT_EQ(image.get(i), of_the_radio.get(i)) << i;
    }
    EXPECT_EQ(run->program.history().next_to_undo(), nullptr);
    // Nothing is left to ask about, and Save asks for a name.
    EXPECT_TRUE(run->program.close_allowed());
    EXPECT_THAT(run->messages.shown, SizeIs(1)) << "of the read";
    run->dialogs.names.emplace_back(folder.file("new.120"));
    run->form.mnuSaveOnly.clicked();
    EXPECT_THAT(run->form.caption.caption.get(), EndsWith("new.120"));
}

TEST_F(NewTableTest, needs_to_know_the_radio) {
    const auto run = start_with_a_file();
    type(*run, "MINE");
    begin_new(*run);
    EXPECT_EQ(run->form.MSFlexGrid1.TextMatrix(1, columns::kTag), "MINE");
    EXPECT_THAT(run->messages.shown, IsEmpty());
    EXPECT_THAT(run->program.notices.of_this_run().back().notice.text,
                testing::HasSubstr("Read the radio first"));
}

TEST_F(NewTableTest, asks_about_changes_first) {
    auto run = start();
    read(*run);
    type(*run, "MINE");
    run->messages.answers = {Answer::cancel};
    begin_new(*run);
    EXPECT_EQ(run->form.MSFlexGrid1.TextMatrix(1, columns::kTag), "MINE");
    run->messages.answers = {Answer::no};
    begin_new(*run);
    EXPECT_EQ(run->form.MSFlexGrid1.TextMatrix(1, columns::kTag), "");
}

TEST_F(NewTableTest, knows_the_radio_from_earlier_runs) {
    auto run = start();
    read(*run);
    run.reset();
    run = start();
    ASSERT_FALSE(run->form.MSFlexGrid1.enabled);
    begin_new(*run);
    EXPECT_TRUE(run->form.MSFlexGrid1.enabled);
    EXPECT_TRUE(run->form.mnuWrite.enabled);
}

class RecentFilesTest : public RunsTest {
  protected:
    // An image that the table leaves as it is.
    std::string put(const std::string& name) {
        Bytes bytes(layout::kImageSize, 0);
        std::fill_n(bytes.begin(), layout::kLabels, std::uint8_t{0xFF});
        std::fill_n(bytes.begin() + layout::kLabels, layout::kRadioSettings - layout::kLabels,
                    std::uint8_t{' '});
        return folder.put(name, bytes);
    }
    static std::vector<std::string> items(Running& run) {
        run.form.mnuFile.clicked();
        return run.form.added.recent.items;
    }
};

TEST_F(RecentFilesTest, are_those_that_were_opened_and_saved_the_latest_first) {
    auto run = start();
    EXPECT_FALSE(run->form.added.recent.enabled);
    for (const char* name : {"a.120", "b.120", "a.120"}) run->program.open_named(put(name));
    run->dialogs.names.emplace_back(folder.file("c & d.120"));
    run->form.mnuSave.clicked();
    EXPECT_THAT(items(*run), ElementsAre(EndsWith("/c && d.120"), EndsWith("/a.120"),
                                         EndsWith("/b.120"), "&Clear List"));
    run->form.added.recent.picked(2);
    EXPECT_THAT(run->form.caption.caption.get(), EndsWith("/b.120"));
    std::filesystem::remove(folder.file("a.120"));
    EXPECT_THAT(items(*run),
                ElementsAre(EndsWith("/b.120"), EndsWith("/c && d.120"), "&Clear List"));
}

TEST_F(RecentFilesTest, are_ten_at_most_and_can_be_forgotten) {
    auto run = start();
    for (int n = 1; n <= 12; ++n) run->program.open_named(put(std::to_string(n) + ".120"));
    EXPECT_THAT(items(*run), SizeIs(11));
    run->form.added.recent.picked(10);
    EXPECT_THAT(items(*run), IsEmpty());
    EXPECT_FALSE(run->form.added.recent.enabled);
}

}  // namespace
}  // namespace memwright
