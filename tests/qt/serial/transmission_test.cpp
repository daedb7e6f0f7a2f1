#include "qt/serial/transmission.h"

#include <gtest/gtest.h>

namespace memwright::fakes {
namespace {

using namespace std::chrono_literals;
using Time = Transmission::Time;

constexpr LineSettings kCloneLine{9600, QSerialPort::EvenParity, QSerialPort::Data8,
                                  QSerialPort::OneStop};

// Eleven bits of 1/9600 s, in nanoseconds.
constexpr auto kByte = 1'145'833ns;

class TransmissionTest : public ::testing::Test {
  protected:
    TransmissionTest() { line_.begin(kCloneLine); }

    Time start_ = Transmission::Clock::now();
    Transmission line_;
};

TEST_F(TransmissionTest, nothing_is_on_its_way_at_first) { EXPECT_EQ(line_.bytes_left(start_), 0); }

TEST_F(TransmissionTest, a_byte_is_on_its_way_for_eleven_bits) {
    line_.add(1, start_);
    EXPECT_EQ(line_.bytes_left(start_), 1);
    EXPECT_EQ(line_.bytes_left(start_ + kByte - 1us), 1);
    EXPECT_EQ(line_.bytes_left(start_ + kByte), 0);
}

TEST_F(TransmissionTest, a_closing_frame_is_on_its_way_for_more_than_nine_milliseconds) {
    line_.add(8, start_);
    EXPECT_EQ(line_.bytes_left(start_), 8);
    EXPECT_EQ(line_.bytes_left(start_ + 9165us), 1);
    EXPECT_EQ(line_.bytes_left(start_ + 9167us), 0);
}

TEST_F(TransmissionTest, bytes_follow_those_before_them) {
    line_.add(4, start_);
    line_.add(4, start_ + kByte);
    EXPECT_EQ(line_.bytes_left(start_ + kByte), 7);
    EXPECT_EQ(line_.bytes_left(start_ + 8 * kByte), 0);
    line_.add(1, start_ + 1s);
    EXPECT_EQ(line_.bytes_left(start_ + 1s), 1);
}

TEST_F(TransmissionTest, the_bits_of_a_byte_are_those_of_the_line) {
    using P = QSerialPort;
    const std::pair<LineSettings, int> tenths[] = {
        {{1000, P::NoParity, P::Data8, P::OneStop}, 100},
        {{1000, P::NoParity, P::Data5, P::OneAndHalfStop}, 75},
        {{1000, P::MarkParity, P::Data7, P::TwoStop}, 110},
        {{1000, P::EvenParity, P::Data8, P::OneStop}, 110},
        {{2000, P::OddParity, P::Data8, P::OneStop}, 55}};
    for (const auto& [settings, length] : tenths) {
        line_.begin(settings);
        line_.add(1, start_);
        EXPECT_EQ(line_.bytes_left(start_ + length * 100us - 1us), 1) << length;
        EXPECT_EQ(line_.bytes_left(start_ + length * 100us), 0) << length;
    }
}

TEST_F(TransmissionTest, more_than_a_device_holds_is_not_waited_for) {
    line_.add(1'000'000, start_);
    EXPECT_GT(line_.bytes_left(start_ + Transmission::kLongest - 1ms), 0);
    EXPECT_EQ(line_.bytes_left(start_ + Transmission::kLongest), 0);
}

}  // namespace
}  // namespace memwright::fakes
