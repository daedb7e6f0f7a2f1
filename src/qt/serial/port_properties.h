#pragma once

// How the properties that a port is opened with are brought to a QSerialPort.

#include <QSerialPort>
#include <string>

#include "platform/ms_comm.h"

namespace memwright {

// What no port can do for these properties, on any device; "" if all of them can be had.
std::string impossible_property(const PortProperties& properties);

// Sets up a port that has just been opened. Returns what the device refused, "" if nothing. A port
// that `may_lack_lines` is excused for parity, data bits, stop bits and the modem lines.
std::string set_up_port(QSerialPort& port, const PortProperties& properties, bool may_lack_lines);

}  // namespace memwright
