#include "qt/serial/line_settings.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>

#include "base/error.h"

namespace memwright {
namespace {

using ::testing::HasSubstr;
using ::testing::Property;
using ::testing::Throws;

TEST(LineSettings, the_settings_of_the_clone_line_read) {
    const LineSettings expected{9600, QSerialPort::EvenParity, QSerialPort::Data8,
                                QSerialPort::OneStop};
    EXPECT_EQ(parse_line_settings("9600,E,8,1"), expected);
}

TEST(LineSettings, blanks_and_small_letters_do_no_harm) {
    EXPECT_EQ(parse_line_settings(" 9600, e, 8, 1 "), parse_line_settings("9600,E,8,1"));
}

TEST(LineSettings, every_parity_letter_reads) {
    const std::pair<std::string, QSerialPort::Parity> letters[] = {{"N", QSerialPort::NoParity},
                                                                   {"E", QSerialPort::EvenParity},
                                                                   {"O", QSerialPort::OddParity},
                                                                   {"M", QSerialPort::MarkParity},
                                                                   {"S", QSerialPort::SpaceParity}};
    for (const auto& [letter, parity] : letters) {
        EXPECT_EQ(parse_line_settings("19200," + letter + ",7,2").parity, parity) << letter;
    }
}

TEST(LineSettings, all_data_bits_and_stop_bits_read) {
    EXPECT_EQ(parse_line_settings("300,N,5,1.5"),
              (LineSettings{300, QSerialPort::NoParity, QSerialPort::Data5,
                            QSerialPort::OneAndHalfStop}));
    EXPECT_EQ(
        parse_line_settings("115200,O,6,2"),
        (LineSettings{115200, QSerialPort::OddParity, QSerialPort::Data6, QSerialPort::TwoStop}));
    EXPECT_EQ(parse_line_settings("1200,N,7,1").data_bits, QSerialPort::Data7);
}

TEST(LineSettings, a_bad_text_is_a_port_error_that_shows_it) {
    for (const std::string text :
         {"", "9600", "9600,E,8", "9600,E,8,1,1", "9600;E;8;1", ",E,8,1", "0,E,8,1", "-9600,E,8,1",
          "9600x,E,8,1", "99999999999,E,8,1", "9600,X,8,1", "9600,,8,1", "9600,E,9,1", "9600,E,4,1",
          "9600,E,8,3", "9600,E,8,"}) {
        EXPECT_THAT([&] { parse_line_settings(text); },
                    Throws<PortError>(Property(&PortError::what, HasSubstr('"' + text + '"'))))
            << text;
    }
}

}  // namespace
}  // namespace memwright
