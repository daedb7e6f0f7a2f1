#include "qt/serial/qt_serial_devices.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "fakes/pseudo_terminal.h"
#include "support/temporary_folder.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;

class QtSerialDevicesTest : public ::testing::Test {
  protected:
    void add_port(const std::string& name, const std::string& type) {
        fs::create_directories(folder_ / name);
        std::ofstream(folder_ / name / "type") << type;
    }

    const TemporaryFolder own_folder_;
    const fs::path folder_ = own_folder_.path();
    QtSerialDevices devices_;
};

TEST_F(QtSerialDevicesTest, every_device_listed_exists_and_has_a_description_to_show) {
    for (const auto& device : devices_.list()) {
        EXPECT_TRUE(fs::exists(device.path)) << device.path;
        EXPECT_NE(devices_.describe(device.path), "") << device.path;
        EXPECT_NE(devices_.describe(device.path), "not present") << device.path;
    }
}

TEST_F(QtSerialDevicesTest, a_port_of_unknown_type_is_a_phantom) {
    add_port("ttyS7", "0\n");
    add_port("ttyS0", "4\n");
    EXPECT_TRUE(is_phantom_port("/dev/ttyS7", folder_));
    EXPECT_FALSE(is_phantom_port("/dev/ttyS0", folder_));
    EXPECT_FALSE(is_phantom_port("/dev/ttyUSB0", folder_));
}

TEST_F(QtSerialDevicesTest, a_pseudo_terminal_is_described_by_its_path_and_through_a_link) {
    fakes::PseudoTerminal line;
    EXPECT_EQ(devices_.describe(line.path()), "pseudo-terminal");
    fs::create_symlink(line.path(), folder_ / "radio");
    EXPECT_EQ(devices_.describe(folder_ / "radio"), "pseudo-terminal");
}

TEST_F(QtSerialDevicesTest, a_device_that_is_not_there_is_said_to_be_absent) {
    EXPECT_EQ(devices_.describe(folder_ / "ttyUSB0"), "not present");
}

TEST_F(QtSerialDevicesTest, files_and_folders_are_said_to_be_no_serial_devices) {
    EXPECT_EQ(devices_.describe(folder_), "not a serial device");
    std::ofstream(folder_ / "file") << "x";
    EXPECT_EQ(devices_.describe(folder_ / "file"), "not a serial device");
}

TEST_F(QtSerialDevicesTest, numbers_name_devices_on_windows_only) {
#ifdef _WIN32
    EXPECT_TRUE(devices_.numbers_name_devices());
#else
    EXPECT_FALSE(devices_.numbers_name_devices());
#endif
}

}  // namespace
}  // namespace memwright
