// Closing the main window: what is stored, and the question about unsaved changes.

#include <filesystem>

#include "app/program_under_test.h"

namespace memwright {
namespace {

using Keys = std::vector<std::string>;

const Keys kWholePlace = {"VR120/Settings/FilePath", "VR120/Settings/WindowState",
                          "VR120/Settings/Width",    "VR120/Settings/Height",
                          "VR120/Settings/Left",     "VR120/Settings/Top"};

class Close : public ProgramTest {
  protected:
    void SetUp() override {
        start_with_a_file();
        settings.saved.clear();
        settings.values.clear();
    }
};

TEST_F(Close, stores_folder_state_and_place_in_this_order) {
    window.its_left = -7.5;
    window.its_top = 100;
    window.its_width = 12345;
    window.its_height = 8000;
    EXPECT_TRUE(program.close_allowed());
    EXPECT_EQ(settings.saved, kWholePlace);
    EXPECT_EQ(stored("FilePath"), native.current_folder());
    EXPECT_EQ(stored("WindowState"), "0");
    EXPECT_EQ(stored("Width"), "12345");
    EXPECT_EQ(stored("Height"), "8000");
    EXPECT_EQ(stored("Left"), "-7.5");
    EXPECT_EQ(stored("Top"), "100");
}

TEST_F(Close, stores_the_folder_of_the_file_chosen_last) {
    std::filesystem::create_directory(folder.path() / "radio");
    dialogs.names.emplace_back(folder.file("radio/new.120"));
    form.mnuSave.clicked();
    EXPECT_TRUE(program.close_allowed());
    EXPECT_EQ(std::filesystem::path(stored("FilePath")),
              std::filesystem::canonical(folder.path() / "radio"));
}

TEST_F(Close, while_minimised_stores_only_the_folder) {
    store("WindowState", "2");
    store("Top", "77");
    window.its_state = WindowState::minimised;
    EXPECT_TRUE(program.close_allowed());
    EXPECT_EQ(settings.saved, (Keys{"VR120/Settings/FilePath"}));
    EXPECT_EQ(stored("WindowState"), "2");
    EXPECT_EQ(stored("Top"), "77");
}

TEST_F(Close, while_maximised_keeps_the_last_normal_place) {
    store("Top", "77");
    window.its_state = WindowState::maximised;
    EXPECT_TRUE(program.close_allowed());
    EXPECT_EQ(settings.saved, (Keys{"VR120/Settings/FilePath", "VR120/Settings/WindowState"}));
    EXPECT_EQ(stored("WindowState"), "2");
    EXPECT_EQ(stored("Top"), "77");

    window.calls.clear();
    program.start();
    EXPECT_EQ(window.calls, (Keys{"WindowState=2"})) << "the next start skips the place";
}

TEST_F(Close, and_start_again_finds_the_same_place) {
    window.its_left = 1234.25;
    window.its_top = -0.1;
    window.its_width = 10000;
    window.its_height = 7777;
    EXPECT_TRUE(program.close_allowed());
    window.its_left = window.its_top = window.its_width = window.its_height = 0;
    program.start();
    EXPECT_EQ(window.its_left, 1234.25);
    EXPECT_EQ(window.its_top, -0.1);
    EXPECT_EQ(window.its_width, 10000);
    EXPECT_EQ(window.its_height, 7777);
}

TEST_F(Close, without_changes_asks_nothing) {
    EXPECT_TRUE(program.close_allowed());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Close, with_changes_asks_in_these_words) {
    edit("B");
    messages.answers = {Answer::no};
    program.close_allowed();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text,
              "The VR120 data has changed.\r\nDo you want to save the changes?");
    EXPECT_EQ(messages.shown[0].title, "Memwright");
    EXPECT_EQ(messages.shown[0].buttons, Buttons::yes_no_cancel);
    EXPECT_EQ(messages.shown[0].icon, Icon::exclamation);
}

TEST_F(Close, stores_everything_before_it_asks) {
    edit("B");
    messages.answers = {Answer::cancel};
    messages.while_shown = [this] { EXPECT_EQ(settings.saved, kWholePlace); };
    EXPECT_FALSE(program.close_allowed());
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(settings.saved, kWholePlace) << "and leaves it so";
}

TEST_F(Close, answered_with_cancel_keeps_the_program_running_with_its_changes) {
    edit("B");
    messages.answers = {Answer::cancel};
    EXPECT_FALSE(program.close_allowed());
    EXPECT_EQ(shown_tag(), "B");
    EXPECT_EQ(saved_tag("mem.120"), "A");
    EXPECT_TRUE(form.MSFlexGrid1.enabled);
    EXPECT_TRUE(form.mnuFile.enabled);
}

TEST_F(Close, answered_with_no_closes_without_saving) {
    edit("B");
    messages.answers = {Answer::no};
    EXPECT_TRUE(program.close_allowed());
    EXPECT_EQ(saved_tag("mem.120"), "A");
}

TEST_F(Close, answered_with_yes_saves_and_closes) {
    edit("B");
    messages.answers = {Answer::yes};
    EXPECT_TRUE(program.close_allowed());
    EXPECT_EQ(saved_tag("mem.120"), "B");
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(Close, answered_with_yes_stays_open_with_a_report_if_the_save_fails) {
    edit("B");
    files.writing_fails = true;
    messages.answers = {Answer::yes, Answer::ok};
    EXPECT_FALSE(program.close_allowed());
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[1].icon, Icon::critical);
    EXPECT_TRUE(messages.shown[1].text.starts_with("Cannot save " + folder.file("mem.120")));
    EXPECT_EQ(shown_tag(), "B");
    EXPECT_EQ(saved_tag("mem.120"), "A");
}

TEST_F(Close, can_be_tried_again_after_a_save_that_failed) {
    edit("B");
    files.writing_fails = true;
    messages.answers = {Answer::yes, Answer::ok};
    EXPECT_FALSE(program.close_allowed());
    files.writing_fails = false;
    messages.answers = {Answer::yes};
    EXPECT_TRUE(program.close_allowed());
    EXPECT_EQ(saved_tag("mem.120"), "B");
}

TEST_F(Close, that_cannot_tell_its_folder_reports_it_and_stays_open) {
    files.asking_for_folder_fails = true;
    messages.answers = {Answer::ok};
    EXPECT_FALSE(program.close_allowed());
    EXPECT_EQ(messages.shown.at(0).text, "The current folder is gone.");
}

TEST_F(Close, through_the_exit_entry_asks_the_window_to_close) {
    form.mnuexit.clicked();
    EXPECT_EQ(window.closes, 1);
    EXPECT_TRUE(settings.saved.empty()) << "the window's own close does the rest";
}

class CloseAtStart : public ProgramTest {};

TEST_F(CloseAtStart, asks_nothing) {
    program.start();
    EXPECT_TRUE(program.close_allowed());
    EXPECT_TRUE(messages.shown.empty());
}

// A table that has no file yet: Yes leads to Save As.
class CloseWithoutAFile : public ProgramTest {
  protected:
    CloseWithoutAFile() {
        program.start();
        form.EnableGui();
        form.MSFlexGrid1.set_text(1, columns::kFreq, "145.00000");
        edit("B");
    }
};

TEST_F(CloseWithoutAFile, saves_under_the_name_that_is_chosen_and_closes) {
    messages.answers = {Answer::yes};
    dialogs.names.emplace_back(folder.file("new"));
    EXPECT_TRUE(program.close_allowed());
    EXPECT_EQ(saved_tag("new.120"), "B");
}

TEST_F(CloseWithoutAFile, stays_open_if_the_dialog_is_cancelled) {
    messages.answers = {Answer::yes};
    dialogs.names.emplace_back(std::nullopt);
    EXPECT_FALSE(program.close_allowed());
    EXPECT_EQ(shown_tag(), "B");
}

TEST_F(CloseWithoutAFile, stays_open_if_the_replace_prompt_is_cancelled) {
    const std::string path = folder.put("there.120", {1, 2, 3});
    messages.answers = {Answer::yes, Answer::cancel};
    dialogs.names.emplace_back(path);
    EXPECT_FALSE(program.close_allowed());
    EXPECT_EQ(folder.get("there.120").size(), 3U);
}

TEST_F(CloseWithoutAFile, stays_open_if_the_save_fails_silently) {
    files.writing_fails = true;
    messages.answers = {Answer::yes};
    dialogs.names.emplace_back(folder.file("new"));
    EXPECT_FALSE(program.close_allowed());
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(CloseWithoutAFile, stays_open_if_the_declined_name_is_followed_by_cancel) {
    const std::string path = folder.put("there.120", {1, 2, 3});
    messages.answers = {Answer::yes, Answer::no};
    dialogs.names = {path, std::nullopt};
    EXPECT_FALSE(program.close_allowed());
    EXPECT_EQ(folder.get("there.120").size(), 3U);
}

TEST_F(CloseWithoutAFile, forgets_a_cancelled_save_before_the_next_try) {
    messages.answers = {Answer::yes};
    dialogs.names.emplace_back(std::nullopt);
    EXPECT_FALSE(program.close_allowed());
    messages.answers = {Answer::yes};
    dialogs.names.emplace_back(folder.file("new"));
    EXPECT_TRUE(program.close_allowed());
}

TEST_F(CloseWithoutAFile, takes_the_flag_of_the_cancelled_save_back) {
    modVR120 store(files);
    ChannelTable table(store, form.MSFlexGrid1, form.mnuSaveOnly);
    ImageFiles image_files(store, table, form.MSFlexGrid1, form, form.caption,
                           {messages, dialogs, files});
    Shell shell(form, window, settings, files, table, image_files);
    messages.answers = {Answer::yes};
    dialogs.names.emplace_back(std::nullopt);
    bool Cancel = false;
    shell.Form_Unload(Cancel);
    EXPECT_TRUE(Cancel);
    EXPECT_FALSE(image_files.save_cancelled);
}

TEST_F(CloseWithoutAFile, is_not_kept_open_by_a_save_that_was_cancelled_earlier) {
    dialogs.names.emplace_back(std::nullopt);
    form.mnuSave.clicked();
    messages.answers = {Answer::no};
    EXPECT_TRUE(program.close_allowed());

    dialogs.names = {std::nullopt, folder.file("new")};
    form.mnuSave.clicked();
    messages.answers = {Answer::yes};
    EXPECT_TRUE(program.close_allowed());
}

}  // namespace
}  // namespace memwright
