#include "app/error_report.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "app/idle_platform.h"
#include "app/notice_texts.h"
#include "base/error.h"
#include "fakes/scripted_dialogs.h"

namespace memwright {
namespace {

class ErrorReports : public testing::Test {
  protected:
    using Texts = std::vector<std::string>;

    fakes::ScriptedMessageBox messages;
    fakes::IdleLoop clock;
    Notices notices{clock};
    bool in_a_transfer = false;
    ErrorReport report{messages, notices, [this] { return in_a_transfer; }};
};

TEST_F(ErrorReports, are_silent_when_nothing_fails) {
    bool ran = false;
    report.guard([&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(noted(notices), Texts{});
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

TEST_F(ErrorReports, show_an_errors_text_as_it_stands_and_keep_it_in_the_list_of_notices) {
    messages.answers = {Answer::ok};
    report.guard([] { throw PortError("Cannot open COM 1: busy.\nClose the other program."); });
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "Cannot open COM 1: busy.\nClose the other program.");
    EXPECT_EQ(messages.shown[0].title, "Memwright");
    EXPECT_EQ(messages.shown[0].buttons, Buttons::ok);
    EXPECT_EQ(messages.shown[0].icon, Icon::critical);
    EXPECT_EQ(noted(notices), Texts{"Cannot open COM 1: busy.\nClose the other program."});
    EXPECT_EQ(waiting(notices), Texts{}) << "the box was seen";
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
    EXPECT_EQ(noted(notices), Texts{wanted});
}

TEST_F(ErrorReports, are_in_the_list_before_the_box_is_shown) {
    messages.answers = {Answer::ok};
    messages.while_shown = [this] { EXPECT_EQ(noted(notices), Texts{"gone"}); };
    report.guard([] { throw Error("gone"); });
    EXPECT_EQ(messages.shown.size(), 1U);
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
