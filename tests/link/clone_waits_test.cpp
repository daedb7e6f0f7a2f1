// Waiting hands control to the event loop, and sleeps in it.

#include <gtest/gtest.h>

#include "link/clone_bench.h"
#include "link/stall_watch.h"

namespace memwright::link_tests {
namespace {

constexpr Time kLookInterval = 10ms;
constexpr int kSoonerLooks = 6;   // after 0.3, 0.6, 1.2, 2.4, 4.8 and 9.6 ms
constexpr int kLooksInAByte = 2;  // of 1.146 ms: 0.3 and 0.9 ms after it began
constexpr Time kLongestRound = 100ms;

// No more rounds than events, one for each byte, and looks at the port and the clock: a few at
// first and then one every 10 ms while it waits for bytes, two in each byte that is waited for, and
// one more where a pause ends.
void expect_sleeps(const CloneBench& bench, int pauses, int bytes_waited_for = 0) {
    EXPECT_LE(bench.time.waits, static_cast<int>(bench.port.arrived) +
                                    bench.time.now() / kLookInterval + kSoonerLooks +
                                    kLooksInAByte * bytes_waited_for + 2L * pauses);
    EXPECT_LE(bench.time.longest_wait, kLongestRound);
}

TEST(CloneWaits, a_read_sleeps_between_events) {
    CloneBench bench(sending());
    bench.click_read();
    expect_sleeps(bench, 240, 8 + 241 * 11);
}

TEST(CloneWaits, a_write_sleeps_between_events) {
    CloneBench bench(receiving());
    bench.click_write();
    expect_sleeps(bench, 242);
}

TEST(CloneWaits, a_read_from_a_silent_radio_sleeps) {
    CloneBench bench(sending({{radio::FaultKind::silence, radio::kOpening}}));
    bench.press_after(50min);
    bench.click_read();
    expect_sleeps(bench, 0);
}

TEST(CloneWaits, other_events_are_handled_throughout_a_transfer) {
    for (const bool reading : {true, false}) {
        CloneBench bench(reading ? sending() : receiving());
        int ticks = 0;
        const auto timer = bench.time.every(10ms, [&] { ++ticks; });
        EXPECT_EQ(reading ? bench.click_read() : bench.click_write(), "");
        EXPECT_EQ(ticks, bench.time.now() / 10ms);
        EXPECT_GT(ticks, 2400);
    }
}

TEST(CloneWaits, the_stall_watch_ends_no_transfer) {
    CloneBench bench(sending({{radio::FaultKind::silence, 115}}));
    StallWatch watch(bench.Label1);
    const auto timer = bench.time.every(StallWatch::kInterval, [&] { watch.Timer1_Timer(); });
    bench.time.after(1s, [&] { EXPECT_EQ(watch.stall_flag(), 0); });
    bench.time.after(14s, [&] { EXPECT_EQ(watch.stall_flag(), 0); });
    bench.time.after(30s, [&] {
        EXPECT_EQ(watch.stall_flag(), 1);
        watch.mnuforce_Click();
    });
    bench.time.after(30min, [&] { EXPECT_TRUE(bench.control.running()); });
    bench.press_after(30min);
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_EQ(bench.time.now(), 30min);
    EXPECT_EQ(bench.port.sent.size(), 116U);
}

TEST(CloneWaits, a_write_that_meets_midnight_sends_one_frame_a_day) {
    CloneBench bench(receiving());
    bench.time.end = 72h;
    bench.time.set_time_of_day(86399.93);
    bench.time.after(24h - 1s, [&] { EXPECT_EQ(bench.port.sent.size(), 1U); });
    bench.time.after(24h + 1s, [&] { EXPECT_EQ(bench.port.sent.size(), 2U); });
    bench.time.after(25h, [&] { bench.control.end_now(); });
    EXPECT_EQ(bench.click_write(), "");
    EXPECT_EQ(bench.time.now(), 25h);
    EXPECT_EQ(bench.port.sent.size(), 2U);
}

}  // namespace
}  // namespace memwright::link_tests
