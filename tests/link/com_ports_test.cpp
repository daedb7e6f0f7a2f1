#include "link/com_ports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "base/error.h"
#include "fakes/memory_settings.h"

namespace memwright {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Source = ComPorts::Source;

class Devices final : public SerialDevices {
  public:
    std::vector<SerialDevice> present;
    bool by_number = false;

    std::vector<SerialDevice> list() override { return present; }
    std::string describe(const std::string& path) override { return "what " + path + " is"; }
    bool numbers_name_devices() const override { return by_number; }
};

class ComPortsTest : public testing::Test {
  protected:
    ComPorts ports(std::map<int, std::string> named = {}) {
        return {devices, settings, std::move(named)};
    }

    std::vector<std::string> order() {
        std::vector<std::string> paths;
        for (const SerialDevice& device : ports().devices()) paths.push_back(device.path);
        return paths;
    }

    // However the system lists them.
    void expect_before(const std::string& a, const std::string& b) {
        devices.present = {{a, "", false}, {b, "", false}};
        EXPECT_THAT(order(), ElementsAre(a, b));
        devices.present = {{b, "", false}, {a, "", false}};
        EXPECT_THAT(order(), ElementsAre(a, b));
    }

    std::string refusal(int number) {
        try {
            ports().device_of(number);
        } catch (const PortError& error) {
            return error.what();
        }
        ADD_FAILURE() << "COM " << number << " has a device";
        return "";
    }

    void expect_choice(const ComPorts::Choice& choice, const std::string& path, Source source) {
        EXPECT_EQ(choice.path, path);
        EXPECT_EQ(choice.source, source);
    }

    Devices devices;
    fakes::MemorySettings settings;
};

TEST_F(ComPortsTest, the_command_line_wins_over_the_stored_choice) {
    devices.present = {{"/dev/ttyUSB0", "FT232R", true}};
    settings.values["Memwright/Ports/COM1"] = "/dev/stored";
    expect_choice(ports({{1, "/dev/named"}}).choice(1), "/dev/named", Source::command_line);
    EXPECT_EQ(ports({{1, "/dev/named"}}).device_of(1), "/dev/named");
}

TEST_F(ComPortsTest, the_stored_choice_wins_over_the_devices_present) {
    devices.present = {{"/dev/ttyUSB0", "FT232R", true}};
    settings.values["Memwright/Ports/COM1"] = "/dev/stored";
    expect_choice(ports({{2, "/dev/named"}}).choice(1), "/dev/stored", Source::stored);
}

TEST_F(ComPortsTest, the_stored_choice_wins_where_numbers_name_devices) {
    devices.by_number = true;
    settings.values["Memwright/Ports/COM3"] = "COM7";
    expect_choice(ports().choice(3), "COM7", Source::stored);
}

TEST_F(ComPortsTest, an_empty_stored_choice_is_none) {
    devices.present = {{"/dev/ttyUSB0", "FT232R", true}};
    settings.values["Memwright/Ports/COM1"] = "";
    expect_choice(ports().choice(1), "/dev/ttyUSB0", Source::system);
}

TEST_F(ComPortsTest, where_numbers_name_devices_the_number_is_the_name) {
    devices.by_number = true;
    devices.present = {{"COM3", "FT232R", true}};
    expect_choice(ports().choice(1), "COM1", Source::system);
    EXPECT_EQ(ports().choice(1).description, "what COM1 is");
}

TEST_F(ComPortsTest, elsewhere_COM_n_is_the_nth_device) {
    devices.present = {{"/dev/ttyS0", "", false}, {"/dev/ttyUSB0", "FT232R", true}};
    expect_choice(ports().choice(1), "/dev/ttyUSB0", Source::system);
    EXPECT_EQ(ports().choice(1).description, "FT232R");
    expect_choice(ports().choice(2), "/dev/ttyS0", Source::system);
    expect_choice(ports().choice(3), "", Source::none);
    expect_choice(ports().choice(0), "", Source::none);
    expect_choice(ports().choice(-1), "", Source::none);
}

TEST_F(ComPortsTest, named_and_stored_devices_are_described_by_the_system) {
    settings.values["Memwright/Ports/COM2"] = "/dev/stored";
    EXPECT_EQ(ports({{1, "/dev/pts/4"}}).choice(1).description, "what /dev/pts/4 is");
    EXPECT_EQ(ports().choice(2).description, "what /dev/stored is");
}

TEST_F(ComPortsTest, without_stored_passes_the_stored_choice_over) {
    devices.present = {{"/dev/ttyUSB0", "FT232R", true}};
    settings.values["Memwright/Ports/COM1"] = "/dev/stored";
    expect_choice(ports().without_stored(1), "/dev/ttyUSB0", Source::system);
    expect_choice(ports({{1, "/dev/named"}}).without_stored(1), "/dev/named", Source::command_line);
}

TEST_F(ComPortsTest, a_choice_is_stored_for_its_number_and_forgotten) {
    ports().store(4, "/dev/ttyUSB7");
    EXPECT_EQ(settings.values.at("Memwright/Ports/COM4"), "/dev/ttyUSB7");
    expect_choice(ports().choice(4), "/dev/ttyUSB7", Source::stored);
    expect_choice(ports().choice(3), "", Source::none);
    ports().store(4, "");
    EXPECT_TRUE(settings.values.empty());
    expect_choice(ports().choice(4), "", Source::none);
}

TEST_F(ComPortsTest, USB_adapters_come_first_and_numbers_count_as_numbers) {
    const std::vector<std::string> expected = {"/dev/ttyACM0",  "/dev/ttyUSB1", "/dev/ttyUSB2",
                                               "/dev/ttyUSB10", "/dev/ttyS0",   "/dev/ttyS4",
                                               "/dev/ttyS12"};
    devices.present = {{"/dev/ttyS0", "", false},  {"/dev/ttyS12", "", false},
                       {"/dev/ttyS4", "", false},  {"/dev/ttyUSB10", "", true},
                       {"/dev/ttyUSB2", "", true}, {"/dev/ttyUSB1", "", true},
                       {"/dev/ttyACM0", "", true}};
    EXPECT_EQ(order(), expected);
}

TEST_F(ComPortsTest, the_order_is_the_same_however_the_system_lists_them) {
    std::vector<SerialDevice> present = {{"tty1", "", false},  {"tty01", "", false},
                                         {"tty", "", false},   {"tty10", "", true},
                                         {"tty2a", "", false}, {"tty2", "", true}};
    const auto by_path = [](const SerialDevice& a, const SerialDevice& b) {
        return a.path < b.path;
    };
    std::ranges::sort(present, by_path);
    int orders = 0;
    do {
        devices.present = present;
        ASSERT_THAT(order(), ElementsAre("tty2", "tty10", "tty", "tty01", "tty1", "tty2a"));
        ++orders;
    } while (std::next_permutation(present.begin(), present.end(), by_path));
    EXPECT_EQ(orders, 720);
}

TEST_F(ComPortsTest, names_are_ordered_by_their_texts_and_numbers_from_the_left) {
    expect_before("a2", "b1");
    expect_before("tty0", "ttyS");
    expect_before("tty1", "tty02");
    expect_before("tty2-if00", "tty10");
    expect_before("tty2b", "tty10a");
    expect_before("007", "8");
    expect_before("tty", "tty\xC3\xBC");
    expect_before("tty7", "tty7\xC3\xBC");
}

TEST_F(ComPortsTest, numbers_of_any_length_are_compared) {
    devices.present = {{"tty18446744073709551617", "", false}, {"tty2", "", false}};
    EXPECT_THAT(order(), ElementsAre("tty2", "tty18446744073709551617"));
}

TEST_F(ComPortsTest, a_number_without_a_device_is_an_error_that_says_what_is_there) {
    EXPECT_EQ(refusal(1),
              "Cannot open COM 1: no serial device is connected.\n"
              "Plug the clone cable in, or choose a device in Settings, Port.");
    devices.present = {{"/dev/ttyUSB0", "FT232R", true}};
    EXPECT_EQ(refusal(2),
              "Cannot open COM 2: only one serial device is connected, /dev/ttyUSB0.\n"
              "Plug the clone cable in, or choose a device in Settings, Port.");
    devices.present.push_back({"/dev/ttyS0", "", false});
    EXPECT_EQ(refusal(12),
              "Cannot open COM 12: only 2 serial devices are connected, /dev/ttyUSB0 and "
              "/dev/ttyS0.\n"
              "Plug the clone cable in, or choose a device in Settings, Port.");
    devices.present.push_back({"/dev/ttyS1", "", false});
    EXPECT_THAT(refusal(4), HasSubstr("only 3 serial devices are connected, /dev/ttyUSB0, "
                                      "/dev/ttyS0 and /dev/ttyS1."));
}

}  // namespace
}  // namespace memwright
