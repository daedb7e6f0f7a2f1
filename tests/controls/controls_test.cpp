// Controls as values, and the signals that tell of their changes.

#include "controls/controls.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "base/error.h"

namespace memwright {
namespace {

TEST(Signal, a_slot_is_called_with_the_arguments_as_long_as_its_connection_lives) {
    Signal<int, const std::string&> signal;
    std::vector<std::pair<int, std::string>> calls;
    Connection connection = signal.connect(
        [&](int number, const std::string& text) { calls.emplace_back(number, text); });
    signal(1, "one");
    signal(2, "two");
    connection.reset();
    signal(3, "three");
    const std::vector<std::pair<int, std::string>> wanted = {{1, "one"}, {2, "two"}};
    EXPECT_EQ(calls, wanted);
}

TEST(Signal, slots_are_called_in_the_order_in_which_they_were_connected) {
    Signal<> signal;
    std::string calls;
    Connection first = signal.connect([&] { calls += 'a'; });
    const Connection second = signal.connect([&] { calls += 'b'; });
    const Connection third = signal.connect([&] { calls += 'c'; });
    signal();
    first.reset();
    const Connection fourth = signal.connect([&] { calls += 'd'; });
    signal();
    EXPECT_EQ(calls, "abcbcd");
}

TEST(Signal, a_copy_of_the_connection_keeps_the_slot_connected) {
    Signal<> signal;
    int calls = 0;
    Connection first = signal.connect([&] { ++calls; });
    const Connection copy = first;
    first.reset();
    signal();
    EXPECT_EQ(calls, 1);
}

TEST(Signal, a_slot_may_disconnect_itself_while_it_runs) {
    Signal<> signal;
    std::string calls;
    Connection self;
    self = signal.connect([&, text = std::string("still here")] {
        self.reset();
        calls += text;
    });
    signal();
    signal();
    EXPECT_EQ(calls, "still here");
}

TEST(Signal, a_slot_that_an_earlier_one_disconnects_is_not_called) {
    Signal<> signal;
    std::string calls;
    Connection second;
    const Connection first = signal.connect([&] {
        calls += 'a';
        second.reset();
    });
    second = signal.connect([&] { calls += 'b'; });
    signal();
    EXPECT_EQ(calls, "a");
}

TEST(Signal, a_slot_connected_while_the_signal_runs_is_called_the_next_time) {
    Signal<> signal;
    std::string calls;
    std::vector<Connection> more;
    const Connection first = signal.connect([&] {
        calls += 'a';
        if (more.empty()) more.push_back(signal.connect([&] { calls += 'b'; }));
    });
    signal();
    EXPECT_EQ(calls, "a");
    signal();
    EXPECT_EQ(calls, "aab");
}

TEST(Signal, a_slot_may_emit_the_signal_that_runs_it) {
    Signal<int> signal;
    std::vector<int> calls;
    const Connection connection = signal.connect([&](int number) {
        calls.push_back(number);
        if (number > 0) signal(number - 1);
    });
    signal(2);
    EXPECT_EQ(calls, (std::vector<int>{2, 1, 0}));
}

TEST(Signal, the_signal_may_go_before_the_connection) {
    Connection connection;
    {
        Signal<> signal;
        connection = signal.connect([] {});
        signal();
    }
    connection.reset();
    EXPECT_EQ(connection, nullptr);
}

TEST(Property, tells_of_a_change_and_of_nothing_else) {
    Property<std::string> text{"old"};
    std::vector<std::string> seen;
    const Connection connection = text.changed.connect([&] { seen.push_back(text); });
    text = "old";
    text = "new";
    text = "new";
    text = "";
    EXPECT_EQ(seen, (std::vector<std::string>{"new", ""}));
}

TEST(Property, may_be_set_again_by_who_hears_of_it) {
    Property<int> number{0};
    const Connection connection = number.changed.connect([&] {
        if (number > 10) number = 10;
    });
    number = 25;
    EXPECT_EQ(number.get(), 10);
}

TEST(Controls, start_enabled_and_visible_under_their_names) {
    const Label label("Label1");
    EXPECT_EQ(label.name, "Label1");
    EXPECT_TRUE(label.enabled);
    EXPECT_TRUE(label.visible);
    EXPECT_EQ(label.caption.get(), "");

    const MenuEntry entry("mnuOpen", "&Open");
    EXPECT_EQ(entry.caption.get(), "&Open");
    EXPECT_FALSE(entry.checked);
}

TEST(Controls, a_negative_length_is_an_error_and_leaves_the_old_one) {
    Label label("Label1");
    set_length(label.width, 300);
    EXPECT_THROW(set_length(label.width, -1), Error);
    EXPECT_EQ(label.width.get(), 300);
    set_length(label.width, 0);
    EXPECT_EQ(label.width.get(), 0);
}

}  // namespace
}  // namespace memwright
