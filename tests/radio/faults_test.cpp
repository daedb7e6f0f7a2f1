#include "radio/faults.h"

#include <gtest/gtest.h>

#include <numeric>

#include "base/error.h"
#include "radio/computer.h"
#include "radio/simulated_radio.h"

namespace memwright::radio {
namespace {

constexpr unsigned kSeed = 30;

Options with(std::vector<Fault> faults) {
    return {.mode = Mode::send, .faults = std::move(faults), .short_frames_before = {}};
}

Bytes right_response(std::uint8_t number) {
    Bytes response = {0x03, 0x06, 0x09};
    const Bytes block = frames_of_write(random_image(kSeed))[number + 1U];
    response.insert(response.end(), block.begin(), block.end());
    return response;
}

Read read_with(const Fault& fault) {
    SimulatedRadio radio(random_image(kSeed), with({fault}));
    Computer computer(radio);
    Read read = read_radio(computer);
    EXPECT_EQ(radio.report().transfers.front().faults, std::vector{fault});
    return read;
}

// A read with a fault at block 9 that goes on, in which only that response differs.
Bytes only_odd_response(const Fault& fault) {
    const Read read = read_with(fault);
    EXPECT_TRUE(read.finished);
    if (read.responses.size() != 240) return {};
    for (std::uint8_t number = 0; number < 240; ++number) {
        if (number == 9) continue;
        EXPECT_EQ(read.responses[number], right_response(number)) << "block " << int{number};
    }
    EXPECT_NE(read.responses[9], right_response(9));
    return read.responses[9];
}

TEST(Faults, a_wrong_checksum_changes_nothing_else) {
    Bytes right = right_response(9);
    const Bytes odd = only_odd_response({FaultKind::checksum, 9});
    right.back() = static_cast<std::uint8_t>(right.back() + 1);
    EXPECT_EQ(odd, right);
}

TEST(Faults, a_missing_byte_is_the_chosen_one) {
    for (const int byte : {0, 20, 37}) {
        Bytes right = right_response(9);
        right.erase(right.begin() + 3 + byte);
        EXPECT_EQ(only_odd_response({FaultKind::missing_byte, 9, byte}), right);
    }
}

TEST(Faults, an_extra_byte_comes_before_the_chosen_one) {
    for (const int byte : {0, 20, 38}) {
        Bytes odd = only_odd_response({FaultKind::extra_byte, 9, byte});
        ASSERT_EQ(odd.size(), 42U);
        odd.erase(odd.begin() + 3 + byte);
        EXPECT_EQ(odd, right_response(9));
    }
}

TEST(Faults, garbage_is_as_long_as_the_block_and_the_same_in_every_run) {
    const Bytes once = only_odd_response({FaultKind::garbage, 9});
    EXPECT_EQ(once.size(), 41U);
    EXPECT_EQ(once, only_odd_response({FaultKind::garbage, 9}));
    EXPECT_NE(part_of(once, 3, 11), part_of(right_response(9), 3, 11));
}

TEST(Faults, garbage_may_begin_in_the_middle) {
    const Bytes odd = only_odd_response({FaultKind::garbage, 9, 19});
    ASSERT_EQ(odd.size(), 41U);
    EXPECT_EQ(part_of(odd, 0, 22), part_of(right_response(9), 0, 22));
    EXPECT_NE(part_of(odd, 22, 41), part_of(right_response(9), 22, 41));
}

TEST(Faults, a_flipped_bit_is_one_bit_of_the_chosen_byte) {
    for (const int byte : {0, 20, 37}) {
        Bytes right = right_response(9);
        right[static_cast<std::size_t>(3 + byte)] ^= 0x80;
        EXPECT_EQ(only_odd_response({FaultKind::flipped_bit, 9, byte}), right);
    }
}

TEST(Faults, a_doubled_frame_comes_twice_as_a_whole_or_in_part) {
    for (const auto& [byte, count] : {std::pair{0, 38}, {19, 19}, {38, 38}}) {
        const Bytes right = right_response(9);
        Bytes doubled = part_of(right, 0, 3 + count);
        doubled.insert(doubled.end(), right.begin() + 3, right.end());
        EXPECT_EQ(only_odd_response({FaultKind::doubled, 9, byte}), doubled);
    }
}

TEST(Faults, a_block_number_past_230_comes_with_the_checksum_that_belongs_to_it) {
    for (const auto& [byte, number] : {std::pair{0, 231}, {231, 231}, {255, 255}}) {
        const Bytes odd = only_odd_response({FaultKind::block_number, 9, byte});
        ASSERT_EQ(odd.size(), 41U);
        EXPECT_EQ(odd[7], number);
        EXPECT_EQ(odd[40], std::accumulate(odd.begin() + 3, odd.begin() + 40, 0) % 256);
        EXPECT_EQ(part_of(odd, 8, 40), part_of(right_response(9), 8, 40));
    }
    EXPECT_EQ(image_of(read_with({FaultKind::block_number, 9})).size(), 7392U - 32U);
}

TEST(Faults, trickled_bytes_go_unnoticed_by_one_who_waits_for_the_eleventh_and_then_a_little) {
    for (const int block : {0, 9, 239}) {
        const Read read = read_with({FaultKind::trickle, block});
        EXPECT_TRUE(read.finished);
        EXPECT_EQ(image_of(read), bytes_of(random_image(kSeed)));
    }
}

TEST(Faults, trickled_bytes_take_several_hundred_milliseconds_without_a_long_gap) {
    for (const int byte : {0, 7, 20, 38}) {
        SimulatedRadio radio(random_image(kSeed), with({{FaultKind::trickle, 0, byte}}));
        Computer computer(radio);
        computer.open();
        ASSERT_TRUE(computer.wait_for(8));
        computer.take();
        computer.acknowledge();
        ASSERT_TRUE(computer.wait_for(3));
        const Time start = computer.now();
        for (std::size_t count = 4; count <= 41; ++count) {
            const Time before = computer.now();
            ASSERT_TRUE(computer.wait_for(count));
            EXPECT_LE(computer.now() - before, milliseconds(50) + line_time(1) + microseconds(1));
        }
        EXPECT_NEAR(static_cast<double>((computer.now() - start - line_time(38)).count()), 350'000,
                    100);
        EXPECT_EQ(computer.take(), right_response(0));
    }
}

TEST(Faults, silence_lasts_until_the_line_is_opened_anew) {
    for (const Mode mode : {Mode::send, Mode::automatic}) {
        Options options = with({{FaultKind::silence, 9}});
        options.mode = mode;
        SimulatedRadio radio(random_image(kSeed), options);
        Computer computer(radio);
        computer.open();
        ASSERT_TRUE(computer.wait_for(8));
        computer.take();
        for (std::uint8_t number = 0; number < 9; ++number) {
            ASSERT_EQ(computer.response(), right_response(number));
        }
        computer.acknowledge();
        computer.pass(seconds(10));
        EXPECT_EQ(computer.take(), (Bytes{0x03, 0x06, 0x09}));
        computer.acknowledge();
        write_frames(computer, {frames_of_write(random_image(1)).front()});
        computer.pass(seconds(100));
        EXPECT_EQ(computer.take().size(), 3U + 8U);
        computer.close();
        EXPECT_TRUE(read_radio(computer).finished);
    }
}

TEST(Faults, silence_may_begin_in_the_middle_of_a_frame) {
    SimulatedRadio radio(random_image(kSeed), with({{FaultKind::silence, 1, 19}}));
    Computer computer(radio);
    computer.open();
    ASSERT_TRUE(computer.wait_for(8));
    computer.take();
    ASSERT_EQ(computer.response(), right_response(0));
    computer.acknowledge();
    computer.pass(seconds(100));
    EXPECT_EQ(computer.take(), part_of(right_response(1), 0, 3 + 19));
    EXPECT_FALSE(radio.hung_up());
    computer.close();
    EXPECT_TRUE(read_radio(computer).finished);
}

TEST(Faults, silence_at_the_opening_frame_sends_nothing_at_all) {
    SimulatedRadio radio(random_image(kSeed), with({{FaultKind::silence, kOpening}}));
    Computer computer(radio);
    computer.open();
    computer.pass(seconds(100));
    EXPECT_EQ(computer.take(), Bytes{});
    EXPECT_FALSE(radio.hung_up());
}

TEST(Faults, a_hang_up_drops_the_line_after_the_chosen_number_of_bytes) {
    for (const int byte : {0, 1, 20, 38}) {
        SimulatedRadio radio(random_image(kSeed), with({{FaultKind::hang_up, 2, byte}}));
        Computer computer(radio);
        computer.open();
        ASSERT_TRUE(computer.wait_for(8));
        computer.take();
        computer.response();
        computer.response();
        computer.acknowledge();
        const auto count = 3 + static_cast<std::size_t>(byte);
        ASSERT_TRUE(computer.wait_for(count));
        EXPECT_TRUE(radio.hung_up());
        computer.pass(seconds(10));
        EXPECT_EQ(computer.take().size(), count);
        EXPECT_EQ(radio.next_event(), std::nullopt);
        EXPECT_TRUE(radio.report().transfers.front().ended);
        computer.close();
        computer.open();
        computer.acknowledge();
        computer.pass(seconds(10));
        EXPECT_EQ(computer.take(), Bytes{});
    }
}

TEST(Faults, a_hang_up_does_not_come_before_the_bytes_in_front_of_it) {
    SimulatedRadio radio(random_image(kSeed), with({{FaultKind::hang_up, kOpening, 3}}));
    Computer computer(radio);
    computer.open();
    computer.pass(line_time(3) - microseconds(1));
    EXPECT_FALSE(radio.hung_up());
    computer.pass(microseconds(1));
    EXPECT_TRUE(radio.hung_up());
    EXPECT_EQ(computer.take(), (Bytes{0x0C, 0x01, 0x41}));
}

TEST(Faults, a_hang_up_at_the_opening_frame_happens_while_the_computer_listens) {
    SimulatedRadio radio(random_image(kSeed), {.faults = {{FaultKind::hang_up, kOpening}}});
    Computer computer(radio);
    computer.open();
    computer.pass(milliseconds(999));
    EXPECT_FALSE(radio.hung_up());
    computer.pass(milliseconds(1));
    EXPECT_TRUE(radio.hung_up());
    EXPECT_EQ(computer.take(), Bytes{});
}

TEST(Faults, a_hang_up_happens_while_the_radio_receives_too) {
    const auto frames = frames_of_write(random_image(1));
    for (const int block : {kOpening, 0, 100, kClosing}) {
        SimulatedRadio radio(random_image(kSeed), {.faults = {{FaultKind::hang_up, block, 5}}});
        Computer computer(radio);
        computer.open();
        std::size_t sent = 0;
        while (!radio.hung_up() && sent < frames.size()) {
            computer.send(frames[sent++]);
            computer.pass(milliseconds(100));
        }
        EXPECT_TRUE(radio.hung_up());
        EXPECT_EQ(sent, static_cast<std::size_t>(block + 2));
        EXPECT_EQ(radio.memory(), random_image(kSeed));
        EXPECT_FALSE(radio.report().transfers.front().complete);
    }
}

// What a radio makes of a write in which a fault happens.
Transfer written_with(const Fault& fault) {
    SimulatedRadio radio(random_image(kSeed), {.mode = Mode::receive, .faults = {fault}});
    Computer computer(radio);
    computer.open();
    write_frames(computer, frames_of_write(random_image(1)));
    computer.close();
    computer.pass(seconds(1));
    const Transfer& transfer = radio.report().transfers.front();
    EXPECT_TRUE(transfer.ended);
    EXPECT_EQ(transfer.faults, std::vector{fault}) << text_of(fault);
    EXPECT_EQ(radio.memory(), transfer.complete ? random_image(1) : random_image(kSeed));
    return transfer;
}

TEST(Faults, damage_what_the_radio_receives_which_then_keeps_its_memory) {
    for (const int place : {kOpening, 0, 100, 239, kClosing}) {
        for (const FaultKind kind :
             {FaultKind::checksum, FaultKind::missing_byte, FaultKind::extra_byte,
              FaultKind::silence, FaultKind::garbage, FaultKind::flipped_bit}) {
            EXPECT_FALSE(written_with({kind, place}).complete) << text_of({kind, place});
        }
        // A closing frame is expected twice.
        EXPECT_EQ(written_with({FaultKind::doubled, place}).complete, place == kClosing);
        EXPECT_FALSE(written_with({FaultKind::doubled, place, 5}).complete);
    }
    EXPECT_FALSE(written_with({FaultKind::block_number, 7}).complete);
}

TEST(Faults, of_a_block_that_is_received_are_counted_by_kind) {
    EXPECT_EQ(written_with({FaultKind::flipped_bit, 7, 20}).checksum_errors, 1);
    EXPECT_EQ(written_with({FaultKind::extra_byte, 7, 0}).stray_bytes, 1);
    EXPECT_EQ(written_with({FaultKind::doubled, 7}).order_errors, 1);
    EXPECT_EQ(written_with({FaultKind::doubled, 7}).blocks, 241);
    EXPECT_EQ(written_with({FaultKind::block_number, 7}).order_errors, 2);
    EXPECT_EQ(written_with({FaultKind::silence, 7, 19}).blocks, 7);
}

TEST(Faults, that_trickle_are_no_matter_for_what_is_received) {
    SimulatedRadio radio(random_image(kSeed),
                         {.mode = Mode::receive, .faults = {{FaultKind::trickle, 7}}});
    Computer computer(radio);
    computer.open();
    write_frames(computer, frames_of_write(random_image(1)));
    computer.close();
    EXPECT_EQ(radio.memory(), random_image(1));
}

TEST(Faults, happen_to_the_opening_and_the_closing_frame_as_well) {
    Read read = read_with({FaultKind::checksum, kOpening});
    EXPECT_EQ(read.opening.back(), 0xCA);
    EXPECT_TRUE(read.finished);
    read = read_with({FaultKind::checksum, kClosing});
    EXPECT_EQ(read.closing.back(), 0xB9);
    EXPECT_TRUE(read.finished);
    EXPECT_TRUE(read_with({FaultKind::missing_byte, kOpening, 7}).opening.empty());
    EXPECT_EQ(read_with({FaultKind::extra_byte, kClosing, 0}).closing.size(), 11U);
    EXPECT_FALSE(read_with({FaultKind::hang_up, kClosing, 7}).finished);
}

TEST(Faults, happen_once_for_each_time_that_they_are_listed) {
    const Fault fault{FaultKind::checksum, 9};
    SimulatedRadio radio(random_image(kSeed), with({fault, fault}));
    Computer computer(radio);
    EXPECT_NE(read_radio(computer).responses[9], right_response(9));
    EXPECT_NE(read_radio(computer).responses[9], right_response(9));
    EXPECT_EQ(read_radio(computer).responses[9], right_response(9));
}

TEST(Faults, of_several_kinds_happen_to_one_block) {
    SimulatedRadio radio(random_image(kSeed), with({{FaultKind::checksum, 9},
                                                    {FaultKind::extra_byte, 9, 0},
                                                    {FaultKind::missing_byte, 10, 0}}));
    Computer computer(radio);
    const Read read = read_radio(computer);
    EXPECT_EQ(read.responses[9].size(), 42U);
    EXPECT_EQ(read.responses[9].back(), static_cast<std::uint8_t>(right_response(9).back() + 1));
    EXPECT_EQ(read.responses[10].size(), 40U);
}

TEST(FaultText, is_read_back_as_it_was_written) {
    for (const char* const text :
         {"checksum@0", "missing-byte@239:37", "extra-byte@opening:8", "silence@closing",
          "garbage@120", "hang-up@closing:3", "block-number@230:240", "trickle@7:38",
          "silence@3:38", "garbage@120:37", "flipped-bit@opening:7", "doubled@239:38"}) {
        EXPECT_EQ(text_of(fault_from_text(text)), text);
    }
    EXPECT_EQ(fault_from_text("hang-up@opening"), (Fault{FaultKind::hang_up, kOpening, 0}));
    EXPECT_EQ(fault_from_text("block-number@5"), (Fault{FaultKind::block_number, 5, 0}));
}

TEST(FaultText, is_refused_for_faults_that_cannot_happen) {
    for (const char* const text : {"",
                                   "checksum",
                                   "checksum@",
                                   "checksum@240",
                                   "checksum@-1",
                                   "checksum@5x",
                                   "checksum@5:1",
                                   "Checksum@5",
                                   "silence@closed",
                                   "missing-byte@5:38",
                                   "missing-byte@closing:8",
                                   "extra-byte@5:39",
                                   "hang-up@opening:9",
                                   "hang-up@5:",
                                   "hang-up@5:x",
                                   "trickle@5:39",
                                   "silence@5:39",
                                   "garbage@5:38",
                                   "flipped-bit@closing:8",
                                   "doubled@opening:9",
                                   "block-number@231",
                                   "block-number@opening",
                                   "block-number@5:230",
                                   "block-number@5:256",
                                   "5@checksum"}) {
        EXPECT_THROW(fault_from_text(text), ConversionError) << text;
    }
}

TEST(Faults, that_cannot_happen_are_refused_by_the_radio) {
    for (const Fault& fault : {Fault{FaultKind::checksum, 241},
                               {FaultKind::checksum, -2},
                               {FaultKind::hang_up, 5, -1}}) {
        EXPECT_THROW(SimulatedRadio(MemoryImage{}, with({fault})), ConversionError);
    }
}

}  // namespace
}  // namespace memwright::radio
