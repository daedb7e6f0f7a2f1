// What the window's events do to a transfer. The exchange itself is no matter here: nothing answers
// on the port.

#include <filesystem>

#include "app/dialogs.h"
#include "app/notice_texts.h"
#include "app/program_under_test.h"

namespace memwright {
namespace {

using Names = std::vector<std::string>;

class Transfers : public ProgramTest {
  protected:
    void SetUp() override { start_with_a_file(); }

    // Runs `event` in the n-th wait of a transfer.
    void in_wait(int n, std::function<void()> event) {
        loop.while_waiting = [this, n, event = std::move(event)] {
            if (loop.waits == n) event();
            ASSERT_LT(loop.waits, 1000) << "the transfer does not end";
        };
    }
    void expect_unlocked_and_closed() {
        EXPECT_FALSE(port.is_open);
        EXPECT_TRUE(form.MSFlexGrid1.enabled);
        EXPECT_TRUE(form.mnuFile.enabled);
        EXPECT_FALSE(form.TransferButton.visible);
        EXPECT_FALSE(form.TransferProgress.visible);
    }
};

TEST_F(Transfers, lock_the_window_and_show_a_way_out) {
    in_wait(3, [this] {
        EXPECT_EQ(form.Label1.caption.get(), "Listening...");
        EXPECT_TRUE(port.is_open);
        EXPECT_FALSE(form.MSFlexGrid1.enabled);
        EXPECT_FALSE(form.mnuFile.enabled);
        EXPECT_TRUE(form.TransferButton.visible);
        EXPECT_EQ(form.TransferButton.caption.get(), "Cancel");
        EXPECT_TRUE(form.TransferProgress.visible);
        EXPECT_TRUE(form.ReceivedLabel.visible);
        form.TransferButton.clicked();
    });
    messages.answers = {Answer::ok};
    form.mnuRead.clicked();
    EXPECT_EQ(loop.waits, 3);
    expect_unlocked_and_closed();
    EXPECT_EQ(shown_tag(), "A");
}

TEST_F(Transfers, a_cancelled_read_keeps_image_table_and_file_name) {
    edit("B");
    in_wait(2, [this] { form.TransferButton.clicked(); });
    messages.answers = {Answer::no, Answer::ok};
    form.mnuRead.clicked();
    EXPECT_EQ(shown_tag(), "B");
    EXPECT_EQ(form.caption.caption.get(), "Memwright v1.0 - " + folder.file("mem.120"));
    form.Command5.clicked();
    EXPECT_EQ(shown_tag(), "B");
    expect_unlocked_and_closed();
}

TEST_F(Transfers, escape_cancels_a_read) {
    in_wait(2, [this] { program.escape_pressed(); });
    messages.answers = {Answer::ok};
    form.mnuRead.clicked();
    EXPECT_EQ(loop.waits, 2);
    expect_unlocked_and_closed();
}

TEST_F(Transfers, a_cancelled_read_before_any_image_leaves_the_commands_of_an_image_disabled) {
    form.mnuSaveOnly.enabled = false;
    form.mnuVR120Settings.enabled = false;
    form.MSFlexGrid1.enabled = false;
    const Names before = enabled_names();
    in_wait(2, [this] { program.escape_pressed(); });
    messages.answers = {Answer::ok};
    form.mnuRead.clicked();
    EXPECT_EQ(enabled_names(), before);
}

TEST_F(Transfers, cancelling_a_write_asks_first) {
    in_wait(1, [this] { form.TransferButton.clicked(); });
    messages.answers = {Answer::ok, Answer::yes};
    form.mnuWrite.clicked();
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0].title, "Write To VR-120");
    EXPECT_EQ(messages.shown[1].buttons, Buttons::yes_no);
    expect_unlocked_and_closed();
}

TEST_F(Transfers, a_port_that_does_not_open_is_reported_and_unlock_gives_the_window_back) {
    const Names before = enabled_names();
    port.open_error = "Cannot open COM 1 (/dev/ttyUSB0): permission denied.";
    messages.answers = {Answer::ok, Answer::ok};
    form.mnuRead.clicked();
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[1].text, port.open_error);
    EXPECT_EQ(messages.shown[1].icon, Icon::critical);
    EXPECT_EQ(noted(program.notices), Names{port.open_error});
    EXPECT_EQ(form.Text1.text.get(), "");
    EXPECT_FALSE(form.mnuFile.enabled) << "the window stays locked";
    EXPECT_TRUE(form.TransferButton.visible);
    EXPECT_EQ(form.TransferButton.caption.get(), "Unlock");
    EXPECT_EQ(shown_tag(), "A");
    form.TransferButton.clicked();
    EXPECT_EQ(enabled_names(), before);
    EXPECT_FALSE(form.TransferButton.visible);
}

TEST_F(Transfers, escape_unlocks_after_a_failure) {
    const Names before = enabled_names();
    port.open_error = "Cannot open COM 1.";
    messages.answers = {Answer::ok, Answer::ok};
    form.mnuWrite.clicked();
    program.escape_pressed();
    EXPECT_EQ(enabled_names(), before);
}

TEST_F(Transfers, use_the_port_that_the_port_dialog_does_not_reach) {
    views.in_form2 = [](Form2& dialog) {
        dialog.Combo1.text = "COM 3";
        dialog.Command1.clicked();
    };
    form.mnuPort.clicked();
    messages.answers = {Answer::cancel};
    form.mnuRead.clicked();
    EXPECT_EQ(port.number, 1);
    settings.values["VR120Clone/Settings/CommPort"] = "5";
    messages.answers = {Answer::cancel};
    form.mnuRead.clicked();
    EXPECT_EQ(port.number, 5);
}

TEST_F(Transfers, end_when_the_window_closes) {
    in_wait(2, [this] { EXPECT_TRUE(program.close_allowed()); });
    messages.answers = {Answer::ok};
    form.mnuRead.clicked();
    EXPECT_EQ(loop.waits, 2);
    EXPECT_FALSE(port.is_open);
}

TEST_F(Transfers, a_write_ends_without_a_question_when_the_window_closes) {
    in_wait(1, [this] { EXPECT_TRUE(program.close_allowed()); });
    messages.answers = {Answer::ok};
    form.mnuWrite.clicked();
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_FALSE(port.is_open);
}

TEST_F(Transfers, go_on_if_the_close_is_cancelled) {
    edit("B");
    in_wait(2, [this] {
        messages.answers = {Answer::cancel};
        EXPECT_FALSE(program.close_allowed());
        EXPECT_TRUE(port.is_open);
        in_wait(4, [this] { form.TransferButton.clicked(); });
    });
    messages.answers = {Answer::no, Answer::ok};
    form.mnuRead.clicked();
    EXPECT_EQ(loop.waits, 4) << "it went on until it was cancelled";
}

// Closing the window with an unsaved change while a read listens; the question stays open.
class ClosingBehindTransfer : public Transfers {
  protected:
    void SetUp() override {
        Transfers::SetUp();
        messages.leaves_questions_open = true;
        window.when_closed = [this] { closed = program.close_allowed(); };
    }

    // Reads; asks to close in the second wait, and does `then` in the fifth.
    void read(std::function<void()> then) {
        edit("B");
        loop.while_waiting = [this, then = std::move(then)] {
            ASSERT_LT(loop.waits, 1000) << "the transfer does not end";
            if (loop.waits == 2) {
                EXPECT_FALSE(program.close_allowed());
                EXPECT_TRUE(messages.has_open_question());
                EXPECT_FALSE(program.close_allowed()) << "it is asked once";
            }
            if (loop.waits == 5) then();
        };
        messages.answers = {Answer::no, Answer::ok};
        form.mnuRead.clicked();
        EXPECT_EQ(messages.shown.at(2).text,
                  "The VR120 data has changed.\r\nDo you want to save the changes?");
        EXPECT_FALSE(messages.has_open_question());
        EXPECT_FALSE(port.is_open);
    }

    bool closed = false;
};

TEST_F(ClosingBehindTransfer, cancel_lets_both_go_on) {
    read([this] {
        messages.answer_open_question(Answer::cancel);
        EXPECT_TRUE(port.is_open);
        in_wait(8, [this] { form.TransferButton.clicked(); });
    });
    EXPECT_EQ(loop.waits, 8);
    EXPECT_EQ(messages.shown.size(), 3U);
    EXPECT_FALSE(closed);
}

TEST_F(ClosingBehindTransfer, no_closes_the_window_and_ends_the_transfer) {
    read([this] { messages.answer_open_question(Answer::no); });
    EXPECT_EQ(loop.waits, 5);
    EXPECT_TRUE(closed);
    EXPECT_EQ(saved_tag("mem.120"), "A");
}

TEST_F(ClosingBehindTransfer, yes_saves_before_the_transfer_ends) {
    read([this] {
        messages.answer_open_question(Answer::yes);
        EXPECT_EQ(saved_tag("mem.120"), "B");
    });
    EXPECT_EQ(loop.waits, 5);
    EXPECT_TRUE(closed);
}

TEST_F(ClosingBehindTransfer, yes_with_a_save_that_fails_lets_both_go_on) {
    read([this] {
        files.writing_fails = true;
        messages.answer_open_question(Answer::yes);
        EXPECT_TRUE(port.is_open);
        EXPECT_EQ(messages.shown.back().text,
                  "Cannot save " + folder.file("mem.120") + ": the disk is full.");
        messages.answer_open_question(Answer::ok);
        in_wait(8, [this] { form.TransferButton.clicked(); });
    });
    EXPECT_EQ(loop.waits, 8);
    EXPECT_FALSE(closed);
}

TEST_F(ClosingBehindTransfer, yes_without_a_file_ends_the_transfer_and_asks_for_a_name) {
    std::filesystem::create_directories(folder.file("data/radio images"));
    const std::string kept = folder.file("data/radio images/2026-11-21 12.34.56 read.120");
    std::filesystem::copy_file(folder.file("mem.120"), kept);
    program.open_named(kept);
    dialogs.names = {folder.file("named.120")};
    read([this] {
        messages.answer_open_question(Answer::yes);
        EXPECT_TRUE(dialogs.asked.empty()) << "the dialog would hold the transfer up";
    });
    EXPECT_EQ(loop.waits, 5);
    EXPECT_EQ(dialogs.asked.size(), 1U);
    EXPECT_TRUE(closed);
    EXPECT_EQ(saved_tag("named.120"), "B");
}

TEST_F(ClosingBehindTransfer, a_transfer_that_ends_first_takes_the_question_along) {
    read([this] { form.TransferButton.clicked(); });
    EXPECT_FALSE(closed);
    EXPECT_EQ(window.closes, 0);
}

TEST_F(Transfers, leave_the_stall_watch_and_the_status_window_toggle_working) {
    in_wait(2, [this] {
        loop.timers.at(0).tick();
        loop.timers.at(0).tick();
        form.mnuforce.clicked();
        form.mnuShwDbg.clicked();
        EXPECT_EQ(form.Label1.caption.get(), "Listening...");
        in_wait(5, [this] { form.TransferButton.clicked(); });
    });
    messages.answers = {Answer::ok};
    form.mnuRead.clicked();
    EXPECT_EQ(loop.waits, 5) << "a stall stops nothing";
    EXPECT_FALSE(form.Text1.visible);
}

}  // namespace
}  // namespace memwright
