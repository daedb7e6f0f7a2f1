// Transfers that the user, or the end of the program, brings to an end.

#include <gtest/gtest.h>

#include <optional>

#include "link/clone_bench.h"

namespace memwright::link_tests {
namespace {

using testing::ElementsAre;

// The command ends at `end`, with nothing kept of it.
void expect_cancelled(CloneBench& bench, const CloneBench::Kept& before, Time end,
                      const std::string& status) {
    EXPECT_EQ(bench.time.now(), end);
    EXPECT_EQ(bench.Label1.caption.get(), status);
    EXPECT_EQ(bench.kept(), before);
    EXPECT_THAT(bench.lock_calls, ElementsAre("DisableGui", "unlock_gui"));
    EXPECT_THAT(bench.journal, testing::Not(testing::Contains("table")));
    bench.expect_idle();
}

constexpr const char* kReadCancelled = "Read from VR-120 cancelled.";
constexpr const char* kWriteCancelled = "Write To VR-120 cancelled.";

// In the opening frame, in the first blocks, in the middle, near the end.
constexpr Time kMoments[] = {0us, 4ms, 60ms, 1s, 13500ms, 23900ms};

TEST(CloneCancel, a_read_ends_at_once_wherever_it_is_cancelled) {
    for (const Time moment : kMoments) {
        SCOPED_TRACE(moment.count());
        CloneBench bench(sending(), random_image(51));
        bench.open_file(image_of_user());
        const auto before = bench.kept();
        bench.press_after(moment);
        EXPECT_EQ(bench.click_read(), "");
        expect_cancelled(bench, before, moment, kReadCancelled);
        EXPECT_EQ(bench.messages.shown.size(), 1U);
    }
}

// What is left of the exchange is for the radio; its memory is here.
TEST(CloneCancel, a_read_cancelled_after_its_last_block_is_complete) {
    const radio::Fault no_closing_frame{radio::FaultKind::silence, radio::kClosing};
    const radio::Fault short_closing_frame{radio::FaultKind::missing_byte, radio::kClosing, 3};
    for (const radio::Fault& fault : {no_closing_frame, short_closing_frame}) {
        CloneBench bench(sending({fault}), random_image(51, 230));
        bench.open_file(image_of_user());
        int received = 0;
        const Connection listening = bench.read.received.connect([&](const MemoryImage& image) {
            ++received;
            EXPECT_EQ(image, random_image(51, 230));
            EXPECT_EQ(bench.store.MemoryImage, image_of_user());
        });
        bench.press_after(1min);
        EXPECT_EQ(bench.click_read(), "");
        EXPECT_EQ(bench.time.now(), 1min);
        EXPECT_EQ(received, 1);
        EXPECT_EQ(bench.Label1.caption.get(), "Read from VR-120 complete.");
        EXPECT_EQ(bench.store.MemoryImage, random_image(51, 230));
        EXPECT_THAT(bench.lock_calls, ElementsAre("DisableGui", "EnableGui"));
        EXPECT_THAT(bench.journal, testing::Contains("table"));
        EXPECT_EQ(bench.port.sent.size(), 241U)
            << "no acknowledgement of a frame that did not come";
        bench.expect_idle();
    }
}

TEST(CloneCancel, a_line_that_drops_after_the_last_block_loses_nothing_that_was_received) {
    CloneBench bench(sending({{radio::FaultKind::hang_up, radio::kClosing}}),
                     random_image(51, 230));
    bench.open_file(image_of_user());
    std::optional<MemoryImage> received;
    const Connection listening =
        bench.read.received.connect([&](const MemoryImage& image) { received = image; });
    EXPECT_THAT(bench.click_read(), testing::HasSubstr("hung up"));
    EXPECT_EQ(received, random_image(51, 230));
    EXPECT_EQ(bench.store.MemoryImage, image_of_user());
}

TEST(CloneCancel, a_write_asks_first_and_ends_at_once_on_yes) {
    for (const Time moment : kMoments) {
        SCOPED_TRACE(moment.count());
        CloneBench bench(receiving());
        bench.open_file(image_of_user());
        const auto before = bench.kept();
        bench.press_after(moment);
        EXPECT_EQ(bench.run({Answer::ok, Answer::yes}, [&] { bench.write.mnuWrite_Click(); }), "");
        expect_cancelled(bench, before, moment, kWriteCancelled);
        EXPECT_EQ(bench.messages.shown.size(), 2U);
        bench.settle();
        EXPECT_FALSE(bench.radio.report().transfers.front().complete);
        EXPECT_EQ(bench.radio.memory(), MemoryImage{});
    }
}

TEST(CloneCancel, a_write_goes_on_to_its_end_on_no) {
    CloneBench bench(receiving());
    bench.open_file(image_of_user());
    bench.press_after(10s);
    bench.press_after(20s);
    EXPECT_EQ(
        bench.run({Answer::ok, Answer::no, Answer::no}, [&] { bench.write.mnuWrite_Click(); }), "");
    EXPECT_EQ(bench.port.sent.size(), 243U);
    EXPECT_EQ(bench.Label1.caption.get(), "Write To VR-120 complete.");
    EXPECT_THAT(bench.lock_calls, ElementsAre("DisableGui", "EnableGui"));
    bench.settle();
    EXPECT_EQ(bench.radio.memory(), image_of_user());
}

TEST(CloneCancel, a_write_goes_on_behind_the_question_at_its_pace) {
    CloneBench bench(receiving());
    bench.open_file(image_of_user());
    bench.messages.leaves_questions_open = true;
    bench.press_after(10s);
    bench.press_after(11s);  // the question is open already
    bench.time.after(14s, [&] { bench.messages.answer_open_question(Answer::no); });
    EXPECT_EQ(bench.click_write(), "");
    EXPECT_EQ(bench.messages.shown.size(), 2U);
    for (std::size_t i = 1; i < bench.port.sent.size(); ++i) {
        ASSERT_LE(bench.port.sent[i].at - bench.port.sent[i - 1].at, 102ms) << i;
    }
    bench.settle();
    EXPECT_EQ(bench.radio.memory(), image_of_user());
}

TEST(CloneCancel, a_write_that_ends_first_takes_its_question_along) {
    CloneBench bench(receiving());
    bench.open_file(image_of_user());
    bench.messages.leaves_questions_open = true;
    bench.press_after(20s);
    EXPECT_EQ(bench.click_write(), "");
    EXPECT_EQ(bench.messages.shown.size(), 2U);
    EXPECT_FALSE(bench.messages.has_open_question());
    EXPECT_EQ(bench.Label1.caption.get(), "Write To VR-120 complete.");
    bench.expect_idle();
}

TEST(CloneCancel, yes_ends_a_write_at_once_that_went_on_behind_the_question) {
    CloneBench bench(receiving());
    bench.open_file(image_of_user());
    const auto before = bench.kept();
    bench.messages.leaves_questions_open = true;
    bench.press_after(10s);
    bench.time.after(14s, [&] { bench.messages.answer_open_question(Answer::yes); });
    EXPECT_EQ(bench.click_write(), "");
    expect_cancelled(bench, before, 14s, kWriteCancelled);
    EXPECT_GE(bench.port.sent.size(), 138U);
}

TEST(CloneCancel, the_end_of_the_program_ends_a_read_at_its_next_wait) {
    for (const Time moment : kMoments) {
        CloneBench bench(sending(), random_image(52));
        bench.open_file(image_of_user());
        const auto before = bench.kept();
        bench.time.after(moment, [&] { bench.control.end_now(); });
        EXPECT_EQ(bench.click_read(), "");
        expect_cancelled(bench, before, moment, kReadCancelled);
    }
}

TEST(CloneCancel, the_end_of_the_program_ends_a_write_at_its_next_wait_without_a_question) {
    for (const Time moment : kMoments) {
        CloneBench bench(receiving());
        bench.open_file(image_of_user());
        const auto before = bench.kept();
        bench.time.after(moment, [&] { bench.control.end_now(); });
        EXPECT_EQ(bench.click_write(), "");
        expect_cancelled(bench, before, moment, kWriteCancelled);
        EXPECT_EQ(bench.messages.shown.size(), 1U);
    }
}

TEST(CloneCancel, a_program_that_ends_behind_the_instructions_of_a_write_sends_nothing) {
    CloneBench bench(receiving());
    bench.messages.while_shown = [&] { bench.control.end_now(); };
    EXPECT_EQ(bench.run({Answer::cancel}, [&] { bench.write.mnuWrite_Click(); }), "");
    EXPECT_EQ(bench.port.openings, 0);
    EXPECT_TRUE(bench.port.sent.empty());
    EXPECT_EQ(bench.Label1.caption.get(), kWriteCancelled);
}

TEST(CloneCancel, a_cancelled_transfer_can_be_followed_by_another) {
    CloneBench bench({.mode = radio::Mode::automatic}, random_image(53));
    bench.press_after(9s);
    bench.click_read();
    EXPECT_EQ(bench.store.MemoryImage, MemoryImage{});
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_EQ(bench.store.MemoryImage, random_image(53));
    EXPECT_EQ(bench.Label1.caption.get(), "Read from VR-120 complete.");
}

TEST(CloneCancel, a_read_that_waits_across_midnight_can_be_cancelled) {
    CloneBench bench(sending(), random_image(54));
    bench.open_file(image_of_user());
    const auto before = bench.kept();
    // The first block's pause, 12 to 112 ms after its acknowledgement, is under way.
    bench.time.set_time_of_day(86399.93);
    bench.press_after(3min);
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_EQ(bench.port.sent.size(), 1U);
    expect_cancelled(bench, before, 3min, kReadCancelled);
}

}  // namespace
}  // namespace memwright::link_tests
