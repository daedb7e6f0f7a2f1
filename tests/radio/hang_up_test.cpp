// The line drops together with other faults, and stays dropped.

#include <gtest/gtest.h>

#include "radio/computer.h"
#include "radio/simulated_radio.h"

namespace memwright::radio {
namespace {

constexpr unsigned kSeed = 7;

TEST(HangUp, in_a_frame_that_is_damaged_too_comes_before_its_end) {
    const auto frames = frames_of_write(random_image(1));
    SimulatedRadio radio(random_image(kSeed),
                         {.faults = {{FaultKind::checksum, 0}, {FaultKind::hang_up, 0, 5}}});
    Computer computer(radio);
    computer.open();
    write_frames(computer, {frames[0], frames[1]});
    EXPECT_TRUE(radio.hung_up());
    const Transfer& transfer = radio.report().transfers.front();
    EXPECT_EQ(transfer.faults, (std::vector<Fault>{{FaultKind::hang_up, 0, 5}}));
    EXPECT_EQ(transfer.blocks, 0);
}

TEST(HangUp, in_the_next_frame_comes_in_what_is_doubled) {
    const auto frames = frames_of_write(random_image(1));
    SimulatedRadio radio(random_image(kSeed),
                         {.faults = {{FaultKind::doubled, 0}, {FaultKind::hang_up, 1, 1}}});
    Computer computer(radio);
    computer.open();
    write_frames(computer, {frames[0], frames[1]});
    EXPECT_TRUE(radio.hung_up());
    EXPECT_EQ(radio.report().transfers.front().blocks, 1);
    EXPECT_EQ(radio.report().transfers.front().faults.size(), 2U);
}

TEST(HangUp, and_silence_in_one_frame_are_a_hang_up_after_the_fewer_bytes) {
    SimulatedRadio radio(random_image(kSeed),
                         {.faults = {{FaultKind::hang_up, 0, 5}, {FaultKind::silence, 0, 2}}});
    Computer computer(radio);
    computer.open();
    ASSERT_TRUE(computer.wait_for(8));
    computer.take();
    computer.acknowledge();
    computer.pass(seconds(1));
    EXPECT_EQ(computer.take().size(), 3U + 2U);  // with the echo of the acknowledgement
    EXPECT_TRUE(radio.hung_up());
}

TEST(HangUp, ends_all_that_is_heard_or_sent_however_the_line_is_used) {
    SimulatedRadio radio(random_image(kSeed), {.faults = {{FaultKind::hang_up, 3, 5}}});
    Computer computer(radio);
    read_radio(computer);
    ASSERT_TRUE(radio.hung_up());
    computer.take();
    computer.open();
    write_frames(computer, frames_of_write(random_image(1)));
    computer.close();
    computer.close();
    computer.pass(seconds(100));
    EXPECT_EQ(computer.take(), Bytes{});
    EXPECT_EQ(radio.next_event(), std::nullopt);
    EXPECT_EQ(radio.report().transfers.size(), 1U);
    EXPECT_EQ(radio.memory(), random_image(kSeed));
}

}  // namespace
}  // namespace memwright::radio
