#include <gtest/gtest.h>

#include "radio/computer.h"
#include "radio/simulated_radio.h"

namespace memwright::radio {
namespace {

// What a radio makes of frames that are written to it, and whether it kept its memory or took the
// image that was meant.
struct Outcome {
    Transfer transfer;
    bool taken;
    bool kept;
};

constexpr unsigned kOldSeed = 10, kNewSeed = 11;

Outcome outcome_of(const std::vector<Bytes>& frames, Mode mode = Mode::automatic) {
    SimulatedRadio radio(random_image(kOldSeed), {.mode = mode});
    Computer computer(radio);
    computer.open();
    write_frames(computer, frames);
    computer.close();
    computer.pass(seconds(1));
    EXPECT_EQ(radio.report().transfers.size(), 1U);
    return {radio.report().transfers.front(), radio.memory() == random_image(kNewSeed),
            radio.memory() == random_image(kOldSeed)};
}

std::vector<Bytes> right_frames() { return frames_of_write(random_image(kNewSeed)); }

// Where block 0 stands among the frames.
constexpr std::size_t kBlock0 = 1;

TEST(Receiving, takes_a_whole_image_byte_for_byte) {
    for (const Mode mode : {Mode::automatic, Mode::receive}) {
        const auto [transfer, taken, kept] = outcome_of(right_frames(), mode);
        EXPECT_TRUE(taken);
        EXPECT_TRUE(transfer.complete);
        EXPECT_EQ(transfer.direction, Direction::receiving);
        EXPECT_EQ(transfer.frames, 243);
        EXPECT_EQ(transfer.blocks, 240);
        EXPECT_EQ(transfer.checksum_errors, 0);
        EXPECT_EQ(transfer.order_errors, 0);
    }
}

TEST(Receiving, echoes_every_byte_at_the_pace_of_the_line_and_answers_nothing) {
    SimulatedRadio radio(random_image(kOldSeed), {});
    Computer computer(radio);
    computer.open();
    const Time start = computer.now();
    const Bytes all = joined(right_frames());
    computer.send(all);
    ASSERT_TRUE(computer.wait_for(1));
    EXPECT_EQ(computer.now() - start, line_time(1));
    ASSERT_TRUE(computer.wait_for(all.size(), seconds(20)));
    EXPECT_EQ(computer.now() - start, line_time(static_cast<std::int64_t>(all.size())));
    computer.pass(seconds(100));
    EXPECT_EQ(computer.take(), all);
}

TEST(Receiving, sends_next_what_it_received) {
    const MemoryImage image = random_image(kNewSeed);
    SimulatedRadio radio(random_image(kOldSeed), {});
    Computer computer(radio);
    computer.open();
    write_frames(computer, right_frames());
    computer.close();
    EXPECT_EQ(image_of(read_radio(computer)), bytes_of(image));
}

TEST(Receiving, does_not_begin_to_send_while_the_same_opening_of_the_line_goes_on) {
    SimulatedRadio radio(random_image(kOldSeed), {});
    Computer computer(radio);
    computer.open();
    write_frames(computer, right_frames());
    computer.take();
    computer.pass(seconds(100));
    EXPECT_EQ(computer.take(), Bytes{});
    EXPECT_EQ(radio.next_event(), std::nullopt);
}

TEST(Receiving, takes_one_image_after_the_other_on_one_opening_of_the_line) {
    SimulatedRadio radio(random_image(kOldSeed), {});
    Computer computer(radio);
    computer.open();
    for (unsigned seed = 20; seed < 23; ++seed) {
        write_frames(computer, frames_of_write(random_image(seed)));
        EXPECT_EQ(radio.memory(), random_image(seed));
    }
}

TEST(Receiving, begins_with_an_opening_frame_at_the_last_moment_of_the_silent_second) {
    SimulatedRadio radio(random_image(kOldSeed), {});
    Computer computer(radio);
    computer.open();
    computer.pass(seconds(1) - microseconds(1));
    write_frames(computer, right_frames());
    EXPECT_EQ(radio.report().transfers.size(), 1U);
    EXPECT_EQ(radio.memory(), random_image(kNewSeed));
}

TEST(Receiving, is_not_to_be_had_in_send_mode) {
    SimulatedRadio radio(random_image(kOldSeed), {.mode = Mode::send});
    Computer computer(radio);
    computer.open();
    write_frames(computer, right_frames());
    EXPECT_EQ(radio.memory(), random_image(kOldSeed));
}

TEST(Receiving, reports_a_wrong_checksum_and_keeps_its_memory) {
    for (const std::size_t frame :
         {std::size_t{0}, kBlock0, kBlock0 + 230, kBlock0 + 239, kBlock0 + 240, kBlock0 + 241}) {
        auto frames = right_frames();
        ++frames[frame].back();
        const auto [transfer, taken, kept] = outcome_of(frames);
        EXPECT_EQ(transfer.checksum_errors, 1) << "frame " << frame;
        EXPECT_EQ(transfer.order_errors, 0);
        EXPECT_EQ(transfer.frames, 243);
        EXPECT_TRUE(transfer.ended);
        EXPECT_FALSE(transfer.complete);
        EXPECT_TRUE(kept);
    }
}

TEST(Receiving, reports_blocks_out_of_order) {
    auto frames = right_frames();
    std::swap(frames[kBlock0 + 10], frames[kBlock0 + 11]);
    const auto [transfer, taken, kept] = outcome_of(frames);
    EXPECT_EQ(transfer.order_errors, 3);
    EXPECT_EQ(transfer.checksum_errors, 0);
    EXPECT_FALSE(transfer.complete);
    EXPECT_TRUE(kept);
}

TEST(Receiving, reports_a_block_that_is_left_out_or_comes_twice) {
    auto without = right_frames();
    without.erase(without.begin() + kBlock0 + 50);
    const auto fewer = outcome_of(without);
    EXPECT_EQ(fewer.transfer.blocks, 239);
    EXPECT_EQ(fewer.transfer.order_errors, 1);
    EXPECT_TRUE(fewer.kept);
    auto twice = right_frames();
    twice.insert(twice.begin() + kBlock0 + 50, twice[kBlock0 + 50]);
    const auto more = outcome_of(twice);
    EXPECT_EQ(more.transfer.blocks, 241);
    EXPECT_EQ(more.transfer.order_errors, 1);
    EXPECT_TRUE(more.kept);
}

TEST(Receiving, reports_a_block_between_the_closing_frames) {
    auto frames = right_frames();
    std::swap(frames[kBlock0 + 239], frames[kBlock0 + 240]);
    const auto [transfer, taken, kept] = outcome_of(frames);
    EXPECT_EQ(transfer.order_errors, 1);
    EXPECT_TRUE(kept);
}

TEST(Receiving, reports_other_bytes_than_filler_past_the_end_of_the_image) {
    auto frames = right_frames();
    frames[kBlock0 + 231][10] = 0xFE;
    --frames[kBlock0 + 231].back();
    const auto [transfer, taken, kept] = outcome_of(frames);
    EXPECT_EQ(transfer.checksum_errors, 0);
    EXPECT_EQ(transfer.content_errors, 1);
    EXPECT_TRUE(kept);
}

TEST(Receiving, reports_a_block_with_a_number_that_no_block_has) {
    auto frames = right_frames();
    ++frames[kBlock0 + 239][4];
    ++frames[kBlock0 + 239].back();
    const auto [transfer, taken, kept] = outcome_of(frames);
    EXPECT_EQ(transfer.checksum_errors, 0);
    EXPECT_EQ(transfer.order_errors, 1);
    EXPECT_EQ(transfer.content_errors, 1);
    EXPECT_FALSE(transfer.complete);
    EXPECT_TRUE(kept);
}

TEST(Receiving, reports_other_bytes_in_an_opening_or_closing_frame_with_the_right_checksum) {
    for (const std::size_t frame : {std::size_t{0}, kBlock0 + 240, kBlock0 + 241}) {
        auto frames = right_frames();
        ++frames[frame][5];
        --frames[frame][6];
        const auto [transfer, taken, kept] = outcome_of(frames);
        EXPECT_EQ(transfer.checksum_errors, 0) << "frame " << frame;
        EXPECT_EQ(transfer.content_errors, 1);
        EXPECT_EQ(transfer.frames, 243);
        EXPECT_TRUE(transfer.ended);
        EXPECT_FALSE(transfer.complete);
        EXPECT_TRUE(kept);
    }
}

TEST(Receiving, reports_a_transfer_that_is_left_before_the_second_closing_frame) {
    for (const std::size_t frames_sent : {std::size_t{1}, std::size_t{100}, std::size_t{242}}) {
        auto frames = right_frames();
        frames.resize(frames_sent);
        const auto [transfer, taken, kept] = outcome_of(frames);
        EXPECT_EQ(transfer.frames, static_cast<int>(frames_sent));
        EXPECT_TRUE(transfer.ended);
        EXPECT_FALSE(transfer.complete);
        EXPECT_TRUE(kept);
    }
}

TEST(Receiving, finds_its_way_again_after_a_block_with_a_byte_missing) {
    auto frames = right_frames();
    frames[kBlock0 + 100].erase(frames[kBlock0 + 100].begin() + 20);
    const auto [transfer, taken, kept] = outcome_of(frames);
    EXPECT_TRUE(transfer.ended);
    EXPECT_FALSE(transfer.complete);
    EXPECT_GE(transfer.blocks, 238);
    EXPECT_GT(transfer.stray_bytes, 0);
    EXPECT_TRUE(kept);
}

TEST(Receiving, begins_anew_with_an_opening_frame_between_two_blocks) {
    SimulatedRadio radio(random_image(kOldSeed), {});
    Computer computer(radio);
    computer.open();
    auto some = right_frames();
    some.resize(50);
    write_frames(computer, some);
    write_frames(computer, right_frames());
    ASSERT_EQ(radio.report().transfers.size(), 2U);
    EXPECT_TRUE(radio.report().transfers[0].ended);
    EXPECT_FALSE(radio.report().transfers[0].complete);
    EXPECT_TRUE(radio.report().transfers[1].complete);
    EXPECT_EQ(radio.memory(), random_image(kNewSeed));
}

TEST(Receiving, finds_the_opening_frame_behind_other_bytes) {
    SimulatedRadio radio(random_image(kOldSeed), {});
    Computer computer(radio);
    computer.open();
    computer.send({0x00, 0x0C, 0x01, 0x41, 0x0C});
    write_frames(computer, right_frames());
    EXPECT_EQ(radio.memory(), random_image(kNewSeed));
}

TEST(Receiving, hears_the_end_of_a_computer_that_leaves_while_its_bytes_are_on_the_line) {
    SimulatedRadio radio(random_image(kOldSeed), {});
    Computer computer(radio);
    computer.open();
    computer.send(joined(right_frames()));
    computer.pass(milliseconds(1));
    computer.close();
    computer.take();
    computer.pass(seconds(20));
    EXPECT_EQ(radio.memory(), random_image(kNewSeed));
    EXPECT_EQ(computer.take(), Bytes{});
}

TEST(Receiving, keeps_the_echoes_of_one_opening_of_the_line_out_of_the_next) {
    SimulatedRadio radio(random_image(kOldSeed), {});
    Computer computer(radio);
    computer.open();
    computer.send(Bytes(100, 0x55));
    computer.pass(line_time(10));
    computer.close();
    computer.take();
    computer.open();
    ASSERT_TRUE(computer.wait_for(8));
    EXPECT_EQ(computer.take(), (Bytes{0x0C, 0x01, 0x41, 0x31, 0x38, 0x12, 0x00, 0xC9}));
}

constexpr unsigned kSeeds = 100;

void expect_random_portions_to_change_nothing(unsigned seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const MemoryImage image = random_image(seed + 1000);
    const Bytes all = joined(frames_of_write(image));
    const Pace pace = random() % 2 == 0 ? Pace::line : Pace::none;
    SimulatedRadio radio(random_image(kOldSeed), {.pace = pace});
    Computer computer(radio);
    computer.open();
    for (std::size_t at = 0; at < all.size();) {
        const std::size_t length = std::min(all.size() - at, random() % 100 + std::size_t{1});
        const auto first = all.begin() + static_cast<std::ptrdiff_t>(at);
        computer.send(Bytes(first, first + static_cast<std::ptrdiff_t>(length)));
        computer.pass(microseconds(random() % 200'000));
        at += length;
    }
    computer.pass(seconds(20));
    EXPECT_EQ(radio.memory(), image);
    EXPECT_EQ(computer.take(), all);
    ASSERT_EQ(radio.report().transfers.size(), 1U);
    EXPECT_TRUE(radio.report().transfers.front().complete);
}

TEST(Receiving, takes_bytes_in_any_portions_at_any_time) {
    for (unsigned seed = 1; seed <= kSeeds; ++seed) expect_random_portions_to_change_nothing(seed);
}

void expect_one_odd_byte_to_be_noticed(unsigned seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    Bytes all = joined(right_frames());
    constexpr std::size_t kOpeningSize = 8;
    const std::size_t at = kOpeningSize + random() % (all.size() - kOpeningSize - 1);
    const auto byte = all.begin() + static_cast<std::ptrdiff_t>(at);
    switch (random() % 3) {
        case 0:
            *byte ^= static_cast<std::uint8_t>(1U << random() % 8);
            break;
        case 1:
            all.erase(byte);
            break;
        default:
            all.insert(byte, static_cast<std::uint8_t>(random() >> 24));
            break;
    }
    SimulatedRadio radio(random_image(kOldSeed), {.mode = Mode::receive});
    Computer computer(radio);
    computer.open();
    computer.send(all);
    computer.pass(seconds(20));
    computer.close();
    EXPECT_EQ(radio.memory(), random_image(kOldSeed));
    ASSERT_EQ(radio.report().transfers.size(), 1U);
    EXPECT_TRUE(radio.report().transfers.front().ended);
    EXPECT_FALSE(radio.report().transfers.front().complete);
}

TEST(Receiving, notices_any_byte_changed_lost_or_added_between_the_opening_frame_and_the_end) {
    for (unsigned seed = 1; seed <= kSeeds; ++seed) expect_one_odd_byte_to_be_noticed(seed);
}

}  // namespace
}  // namespace memwright::radio
