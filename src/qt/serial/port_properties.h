#pragma once

// The fourteen properties that a port is opened with, and how they are brought to a QSerialPort.

#include <QSerialPort>
#include <string>

namespace memwright {

struct PortProperties {
    int port = 1;
    std::string settings = "9600,N,8,1";
    bool dtr_enable = true;
    bool eof_enable = false;
    int handshaking = 0;  // 0 none, 1 XON/XOFF, 2 RTS/CTS
    int in_buffer_size = 0;
    int input_len = 0;
    int input_mode = 1;
    bool null_discard = false;
    int out_buffer_size = 0;
    std::string parity_replace = {};
    int r_threshold = 0;
    bool rts_enable = true;
    int s_threshold = 0;
};

// What no port can do for these properties, on any device; "" if all of them can be had.
std::string impossible_property(const PortProperties& properties);

// Sets up a port that has just been opened. Returns what the device refused, "" if nothing. A port
// that `may_lack_lines` is excused for parity, data bits, stop bits and the modem lines.
std::string set_up_port(QSerialPort& port, const PortProperties& properties, bool may_lack_lines);

}  // namespace memwright
