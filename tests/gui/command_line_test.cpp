// The program's arguments, as they are read, and as the built program answers them.

#include <gmock/gmock.h>

#include <filesystem>

#include "qt/command_line.h"
#include "qt/core/text.h"
#include "support/built_programs.h"
#include "support/run_program.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Pair;
using ::testing::StartsWith;

using qt::parse_arguments;

void expect_wrong(const std::vector<std::string>& given, const std::string& what) {
    const auto arguments = parse_arguments(given);
    ASSERT_TRUE(arguments.message) << what;
    EXPECT_EQ(arguments.exit_status, 2) << what;
    EXPECT_THAT(*arguments.message, StartsWith("memwright: " + what));
    EXPECT_THAT(*arguments.message, HasSubstr("memwright --help"));
}

TEST(CommandLine, may_be_empty) {
    const auto arguments = parse_arguments({});
    EXPECT_FALSE(arguments.message);
    EXPECT_EQ(arguments.file, "");
    EXPECT_TRUE(arguments.ports.empty());
}

TEST(CommandLine, a_file_is_named_from_the_root_on) {
    const auto current = std::filesystem::current_path();
    EXPECT_EQ(parse_arguments({"radio.120"}).file, (current / "radio.120").string());
    EXPECT_EQ(parse_arguments({"/tmp/a b.tk1"}).file, "/tmp/a b.tk1");
    EXPECT_EQ(parse_arguments({"-"}).file, (current / "-").string());
}

TEST(CommandLine, after_two_dashes_everything_is_a_file) {
    const auto arguments = parse_arguments({"--com", "2=/dev/ttyUSB1", "--", "--help"});
    EXPECT_FALSE(arguments.message);
    EXPECT_EQ(arguments.file, (std::filesystem::current_path() / "--help").string());
    EXPECT_THAT(arguments.ports, ElementsAre(Pair(2, "/dev/ttyUSB1")));
}

TEST(CommandLine, ports_are_given_in_either_form_and_any_place_and_the_last_one_counts) {
    const auto arguments = parse_arguments(
        {"--com", "1=/dev/ttyUSB0", "a.120", "--com=12=/dev/pts/3", "--com", "1=/dev/ttyUSB7"});
    EXPECT_FALSE(arguments.message);
    EXPECT_THAT(arguments.ports, ElementsAre(Pair(1, "/dev/ttyUSB7"), Pair(12, "/dev/pts/3")));
    EXPECT_THAT(parse_arguments({"--com", "3=/dev/by=name"}).ports,
                ElementsAre(Pair(3, "/dev/by=name")));
}

TEST(CommandLine, wrong_arguments_are_told) {
    expect_wrong({"--com"}, "--com needs N=DEVICE.");
    for (const char* const port : {"", "1", "=x", "1=", "0=x", "13=x", "-1=x", "+1=x", "1x=y",
                                   " 1=x", "99999999999999999999=x", "COM1=x"}) {
        const std::string what = "'" + std::string(port) + "' is no N=DEVICE with N from 1 to 12";
        expect_wrong({"--com", port}, what);
        expect_wrong({std::string("--com=") + port}, what);
    }
    expect_wrong({"--comm"}, "there is no option '--comm'.");
    expect_wrong({"-h"}, "there is no option '-h'.");
    expect_wrong({"-platform", "xcb"}, "there is no option '-platform'.");
    expect_wrong({"a.120", "b.120"}, "only one FILE can be opened at a time.");
    expect_wrong({""}, "the name of the file is empty.");
    expect_wrong({"--\x1B[31m\xC2\x9B-\xFF"}, "there is no option '--?[31m?-?'.");
    expect_wrong({"--com", "\x1B[31m\n"}, "'?[31m\n' is no N=DEVICE with N from 1 to 12");
}

TEST(CommandLine, help_names_every_argument) {
    const auto arguments = parse_arguments({"--help"});
    ASSERT_TRUE(arguments.message);
    EXPECT_EQ(arguments.exit_status, 0);
    for (const char* const part : {"Usage: memwright", "--com N=DEVICE", "FILE", "--help",
                                   "--version", "*.120", "*.tk1", "1 to 12"}) {
        EXPECT_THAT(*arguments.message, HasSubstr(part));
    }
}

TEST(CommandLine, version_is_one_line) {
    const auto arguments = parse_arguments({"--version"});
    ASSERT_TRUE(arguments.message);
    EXPECT_EQ(*arguments.message, "memwright 1.0\n");
    EXPECT_EQ(arguments.exit_status, 0);
}

using systest::ExitStatus;

// Runs the program on a machine without a display.
systest::SeparateOutcome run_program(std::vector<std::string> arguments) {
    systest::Environment environment = systest::inherited_environment();
    for (const char* const name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        environment.erase(name);
    }
    return systest::run_apart({.program = systest::built_program("memwright"),
                               .arguments = std::move(arguments),
                               .environment = std::move(environment)});
}

TEST(CommandLine, the_program_answers_without_a_display) {
    const auto version = run_program({"--version"});
    EXPECT_EQ(version.status, ExitStatus{});
    EXPECT_EQ(version.output, "memwright 1.0\n");
    EXPECT_EQ(version.errors, "");
    const auto help = run_program({"--help"});
    EXPECT_EQ(help.status, ExitStatus{});
    EXPECT_THAT(help.output, StartsWith("Usage: memwright"));
}

TEST(CommandLine, the_program_ends_with_status_2_after_wrong_arguments) {
    const auto ended = run_program({"--com", "13=/dev/ttyUSB0"});
    EXPECT_EQ(ended.status, (ExitStatus{2, 0}));
    EXPECT_EQ(ended.output, "");
    EXPECT_THAT(ended.errors, StartsWith("memwright: '13=/dev/ttyUSB0' is no N=DEVICE"));
}

}  // namespace
}  // namespace memwright::gui
