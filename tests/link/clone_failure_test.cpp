// Ports that do not open and lines that drop.

#include <gtest/gtest.h>

#include "link/clone_bench.h"
#include "radio/frames.h"

namespace memwright::link_tests {
namespace {

using radio::Fault;
using radio::FaultKind;
using testing::ElementsAre;
using testing::Not;

constexpr const char* kLost = "Lost COM 1: the other end hung up.";

// The window comes back with one press, and the port can be opened again.
void expect_way_back(CloneBench& bench, radio::SimulatedRadio& next) {
    bench.expect_offers_unlock();
    bench.control.button_click();
    EXPECT_THAT(bench.lock_calls, ElementsAre("DisableGui", "unlock_gui"));
    bench.expect_idle();
    bench.port.plug(next);
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_EQ(bench.store.MemoryImage, next.memory());
}

void expect_lost_in_read(const Fault& fault) {
    SCOPED_TRACE(text_of(fault));
    CloneBench bench(sending({fault}), random_image(31));
    bench.open_file(image_of_user());
    const auto before = bench.kept();
    EXPECT_EQ(bench.click_read(), kLost);
    ASSERT_TRUE(bench.port.hung_up_at);
    EXPECT_LE(bench.time.now() - *bench.port.hung_up_at, 101ms);
    EXPECT_EQ(bench.kept(), before);
    EXPECT_EQ(bench.messages.shown.size(), 1U);
    radio::SimulatedRadio next(random_image(32), sending());
    expect_way_back(bench, next);
}

TEST(CloneFailure, a_line_that_drops_at_the_opening_of_a_read) {
    for (const int byte : {0, 3, 8}) {
        expect_lost_in_read({FaultKind::hang_up, radio::kOpening, byte});
    }
}

TEST(CloneFailure, a_line_that_drops_in_or_behind_a_block_of_a_read) {
    for (const int block : {0, 115, 230, 231, 239}) {
        for (const int byte : {0, 1, 7, 8, 20, 38}) {
            expect_lost_in_read({FaultKind::hang_up, block, byte});
        }
    }
}

TEST(CloneFailure, a_line_that_drops_at_the_end_of_a_read) {
    for (const int byte : {0, 5, 7, 8}) {
        expect_lost_in_read({FaultKind::hang_up, radio::kClosing, byte});
    }
}

void expect_lost_in_write(const Fault& fault) {
    SCOPED_TRACE(text_of(fault));
    CloneBench bench(receiving({fault}));
    bench.open_file(image_of_user());
    const auto before = bench.kept();
    EXPECT_EQ(bench.click_write(), kLost);
    ASSERT_TRUE(bench.port.hung_up_at);
    EXPECT_LE(bench.time.now() - *bench.port.hung_up_at, 101ms);
    EXPECT_EQ(bench.kept(), before);
    EXPECT_EQ(bench.messages.shown.size(), 1U);
    EXPECT_EQ(bench.radio.memory(), MemoryImage{});
    radio::SimulatedRadio next(random_image(33), sending());
    expect_way_back(bench, next);
}

TEST(CloneFailure, a_line_that_drops_at_the_opening_of_a_write) {
    expect_lost_in_write({FaultKind::hang_up, radio::kOpening, 8});
}

TEST(CloneFailure, a_line_that_drops_in_or_behind_a_block_of_a_write) {
    for (const int block : {0, 115, 230, 231, 239}) {
        for (const int byte : {0, 1, 20, 38}) {
            expect_lost_in_write({FaultKind::hang_up, block, byte});
        }
    }
}

TEST(CloneFailure, a_line_that_drops_at_the_end_of_a_write) {
    for (const int byte : {0, 4, 8}) {
        expect_lost_in_write({FaultKind::hang_up, radio::kClosing, byte});
    }
}

TEST(CloneFailure, a_read_whose_port_does_not_open_leaves_the_window_locked) {
    CloneBench bench(sending(), random_image(34));
    bench.open_file(image_of_user());
    const auto before = bench.kept();
    bench.port.opening_fails = "Cannot open COM 1: busy.";
    EXPECT_EQ(bench.click_read(), "Cannot open COM 1: busy.");
    EXPECT_EQ(bench.kept(), before);
    EXPECT_EQ(bench.Label1.caption.get(), "");
    EXPECT_THAT(bench.journal, Not(testing::Contains("table")));
    bench.port.opening_fails = "";
    radio::SimulatedRadio next(random_image(35), sending());
    expect_way_back(bench, next);
}

TEST(CloneFailure, a_write_whose_port_does_not_open_leaves_the_window_locked) {
    CloneBench bench(receiving());
    bench.open_file(image_of_user());
    const auto before = bench.kept();
    bench.port.opening_fails = "Cannot open COM 1: busy.";
    EXPECT_EQ(bench.click_write(), "Cannot open COM 1: busy.");
    EXPECT_EQ(bench.kept(), before);
    EXPECT_EQ(bench.Label1.caption.get(), "");
    EXPECT_TRUE(bench.port.sent.empty());
    bench.port.opening_fails = "";
    radio::SimulatedRadio next(random_image(36), sending());
    expect_way_back(bench, next);
}

TEST(CloneFailure, a_stored_port_number_that_is_none_stops_a_read_before_its_instructions) {
    CloneBench bench(sending());
    bench.settings.values["VR120Clone/Settings/CommPort"] = "one";
    EXPECT_THAT(bench.click_read(),
                testing::StartsWith("Cannot set the serial port up: the stored port number is "
                                    "\"one\"."));
    EXPECT_TRUE(bench.messages.shown.empty());
    EXPECT_TRUE(bench.lock_calls.empty());
    bench.expect_idle();
}

TEST(CloneFailure, a_stored_port_number_that_is_none_fails_a_write_behind_its_instructions) {
    CloneBench bench(receiving());
    bench.settings.values["VR120Clone/Settings/CommPort"] = "one";
    EXPECT_NE(bench.click_write(), "");
    EXPECT_EQ(bench.messages.shown.size(), 1U);
    bench.expect_offers_unlock();
}

}  // namespace
}  // namespace memwright::link_tests
