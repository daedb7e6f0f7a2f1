// The port dialog.

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/dialogs.h"
#include "app/idle_platform.h"
#include "fakes/memory_settings.h"

namespace memwright {
namespace {

using Items = std::vector<std::string>;

const SerialDevice kAdapter{"/dev/ttyUSB0", "FT232R USB UART", true};
const SerialDevice kSecond{"/dev/ttyUSB1", "CP2102 USB to UART", true};
const SerialDevice kOnBoard{"/dev/ttyS0", "", false};

class PortDialog : public testing::Test {
  protected:
    void open_dialog() { open_dialog(ports); }
    void open_dialog(ComPorts& with) {
        form.reset();
        form = std::make_unique<Form2>(settings, with);
        close = form->closed.connect([this] { ++closes; });
    }
    std::string stored(const std::string& path) const {
        const auto value = settings.values.find(path);
        return value == settings.values.end() ? "(absent)" : value->second;
    }

    fakes::MemorySettings settings;
    fakes::ListedDevices devices;
    ComPorts ports{devices, settings, {}};
    std::unique_ptr<Form2> form;
    int closes = 0;
    Connection close;
};

TEST_F(PortDialog, lists_twelve_ports) {
    open_dialog();
    EXPECT_EQ(form->Combo1.items.get(),
              (Items{"COM 1", "COM 2", "COM 3", "COM 4", "COM 5", "COM 6", "COM 7", "COM 8",
                     "COM 9", "COM 10", "COM 11", "COM 12"}));
    EXPECT_EQ(form->Command1.caption.get(), "&OK");
}

TEST_F(PortDialog, shows_the_stored_port_and_COM_1_without_one) {
    open_dialog();
    EXPECT_EQ(form->Combo1.text.get(), "COM 1");
    settings.values["VR120/Settings/CommPort"] = "7";
    open_dialog();
    EXPECT_EQ(form->Combo1.text.get(), "COM 7");
    settings.values["VR120/Settings/CommPort"] = "x";
    open_dialog();
    EXPECT_EQ(form->Combo1.text.get(), "COM x") << "whatever is stored";
}

TEST_F(PortDialog, stores_the_last_two_characters_of_the_text_without_blanks) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"COM 1", "1"},   {"COM 3", "3"},    {"COM 9", "9"}, {"COM 10", "10"},
        {"COM 12", "12"}, {"COM 123", "23"}, {"7", "7"},     {" 7", "7"},
        {"7 ", "7"},      {"COM", "OM"},     {"COM  ", ""},  {"", ""}};
    for (const auto& [text, number] : cases) {
        open_dialog();
        form->Combo1.text = text;
        form->Command1.clicked();
        EXPECT_EQ(stored("VR120/Settings/CommPort"), number) << text;
    }
}

TEST_F(PortDialog, closes_after_it_has_stored) {
    open_dialog();
    int saved_when_closed = 0;
    const Connection closed =
        form->closed.connect([&] { saved_when_closed = static_cast<int>(settings.saved.size()); });
    form->Command1.clicked();
    EXPECT_EQ(closes, 1);
    EXPECT_EQ(saved_when_closed, 1);
}

TEST_F(PortDialog, stores_nothing_before_OK) {
    devices.present = {kAdapter, kSecond};
    open_dialog();
    form->Combo1.text = "COM 3";
    form->choose_device(2);
    form->refresh();
    EXPECT_TRUE(settings.saved.empty());
    form.reset();
    EXPECT_TRUE(settings.saved.empty());
}

TEST_F(PortDialog, changes_what_it_shows_next_time_and_not_the_port_of_the_transfers) {
    devices.present = {kAdapter, kSecond, kOnBoard};
    open_dialog();
    form->Combo1.text = "COM 3";
    form->Command1.clicked();
    open_dialog();
    EXPECT_EQ(form->Combo1.text.get(), "COM 3");
    EXPECT_EQ(stored("VR120Clone/Settings/CommPort"), "(absent)");
    EXPECT_EQ(form->DeviceLabel.caption.get(),
              "Transfers use COM 1: /dev/ttyUSB0, FT232R USB UART");
}

TEST_F(PortDialog, says_which_device_the_transfers_use) {
    devices.present = {kOnBoard, kAdapter};
    open_dialog();
    EXPECT_EQ(form->DeviceLabel.caption.get(),
              "Transfers use COM 1: /dev/ttyUSB0, FT232R USB UART");
    EXPECT_EQ(form->DeviceListLabel.caption.get(), "&Device for COM 1:");
    EXPECT_EQ(form->DeviceList.items.get(),
              (Items{"Automatic (/dev/ttyUSB0)", "/dev/ttyUSB0, FT232R USB UART", "/dev/ttyS0"}));
    EXPECT_EQ(form->DeviceList.text.get(), "Automatic (/dev/ttyUSB0)");
    EXPECT_TRUE(form->DeviceList.enabled);
}

TEST_F(PortDialog, speaks_of_the_port_that_the_transfers_read) {
    settings.values["VR120/Settings/CommPort"] = "5";
    settings.values["VR120Clone/Settings/CommPort"] = "2";
    devices.present = {kOnBoard, kAdapter};
    open_dialog();
    EXPECT_EQ(form->Combo1.text.get(), "COM 5");
    EXPECT_EQ(form->DeviceLabel.caption.get(), "Transfers use COM 2: /dev/ttyS0");
    EXPECT_EQ(form->DeviceListLabel.caption.get(), "&Device for COM 2:");
}

TEST_F(PortDialog, says_that_there_is_no_device) {
    open_dialog();
    EXPECT_EQ(form->DeviceLabel.caption.get(), "Transfers use COM 1: no device");
    EXPECT_EQ(form->DeviceList.items.get(), (Items{"Automatic (none found)"}));
    EXPECT_EQ(form->DeviceList.text.get(), "Automatic (none found)");
}

TEST_F(PortDialog, takes_a_chosen_device_for_the_transfers_port) {
    devices.present = {kAdapter, kSecond};
    open_dialog();
    form->choose_device(2);
    EXPECT_EQ(form->DeviceLabel.caption.get(),
              "Transfers use COM 1: /dev/ttyUSB1, CP2102 USB to UART");
    EXPECT_EQ(form->DeviceList.text.get(), "/dev/ttyUSB1, CP2102 USB to UART");
    form->Command1.clicked();
    EXPECT_EQ(stored("Memwright/Ports/COM1"), "/dev/ttyUSB1");
    EXPECT_EQ(ports.device_of(1), "/dev/ttyUSB1");

    open_dialog();
    EXPECT_EQ(form->DeviceList.text.get(), "/dev/ttyUSB1, CP2102 USB to UART");
    EXPECT_EQ(form->DeviceLabel.caption.get(),
              "Transfers use COM 1: /dev/ttyUSB1, CP2102 USB to UART");
}

TEST_F(PortDialog, forgets_the_choice_for_automatic) {
    devices.present = {kAdapter, kSecond};
    settings.values["Memwright/Ports/COM1"] = "/dev/ttyUSB1";
    open_dialog();
    form->choose_device(0);
    EXPECT_EQ(form->DeviceList.text.get(), "Automatic (/dev/ttyUSB0)");
    EXPECT_EQ(form->DeviceLabel.caption.get(),
              "Transfers use COM 1: /dev/ttyUSB0, FT232R USB UART");
    EXPECT_EQ(stored("Memwright/Ports/COM1"), "/dev/ttyUSB1") << "until OK";
    form->Command1.clicked();
    EXPECT_EQ(stored("Memwright/Ports/COM1"), "(absent)");
}

TEST_F(PortDialog, takes_an_index_outside_of_the_list_for_automatic) {
    devices.present = {kAdapter};
    for (const int index : {-1, 2, 99}) {
        open_dialog();
        form->choose_device(1);
        form->choose_device(index);
        EXPECT_EQ(form->DeviceList.text.get(), "Automatic (/dev/ttyUSB0)") << index;
    }
}

TEST_F(PortDialog, shows_a_device_that_is_plugged_in_meanwhile) {
    open_dialog();
    devices.present = {kAdapter};
    form->refresh();
    EXPECT_EQ(form->DeviceList.items.get(),
              (Items{"Automatic (/dev/ttyUSB0)", "/dev/ttyUSB0, FT232R USB UART"}));
    EXPECT_EQ(form->DeviceList.text.get(), "Automatic (/dev/ttyUSB0)");
    EXPECT_EQ(form->DeviceLabel.caption.get(),
              "Transfers use COM 1: /dev/ttyUSB0, FT232R USB UART");
    form->choose_device(1);
    form->Command1.clicked();
    EXPECT_EQ(stored("Memwright/Ports/COM1"), "/dev/ttyUSB0");
}

TEST_F(PortDialog, keeps_a_chosen_device_that_is_pulled_out_and_says_so) {
    devices.present = {kAdapter, kSecond};
    open_dialog();
    form->choose_device(2);
    devices.present = {kAdapter};
    form->refresh();
    EXPECT_EQ(form->DeviceList.items.get(),
              (Items{"Automatic (/dev/ttyUSB0)", "/dev/ttyUSB0, FT232R USB UART",
                     "/dev/ttyUSB1, not present"}));
    EXPECT_EQ(form->DeviceList.text.get(), "/dev/ttyUSB1, not present");
    EXPECT_EQ(form->DeviceLabel.caption.get(), "Transfers use COM 1: /dev/ttyUSB1, not present");
    devices.present = {kAdapter, kSecond};
    form->refresh();
    EXPECT_EQ(form->DeviceList.text.get(), "/dev/ttyUSB1, CP2102 USB to UART");
    form->Command1.clicked();
    EXPECT_EQ(stored("Memwright/Ports/COM1"), "/dev/ttyUSB1");
}

TEST_F(PortDialog, shows_a_stored_device_that_is_not_there) {
    settings.values["Memwright/Ports/COM1"] = "/dev/ttyUSB7";
    devices.present = {kAdapter};
    open_dialog();
    EXPECT_EQ(form->DeviceList.text.get(), "/dev/ttyUSB7, not present");
    form->Command1.clicked();
    EXPECT_EQ(stored("Memwright/Ports/COM1"), "/dev/ttyUSB7") << "it may come back";
}

TEST_F(PortDialog, drops_a_device_that_is_gone_once_another_is_chosen) {
    settings.values["Memwright/Ports/COM1"] = "/dev/ttyUSB7";
    devices.present = {kAdapter};
    open_dialog();
    form->choose_device(1);
    EXPECT_EQ(form->DeviceList.items.get(),
              (Items{"Automatic (/dev/ttyUSB0)", "/dev/ttyUSB0, FT232R USB UART"}));
}

TEST_F(PortDialog, keeps_the_choice_when_the_list_grows_before_it) {
    devices.present = {kSecond};
    open_dialog();
    form->choose_device(1);
    devices.present = {kAdapter, kSecond};
    form->refresh();
    EXPECT_EQ(form->DeviceList.text.get(), "/dev/ttyUSB1, CP2102 USB to UART");
    form->Command1.clicked();
    EXPECT_EQ(stored("Memwright/Ports/COM1"), "/dev/ttyUSB1");
}

TEST_F(PortDialog, tells_of_no_change_if_the_devices_are_the_same) {
    devices.present = {kAdapter, kOnBoard};
    open_dialog();
    int changes = 0;
    const Connection items = form->DeviceList.items.changed.connect([&] { ++changes; });
    const Connection text = form->DeviceList.text.changed.connect([&] { ++changes; });
    const Connection label = form->DeviceLabel.caption.changed.connect([&] { ++changes; });
    devices.present = {kOnBoard, kAdapter};  // in any order
    form->refresh();
    EXPECT_EQ(changes, 0);
}

TEST_F(PortDialog, lets_the_command_line_decide_and_leaves_the_stored_choice_alone) {
    settings.values["Memwright/Ports/COM1"] = "/dev/ttyUSB1";
    devices.present = {kAdapter, kSecond};
    ComPorts named(devices, settings, {{1, "/dev/ttyS0"}});
    devices.present.push_back({"/dev/ttyS0", "serial port", false});
    open_dialog(named);
    EXPECT_EQ(form->DeviceLabel.caption.get(), "Transfers use COM 1: /dev/ttyS0, serial port");
    EXPECT_FALSE(form->DeviceList.enabled);
    form->Combo1.text = "COM 4";
    form->Command1.clicked();
    EXPECT_EQ(stored("VR120/Settings/CommPort"), "4");
    EXPECT_EQ(stored("Memwright/Ports/COM1"), "/dev/ttyUSB1");
    form.reset();
}

TEST_F(PortDialog, on_systems_that_number_their_devices_says_which_one_it_is) {
    devices.numbered = true;
    devices.present = {{"COM1", "Communications Port", false}, {"COM3", "USB Serial Port", true}};
    settings.values["VR120Clone/Settings/CommPort"] = "3";
    open_dialog();
    EXPECT_EQ(form->DeviceLabel.caption.get(), "Transfers use COM 3: COM3, USB Serial Port");
    EXPECT_EQ(form->DeviceList.items.get().front(), "Automatic (COM3)");
}

}  // namespace
}  // namespace memwright
