#include "link/serial_link.h"

#include <gtest/gtest.h>

#include "link/clone_bench.h"

namespace memwright::link_tests {
namespace {

using testing::ElementsAre;

class SerialLinkTest : public testing::Test {
  protected:
    // How long a pause takes by a clock that nobody sets.
    Time pause(double seconds) {
        const Time start = bench.time.now();
        bench.link.pause(seconds);
        return bench.time.now() - start;
    }

    // Runs something that a transfer does.
    void transfer(const std::function<void()>& exchange) {
        bench.control.run(TransferControl::Kind::read, exchange);
    }

    CloneBench bench{sending()};
};

TEST_F(SerialLinkTest, InitPort_sets_fourteen_properties_and_opens_nothing) {
    bench.link.InitPort();
    EXPECT_THAT(bench.journal,
                ElementsAre("CommPort = 1", "Settings = \"9600,E,8,1\"", "DTREnable = True",
                            "EOFEnable = False", "Handshaking = 0", "InBufferSize = 30000",
                            "InputLen = 0", "InputMode = 1", "NullDiscard = False",
                            "OutBufferSize = 30000", "ParityReplace = \"\"", "RThreshold = 8",
                            "RTSEnable = True", "SThreshold = 0"));
    EXPECT_FALSE(bench.port.PortOpen());
}

TEST_F(SerialLinkTest, InitPort_leaves_an_open_port_open) {
    bench.link.open();
    bench.link.InitPort();
    EXPECT_TRUE(bench.port.PortOpen());
}

TEST_F(SerialLinkTest, the_port_is_the_one_stored_for_the_clone_application) {
    bench.settings.values["VR120Clone/Settings/CommPort"] = "5";
    bench.settings.values["VR120/Settings/CommPort"] = "3";
    bench.link.InitPort();
    EXPECT_EQ(bench.journal.front(), "CommPort = 5");
}

TEST_F(SerialLinkTest, the_port_stored_by_the_dialog_does_not_reach_transfers) {
    bench.settings.values["VR120/Settings/CommPort"] = "3";
    bench.link.InitPort();
    EXPECT_EQ(bench.journal.front(), "CommPort = 1");
    EXPECT_TRUE(bench.settings.saved.empty());
}

TEST_F(SerialLinkTest, a_stored_port_that_is_no_number_is_a_PortError) {
    bench.settings.values["VR120Clone/Settings/CommPort"] = "COM 1";
    EXPECT_THROW(bench.link.InitPort(), PortError);
    EXPECT_TRUE(bench.journal.empty());
}

TEST_F(SerialLinkTest, a_pause_lasts_as_long_as_asked) {
    for (const double start : {0.0, 3600.7, 43200.123456, 86399.85}) {
        bench.time.set_time_of_day(start);
        const Time tenth = pause(0.1);
        EXPECT_GE(tenth, 100ms) << start;
        EXPECT_LE(tenth, 101ms) << start;
    }
    bench.time.set_time_of_day(0);
    const Time longer = pause(7.3);
    EXPECT_GE(longer, 7300ms);
    EXPECT_LE(longer, 7301ms);
}

TEST_F(SerialLinkTest, a_pause_from_a_whole_second_on_is_not_a_millisecond_longer) {
    for (const auto& [seconds, time] : {std::pair(0.05, 50ms), std::pair(0.002, 2ms)}) {
        bench.time.set_time_of_day(0);
        EXPECT_EQ(pause(seconds), time);
    }
}

TEST_F(SerialLinkTest, a_pause_of_no_time_returns_at_once) {
    EXPECT_EQ(pause(0), 0ms);
    EXPECT_EQ(pause(-1), 0ms);
}

TEST_F(SerialLinkTest, a_pause_hands_control_to_the_event_loop_and_sleeps_in_it) {
    int ticks = 0;
    const auto timer = bench.time.every(25ms, [&] { ++ticks; });
    bench.link.pause(0.1);
    EXPECT_EQ(ticks, 4);
    EXPECT_LE(bench.time.waits, 6);
    EXPECT_LE(bench.time.longest_wait, 100ms);
}

TEST_F(SerialLinkTest, a_pause_that_crosses_midnight_ends_at_the_same_time_of_the_next_day) {
    bench.time.end = 48h;
    bench.time.set_time_of_day(86399.95);
    const Time start = bench.time.now();
    bench.link.pause(0.1);
    EXPECT_GE(bench.time.now() - start, 24h);
    EXPECT_LE(bench.time.now() - start, 24h + 100ms);
}

TEST_F(SerialLinkTest, a_pause_that_begins_at_midnight_is_no_longer_than_any_other) {
    bench.time.set_time_of_day(86399.0);
    bench.time.run_for(1s);
    EXPECT_LE(pause(0.1), 101ms);
}

TEST_F(SerialLinkTest, a_pause_across_midnight_can_be_cancelled) {
    bench.time.set_time_of_day(86399.95);
    bench.time.after(20s, [this] { bench.control.end_now(); });
    const Time start = bench.time.now();
    EXPECT_THROW(transfer([this] { bench.link.pause(0.1); }), TransferCancelled);
    EXPECT_EQ(bench.time.now() - start, 20s);
}

TEST_F(SerialLinkTest, a_clock_that_is_put_back_a_little_never_shortens_a_pause) {
    bench.time.set_time_of_day(1000.0);
    bench.time.after(30ms, [this] { bench.time.set_time_of_day(1000.01); });
    EXPECT_GE(pause(0.1), 120ms);
    bench.time.after(
        10ms, [this] { bench.time.set_time_of_day(bench.time.seconds_since_midnight() - 5); });
    const Time longer = pause(0.1);
    EXPECT_GE(longer, 5100ms);
    EXPECT_LE(longer, 5101ms);
}

// What passes midnight puts the time of day back by more than half a day at once; the pause then
// ends where it began, otherwise where it would have ended.
TEST_F(SerialLinkTest, only_more_than_half_a_day_at_once_passes_for_midnight) {
    constexpr double kStart = 50000;
    const struct {
        std::vector<double> put_to;
        Time lasts;
    } examples[] = {{{6800}, 10ms + 12h + 100ms},
                    {{6799.5}, 10ms + 12h + 500ms},
                    {{25000, 1000}, 20ms + 25000s - 10ms + 24000s + 110ms}};
    bench.time.end = 96h;
    for (const auto& [put_to, lasts] : examples) {
        bench.time.set_time_of_day(kStart);
        Time delay = 0ms;
        for (const double time_of_day : put_to) {
            delay += 10ms;
            bench.time.after(delay, [=, this] { bench.time.set_time_of_day(time_of_day); });
        }
        const Time lasted = pause(0.1);
        EXPECT_GE(lasted, lasts) << put_to.front();
        EXPECT_LE(lasted, lasts + 1ms) << put_to.front();
    }
}

TEST_F(SerialLinkTest, waiting_for_bytes_ends_with_the_event_that_brings_the_last_of_them) {
    bench.link.open();
    std::vector<int> seen;
    bench.link.wait_for_bytes([](int count) { return count == 8; },
                              [&](int count) { seen.push_back(count); });
    EXPECT_EQ(seen.front(), 0);
    EXPECT_EQ(seen.back(), 8);
    // Eight bytes of eleven bits at 9600 baud.
    EXPECT_GE(bench.time.now(), 9166us);
    EXPECT_LE(bench.time.now(), 9167us);
    EXPECT_EQ(hexadecimal(bench.link.take()), "0C 01 41 31 38 12 00 C9");
}

TEST_F(SerialLinkTest, waiting_for_bytes_has_no_limit_and_looks_every_10_ms_in_the_end) {
    bench.link.open();
    bench.time.after(30min, [this] { bench.control.end_now(); });
    EXPECT_THROW(transfer([this] { bench.link.wait_for_bytes([](int) { return false; }); }),
                 TransferCancelled);
    EXPECT_EQ(bench.time.now(), 30min);
    EXPECT_GE(bench.time.waits, 30 * 60 * 100);
    // Eight bytes come, with two looks before each of them, and six before the looks are seldom.
    EXPECT_LE(bench.time.waits, 30 * 60 * 100 + 8 + 2 * 8 + 6);
    EXPECT_EQ(bench.time.longest_wait, 10ms);
}

TEST_F(SerialLinkTest, waiting_for_bytes_looks_soon_where_the_port_tells_of_none) {
    bench.link.open();
    std::vector<Time> looks;
    bench.time.run_for(1s);
    bench.link.take();
    bench.link.wait_for_bytes([&](int) { return looks.size() == 8; },
                              [&](int) { looks.push_back(bench.time.now() - 1s); });
    EXPECT_THAT(looks, ElementsAre(0us, 300us, 900us, 2100us, 4500us, 9300us, 18900us, 28900us));
}

TEST_F(SerialLinkTest, waiting_for_bytes_looks_soon_again_after_each_byte) {
    bench.link.open();
    std::vector<Time> looks;
    bench.link.wait_for_bytes([](int count) { return count == 3; },
                              [&](int) { looks.push_back(bench.time.now()); });
    EXPECT_THAT(looks, ElementsAre(0us, 300us, 900us, 1145us, 1445us, 2045us, 2291us, 2591us,
                                   3191us, 3437us));
}

TEST_F(SerialLinkTest, clearing_empties_the_status_line_and_window_caret_included) {
    bench.Text1.text = "one\r\n";
    bench.Text1.caret = 5;
    bench.Label1.caption = "Listening...";
    bench.link.clear_status();
    EXPECT_EQ(bench.Text1.text.get(), "");
    EXPECT_EQ(bench.Text1.caret.get(), 0U);
    EXPECT_EQ(bench.Label1.caption.get(), "");
}

}  // namespace
}  // namespace memwright::link_tests
