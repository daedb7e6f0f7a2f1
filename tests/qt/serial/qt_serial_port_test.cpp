#include "qt/serial/qt_serial_port.h"

#include <gmock/gmock.h>

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <numeric>

#include "qt/serial/port_bench.h"

namespace memwright::fakes {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

Bytes all_values() {
    Bytes bytes(256);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    return bytes;
}

class QtSerialPortBytes : public PortBench {
  protected:
    void SetUp() override { open(); }

    // Without the event loop.
    bool wait_for_count(int count) {
        QElapsedTimer passed;
        passed.start();
        while (port_.InBufferCount() != count && !passed.hasExpired(5000)) {
        }
        return port_.InBufferCount() == count;
    }
};

TEST_F(QtSerialPortBytes, all_256_values_arrive_in_order) {
    line_.send(all_values());
    EXPECT_EQ(input(256), all_values());
}

TEST_F(QtSerialPortBytes, all_256_values_leave_in_order) {
    port_.Output(all_values());
    EXPECT_EQ(line_.receive(256), all_values());
}

TEST_F(QtSerialPortBytes, control_bytes_are_neither_echoed_nor_translated_nor_obeyed) {
    const Bytes control = {0x03, 0x04, '\r', '\n', 0x11, 0x13, 0x1A, 0x1C, 0x7F, 0xFF};
    line_.send(control);
    EXPECT_EQ(input(control.size()), control);
    EXPECT_TRUE(line_.is_silent());
    port_.Output(control);
    EXPECT_EQ(line_.receive(control.size()), control);
    EXPECT_TRUE(line_.is_silent());
}

TEST_F(QtSerialPortBytes, output_leaves_without_the_event_loop_turning) {
    const Bytes block(38, 0x55);
    for (int i = 0; i < 10; ++i) {
        port_.Output(block);
        ASSERT_EQ(line_.receive(block.size()), block);
    }
}

TEST_F(QtSerialPortBytes, the_in_buffer_count_grows_without_the_event_loop_turning) {
    EXPECT_EQ(port_.InBufferCount(), 0);
    line_.send(Bytes(3));
    EXPECT_TRUE(wait_for_count(3));
    line_.send(Bytes(8));
    EXPECT_TRUE(wait_for_count(11));
    line_.send(Bytes(30));
    EXPECT_TRUE(wait_for_count(41));
    EXPECT_EQ(port_.Input().size(), 41U);
    EXPECT_EQ(port_.InBufferCount(), 0);
}

TEST_F(QtSerialPortBytes, the_in_buffer_count_is_the_same_with_the_event_loop_turning) {
    for (int count = 1; count <= 41; ++count) {
        const Bytes next = {static_cast<std::uint8_t>(count)};
        line_.send(next);
        ASSERT_TRUE(spin_until([&] { return port_.InBufferCount() == count; })) << count;
    }
    const Bytes all = port_.Input();
    ASSERT_EQ(all.size(), 41U);
    for (std::size_t i = 0; i < all.size(); ++i) EXPECT_EQ(all[i], i + 1);
}

TEST_F(QtSerialPortBytes, input_takes_everything_and_nothing_twice) {
    EXPECT_THAT(port_.Input(), IsEmpty());
    line_.send(Bytes{1, 2, 3});
    EXPECT_THAT(input(3), ElementsAre(1, 2, 3));
    EXPECT_THAT(port_.Input(), IsEmpty());
}

TEST_F(QtSerialPortBytes, the_event_loop_sleeps_until_the_threshold_is_reached) {
    auto* const events = QAbstractEventDispatcher::instance();
    while (events->processEvents(QEventLoop::AllEvents)) {
    }
    line_.send(Bytes(7));
    ASSERT_TRUE(wait_for_count(7));
    EXPECT_FALSE(events->processEvents(QEventLoop::AllEvents));
    line_.send(Bytes(1));
    ASSERT_TRUE(wait_for_count(8));
    EXPECT_TRUE(events->processEvents(QEventLoop::AllEvents));
    EXPECT_EQ(port_.InBufferCount(), 8);
}

TEST_F(QtSerialPortBytes, forty_thousand_bytes_pass_in_order) {
    Bytes sent(40000), got;
    for (std::size_t i = 0; i < sent.size(); ++i) sent[i] = static_cast<std::uint8_t>(i * 31 >> 3);
    std::size_t done = 0;
    spin_until([&] {
        done += line_.send(std::span(sent).subspan(done));
        const Bytes part = port_.Input();
        got.insert(got.end(), part.begin(), part.end());
        return got.size() >= sent.size();
    });
    EXPECT_EQ(got, sent);
}

TEST_F(QtSerialPortBytes, twenty_thousand_bytes_leave_in_order_as_the_other_end_reads) {
    Bytes sent(20000), got;
    for (std::size_t i = 0; i < sent.size(); ++i) sent[i] = static_cast<std::uint8_t>(i * 31 >> 3);
    port_.Output(std::span(sent).first(15000));
    port_.Output(std::span(sent).subspan(15000));
    spin_until([&] {
        const Bytes part = line_.receive(4096, std::chrono::milliseconds(1));
        got.insert(got.end(), part.begin(), part.end());
        return got.size() >= sent.size();
    });
    EXPECT_EQ(got, sent);
}

TEST_F(QtSerialPortBytes, an_output_past_its_buffer_is_an_error_and_closes_the_port) {
    EXPECT_NO_THROW(port_.Output(Bytes(30000)));
    const std::string error = error_of([&] { port_.Output(Bytes(30000)); });
    EXPECT_THAT(error, HasSubstr("stopped taking bytes"));
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(QtSerialPortBytes, closing_does_not_wait_for_an_end_that_takes_nothing) {
    port_.Output(Bytes(30000));
    QElapsedTimer passed;
    passed.start();
    port_.PortOpen(false);
    EXPECT_LT(passed.elapsed(), 1000);
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(QtSerialPortBytes, the_last_bytes_leave_when_the_port_is_closed_right_after_them) {
    port_.Output(Bytes{3, 6, 9});
    port_.PortOpen(false);
    EXPECT_THAT(line_.receive(3), ElementsAre(3, 6, 9));
}

// A pseudo-terminal takes them at once; a device would still be sending them. The line must not be
// set back under them, however quick the machine is.
TEST_F(QtSerialPortBytes, closing_waits_until_the_last_bytes_have_had_their_time_on_the_line) {
    const auto before = std::chrono::steady_clock::now();
    port_.Output(Bytes(8));
    EXPECT_EQ(line_.receive(8).size(), 8U);
    port_.PortOpen(false);
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::microseconds(9166));
}

TEST_F(QtSerialPortBytes, bytes_that_have_not_left_are_counted) {
    EXPECT_EQ(port_.unsent_bytes(), 0);
    const StoppedLine stopped(path_);
    port_.Output(Bytes(38));
    port_.Output(Bytes(38));
    EXPECT_EQ(port_.unsent_bytes(), 76);
    EXPECT_TRUE(line_.is_silent());
    stopped.go_on();
    EXPECT_TRUE(spin_until([&] { return port_.unsent_bytes() == 0 || !line_.is_silent(); }));
    EXPECT_EQ(line_.receive(76).size(), 76U);
    EXPECT_TRUE(spin_until([&] { return port_.unsent_bytes() == 0; }));
}

TEST_F(QtSerialPortBytes, the_other_end_may_hang_up_once_it_has_everything) {
    port_.Output(Bytes(8));
    EXPECT_EQ(line_.receive(8).size(), 8U);
    line_.hang_up();
    EXPECT_EQ(port_.unsent_bytes(), 0);
}

class QtSerialPortLimits : public PortBench {};

TEST_F(QtSerialPortLimits, bytes_past_the_in_buffer_size_are_kept_too) {
    properties_.InBufferSize = 100;
    port_.set_properties(properties_);
    open();
    Bytes sent(3000);
    for (std::size_t i = 0; i < sent.size(); ++i) sent[i] = static_cast<std::uint8_t>(i * 7 >> 2);
    for (int round = 0; round < 3; ++round) {
        ASSERT_EQ(line_.send(sent), sent.size());
        ASSERT_TRUE(spin_until([&] { return port_.InBufferCount() == 3000; }));
        EXPECT_EQ(port_.Input(), sent);
    }
}

TEST_F(QtSerialPortLimits, an_input_length_takes_that_many_bytes_at_a_time) {
    properties_.InputLen = 5;
    port_.set_properties(properties_);
    open();
    // The first eight are fetched by the event loop, the others still lie with the system.
    line_.send(Bytes{1, 2, 3, 4, 5, 6, 7, 8});
    ASSERT_TRUE(spin_until([&] { return port_.InBufferCount() == 8; }));
    QCoreApplication::processEvents();
    line_.send(Bytes{9, 10, 11, 12});
    ASSERT_TRUE(spin_until([&] { return port_.InBufferCount() == 12; }));
    EXPECT_THAT(port_.Input(), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(port_.Input(), ElementsAre(6, 7, 8, 9, 10));
    EXPECT_THAT(port_.Input(), ElementsAre(11, 12));
    EXPECT_THAT(port_.Input(), IsEmpty());
}

TEST_F(QtSerialPortLimits, bytes_of_an_earlier_transfer_are_gone_when_the_port_is_opened) {
    open();
    port_.PortOpen(false);
    line_.send(Bytes(20, 0x77));
    open();
    line_.send(Bytes{1, 2, 3});
    EXPECT_THAT(input(3), ElementsAre(1, 2, 3));
}

}  // namespace
}  // namespace memwright::fakes
