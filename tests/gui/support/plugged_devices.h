#pragma once

// Serial devices that are plugged in and pulled out by a test.

#include <string>
#include <vector>

#include "platform/serial_devices.h"

namespace memwright::gui {

class PluggedDevices final : public SerialDevices {
  public:
    std::vector<SerialDevice> present = {{"/dev/ttyUSB0", "FT232R USB UART", true}};

    std::vector<SerialDevice> list() override { return present; }
    std::string describe(const std::string& path) override {
        for (const SerialDevice& device : present) {
            if (device.path == path) return device.description;
        }
        return "not present";
    }
    bool numbers_name_devices() const override { return false; }
};

}  // namespace memwright::gui
