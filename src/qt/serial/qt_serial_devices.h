#pragma once

// The host's serial devices, as QSerialPortInfo finds them, without the ports that exist only as
// names.

#include <string>
#include <vector>

#include "platform/serial_devices.h"

namespace memwright {

class QtSerialDevices : public SerialDevices {
  public:
    std::vector<SerialDevice> list() override;
    std::string describe(const std::string& path) override;
    bool numbers_name_devices() const override;
};

// A name without a port behind it: many kernels keep /dev/ttyS0 to ttyS31 for ports that the
// machine does not have. `tty_folder` is where the kernel tells (/sys/class/tty).
bool is_phantom_port(const std::string& path, const std::string& tty_folder);

}  // namespace memwright
