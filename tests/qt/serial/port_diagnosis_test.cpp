#include "qt/serial/port_diagnosis.h"

#include <gtest/gtest.h>

namespace memwright {
namespace {

using Cause = PortFacts::Cause;

constexpr char kPath[] = "/dev/ttyUSB0";

PortFacts permission(bool group_may_use, bool user_in_group, bool session_in_group) {
    PortFacts facts;
    facts.cause = Cause::permission;
    facts.user = "alice";
    facts.owner = "root";
    facts.group = "dialout";
    facts.group_may_use = group_may_use;
    facts.user_in_group = user_in_group;
    facts.session_in_group = session_in_group;
    return facts;
}

PortFacts busy(std::vector<PortFacts::Holder> holders) {
    PortFacts facts;
    facts.cause = Cause::busy;
    facts.holders = std::move(holders);
    return facts;
}

TEST(PortDiagnosis, a_missing_device_names_those_that_are_there) {
    PortFacts facts;
    facts.cause = Cause::missing;
    EXPECT_EQ(
        port_diagnosis(1, kPath, facts,
                       {{"/dev/ttyUSB1", "FT232R USB UART", true}, {"/dev/ttyS0", "", false}}),
        "Cannot open COM 1 (/dev/ttyUSB0): there is no such device.\n"
        "Present: /dev/ttyUSB1 (FT232R USB UART), /dev/ttyS0.\n"
        "Plug the cable's adapter in, or choose another device for COM 1.");
}

TEST(PortDiagnosis, a_missing_device_says_if_there_is_none_at_all) {
    PortFacts facts;
    facts.cause = Cause::missing;
    EXPECT_EQ(port_diagnosis(12, kPath, facts, {}),
              "Cannot open COM 12 (/dev/ttyUSB0): there is no such device.\n"
              "No serial device is present at all. Plug the cable's adapter in and try again.");
}

TEST(PortDiagnosis, a_user_outside_of_the_group_gets_the_command_to_join_it) {
    EXPECT_EQ(port_diagnosis(1, kPath, permission(true, false, false), {}),
              "Cannot open COM 1 (/dev/ttyUSB0): permission denied.\n"
              "The device belongs to the group dialout, and you are not in it. "
              "Run  sudo usermod -aG dialout alice  and log in again.");
}

TEST(PortDiagnosis, a_user_who_joined_the_group_since_is_told_to_log_in_again) {
    EXPECT_EQ(port_diagnosis(1, kPath, permission(true, true, false), {}),
              "Cannot open COM 1 (/dev/ttyUSB0): permission denied.\n"
              "The device belongs to the group dialout, and you are in it, but not yet since you "
              "logged in. Log out and log in again.");
}

TEST(PortDiagnosis, a_member_of_the_group_hears_that_something_else_forbids_it) {
    EXPECT_EQ(port_diagnosis(1, kPath, permission(true, true, true), {}),
              "Cannot open COM 1 (/dev/ttyUSB0): permission denied.\n"
              "The device belongs to the group dialout, and you are in it, but the system forbids "
              "its use all the same. Ask the administrator which rule does (an access list, a "
              "sandbox, a container).");
}

TEST(PortDiagnosis, a_device_for_its_owner_alone_is_not_blamed_on_the_group) {
    EXPECT_EQ(port_diagnosis(1, kPath, permission(false, false, false), {}),
              "Cannot open COM 1 (/dev/ttyUSB0): permission denied.\n"
              "Only the device's owner, root, may use it. "
              "Run  sudo chmod a+rw /dev/ttyUSB0  and try again.");
}

TEST(PortDiagnosis, a_closed_folder_is_told) {
    PortFacts facts;
    facts.cause = Cause::folder_closed;
    EXPECT_EQ(port_diagnosis(2, "/secret/port", facts, {}),
              "Cannot open COM 2 (/secret/port): permission denied.\n"
              "The folder that it lies in may not be entered. Use the device's name in /dev, or "
              "choose another device for COM 2.");
}

TEST(PortDiagnosis, a_busy_device_names_the_programs_that_have_it_open) {
    EXPECT_EQ(port_diagnosis(1, kPath, busy({{1234, "minicom", false}, {99, "", false}}), {}),
              "Cannot open COM 1 (/dev/ttyUSB0): it is in use.\n"
              "It is held by minicom (process 1234) and process 99. Close it there and try again.");
}

TEST(PortDiagnosis, a_device_held_by_the_program_itself_says_so) {
    EXPECT_EQ(port_diagnosis(1, kPath, busy({{1234, "memwright", true}}), {}),
              "Cannot open COM 1 (/dev/ttyUSB0): it is in use.\n"
              "It is held by this program itself. Close it there and try again.");
}

TEST(PortDiagnosis, a_busy_device_without_a_known_program_tells_how_to_find_it) {
    EXPECT_EQ(port_diagnosis(1, kPath, busy({}), {}),
              "Cannot open COM 1 (/dev/ttyUSB0): it is in use.\n"
              "Another program has it open; the system does not tell which. Run  sudo fuser -v "
              "/dev/ttyUSB0  to see it, close it there and try again.");
}

TEST(PortDiagnosis, a_lock_left_behind_comes_with_the_command_to_remove_it) {
    PortFacts facts = busy({});
    facts.stale_lock = "/var/lock/LCK..ttyUSB0";
    EXPECT_EQ(port_diagnosis(1, kPath, facts, {}),
              "Cannot open COM 1 (/dev/ttyUSB0): it is in use.\n"
              "A program that no longer runs has left its lock. "
              "Run  sudo rm /var/lock/LCK..ttyUSB0  and try again.");
}

TEST(PortDiagnosis, a_file_of_another_kind_is_called_what_it_is) {
    PortFacts facts;
    facts.cause = Cause::not_serial;
    facts.kind = "a folder";
    EXPECT_EQ(port_diagnosis(3, "/tmp", facts, {}),
              "Cannot open COM 3 (/tmp): it is a folder, not a serial device.\n"
              "Please choose another device for COM 3.");
}

TEST(PortDiagnosis, anything_else_is_in_the_systems_words) {
    PortFacts facts;
    facts.system_text = "Input/output error";
    EXPECT_EQ(port_diagnosis(1, kPath, facts, {}),
              "Cannot open COM 1 (/dev/ttyUSB0): Input/output error.\n"
              "Pull the adapter out, plug it in again and try once more.");
}

}  // namespace
}  // namespace memwright
