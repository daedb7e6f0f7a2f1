// What others have put in the place of a port's lock file.

#include "qt/serial/port_lock.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QLockFile>
#include <filesystem>
#include <set>

#include "fakes/child_process.h"
#include "fakes/rights.h"
#include "qt/serial/port_bench.h"
#include "qt/serial/port_facts.h"

namespace memwright::fakes {
namespace {

namespace fs = std::filesystem;

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class PortLock : public ::testing::Test {
  protected:
    void TearDown() override {
        for (const std::string& file : port_lock_files(line_.path())) {
            std::error_code ignored;
            fs::remove(file, ignored);
        }
    }

    // The places in folders that there are, the one that QSerialPort uses among them; by one name
    // each.
    std::vector<std::string> places() const {
        std::vector<std::string> found;
        std::set<fs::path> folders;
        for (const std::string& file : port_lock_files(line_.path())) {
            const fs::path folder = fs::path(file).parent_path();
            if (!fs::is_directory(folder) || !folders.insert(fs::canonical(folder)).second)
                continue;
            found.push_back(file);
        }
        return found;
    }

    // In a child process, which is ended if it hangs.
    std::string opening() const {
        return in_child([this]() -> std::string {
            QtSerialPort port([this](int) { return line_.path(); });
            port.set_properties(transfer_properties());
            const std::string error = error_of([&] { port.PortOpen(true); });
            return port.PortOpen() ? "opened" : error;
        });
    }

    const PseudoTerminal line_;
};

TEST_F(PortLock, files_are_named_after_the_device_and_one_of_them_is_QSerialPorts) {
    EXPECT_THAT(port_lock_files("/dev/ttyUSB0"), Contains("/var/lock/LCK..ttyUSB0"));
    EXPECT_THAT(port_lock_files("ttyUSB0"), Contains("/tmp/LCK..ttyUSB0"));
    EXPECT_THAT(port_lock_files("/dev/serial/by-id/x"), Contains("/tmp/LCK..serial_by-id_x"));
    EXPECT_THAT(port_lock_files("/home/x/port"), Contains("/tmp/LCK.._home_x_port"));
    const auto is_there = [](const std::string& file) { return is_lock_file(file); };
    EXPECT_THAT(places(), Not(Contains(::testing::Truly(is_there))));
    QtSerialPort port([this](int) { return line_.path(); });
    port.set_properties(transfer_properties());
    port.PortOpen(true);
    EXPECT_THAT(places(), Contains(::testing::Truly(is_there)));
}

TEST_F(PortLock, that_is_a_pipe_is_not_waited_for_but_told_with_its_remedy) {
    for (const std::string& place : places()) {
        ASSERT_EQ(mkfifo(place.c_str(), 0666), 0) << place;
        const std::string told = opening();
        EXPECT_THAT(told, AllOf(StartsWith("Cannot open COM 1 (" + line_.path() + "): "),
                                HasSubstr(place + ", is none: it is a named pipe"),
                                HasSubstr("\nRun  rm "), EndsWith("  and try again.")));
        EXPECT_TRUE(fs::is_fifo(place));
        fs::remove(place);
    }
    EXPECT_EQ(opening(), "opened");
}

TEST_F(PortLock, that_is_a_link_or_a_folder_is_told) {
    const std::string place = places().at(0);
    fs::create_symlink("/tmp", place);
    EXPECT_THAT(opening(), HasSubstr(place + ", is none: it is a symbolic link"));
    fs::remove(place);
    fs::create_directory(place);
    EXPECT_THAT(opening(), HasSubstr(place + ", is none: it is a folder"));
}

TEST_F(PortLock, of_another_user_that_is_none_is_told_with_the_owner) {
    if (geteuid() != 0) GTEST_SKIP() << "only the administrator can give files to others";
    const std::string place = places().at(0);
    ASSERT_EQ(mkfifo(place.c_str(), 0666), 0);
    ASSERT_EQ(chown(place.c_str(), kNobody, kNobody), 0);
    EXPECT_THAT(opening(),
                HasSubstr("\nIt belongs to nobody: ask what it is for, or run  sudo rm "));
}

TEST_F(PortLock, of_another_user_who_has_the_port_is_told_as_that) {
    const std::string place = places().at(0);
    QLockFile theirs(QString::fromStdString(place));
    ASSERT_TRUE(theirs.tryLock());
    give_to_ordinary_user(place);
    EXPECT_THAT(opening(), HasSubstr("it is in use.\nIt is held by "));
}

TEST_F(PortLock, that_is_a_pipe_does_not_hold_up_the_search_for_who_has_the_port) {
    for (const std::string& place : places()) ASSERT_EQ(mkfifo(place.c_str(), 0666), 0);
    EXPECT_EQ(in_child([&]() -> std::string {
                  return port_facts(line_.path()).holders.empty() ? "nobody" : "somebody";
              }),
              "nobody");
}

TEST_F(PortLock, files_that_are_not_there_are_nothing_to_tell_of) {
    EXPECT_THAT(no_lock_file(line_.path()), IsEmpty());
}

}  // namespace
}  // namespace memwright::fakes
