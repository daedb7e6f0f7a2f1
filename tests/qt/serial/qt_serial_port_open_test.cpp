#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "qt/serial/port_bench.h"
#include "support/temporary_folder.h"

namespace memwright::fakes {
namespace {

namespace fs = std::filesystem;

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class QtSerialPortOpening : public PortBench {
  protected:
    std::string refusal() {
        return error_of([this] { port_.PortOpen(true); });
    }

    const TemporaryFolder own_folder_;
    const fs::path folder_ = own_folder_.path();
};

TEST_F(QtSerialPortOpening, opens_and_closes_as_often_as_wanted) {
    EXPECT_FALSE(port_.PortOpen());
    for (int i = 0; i < 3; ++i) {
        open();
        port_.PortOpen(true);
        EXPECT_TRUE(port_.PortOpen());
        port_.PortOpen(false);
        EXPECT_FALSE(port_.PortOpen());
        port_.PortOpen(false);
    }
}

TEST_F(QtSerialPortOpening, asks_for_the_device_of_the_number_that_is_set) {
    int asked = 0;
    QtSerialPort port([&](int number) {
        asked = number;
        return line_.path();
    });
    properties_.CommPort = 7;
    port.set_properties(properties_);
    port.PortOpen(true);
    EXPECT_EQ(asked, 7);
    EXPECT_TRUE(port.PortOpen());
}

TEST_F(QtSerialPortOpening, passes_on_that_a_number_stands_for_no_device) {
    QtSerialPort port([](int) -> std::string { throw PortError("COM 1 stands for no device"); });
    EXPECT_EQ(error_of([&] { port.PortOpen(true); }), "COM 1 stands for no device");
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(QtSerialPortOpening, follows_a_symbolic_link_to_a_pseudo_terminal) {
    path_ = folder_ / "radio";
    fs::create_symlink(line_.path(), path_);
    open();
    port_.Output(Bytes{3, 6, 9});
    EXPECT_THAT(line_.receive(3), ElementsAre(3, 6, 9));
}

TEST_F(QtSerialPortOpening, follows_the_link_anew_after_a_hang_up) {
    path_ = folder_ / "radio";
    fs::create_symlink(line_.path(), path_);
    open();
    line_.hang_up();
    EXPECT_THROW(port_.InBufferCount(), PortError);
    PseudoTerminal other;
    fs::remove(path_);
    fs::create_symlink(other.path(), path_);
    open();
    port_.Output(Bytes{1});
    EXPECT_THAT(other.receive(1), ElementsAre(1));
}

TEST_F(QtSerialPortOpening, refuses_a_device_that_is_not_there) {
    path_ = folder_ / "ttyUSB9";
    EXPECT_THAT(refusal(), AllOf(StartsWith("Cannot open COM 1 (" + path_ + "): "),
                                 HasSubstr("there is no such device")));
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(QtSerialPortOpening, refuses_a_regular_file_and_leaves_it_alone) {
    path_ = folder_ / "file";
    std::ofstream(path_) << "kept";
    EXPECT_THAT(refusal(), HasSubstr("it is a regular file, not a serial device"));
    std::string content;
    std::ifstream(path_) >> content;
    EXPECT_EQ(content, "kept");
}

TEST_F(QtSerialPortOpening, refuses_a_folder) {
    path_ = folder_;
    EXPECT_THAT(refusal(), HasSubstr("it is a folder, not a serial device"));
}

TEST_F(QtSerialPortOpening, refuses_a_device_that_is_no_terminal) {
    path_ = "/dev/null";
    EXPECT_THAT(refusal(), HasSubstr("not a serial device"));
}

TEST_F(QtSerialPortOpening, refuses_a_device_that_another_port_has_open_and_names_its_program) {
    QtSerialPort first([this](int) { return line_.path(); });
    first.PortOpen(true);
    path_ = folder_ / "other name of it";
    fs::create_symlink(line_.path(), path_);
    EXPECT_THAT(refusal(), AllOf(HasSubstr("it is in use"), HasSubstr("this program itself")));
    first.PortOpen(false);
    EXPECT_NO_THROW(port_.PortOpen(true));
}

TEST_F(QtSerialPortOpening, refuses_bad_line_settings) {
    properties_.Settings = "9600,E,8";
    port_.set_properties(properties_);
    EXPECT_THAT(refusal(), HasSubstr("\"9600,E,8\""));
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(QtSerialPortOpening, refuses_what_no_port_can_do) {
    properties_.NullDiscard = true;
    port_.set_properties(properties_);
    EXPECT_THAT(refusal(), HasSubstr("discarding zero bytes"));
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(QtSerialPortOpening, a_port_that_is_closed_neither_sends_nor_receives) {
    EXPECT_THAT(error_of([&] { port_.InBufferCount(); }), HasSubstr("not open"));
    EXPECT_THAT(error_of([&] { port_.Input(); }), HasSubstr("not open"));
    EXPECT_THAT(error_of([&] { port_.Output(Bytes{1}); }), HasSubstr("not open"));
}

}  // namespace
}  // namespace memwright::fakes
