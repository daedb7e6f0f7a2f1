#include "link/stall_watch.h"

#include <gtest/gtest.h>

#include "fakes/virtual_time.h"

namespace memwright {
namespace {

using namespace std::chrono_literals;

class StallWatchTest : public testing::Test {
  protected:
    Label Label1{"Label1"};
    StallWatch watch{Label1};
};

TEST_F(StallWatchTest, two_ticks_with_the_same_status_set_the_flag) {
    Label1.caption = "Listening...";
    watch.Timer1_Timer();
    EXPECT_EQ(watch.stall_flag(), 0);
    watch.Timer1_Timer();
    EXPECT_EQ(watch.stall_flag(), 1);
    EXPECT_EQ(Label1.caption.get(), "Listening...");
}

TEST_F(StallWatchTest, a_status_that_changes_between_ticks_leaves_the_flag_alone) {
    for (const char* text : {"Listening...", "0%", "1%", "Listening..."}) {
        Label1.caption = text;
        watch.Timer1_Timer();
        EXPECT_EQ(watch.stall_flag(), 0) << text;
    }
}

TEST_F(StallWatchTest, changes_that_are_undone_before_the_next_tick_are_not_seen) {
    Label1.caption = "Listening...";
    watch.Timer1_Timer();
    Label1.caption = "0%";
    Label1.caption = "Listening...";
    watch.Timer1_Timer();
    EXPECT_EQ(watch.stall_flag(), 1);
}

TEST_F(StallWatchTest, an_empty_status_at_the_first_tick_counts_as_unchanged) {
    watch.Timer1_Timer();
    EXPECT_EQ(watch.stall_flag(), 1);
}

TEST_F(StallWatchTest, nothing_takes_the_flag_back) {
    watch.mnuforce_Click();
    EXPECT_EQ(watch.stall_flag(), 1);
    for (const char* text : {"0%", "1%"}) {
        Label1.caption = text;
        watch.Timer1_Timer();
    }
    EXPECT_EQ(watch.stall_flag(), 1);
}

TEST_F(StallWatchTest, force_timeout_leaves_the_status_line_alone) {
    Label1.caption = "Listening...";
    watch.mnuforce_Click();
    EXPECT_EQ(watch.stall_flag(), 1);
    EXPECT_EQ(Label1.caption.get(), "Listening...");
}

TEST_F(StallWatchTest, it_ticks_every_five_seconds) {
    fakes::VirtualTime time;
    Label1.caption = "Listening...";
    const auto timer = time.every(StallWatch::kInterval, [this] { watch.Timer1_Timer(); });
    time.run_for(9999ms);
    EXPECT_EQ(watch.stall_flag(), 0);
    time.run_for(1ms);
    EXPECT_EQ(watch.stall_flag(), 1);
}

}  // namespace
}  // namespace memwright
