#include "radio/event_lines.h"

#include <gtest/gtest.h>

namespace memwright::radio {
namespace {

using Lines = std::vector<std::string>;

TEST(EventLines, tell_each_beginning_fault_and_end_once) {
    EventLines events;
    Report report;
    EXPECT_EQ(events.take(report, ""), Lines{});
    report.transfers.push_back({.direction = Direction::sending});
    EXPECT_EQ(events.take(report, ""), Lines{"sending: 240 blocks"});
    EXPECT_EQ(events.take(report, ""), Lines{});
    Transfer& transfer = report.transfers.back();
    transfer.faults.push_back({FaultKind::hang_up, 5, 3});
    EXPECT_EQ(events.take(report, ""), Lines{"fault: hang-up@5:3"});
    transfer.blocks = 1;
    transfer.ended = true;
    EXPECT_EQ(events.take(report, ""), Lines{"sent in part: 1 block"});
    EXPECT_EQ(events.take(report, ""), Lines{});
}

TEST(EventLines, tell_of_all_that_has_happened_since) {
    EventLines events;
    Report report;
    report.transfers.push_back(
        {.direction = Direction::sending, .blocks = 240, .ended = true, .complete = true});
    report.transfers.push_back({.direction = Direction::receiving});
    EXPECT_EQ(events.take(report, ""),
              (Lines{"sending: 240 blocks", "sent: 240 blocks", "receiving"}));
}

TEST(EventLines, tell_where_a_received_image_was_saved) {
    EventLines events;
    Report report;
    report.transfers.push_back({.direction = Direction::receiving, .blocks = 240});
    EXPECT_FALSE(events.image_received(report));
    report.transfers.back().ended = report.transfers.back().complete = true;
    EXPECT_TRUE(events.image_received(report));
    EXPECT_EQ(events.take(report, ", saved to x.120"),
              (Lines{"receiving",
                     "received: 7392 bytes, 240 blocks, 0 checksum errors, saved to x.120"}));
    EXPECT_FALSE(events.image_received(report));
}

TEST(EventLines, tell_what_was_wrong_with_what_is_not_kept) {
    EventLines events;
    Report report;
    report.transfers.push_back({.direction = Direction::receiving,
                                .blocks = 239,
                                .checksum_errors = 1,
                                .order_errors = 2,
                                .stray_bytes = 37,
                                .ended = true});
    EXPECT_FALSE(events.image_received(report));
    EXPECT_EQ(events.take(report, "").back(),
              "received in part or damaged, not kept: 239 blocks, 1 checksum error, 2 order "
              "errors, 0 content errors, 37 stray bytes");
}

}  // namespace
}  // namespace memwright::radio
