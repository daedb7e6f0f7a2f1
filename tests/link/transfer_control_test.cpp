#include "link/transfer_control.h"

#include <gtest/gtest.h>

#include "link/clone_bench.h"

namespace memwright::link_tests {
namespace {

using testing::ElementsAre;
using Kind = TransferControl::Kind;

class TransferControlTest : public testing::Test {
  protected:
    void expect_running(const std::string& caption) {
        EXPECT_TRUE(bench.control.running());
        EXPECT_TRUE(bench.progress.visible);
        EXPECT_TRUE(bench.button.visible);
        EXPECT_TRUE(bench.button.enabled);
        EXPECT_EQ(bench.button.caption.get(), caption);
    }

    void fail() {
        EXPECT_THROW(bench.control.run(Kind::read,
                                       [this] {
                                           bench.link.open();
                                           bench.control.show();
                                           bench.control.show_received(3);
                                           throw PortError("lost");
                                       }),
                     PortError);
    }

    CloneBench bench{sending()};
};

TEST_F(TransferControlTest, nothing_is_seen_before_the_transfer_shows_itself) {
    bench.control.run(Kind::read, [this] {
        EXPECT_TRUE(bench.control.running());
        EXPECT_FALSE(bench.progress.visible);
        EXPECT_FALSE(bench.received.visible);
        EXPECT_FALSE(bench.button.visible);
    });
    bench.expect_idle();
}

TEST_F(TransferControlTest, a_transfer_shows_itself_busy_with_a_button_that_cancels) {
    bench.progress.percent = 70;
    bench.control.run(Kind::read, [this] {
        bench.control.show();
        expect_running("Cancel");
        EXPECT_TRUE(bench.progress.busy);
        EXPECT_EQ(bench.progress.percent.get(), 0);
        EXPECT_FALSE(bench.received.visible);
    });
    bench.expect_idle();
}

TEST_F(TransferControlTest, progress_is_a_share_from_the_first_one_on) {
    bench.control.run(Kind::write, [this] {
        bench.control.show();
        bench.control.show_progress(0);
        EXPECT_FALSE(bench.progress.busy);
        EXPECT_EQ(bench.progress.percent.get(), 0);
        bench.control.show_progress(57);
        EXPECT_EQ(bench.progress.percent.get(), 57);
        expect_running("Cancel");
    });
}

TEST_F(TransferControlTest, received_bytes_are_counted_in_words) {
    bench.control.run(Kind::read, [this] {
        const std::vector<std::pair<int, std::string>> examples = {{0, "Nothing received yet"},
                                                                   {1, "1 byte received"},
                                                                   {2, "2 bytes received"},
                                                                   {7, "7 bytes received"},
                                                                   {30000, "30000 bytes received"}};
        for (const auto& [bytes, text] : examples) {
            bench.control.show_received(bytes);
            EXPECT_TRUE(bench.received.visible);
            EXPECT_EQ(bench.received.caption.get(), text);
        }
        bench.control.hide_received();
        EXPECT_FALSE(bench.received.visible);
    });
}

TEST_F(TransferControlTest, the_end_of_a_transfer_does_not_unlock_the_window_by_itself) {
    bench.control.run(Kind::read, [this] { bench.control.show(); });
    EXPECT_TRUE(bench.lock_calls.empty());
    EXPECT_TRUE(bench.journal.empty());
}

TEST_F(TransferControlTest, a_cancelled_transfer_closes_the_port_and_unlocks_the_window) {
    EXPECT_THROW(bench.control.run(Kind::read,
                                   [this] {
                                       bench.link.open();
                                       bench.control.show();
                                       bench.control.show_received(1);
                                       bench.control.button_click();
                                       bench.control.check();
                                   }),
                 TransferCancelled);
    bench.expect_idle();
    EXPECT_THAT(bench.journal, ElementsAre("PortOpen = True", "PortOpen = False", "unlock_gui"));
}

TEST_F(TransferControlTest, a_failed_transfer_closes_the_port_and_offers_to_unlock_the_window) {
    fail();
    EXPECT_EQ(bench.button.caption.get(), "Unlock");
    EXPECT_TRUE(bench.button.visible);
    EXPECT_FALSE(bench.progress.visible);
    EXPECT_FALSE(bench.received.visible);
    EXPECT_FALSE(bench.control.running());
    EXPECT_THAT(bench.journal, ElementsAre("PortOpen = True", "PortOpen = False"));

    bench.control.button_click();
    bench.expect_idle();
    EXPECT_THAT(bench.lock_calls, ElementsAre("unlock_gui"));
    bench.control.button_click();
    EXPECT_THAT(bench.lock_calls, ElementsAre("unlock_gui"));
}

TEST_F(TransferControlTest, any_error_counts_as_a_failure) {
    EXPECT_THROW(bench.control.run(Kind::write, [] { throw std::runtime_error("odd"); }),
                 std::runtime_error);
    EXPECT_EQ(bench.button.caption.get(), "Unlock");
    EXPECT_TRUE(bench.button.visible);
}

TEST_F(TransferControlTest, a_transfer_after_a_failed_one_starts_afresh) {
    fail();
    bench.control.run(Kind::read, [this] {
        bench.control.show();
        expect_running("Cancel");
        EXPECT_NO_THROW(bench.control.check());
    });
    bench.expect_idle();
}

TEST_F(TransferControlTest, a_cancel_does_not_reach_the_next_transfer) {
    bench.control.run(Kind::read, [this] { bench.control.end_now(); });
    bench.control.run(Kind::read, [this] { EXPECT_NO_THROW(bench.control.check()); });
}

TEST_F(TransferControlTest, without_a_transfer_neither_the_button_nor_the_end_does_anything) {
    bench.control.button_click();
    bench.control.end_now();
    EXPECT_NO_THROW(bench.control.check());
    EXPECT_TRUE(bench.journal.empty());
    bench.control.run(Kind::read, [this] { EXPECT_NO_THROW(bench.control.check()); });
    bench.control.run(Kind::write, [] {});
    bench.control.button_click();
    EXPECT_TRUE(bench.messages.shown.empty()) << "the write that is over is not asked about";
}

TEST_F(TransferControlTest, cancelling_a_write_is_asked_about_first) {
    bench.messages.answers = {Answer::no, Answer::yes};
    EXPECT_THROW(bench.control.run(Kind::write,
                                   [this] {
                                       bench.control.show();
                                       bench.control.button_click();
                                       EXPECT_NO_THROW(bench.control.check());
                                       expect_running("Cancel");
                                       bench.control.button_click();
                                       bench.control.check();
                                   }),
                 TransferCancelled);
    ASSERT_EQ(bench.messages.shown.size(), 2U);
    const Message& question = bench.messages.shown.front();
    EXPECT_EQ(question.title, "Write To VR-120");
    EXPECT_EQ(question.text,
              "The radio holds only a part of the new memories so far.\r\n"
              "If you stop now, write to it again before you use it.\r\n\r\n"
              "Stop writing to the VR-120?");
    EXPECT_EQ(question.buttons, Buttons::yes_no);
    EXPECT_EQ(question.icon, Icon::exclamation);
}

TEST_F(TransferControlTest, a_write_ends_without_a_question_when_the_program_does) {
    EXPECT_THROW(bench.control.run(Kind::write,
                                   [this] {
                                       bench.control.end_now();
                                       bench.control.check();
                                   }),
                 TransferCancelled);
    EXPECT_TRUE(bench.messages.shown.empty());
}

}  // namespace
}  // namespace memwright::link_tests
