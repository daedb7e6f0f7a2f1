#include <gtest/gtest.h>

#include <numeric>

#include "base/error.h"
#include "radio/computer.h"
#include "radio/simulated_radio.h"

namespace memwright::radio {
namespace {

const Bytes kOpeningBytes = {0x0C, 0x01, 0x41, 0x31, 0x38, 0x12, 0x00, 0xC9};
const Bytes kAcknowledgementBytes = {0x03, 0x06, 0x09};

Options sending(Pace pace = Pace::line) { return {.mode = Mode::send, .pace = pace}; }

TEST(Sending, starts_with_the_opening_frame_as_soon_as_the_line_is_opened) {
    SimulatedRadio radio(random_image(1), sending());
    Computer computer(radio);
    computer.pass(seconds(5));
    EXPECT_EQ(radio.next_event(), std::nullopt);
    computer.open();
    const Time opened = computer.now();
    ASSERT_TRUE(computer.wait_for(1));
    EXPECT_EQ(computer.now() - opened, line_time(1));
    ASSERT_TRUE(computer.wait_for(8));
    EXPECT_EQ(computer.now() - opened, line_time(8));
    computer.pass(seconds(100));
    EXPECT_EQ(computer.take(), kOpeningBytes);
}

TEST(Sending, begins_by_itself_after_a_second_of_silence_in_automatic_mode) {
    SimulatedRadio radio(random_image(1), {});
    Computer computer(radio);
    computer.open();
    EXPECT_EQ(radio.next_event(), computer.now() + seconds(1));
    computer.pass(seconds(1) + line_time(1) - microseconds(1));
    EXPECT_EQ(computer.take(), Bytes{});
    computer.pass(line_time(8));
    EXPECT_EQ(computer.take(), kOpeningBytes);
}

TEST(Sending, is_no_matter_for_a_line_that_nobody_has_opened) {
    SimulatedRadio radio(random_image(1), sending());
    Computer computer(radio);
    computer.close();
    computer.pass(seconds(100));
    EXPECT_EQ(computer.take(), Bytes{});
    EXPECT_EQ(read_radio(computer).blocks, 240);
}

TEST(Sending, is_not_put_off_by_a_write_of_no_bytes) {
    SimulatedRadio radio(random_image(1), {});
    Computer computer(radio);
    computer.open();
    computer.pass(milliseconds(900));
    computer.send({});
    EXPECT_FALSE(computer.wait_for(1, milliseconds(100)));
    EXPECT_TRUE(computer.wait_for(1, line_time(1)));
}

TEST(Sending, waits_for_a_second_of_silence_after_bytes_that_are_no_opening_frame) {
    SimulatedRadio radio(random_image(1), {.pace = Pace::none});
    Computer computer(radio);
    computer.open();
    computer.pass(milliseconds(900));
    computer.send({0x41});
    computer.pass(milliseconds(999));
    EXPECT_EQ(computer.take(), Bytes{0x41});
    computer.pass(milliseconds(1));
    EXPECT_EQ(computer.take(), kOpeningBytes);
}

TEST(Sending, never_begins_in_receive_mode) {
    SimulatedRadio radio(random_image(1), {.mode = Mode::receive});
    Computer computer(radio);
    computer.open();
    computer.pass(seconds(100));
    EXPECT_EQ(computer.take(), Bytes{});
    EXPECT_TRUE(radio.report().transfers.empty());
}

TEST(Sending, answers_an_acknowledgement_with_its_echo_and_the_next_block) {
    const MemoryImage image = random_image(2);
    SimulatedRadio radio(image, sending());
    Computer computer(radio);
    computer.open();
    ASSERT_TRUE(computer.wait_for(8));
    computer.take();
    const Time sent = computer.now();
    computer.acknowledge();
    ASSERT_TRUE(computer.wait_for(3));
    EXPECT_EQ(computer.now() - sent, line_time(11) - line_time(8));
    EXPECT_EQ(computer.take(), kAcknowledgementBytes);
    ASSERT_TRUE(computer.wait_for(38));
    EXPECT_EQ(computer.now() - sent, line_time(49) - line_time(8));
    const Bytes block = computer.take();
    ASSERT_EQ(block.size(), 38U);
    EXPECT_EQ(Bytes(block.begin(), block.begin() + 5), (Bytes{0x03, 0x03, 0x00, 0x00, 0x00}));
    EXPECT_TRUE(std::equal(block.begin() + 5, block.end() - 1, image.bytes().begin()));
    EXPECT_EQ(block.back(), std::accumulate(block.begin(), block.end() - 1, 0) % 256);
    computer.pass(seconds(100));
    EXPECT_EQ(computer.take(), Bytes{});
}

TEST(Sending, recognises_an_acknowledgement_in_pieces_and_behind_other_bytes) {
    SimulatedRadio radio(random_image(2), sending(Pace::none));
    Computer computer(radio);
    computer.open();
    computer.take();
    computer.send({0x03, 0x06});
    computer.pass(seconds(2));
    EXPECT_EQ(computer.take(), (Bytes{0x03, 0x06}));
    computer.send({0x09});
    EXPECT_EQ(computer.take().size(), 1U + 38U);
    computer.send({0x55, 0x03, 0x03, 0x06, 0x09});
    EXPECT_EQ(computer.take().size(), 5U + 38U);
    EXPECT_EQ(radio.report().transfers.front().stray_bytes, 2);
}

TEST(Sending, carries_the_image_in_blocks_0_to_230_and_filler_in_the_rest) {
    const MemoryImage image = random_image(3);
    SimulatedRadio radio(image, {.mode = Mode::send, .short_frames_before = {}});
    Computer computer(radio);
    const Read read = read_radio(computer);
    ASSERT_TRUE(read.finished);
    EXPECT_EQ(read.opening, kOpeningBytes);
    EXPECT_EQ(image_of(read), bytes_of(image));
    ASSERT_EQ(read.responses.size(), 240U);
    for (std::size_t number = 0; number < 240; ++number) {
        const Bytes& response = read.responses[number];
        ASSERT_EQ(response.size(), 41U);
        EXPECT_EQ(Bytes(response.begin(), response.begin() + 3), kAcknowledgementBytes);
        EXPECT_EQ(response[7], number);
        EXPECT_EQ(response[40],
                  std::accumulate(response.begin() + 3, response.begin() + 40, 0) % 256);
    }
    Bytes last_but_eight = {0x03, 0x06, 0x09, 0x03, 0x03, 0x00, 0x00, 0xE7};
    last_but_eight.resize(40, 0xFF);
    last_but_eight.push_back(0xCD);
    EXPECT_EQ(read.responses[231], last_but_eight);
}

TEST(Sending, ends_with_the_closing_frame_and_one_more_acknowledgement) {
    SimulatedRadio radio(random_image(3), {.short_frames_before = {}});
    Computer computer(radio);
    computer.open();
    ASSERT_TRUE(computer.wait_for(8));
    computer.take();
    for (int i = 0; i < 240; ++i) ASSERT_EQ(computer.response().size(), 41U);
    EXPECT_EQ(computer.response(),
              (Bytes{0x03, 0x06, 0x09, 0x0C, 0x02, 0x41, 0x31, 0x38, 0x00, 0x00, 0xB8}));
    EXPECT_FALSE(radio.report().transfers.front().ended);
    computer.acknowledge();
    computer.pass(seconds(10));
    EXPECT_EQ(computer.take(), kAcknowledgementBytes);
    const Transfer& transfer = radio.report().transfers.front();
    EXPECT_TRUE(transfer.complete);
    EXPECT_EQ(transfer.direction, Direction::sending);
    EXPECT_EQ(transfer.frames, 242);
    EXPECT_EQ(transfer.blocks, 240);
    computer.acknowledge();
    computer.pass(seconds(10));
    EXPECT_EQ(computer.take(), kAcknowledgementBytes);
    EXPECT_EQ(radio.report().transfers.size(), 1U);
}

TEST(Sending, hears_the_last_acknowledgement_of_a_computer_that_leaves_at_once) {
    SimulatedRadio radio(random_image(3), {});
    Computer computer(radio);
    ASSERT_TRUE(read_radio(computer).finished);
    EXPECT_TRUE(radio.report().transfers.front().complete);
}

TEST(Sending, starts_anew_whenever_the_line_is_opened_anew) {
    for (const Mode mode : {Mode::automatic, Mode::send}) {
        const MemoryImage image = random_image(4);
        SimulatedRadio radio(image, {.mode = mode});
        Computer computer(radio);
        for (int i = 0; i < 3; ++i) {
            const Read read = read_radio(computer);
            EXPECT_TRUE(read.finished);
            EXPECT_EQ(image_of(read), bytes_of(image));
        }
        EXPECT_EQ(radio.report().transfers.size(), 3U);
    }
}

TEST(Sending, starts_from_the_opening_frame_after_a_transfer_that_was_left) {
    SimulatedRadio radio(random_image(4), sending());
    Computer computer(radio);
    computer.open();
    ASSERT_TRUE(computer.wait_for(8));
    computer.take();
    ASSERT_EQ(computer.response().size(), 41U);
    computer.acknowledge();
    ASSERT_TRUE(computer.wait_for(20));
    computer.close();
    computer.take();
    computer.pass(seconds(1));
    EXPECT_EQ(computer.take(), Bytes{});
    EXPECT_TRUE(radio.report().transfers.front().ended);
    EXPECT_FALSE(radio.report().transfers.front().complete);
    computer.open();
    computer.pass(seconds(1));
    EXPECT_EQ(computer.take(), kOpeningBytes);
}

TEST(Sending, puts_eight_byte_frames_in_the_place_of_chosen_blocks) {
    const MemoryImage image = random_image(5);
    SimulatedRadio radio(image, {.mode = Mode::send, .short_frames_before = {0, 7, 7, 239}});
    Computer computer(radio);
    for (int i = 0; i < 2; ++i) {
        const Read read = read_radio(computer);
        ASSERT_TRUE(read.finished);
        std::vector<std::size_t> short_ones;
        for (std::size_t at = 0; at < read.responses.size(); ++at) {
            if (read.responses[at].size() == 11) short_ones.push_back(at);
        }
        EXPECT_EQ(short_ones, (std::vector<std::size_t>{0, 8, 9, 242}));
        EXPECT_EQ(image_of(read), bytes_of(image));
        const Bytes& frame = read.responses[0];
        EXPECT_EQ(frame[10], std::accumulate(frame.begin() + 3, frame.end() - 1, 0) % 256);
    }
    EXPECT_EQ(radio.report().transfers.front().frames, 246);
}

TEST(Sending, sends_an_eight_byte_frame_now_and_then_unless_told_otherwise) {
    SimulatedRadio radio(random_image(5), {});
    Computer computer(radio);
    const Read read = read_radio(computer);
    EXPECT_EQ(read.responses.size(), 243U);
    EXPECT_EQ(read.blocks, 240);
}

TEST(Sending, takes_as_long_as_its_bytes_need_on_the_line) {
    SimulatedRadio radio(random_image(6), {.mode = Mode::send, .short_frames_before = {100}});
    Computer computer(radio);
    computer.open();
    const Time start = computer.now();
    ASSERT_TRUE(computer.wait_for(8));
    computer.take();
    for (int i = 0; i < 242; ++i) {
        computer.acknowledge();
        ASSERT_TRUE(computer.wait_for(i == 100 || i == 241 ? 11 : 41));
        computer.take();
    }
    computer.acknowledge();
    ASSERT_TRUE(computer.wait_for(3));
    constexpr int kAllBytes = 8 + 240 * 41 + 11 + 11 + 3;
    EXPECT_EQ(computer.now() - start, line_time(kAllBytes));
    EXPECT_TRUE(radio.report().transfers.front().complete);
}

TEST(Sending, takes_no_time_without_a_pace) {
    const MemoryImage image = random_image(6);
    SimulatedRadio radio(image, sending(Pace::none));
    Computer computer(radio);
    computer.open();
    const Time start = computer.now();
    ASSERT_TRUE(computer.wait_for(8));
    computer.acknowledge();
    ASSERT_TRUE(computer.wait_for(8 + 41));
    EXPECT_EQ(computer.now(), start);
}

TEST(Sending, tells_when_the_next_byte_arrives) {
    SimulatedRadio radio(random_image(6), sending());
    radio.line_opened(Time{0});
    for (int count = 1; count <= 8; ++count) {
        ASSERT_EQ(radio.next_event(), line_time(count));
        EXPECT_TRUE(radio.transmit(line_time(count) - microseconds(1)).empty());
        EXPECT_EQ(radio.transmit(line_time(count)).size(), 1U);
    }
    EXPECT_EQ(radio.next_event(), std::nullopt);
}

TEST(Sending, gives_way_to_an_opening_frame_in_automatic_mode) {
    const MemoryImage image = random_image(7);
    SimulatedRadio radio(random_image(8), {});
    Computer computer(radio);
    computer.open();
    ASSERT_TRUE(computer.wait_for(8));
    ASSERT_EQ(computer.response().size(), 8U + 41U);
    write_frames(computer, frames_of_write(image));
    ASSERT_EQ(radio.report().transfers.size(), 2U);
    EXPECT_FALSE(radio.report().transfers[0].complete);
    EXPECT_TRUE(radio.report().transfers[1].complete);
    EXPECT_EQ(radio.memory(), image);
}

TEST(Sending, refuses_short_frames_before_blocks_that_do_not_exist) {
    for (const int block : {-1, 240}) {
        EXPECT_THROW(SimulatedRadio(MemoryImage{}, {.short_frames_before = {block}}), IndexError);
    }
}

}  // namespace
}  // namespace memwright::radio
