// The question about unsaved changes before a command that would lose them.

#include <algorithm>

#include "base/error.h"
#include "files/image_files_test.h"

namespace memwright {
namespace {

class UnsavedChanges : public ImageFilesTest {
  protected:
    UnsavedChanges() {
        start_with("old.120", "OLD");
        edit("EDITED");
        other = folder.put("new.120", image_bytes("NEW"));
    }

    std::string other;
};

TEST_F(UnsavedChanges, are_asked_about_in_these_words) {
    messages.answers = {Answer::cancel};
    EXPECT_FALSE(image_files.may_go_on());
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text,
              "The VR120 data has changed.\r\nDo you want to save the changes?");
    EXPECT_EQ(messages.shown[0].title, "Memwright");
    EXPECT_EQ(messages.shown[0].buttons, Buttons::yes_no_cancel);
    EXPECT_EQ(messages.shown[0].icon, Icon::exclamation);
}

TEST_F(UnsavedChanges, are_not_asked_about_if_there_are_none) {
    edit("OLD");
    EXPECT_TRUE(image_files.may_go_on());
    EXPECT_EQ(image_files.ask_about_changes(), std::nullopt);
    dialogs.names.emplace_back(other);
    image_files.mnuOpen_Click();
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(shown_tag(), "NEW");
}

TEST_F(UnsavedChanges, the_question_itself_saves_nothing) {
    for (const Answer answer : {Answer::yes, Answer::no, Answer::cancel}) {
        messages.answers = {answer};
        EXPECT_EQ(image_files.ask_about_changes(), answer);
    }
    EXPECT_TRUE(files.written.empty());
    EXPECT_TRUE(table.IsDataChanged());
}

TEST_F(UnsavedChanges, yes_saves_them_and_goes_on) {
    messages.answers = {Answer::yes};
    dialogs.names.emplace_back(other);
    image_files.mnuOpen_Click();
    EXPECT_EQ(tag_in(folder.get("old.120")), "EDITED");
    EXPECT_EQ(shown_tag(), "NEW");
    EXPECT_EQ(image_files.current_path(), other);
}

TEST_F(UnsavedChanges, no_goes_on_without_saving) {
    messages.answers = {Answer::no};
    dialogs.names.emplace_back(other);
    image_files.mnuOpen_Click();
    EXPECT_EQ(tag_in(folder.get("old.120")), "OLD");
    EXPECT_EQ(shown_tag(), "NEW");
}

TEST_F(UnsavedChanges, cancel_ends_the_command_with_table_image_and_caption_untouched) {
    table.SaveVR120Data();
    const Kept before = kept();
    messages.answers = {Answer::cancel};
    image_files.mnuOpen_Click();
    EXPECT_EQ(kept(), before);
    EXPECT_TRUE(dialogs.asked.empty());
    EXPECT_EQ(tag_in(folder.get("old.120")), "OLD");
}

TEST_F(UnsavedChanges, yes_clears_the_flag_of_an_earlier_cancelled_save) {
    image_files.save_cancelled = true;
    messages.answers = {Answer::yes};
    EXPECT_TRUE(image_files.may_go_on());
    EXPECT_FALSE(image_files.save_cancelled);
}

TEST_F(UnsavedChanges, no_and_cancel_leave_that_flag_alone) {
    image_files.save_cancelled = true;
    messages.answers = {Answer::no, Answer::cancel};
    EXPECT_TRUE(image_files.may_go_on());
    EXPECT_FALSE(image_files.may_go_on());
    EXPECT_TRUE(image_files.save_cancelled);
}

TEST_F(UnsavedChanges, the_command_goes_on_even_if_the_save_was_cancelled) {
    ImageFiles fresh{store, table, grid, window, caption, {messages, dialogs, files}};
    messages.answers = {Answer::yes};
    dialogs.names = {std::nullopt, other};  // Save As is cancelled, Open is not
    fresh.mnuOpen_Click();
    ASSERT_EQ(dialogs.asked.size(), 2U);
    EXPECT_TRUE(dialogs.asked[0].saving);
    EXPECT_FALSE(dialogs.asked[1].saving);
    EXPECT_EQ(shown_tag(), "NEW");
    EXPECT_TRUE(fresh.save_cancelled);
}

TEST_F(UnsavedChanges, a_save_that_fails_ends_the_command_with_a_report) {
    files.writing_fails = true;
    messages.answers = {Answer::yes};
    EXPECT_THROW(image_files.mnuOpen_Click(), FileError);
    EXPECT_TRUE(dialogs.asked.empty());
    EXPECT_EQ(shown_tag(), "EDITED");
    EXPECT_TRUE(table.IsDataChanged());
}

TEST_F(UnsavedChanges, of_a_table_that_was_never_saved_are_asked_about_before_open) {
    ImageFiles fresh{store, table, grid, window, caption, {messages, dialogs, files}};
    messages.answers = {Answer::no};
    dialogs.names.emplace_back(other);
    fresh.mnuOpen_Click();
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(shown_tag(), "NEW");
}

}  // namespace
}  // namespace memwright
