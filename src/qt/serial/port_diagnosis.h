#pragma once

// Why a serial port does not open, and what its user can do about it, in plain English.

#include <string>
#include <vector>

#include "platform/serial_devices.h"
#include "qt/serial/port_facts.h"

namespace memwright {

// "COM 1 (/dev/ttyUSB0)"
std::string port_name(int number, const std::string& path);

// The text of the PortError, from what is known of the device and from the devices present.
std::string port_diagnosis(int number, const std::string& path, const PortFacts& facts,
                           const std::vector<SerialDevice>& present);

}  // namespace memwright
