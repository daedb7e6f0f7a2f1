// Starting and ending: desktops, programs, and what they leave behind.

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "support/read_file.h"
#include "support/temporary_folder.h"
#include "system/support/application.h"

namespace memwright::systest {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Ne;

// The living processes whose environment speaks of a desktop's folder: all that belong to it.
std::vector<std::string> processes_of(const std::string& folder) {
    std::vector<std::string> found;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored)) {
        if (read_file(entry.path() / "environ").find(folder) != std::string::npos) {
            found.push_back(read_file(entry.path() / "comm"));
        }
    }
    return found;
}

TEST(SystemDesktop, each_has_its_own_display_bus_and_home) {
    Desktop first;
    Desktop second;
    for (const char* variable : {"DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "HOME", "XDG_CONFIG_HOME",
                                 "XDG_RUNTIME_DIR", "TMPDIR"}) {
        EXPECT_NE(first.environment().at(variable), second.environment().at(variable)) << variable;
    }
    EXPECT_TRUE(std::filesystem::is_directory(first.settings()));
    EXPECT_TRUE(std::filesystem::is_empty(first.settings()));
    const Application one(first, SYSTEM_SAMPLE);
    const Application other(second, SYSTEM_SAMPLE);
    one.main_window("Sample");
    other.main_window("Sample");
    EXPECT_EQ(first.windows().size(), 1U);
    EXPECT_EQ(second.windows().size(), 1U);
    EXPECT_EQ(first.window("Sample").process(), one.pid());
    EXPECT_EQ(second.window("Sample").process(), other.pid());
}

TEST(SystemDesktop, two_programs_on_one_desktop_are_told_apart) {
    Desktop desktop;
    const Application one(desktop, SYSTEM_SAMPLE);
    one.main_window("Sample");
    const Application other(desktop, SYSTEM_SAMPLE);
    other.main_window("Sample");
    EXPECT_FALSE(one.root() == other.root());
    EXPECT_EQ(desktop.windows().size(), 2U);
}

TEST(SystemDesktop, nothing_is_left_when_it_ends) {
    std::string folder;
    {
        Desktop desktop;
        folder = desktop.folder();
        const Application sample(desktop, SYSTEM_SAMPLE);
        sample.main_window("Sample");
        EXPECT_THAT(processes_of(folder), testing::SizeIs(5));
    }
    EXPECT_THAT(processes_of(folder), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST(SystemDesktopDeathTest, no_process_is_left_when_the_test_is_killed) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // The killed process leaves the name of its folder here; it is a second run of this program.
    const TemporaryFolder notes;
    setenv("SYSTEM_TEST_NOTE", (notes.path() / "folder").c_str(), 0);
    EXPECT_EXIT(
        {
            Desktop desktop;
            const Application sample(desktop, SYSTEM_SAMPLE);
            sample.main_window("Sample");
            std::ofstream(std::getenv("SYSTEM_TEST_NOTE")) << desktop.folder().string();
            raise(SIGKILL);
        },
        testing::KilledBySignal(SIGKILL), "");
    const std::string folder = read_file(notes.path() / "folder");
    ASSERT_THAT(folder, HasSubstr("memwright-"));
    expect_eventually([&] { return processes_of(folder); }, IsEmpty());
    std::filesystem::remove_all(folder);
}

TEST(SystemProgram, tells_how_it_ended) {
    Desktop desktop;
    Program three(desktop, SYSTEM_SAMPLE, {"--exit", "3"});
    EXPECT_EQ(three.wait_for_exit(), (ExitStatus{3, 0}));
    Program crash(desktop, SYSTEM_SAMPLE, {"--abort"});
    EXPECT_EQ(crash.wait_for_exit(), (ExitStatus{0, SIGABRT}));
    Program killed(desktop, SYSTEM_SAMPLE);
    killed.kill();
    EXPECT_EQ(killed.wait_for_exit(), (ExitStatus{0, SIGKILL}));
}

TEST(SystemProgram, that_dies_unasked_fails_the_test) {
    const auto die_unasked = [] {
        Desktop desktop;
        const Program crash(desktop, SYSTEM_SAMPLE, {"--abort"});
        wait_until([&] { return !crash.running(); });
    };
    EXPECT_NONFATAL_FAILURE(die_unasked(), "ended by signal 6");
}

TEST(SystemProgram, that_a_sanitizer_complains_of_fails_the_test) {
    const auto complain = [] {
        Desktop desktop;
        Program program(desktop, "sh", {"-c", "echo '==1==ERROR: AddressSanitizer: x' >&2"});
        program.wait_for_exit();
    };
    EXPECT_NONFATAL_FAILURE(complain(), "A sanitizer complains of sh");
}

TEST(SystemProgram, that_does_not_end_in_time_fails_the_test) {
    const auto hang = [] {
        Desktop desktop;
        Program program(desktop, "sleep", {"1000"});
        program.wait_for_exit(Milliseconds{20});
    };
    EXPECT_NONFATAL_FAILURE(hang(), "Did not end within 20 ms");
}

TEST(SystemProgram, is_read_line_by_line_while_it_runs) {
    Desktop desktop;
    Program program(desktop, "sh", {"-c", "echo one; echo two $WHAT; echo oops >&2; sleep 1000"},
                    {{"WHAT", "words"}});
    EXPECT_EQ(program.wait_for_line("two"), "two words");
    EXPECT_TRUE(program.running());
    expect_eventually([&] { return program.errors(); }, "oops\n");
    EXPECT_EQ(program.output(), "one\ntwo words\n");
    program.signal(SIGTERM);
    EXPECT_EQ(program.wait_for_exit(), (ExitStatus{0, SIGTERM}));
}

TEST(SystemProgram, that_is_not_installed_is_reported_by_name) {
    Desktop desktop;
    EXPECT_THROW(Program(desktop, "no-such-program"), std::runtime_error);
}

TEST(SystemEventually, a_value_that_never_matches_fails_with_the_last_one) {
    static const auto never = [] { expect_eventually([] { return 7; }, Ne(7), Milliseconds{5}); };
    EXPECT_NONFATAL_FAILURE(never(), "Last: 7");
}

}  // namespace
}  // namespace memwright::systest
