#pragma once

// The line settings of a serial port, as their text has them: "9600,E,8,1" is the baud rate, the
// parity's letter (N, E, O, M, S), the data bits and the stop bits. A text that does not read so is
// a PortError.

#include <QSerialPort>
#include <string>

namespace memwright {

struct LineSettings {
    int baud = 9600;
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::DataBits data_bits = QSerialPort::Data8;
    QSerialPort::StopBits stop_bits = QSerialPort::OneStop;

    bool operator==(const LineSettings&) const = default;
};

LineSettings parse_line_settings(const std::string& text);

}  // namespace memwright
