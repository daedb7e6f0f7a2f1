#pragma once

// The serial devices that the host has at the moment.

#include <string>
#include <vector>

namespace memwright {

struct SerialDevice {
    std::string path;         // "/dev/ttyUSB0", on Windows "COM3"
    std::string description;  // "FT232R USB UART"; "" if the system tells none
    bool usb = false;
};

class SerialDevices {
  public:
    virtual ~SerialDevices() = default;

    // In any order.
    virtual std::vector<SerialDevice> list() = 0;

    // What is known of a device that need not be listed (a pseudo-terminal, say).
    virtual std::string describe(const std::string& path) = 0;

    // True where a number is itself a device's name: COM 3 is "COM3".
    virtual bool numbers_name_devices() const = 0;
};

}  // namespace memwright
