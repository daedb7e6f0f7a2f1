#include "qt/serial/port_facts.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <grp.h>
#include <pwd.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>

#include "base/error.h"
#include "fakes/pseudo_terminal.h"
#include "qt/serial/port_diagnosis.h"
#include "qt/serial/qt_serial_port.h"
#include "support/temporary_folder.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;

using Cause = PortFacts::Cause;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr char kUser[] = "nobody";

bool drop_rights(gid_t group) {
    if (geteuid() != 0) return true;
    const passwd* const user = getpwnam(kUser);
    return user != nullptr && setgroups(0, nullptr) == 0 && setgid(group) == 0 &&
           setuid(user->pw_uid) == 0;
}

// What `tell` says in a process of a user without rights.
std::string told_without_rights(gid_t group, const std::function<std::string()>& tell) {
    int pipe_ends[2] = {};
    if (pipe(pipe_ends) != 0) return "(no pipe)";
    const pid_t child = fork();
    if (child == 0) {
        const std::string text = drop_rights(group) ? tell() : "(rights not dropped)";
        const ssize_t written = write(pipe_ends[1], text.data(), text.size());
        _exit(written == static_cast<ssize_t>(text.size()) ? 0 : 1);
    }
    close(pipe_ends[1]);
    std::string text;
    char part[4096];
    for (ssize_t got = 0; (got = read(pipe_ends[0], part, sizeof part)) > 0;) {
        text.append(part, static_cast<std::size_t>(got));
    }
    close(pipe_ends[0]);
    waitpid(child, nullptr, 0);
    return text;
}

class PortFactsTest : public ::testing::Test {
  protected:
    std::string diagnosis_without_rights(gid_t group) {
        return told_without_rights(group, [this] {
            return port_diagnosis(1, line_.path(), port_facts(line_.path()), {});
        });
    }

    fakes::PseudoTerminal line_;
    gid_t nobodys_group_ = getpwnam(kUser)->pw_gid;
    gid_t foreign_group_ = 54321;
};

// Those that hand the device to a group need the right to.
class PortFactsAsRoot : public PortFactsTest {
  protected:
    void SetUp() override {
        if (geteuid() != 0) GTEST_SKIP() << "only root can give a device to another group";
    }
};

TEST_F(PortFactsTest, a_path_without_a_file_is_missing) {
    EXPECT_EQ(port_facts("/dev/no such device").cause, Cause::missing);
    EXPECT_EQ(port_facts("no such device").cause, Cause::missing);
    EXPECT_EQ(port_facts("/dev/null/x").cause, Cause::missing);
}

TEST_F(PortFactsTest, a_link_to_nothing_is_missing) {
    const fs::path link =
        fs::temp_directory_path() / ("memwright-link-" + std::to_string(getpid()));
    fs::create_symlink("/dev/no such device", link);
    EXPECT_EQ(port_facts(link).cause, Cause::missing);
    fs::remove(link);
}

TEST_F(PortFactsTest, a_name_without_a_folder_is_looked_for_in_dev) {
    EXPECT_EQ(port_facts("null").cause, Cause::not_serial);
    EXPECT_EQ(port_facts("null").kind, "another kind of device");
}

TEST_F(PortFactsTest, a_folder_that_may_not_be_entered_is_told) {
    const TemporaryFolder closed;
    const fs::path& folder = closed.path();
    fs::permissions(folder, fs::perms::none);
    const std::string text = told_without_rights(foreign_group_, [&] {
        return std::to_string(static_cast<int>(port_facts(folder / "port").cause));
    });
    EXPECT_EQ(text, std::to_string(static_cast<int>(Cause::folder_closed)));
}

TEST_F(PortFactsTest, a_device_that_nobody_may_use_is_a_matter_of_permission) {
    ASSERT_EQ(chmod(line_.path().c_str(), 0), 0);
    const std::string text = diagnosis_without_rights(foreign_group_);
    EXPECT_THAT(text, HasSubstr("permission denied"));
    EXPECT_THAT(text, HasSubstr("sudo chmod a+rw " + line_.path()));
}

TEST_F(PortFactsAsRoot, the_group_to_join_is_the_devices_and_the_user_is_the_one_who_runs) {
    const group* const group = getgrnam("tty");
    ASSERT_NE(group, nullptr);
    ASSERT_EQ(chown(line_.path().c_str(), 0, group->gr_gid), 0);
    ASSERT_EQ(chmod(line_.path().c_str(), 0660), 0);
    EXPECT_THAT(diagnosis_without_rights(nobodys_group_),
                HasSubstr("belongs to the group tty, and you are not in it. Run  sudo usermod "
                          "-aG tty nobody  and log in again."));
}

TEST_F(PortFactsAsRoot, a_group_joined_since_the_login_is_told_from_one_not_joined) {
    ASSERT_EQ(chown(line_.path().c_str(), 0, nobodys_group_), 0);
    ASSERT_EQ(chmod(line_.path().c_str(), 0660), 0);
    EXPECT_THAT(diagnosis_without_rights(foreign_group_), HasSubstr("Log out and log in again"));
}

TEST_F(PortFactsAsRoot, nobody_is_sent_into_the_group_of_root) {
    ASSERT_EQ(chown(line_.path().c_str(), 0, 0), 0);
    ASSERT_EQ(chmod(line_.path().c_str(), 0660), 0);
    const std::string text = diagnosis_without_rights(nobodys_group_);
    EXPECT_THAT(text, HasSubstr("permission denied"));
    EXPECT_THAT(text, Not(HasSubstr("usermod")));
}

TEST_F(PortFactsTest, the_port_itself_reports_a_device_that_may_not_be_used) {
    ASSERT_EQ(chmod(line_.path().c_str(), 0), 0);
    const std::string text = told_without_rights(foreign_group_, [this]() -> std::string {
        QtSerialPort port([this](int) { return line_.path(); });
        try {
            port.PortOpen(true);
        } catch (const PortError& error) {
            return error.what();
        }
        return "(opened)";
    });
    EXPECT_THAT(text, HasSubstr("Cannot open COM 1 (" + line_.path() + "): permission denied.\n"));
}

TEST_F(PortFactsTest, a_device_that_a_port_has_open_is_busy_and_its_program_is_named) {
    QtSerialPort port([this](int) { return line_.path(); });
    port.PortOpen(true);
    ASSERT_EQ(chmod(line_.path().c_str(), 0666), 0);
    const std::string text = diagnosis_without_rights(foreign_group_);
    EXPECT_THAT(text, HasSubstr("it is in use"));
    EXPECT_THAT(text, HasSubstr("(process " + std::to_string(getpid()) + ")"));
}

TEST_F(PortFactsTest, a_device_that_a_program_keeps_for_itself_is_busy) {
    const int held = ::open(line_.path().c_str(), O_RDWR | O_NOCTTY);
    ASSERT_GE(held, 0);
    ASSERT_EQ(ioctl(held, TIOCEXCL), 0);
    ASSERT_EQ(chmod(line_.path().c_str(), 0666), 0);
    EXPECT_THAT(diagnosis_without_rights(foreign_group_), HasSubstr("it is in use"));
    ioctl(held, TIOCNXCL);
    close(held);
}

TEST_F(PortFactsTest, another_process_that_has_the_device_open_is_found_without_a_lock) {
    int go_on[2] = {}, ready[2] = {};
    ASSERT_EQ(pipe(go_on), 0);
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        close(go_on[1]);
        char byte = 0;
        const int held = ::open(line_.path().c_str(), O_RDWR | O_NOCTTY);
        const bool told = held >= 0 && write(ready[1], "r", 1) == 1;
        _exit(told && read(go_on[0], &byte, 1) == 0 ? 0 : 1);
    }
    char byte = 0;
    close(ready[1]);
    EXPECT_EQ(read(ready[0], &byte, 1), 1);
    const PortFacts facts = port_facts(line_.path());
    close(go_on[1]);
    close(go_on[0]);
    close(ready[0]);
    waitpid(child, nullptr, 0);
    EXPECT_EQ(facts.cause, Cause::busy);
    ASSERT_EQ(facts.holders.size(), 1U);
    EXPECT_EQ(facts.holders[0].process, child);
    EXPECT_FALSE(facts.holders[0].self);
    EXPECT_FALSE(facts.holders[0].program.empty());
}

TEST_F(PortFactsTest, the_lock_of_a_program_that_no_longer_runs_is_found) {
    const pid_t child = fork();
    if (child == 0) _exit(0);
    waitpid(child, nullptr, 0);
    std::string name = line_.path().substr(std::string("/dev/").size());
    std::replace(name.begin(), name.end(), '/', '_');
    const std::string lock = "/tmp/LCK.." + name;
    std::ofstream(lock) << "      " << child << "\n";
    const PortFacts facts = port_facts(line_.path());
    fs::remove(lock);
    EXPECT_EQ(facts.cause, Cause::busy);
    EXPECT_EQ(facts.stale_lock, lock);
    EXPECT_THAT(facts.holders, IsEmpty());
}

TEST_F(PortFactsTest, a_device_that_opens_has_nothing_against_it) {
    const PortFacts facts = port_facts(line_.path());
    EXPECT_EQ(facts.cause, Cause::other);
    EXPECT_EQ(facts.system_text, "");
}

}  // namespace
}  // namespace memwright
