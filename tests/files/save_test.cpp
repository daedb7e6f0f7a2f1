#include <algorithm>

#include "base/error.h"
#include "files/image_files_test.h"

namespace memwright {
namespace {

class Save : public ImageFilesTest {};

TEST_F(Save, writes_the_table_to_the_current_file_without_asking) {
    start_with("mem.120", "OLD");
    edit("NEW");
    image_files.mnuSaveOnly_Click();
    EXPECT_EQ(folder.get("mem.120"), image_bytes("NEW"));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(dialogs.asked.empty());
    EXPECT_FALSE(table.IsDataChanged());
    EXPECT_EQ(caption.caption.get(), "Memwright v1.0 - " + folder.file("mem.120"));
}

TEST_F(Save, writes_the_image_and_nothing_else) {
    start_with("mem.120", "OLD");
    image_files.mnuSaveOnly_Click();
    EXPECT_EQ(folder.get("mem.120").size(), 7392U);
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"mem.120"}));
}

TEST_F(Save, keeps_what_a_longer_file_holds_behind_the_image) {
    Bytes bytes = image_bytes("OLD");
    for (int i = 0; bytes.size() < 10000; ++i) bytes.push_back(static_cast<std::uint8_t>(i % 251));
    open_unasked(folder.put("mem.120", bytes));
    edit("NEW");
    image_files.mnuSaveOnly_Click();
    Bytes wanted = image_bytes("NEW");
    wanted.insert(wanted.end(), bytes.begin() + layout::kImageSize, bytes.end());
    EXPECT_EQ(folder.get("mem.120"), wanted);
}

TEST_F(Save, makes_a_short_file_whole) {
    open_unasked(folder.put("mem.120", Bytes(100, 0x12)));
    image_files.mnuSaveOnly_Click();
    EXPECT_EQ(folder.get("mem.120").size(), 7392U);
}

TEST_F(Save, brings_back_a_file_that_was_removed_meanwhile) {
    start_with("mem.120", "OLD");
    std::filesystem::remove(folder.path() / "mem.120");
    image_files.mnuSaveOnly_Click();
    EXPECT_EQ(folder.get("mem.120"), image_bytes("OLD"));
}

TEST_F(Save, that_fails_reports_it_and_the_changes_stay_unsaved) {
    start_with("mem.120", "OLD");
    edit("NEW");
    files.writing_fails = true;
    EXPECT_THROW(image_files.mnuSaveOnly_Click(), FileError);
    EXPECT_TRUE(table.IsDataChanged());
    EXPECT_EQ(shown_tag(), "NEW");
    EXPECT_EQ(folder.get("mem.120"), image_bytes("OLD"));
    EXPECT_EQ(image_files.current_path(), folder.file("mem.120"));
}

TEST_F(Save, does_not_touch_the_flag_of_a_cancelled_save) {
    start_with("mem.120", "OLD");
    image_files.save_cancelled = true;
    image_files.mnuSaveOnly_Click();
    EXPECT_TRUE(image_files.save_cancelled);
}

TEST_F(Save, without_a_current_file_is_Save_As) {
    mnuSaveOnly.enabled = true;
    edit("NEW");
    dialogs.names.emplace_back(folder.file("mem"));
    image_files.mnuSaveOnly_Click();
    ASSERT_EQ(dialogs.asked.size(), 1U);
    EXPECT_TRUE(dialogs.asked[0].saving);
    EXPECT_EQ(dialogs.asked[0].request.title, "Save File As..");
    EXPECT_EQ(folder.get("mem.120"), image_bytes("NEW"));
    EXPECT_EQ(image_files.current_path(), folder.file("mem.120"));
}

TEST_F(Save, of_a_kept_copy_asks_for_a_name_where_the_user_was_before) {
    native.make_private_folder(folder.file("kept"));
    const std::string copy = folder.put("kept/copy.120", image_bytes("FROM R"));
    image_files.places = {folder.file("kept")};
    native.set_current_folder(folder.path().string());
    dialogs.names = {copy, folder.file("mine.120")};
    image_files.mnuOpen_Click();
    mnuSaveOnly.enabled = true;
    edit("MINE");
    image_files.mnuSaveOnly_Click();
    EXPECT_EQ(dialogs.asked.at(1).request.title, "Save File As..");
    EXPECT_EQ(dialogs.asked.at(1).request.folder, folder.path().string());
    EXPECT_EQ(tag_in(folder.get("kept/copy.120")), "FROM R");
    EXPECT_EQ(tag_in(folder.get("mine.120")), "MINE");
    EXPECT_EQ(image_files.current_path(), folder.file("mine.120"));
}

TEST_F(Save, after_Save_As_goes_to_the_new_file) {
    start_with("old.120", "OLD");
    dialogs.names.emplace_back(folder.file("new.120"));
    image_files.mnuSave_Click();
    edit("NEW");
    image_files.mnuSaveOnly_Click();
    EXPECT_EQ(tag_in(folder.get("new.120")), "NEW");
    EXPECT_EQ(tag_in(folder.get("old.120")), "OLD");
}

TEST_F(Save, writes_the_image_as_it_is_while_the_save_command_is_disabled) {
    start_with("mem.120", "OLD");
    edit("NEW");
    mnuSaveOnly.enabled = false;
    image_files.mnuSaveOnly_Click();
    EXPECT_EQ(folder.get("mem.120"), image_bytes("OLD"));
}

}  // namespace
}  // namespace memwright
