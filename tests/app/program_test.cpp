// Which control runs what.

#include <algorithm>

#include "app/dialogs.h"
#include "app/notice_texts.h"
#include "app/program_under_test.h"

namespace memwright {
namespace {

class Wiring : public ProgramTest {
  protected:
    void SetUp() override { start_with_a_file(); }
};

TEST_F(Wiring, Open_opens_a_file) {
    dialogs.names.emplace_back(folder.file("new.120"));
    form.mnuOpen.clicked();
    EXPECT_EQ(dialogs.asked.at(0).request.title, "Open File");
    EXPECT_EQ(form.caption.caption.get(), "Memwright v1.0 - " + folder.file("new.120"));
}

TEST_F(Wiring, Save_saves_to_the_current_file) {
    edit("B");
    form.mnuSaveOnly.clicked();
    EXPECT_EQ(saved_tag("mem.120"), "B");
}

TEST_F(Wiring, Save_As_saves_under_a_new_name) {
    edit("B");
    dialogs.names.emplace_back(folder.file("new"));
    form.mnuSave.clicked();
    EXPECT_EQ(dialogs.asked.at(0).request.title, "Save File As..");
    EXPECT_EQ(saved_tag("new.120"), "B");
}

TEST_F(Wiring, Port_shows_the_port_dialog) {
    views.in_form2 = [](Form2& dialog) {
        dialog.Combo1.text = "COM 4";
        dialog.Command1.clicked();
    };
    form.mnuPort.clicked();
    EXPECT_EQ(views.shown, 1);
    EXPECT_EQ(stored("CommPort"), "4");
}

TEST_F(Wiring, About_shows_the_about_box) {
    std::string version;
    views.in_form5 = [&](Form5& dialog) { version = dialog.VersionLabel.caption; };
    form.mnuabout.clicked();
    EXPECT_EQ(views.shown, 1);
    EXPECT_EQ(version, "Version 1.0");
}

TEST_F(Wiring, Read_asks_for_the_radio_and_shows_the_image_again) {
    edit("B");
    messages.answers = {Answer::no, Answer::cancel};
    form.mnuRead.clicked();
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0].title, "Memwright");
    EXPECT_EQ(messages.shown[1].title, "Read From VR-120");
    EXPECT_EQ(port.opened, 0);
    EXPECT_EQ(shown_tag(), "B") << "the question brought the table into the image";
}

TEST_F(Wiring, the_save_and_load_buttons_move_the_table_into_the_image_and_back) {
    edit("B");
    form.Command5.clicked();
    EXPECT_EQ(shown_tag(), "A");
    edit("B");
    form.Command4.clicked();
    edit("C");
    form.Command5.clicked();
    EXPECT_EQ(shown_tag(), "B");
    EXPECT_EQ(saved_tag("mem.120"), "A") << "no file is touched";
}

TEST_F(Wiring, separators_and_menus_without_an_operation_do_nothing) {
    edit("B");
    const auto before = enabled_names();
    for (MenuEntry* entry : {&form.mnuSep1, &form.mnuFile}) entry->clicked();
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(dialogs.asked.empty());
    EXPECT_EQ(views.shown, 0);
    EXPECT_EQ(shown_tag(), "B");
    EXPECT_EQ(enabled_names(), before);
}

TEST_F(Wiring, what_fails_behind_an_entry_is_reported_and_the_program_goes_on) {
    files.reading_fails = true;
    messages.answers = {Answer::ok};
    dialogs.names.emplace_back(folder.file("mem.120"));
    form.mnuOpen.clicked();
    ASSERT_EQ(messages.shown.size(), 1U);
    const std::string report = "Cannot read " + folder.file("mem.120") + ": the disk is gone.";
    EXPECT_EQ(messages.shown[0].text, report);
    EXPECT_EQ(messages.shown[0].title, "Memwright");
    EXPECT_EQ(messages.shown[0].icon, Icon::critical);
    EXPECT_EQ(noted(program.notices), std::vector{report});
    EXPECT_EQ(form.Text1.text.get(), "");
    EXPECT_EQ(shown_tag(), "A");

    files.reading_fails = false;
    dialogs.names.emplace_back(folder.file("mem.120"));
    form.mnuOpen.clicked();
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(Wiring, a_stored_port_that_is_no_number_is_reported_by_the_port_dialog) {
    settings.values["VR120Clone/Settings/CommPort"] = "first";
    messages.answers = {Answer::ok};
    form.mnuPort.clicked();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_NE(messages.shown[0].text.find("\"first\""), std::string::npos);
    EXPECT_EQ(views.shown, 0);
}

TEST_F(Wiring, a_file_named_outside_is_opened_with_its_question) {
    edit("B");
    messages.answers = {Answer::cancel};
    program.open_named(folder.file("new.120"));
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(shown_tag(), "B");
    messages.answers = {Answer::no};
    program.open_named(folder.file("new.120"));
    EXPECT_EQ(form.caption.caption.get(), "Memwright v1.0 - " + folder.file("new.120"));
    EXPECT_EQ(shown_tag(), "");
}

TEST_F(Wiring, a_file_named_outside_that_cannot_be_opened_is_reported) {
    messages.answers = {Answer::ok};
    program.open_named(folder.path().string());
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].icon, Icon::critical);
    EXPECT_EQ(form.caption.caption.get(), "Memwright v1.0 - " + folder.file("mem.120"));
}

TEST_F(Wiring, a_file_named_outside_is_left_alone_while_the_window_is_locked) {
    form.DisableGui();
    program.open_named(folder.file("new.120"));
    EXPECT_EQ(form.caption.caption.get(), "Memwright v1.0 - " + folder.file("mem.120"));
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"mem.120"}));
}

TEST_F(Wiring, escape_does_nothing_without_a_transfer) {
    const auto before = enabled_names();
    program.escape_pressed();
    EXPECT_EQ(enabled_names(), before);
    EXPECT_TRUE(messages.shown.empty());
}

}  // namespace
}  // namespace memwright
