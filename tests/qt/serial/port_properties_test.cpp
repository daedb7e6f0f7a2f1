#include "qt/serial/port_properties.h"

#include <gtest/gtest.h>
#include <termios.h>

#include <QString>

#include "fakes/pseudo_terminal.h"

namespace memwright {
namespace {

class PortPropertiesOnALineWithoutParity : public ::testing::Test {
  protected:
    void SetUp() override {
        port_.setPortName(QString::fromStdString(line_.path()));
        ASSERT_TRUE(port_.open(QIODevice::ReadWrite));
    }

    fakes::PseudoTerminal line_;
    QSerialPort port_;
    PortProperties properties_;
};

TEST_F(PortPropertiesOnALineWithoutParity, even_parity_is_refused) {
    properties_.Settings = "9600,E,8,1";
    EXPECT_EQ(set_up_port(port_, properties_, false), "parity");
}

TEST_F(PortPropertiesOnALineWithoutParity, seven_data_bits_are_refused) {
    properties_.Settings = "9600,N,7,1";
    EXPECT_EQ(set_up_port(port_, properties_, false), "number of data bits");
}

TEST_F(PortPropertiesOnALineWithoutParity, one_and_a_half_stop_bits_are_refused) {
    properties_.Settings = "9600,N,8,1.5";
    EXPECT_EQ(set_up_port(port_, properties_, false), "number of stop bits");
}

TEST_F(PortPropertiesOnALineWithoutParity, missing_modem_lines_are_refused) {
    properties_.Settings = "9600,N,8,1";
    EXPECT_EQ(set_up_port(port_, properties_, false), "modem line DTR");
}

TEST_F(PortPropertiesOnALineWithoutParity, a_line_that_may_lack_them_is_excused) {
    properties_.Settings = "9600,E,8,1";
    EXPECT_EQ(set_up_port(port_, properties_, true), "");
}

TEST_F(PortPropertiesOnALineWithoutParity, speed_raw_bytes_and_threshold_reach_the_device) {
    properties_.Settings = "19200,E,8,1";
    properties_.RThreshold = 8;
    ASSERT_EQ(set_up_port(port_, properties_, true), "");
    termios set{};
    ASSERT_EQ(tcgetattr(port_.handle(), &set), 0);
    EXPECT_EQ(cfgetispeed(&set), speed_t{B19200});
    EXPECT_EQ(cfgetospeed(&set), speed_t{B19200});
    EXPECT_EQ(set.c_lflag & (ECHO | ICANON | ISIG | IEXTEN), tcflag_t{0});
    EXPECT_EQ(set.c_iflag & (ICRNL | INLCR | IXON | IXOFF | INPCK | IGNPAR | PARMRK), tcflag_t{0});
    EXPECT_EQ(set.c_oflag & OPOST, tcflag_t{0});
    EXPECT_EQ(set.c_cflag & CRTSCTS, tcflag_t{0});
    EXPECT_EQ(set.c_cc[VMIN], 8);
    EXPECT_EQ(set.c_cc[VTIME], 0);
}

TEST_F(PortPropertiesOnALineWithoutParity, buffer_size_and_handshaking_reach_the_port) {
    properties_.InBufferSize = 30000;
    properties_.Handshaking = 1;
    ASSERT_EQ(set_up_port(port_, properties_, true), "");
    EXPECT_EQ(port_.readBufferSize(), 30000);
    EXPECT_EQ(port_.flowControl(), QSerialPort::SoftwareControl);
}

TEST(PortProperties, what_no_port_can_do_is_named) {
    EXPECT_EQ(impossible_property({}), "");
    EXPECT_EQ(impossible_property({.EOFEnable = true}), "an end-of-file character");
    EXPECT_EQ(impossible_property({.Handshaking = 3}), "this handshaking");
    EXPECT_EQ(impossible_property({.InputMode = 0}), "input as text");
    EXPECT_EQ(impossible_property({.NullDiscard = true}), "discarding zero bytes");
    EXPECT_EQ(impossible_property({.ParityReplace = "?"}), "replacing bytes with parity errors");
}

}  // namespace
}  // namespace memwright
