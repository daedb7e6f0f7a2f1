#include <gmock/gmock.h>
#include <sys/resource.h>

#include <QTimer>
#include <memory>

#include "qt/serial/port_bench.h"

namespace memwright::fakes {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class QtSerialPortHangUp : public PortBench {
  protected:
    void SetUp() override { open(); }

    auto is_hang_up() const {
        return AllOf(HasSubstr("COM 1 (" + path_ + ")"), HasSubstr("hung up"),
                     HasSubstr("The port is closed"));
    }
};

TEST_F(QtSerialPortHangUp, is_told_by_the_next_count_without_the_event_loop_turning) {
    line_.hang_up();
    EXPECT_THAT(error_of([&] { port_.InBufferCount(); }), is_hang_up());
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(QtSerialPortHangUp, is_told_by_the_next_input) {
    line_.hang_up();
    EXPECT_THAT(error_of([&] { port_.Input(); }), is_hang_up());
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(QtSerialPortHangUp, is_told_by_the_next_output) {
    line_.hang_up();
    EXPECT_THAT(error_of([&] { port_.Output(Bytes{3, 6, 9}); }), is_hang_up());
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(QtSerialPortHangUp, closes_an_idle_port_from_the_event_loop) {
    line_.hang_up();
    EXPECT_TRUE(spin_until([&] { return !port_.PortOpen(); }));
    EXPECT_THAT(error_of([&] { port_.InBufferCount(); }), is_hang_up());
}

TEST_F(QtSerialPortHangUp, in_the_middle_of_a_block_is_told_and_not_hidden_by_its_bytes) {
    line_.send(Bytes(20));
    ASSERT_TRUE(spin_until([&] { return port_.InBufferCount() == 20; }));
    line_.hang_up();
    EXPECT_THAT(error_of([&] { port_.InBufferCount(); }), is_hang_up());
}

TEST_F(QtSerialPortHangUp, in_the_middle_of_sending_is_told) {
    port_.Output(Bytes(30000));
    line_.hang_up();
    EXPECT_TRUE(spin_until([&] { return !port_.PortOpen(); }));
    EXPECT_THAT(error_of([&] { port_.Output(Bytes{1}); }), is_hang_up());
}

TEST_F(QtSerialPortHangUp, stays_told_until_the_port_is_closed_by_its_user) {
    line_.hang_up();
    for (int i = 0; i < 3; ++i) {
        EXPECT_THAT(error_of([&] { port_.InBufferCount(); }), is_hang_up());
    }
    port_.PortOpen(false);
    EXPECT_THAT(error_of([&] { port_.InBufferCount(); }), HasSubstr("COM 1 is not open"));
}

TEST_F(QtSerialPortHangUp, leaves_the_event_loop_asleep) {
    line_.hang_up();
    constexpr int kMilliseconds = 200, kFewRounds = 40;
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(kMilliseconds);
    rusage before{}, after{};
    getrusage(RUSAGE_SELF, &before);
    int rounds = 0;
    while (limit.isActive()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        ++rounds;
    }
    getrusage(RUSAGE_SELF, &after);
    EXPECT_LT(rounds, kFewRounds);
    const auto microseconds = [](const timeval& time) {
        return time.tv_sec * 1000000 + time.tv_usec;
    };
    EXPECT_LT(microseconds(after.ru_utime) + microseconds(after.ru_stime) -
                  microseconds(before.ru_utime) - microseconds(before.ru_stime),
              kMilliseconds * 1000 / 4);
}

TEST_F(QtSerialPortHangUp, lets_the_port_be_opened_again_on_a_new_device) {
    line_.hang_up();
    EXPECT_THROW(port_.InBufferCount(), PortError);
    PseudoTerminal plugged_in_again;
    path_ = plugged_in_again.path();
    port_.PortOpen(true);
    EXPECT_TRUE(port_.PortOpen());
    port_.Output(Bytes{3, 6, 9});
    EXPECT_THAT(plugged_in_again.receive(3), ElementsAre(3, 6, 9));
    plugged_in_again.send(Bytes{1, 2});
    EXPECT_THAT(input(2), ElementsAre(1, 2));
}

TEST_F(QtSerialPortHangUp, does_not_keep_the_port_from_being_closed_or_destroyed) {
    line_.hang_up();
    EXPECT_NO_THROW(port_.PortOpen(false));
    auto other_line = std::make_unique<PseudoTerminal>();
    auto other = std::make_unique<QtSerialPort>([&](int) { return other_line->path(); });
    other->PortOpen(true);
    other->Output(Bytes(30000));
    other_line->hang_up();
    other.reset();
}

}  // namespace
}  // namespace memwright::fakes
