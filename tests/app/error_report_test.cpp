#include "app/error_report.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "base/error.h"
#include "fakes/memory_settings.h"
#include "fakes/scripted_dialogs.h"

namespace memwright {
namespace {

class ErrorReports : public testing::Test {
  protected:
    fakes::MemorySettings settings;
    fakes::ScriptedMessageBox messages;
    TextBox Text1{"Text1"};
    MenuEntry mnuShwDbg{"mnuShwDbg", "&Show Status Window"};
    StatusWindow status_window{Text1, mnuShwDbg, settings, [] {}};
    bool in_a_transfer = false;
    ErrorReport report{messages, status_window, [this] { return in_a_transfer; }};
};

TEST_F(ErrorReports, are_silent_when_nothing_fails) {
    bool ran = false;
    report.guard([&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(Text1.text.get(), "");
}

TEST_F(ErrorReports, in_a_transfer_are_left_open_behind_which_it_goes_on) {
    in_a_transfer = true;
    messages.leaves_questions_open = true;
    report.guard([] { throw FileError("Cannot save mem.120: No space left on device."); });
    EXPECT_TRUE(messages.has_open_question());
    EXPECT_EQ(messages.shown.back().text, "Cannot save mem.120: No space left on device.");
    messages.answer_open_question(Answer::ok);
    EXPECT_FALSE(messages.has_open_question());
}

TEST_F(ErrorReports, show_an_errors_text_as_it_stands_and_log_it) {
    messages.answers = {Answer::ok};
    Text1.text = "before\r\n";
    report.guard([] { throw PortError("Cannot open COM 1: busy.\nClose the other program."); });
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "Cannot open COM 1: busy.\nClose the other program.");
    EXPECT_EQ(messages.shown[0].title, "Memwright");
    EXPECT_EQ(messages.shown[0].buttons, Buttons::ok);
    EXPECT_EQ(messages.shown[0].icon, Icon::critical);
    EXPECT_EQ(Text1.text.get(), "before\r\nCannot open COM 1: busy.\nClose the other program.\r\n");
    EXPECT_EQ(Text1.caret.get(), Text1.text.get().size());
}

TEST_F(ErrorReports, say_of_any_other_exception_that_it_was_not_expected_and_what_was_kept) {
    messages.answers = {Answer::ok};
    report.guard([] { throw std::out_of_range("vector::at"); });
    ASSERT_EQ(messages.shown.size(), 1U);
    const std::string wanted =
        "An unexpected error stopped this command: vector::at.\n"
        "Your table is still here. Save it under a new name before you go on.";
    EXPECT_EQ(messages.shown[0].text, wanted);
    EXPECT_EQ(messages.shown[0].title, "Memwright");
    EXPECT_EQ(messages.shown[0].icon, Icon::critical);
    EXPECT_EQ(Text1.text.get(), wanted + "\r\n");
}

TEST_F(ErrorReports, are_logged_before_the_box_is_shown_and_do_not_take_the_focus) {
    messages.answers = {Answer::ok};
    int wanted_focus = 0;
    const Connection focus = Text1.focus_wanted.connect([&] { ++wanted_focus; });
    messages.while_shown = [this] { EXPECT_EQ(Text1.text.get(), "gone\r\n"); };
    report.guard([] { throw Error("gone"); });
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(wanted_focus, 0);
}

TEST_F(ErrorReports, end_the_procedure_and_nothing_else) {
    messages.answers = {Answer::ok};
    std::string steps;
    report.guard([&] {
        steps += 'a';
        if (!steps.empty()) throw Error("stop");
        steps += 'b';
    });
    report.guard([&] { steps += 'c'; });
    EXPECT_EQ(steps, "ac");
}

}  // namespace
}  // namespace memwright
