#pragma once

// Which device of the host COM n is. First found wins: the command line, the stored choice, on
// systems that name devices by number the device of that number, elsewhere the n-th serial device,
// USB adapters first.

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/serial_devices.h"
#include "platform/settings_store.h"

namespace memwright {

class ComPorts {
  public:
    static constexpr int kPorts = 12;  // COM 1 to COM 12

    enum class Source { command_line, stored, system, none };

    struct Choice {
        std::string path;  // "" if there is none
        std::string description;
        Source source = Source::none;
    };

    // Reads "N=DEVICE", as it is given on a command line. None if it is not that.
    static std::optional<std::pair<int, std::string>> named_port(const std::string& text);

    // `named`: the devices named on the command line, by number.
    ComPorts(SerialDevices& devices, SettingsStore& settings, std::map<int, std::string> named)
        : devices_(devices), settings_(settings), named_(std::move(named)) {}

    Choice choice(int number) const;

    // The choice's path. PortError if there is no device.
    std::string device_of(int number) const;

    // What the number would be without a stored choice.
    Choice without_stored(int number) const;

    // What is known of a device, listed or not.
    std::string describe(const std::string& path) const { return devices_.describe(path); }

    // Stores a choice, "" to forget it.
    void store(int number, const std::string& path);

    // The serial devices in the order of their numbers, the same in every run.
    std::vector<SerialDevice> devices() const;

  private:
    SerialDevices& devices_;
    SettingsStore& settings_;
    std::map<int, std::string> named_;
};

}  // namespace memwright
