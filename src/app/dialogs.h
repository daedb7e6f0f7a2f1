#pragma once

// The controls and logic of the About box and of the port dialog.

#include <string>
#include <vector>

#include "controls/controls.h"
#include "link/com_ports.h"
#include "platform/settings_store.h"

namespace memwright {

// The About box.
class Form5 {
  public:
    Form5();

    Label NameLabel{"NameLabel"};
    Label VersionLabel{"VersionLabel"};
    Label CreditLabel{"CreditLabel"};
    CommandButton Command1{"Command1"};

    Signal<> closed;

  private:
    Connection close_;
};

// The port dialog: the port's number as ever, and below it the device that transfers open.
class Form2 {
  public:
    Form2(SettingsStore& settings, ComPorts& ports);

    ComboBox Combo1{"Combo1"};
    CommandButton Command1{"Command1"};

    Label DeviceLabel{"DeviceLabel"};
    Label DeviceListLabel{"DeviceListLabel"};
    ComboBox DeviceList{"DeviceList"};

    // Looks again which devices there are.
    void refresh();

    // The user picked an entry of DeviceList.
    void choose_device(int index);

    Signal<> closed;

  private:
    void Command1_Click();
    void show_devices();

    SettingsStore& settings_;
    ComPorts& ports_;
    int transfer_port_ = 1;
    std::string device_;                // the chosen path; "" to let the system's order decide
    std::vector<SerialDevice> listed_;  // behind the entries of DeviceList from the second on
    Connection click_;
};

}  // namespace memwright
