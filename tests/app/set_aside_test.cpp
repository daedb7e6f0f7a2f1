// No table goes without a trace: what is in no file when another table takes its place, or when the
// program ends, lies beside the images of radios.

#include <gmock/gmock.h>

#include <filesystem>

#include "app/frm_misc_setting.h"
#include "app/notice_texts.h"
#include "app/program_under_test.h"

namespace memwright {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class SetAside : public ProgramTest {
  protected:
    void SetUp() override { start_with_a_file(); }

    std::vector<std::string> kept() { return native.files_in(folder.file("data/radio images")); }
    std::string kept_tag() { return saved_tag("data/radio images/" + kept().at(0)); }
    void expect_kept(const std::string& tag) {
        ASSERT_THAT(kept(), ElementsAre(loop.timestamp() + " set aside.120"));
        EXPECT_EQ(kept_tag(), tag);
    }
    std::string other_file() {
        Bytes bytes = folder.get("mem.120");
        bytes[layout::kLabels] = 'O';
        return folder.put("other.120", bytes);
    }
};

TEST_F(SetAside, a_save_as_that_is_declined_and_called_off_loses_no_table_at_the_exit) {
    other_file();
    edit("B");
    dialogs.names = {folder.file("other.120"), std::nullopt};
    messages.answers = {Answer::no};
    form.mnuSave.clicked();
    EXPECT_TRUE(program.close_allowed()) << "nothing is asked: the sum counts as saved";
    EXPECT_THAT(messages.answers, IsEmpty());
    EXPECT_EQ(saved_tag("mem.120"), "A");
    EXPECT_EQ(saved_tag("other.120"), "O");
    expect_kept("B");
}

TEST_F(SetAside, yes_to_saving_under_a_name_that_cannot_be_written_loses_no_table_to_open) {
    form.EnableGui();
    std::filesystem::create_directories(folder.file("data/radio images"));
    std::filesystem::copy_file(folder.file("mem.120"), folder.file("data/radio images/my.120"));
    program.open_named(folder.file("data/radio images/my.120"));
    std::filesystem::remove(folder.file("data/radio images/my.120"));
    edit("B");
    dialogs.names = {folder.file("no/such/folder.120"), other_file()};
    messages.answers = {Answer::yes};
    form.mnuOpen.clicked();
    EXPECT_EQ(shown_tag(), "O");
    expect_kept("B");
}

TEST_F(SetAside, a_table_that_is_not_to_be_saved_can_be_had_again) {
    edit("B");
    messages.answers = {Answer::no};
    program.open_named(other_file());
    EXPECT_EQ(shown_tag(), "O");
    expect_kept("B");
}

TEST_F(SetAside, settings_whose_bytes_cancel_in_the_sum_are_not_lost_at_the_exit) {
    views.in_settings = [](frmMiscSetting& dialog) {
        dialog.Combo10.text = "ON";
        dialog.Command1.clicked();
    };
    form.mnuMiscSettings.clicked();
    form.mnuSaveOnly.clicked();
    views.in_settings = [](frmMiscSetting& dialog) {
        dialog.Combo10.text = "AUTO";
        dialog.Combo2.text = "1 Sec";
        dialog.Command1.clicked();
    };
    form.mnuMiscSettings.clicked();
    EXPECT_TRUE(program.close_allowed());
    EXPECT_EQ(messages.shown.size(), 0U);
    ASSERT_THAT(kept(), SizeIs(1));
    EXPECT_EQ(folder.get("data/radio images/" + kept()[0]).at(6667), 1);
}

TEST_F(SetAside, what_is_in_its_file_is_not_kept_twice) {
    edit("B");
    form.mnuSaveOnly.clicked();
    program.open_named(other_file());
    EXPECT_TRUE(program.close_allowed());
    EXPECT_THAT(kept(), IsEmpty());
}

TEST_F(SetAside, what_the_table_makes_of_a_file_by_showing_it_is_not_kept) {
    Bytes bytes = folder.get("mem.120");
    bytes[3] |= 0x18;  // two bits that no field uses
    messages.answers = {Answer::no};
    program.open_named(folder.put("odd.120", bytes));
    EXPECT_TRUE(program.close_allowed());
    EXPECT_THAT(messages.answers, IsEmpty()) << "the bytes have changed, and are asked about";
    EXPECT_THAT(kept(), IsEmpty());
}

TEST_F(SetAside, what_the_archive_has_is_not_kept_twice) {
    edit("B");
    loop.while_waiting = [this] { form.TransferButton.clicked(); };
    messages.answers = {Answer::ok, Answer::yes};
    form.mnuWrite.clicked();
    ASSERT_THAT(kept(), ElementsAre(loop.timestamp() + " written.120"));
    messages.answers = {Answer::no};
    EXPECT_TRUE(program.close_allowed());
    EXPECT_THAT(kept(), ElementsAre(loop.timestamp() + " written.120"));
}

TEST_F(SetAside, a_file_that_has_gone_meanwhile_holds_nothing) {
    std::filesystem::remove(folder.file("mem.120"));
    EXPECT_TRUE(program.close_allowed());
    expect_kept("A");
}

TEST_F(SetAside, a_short_file_holds_what_it_was_opened_as) {
    Bytes bytes = folder.get("mem.120");
    bytes.resize(6900);
    program.open_named(folder.put("short.120", bytes));
    EXPECT_TRUE(program.close_allowed());
    EXPECT_THAT(kept(), IsEmpty());
}

TEST_F(SetAside, an_archive_that_cannot_be_listed_turns_no_table_away) {
    edit("B");
    const std::string other = other_file();
    files.listing_fails = true;
    messages.answers = {Answer::no};
    program.open_named(other);
    files.listing_fails = false;
    expect_kept("B");
}

TEST_F(SetAside, a_copy_that_cannot_be_kept_is_told_and_stands_in_no_ones_way) {
    edit("B");
    const std::string other = other_file();
    files.writing_fails = true;
    messages.answers = {Answer::no};
    program.open_named(other);
    EXPECT_EQ(shown_tag(), "O");
    EXPECT_THAT(waiting(program.notices),
                ElementsAre(StartsWith("The table that was in no file was not set aside. ")));
    EXPECT_EQ(form.Text1.text.get(), "");
}

using SetAsideAtFirst = ProgramTest;

TEST_F(SetAsideAtFirst, a_program_that_has_opened_nothing_leaves_nothing) {
    program.start();
    program.open_named(folder.put("zeros.120", Bytes(layout::kImageSize, 0)));
    messages.answers = {Answer::no};  // showing zeros changes them
    EXPECT_TRUE(program.close_allowed());
    EXPECT_THAT(native.files_in(folder.file("data/radio images")), IsEmpty());
}

}  // namespace
}  // namespace memwright
