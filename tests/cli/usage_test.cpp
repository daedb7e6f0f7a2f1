// What the program says of itself, and of arguments that it cannot use.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "cli/support/cli_test.h"

namespace memwright::cli_tests {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// The commands, with arguments that they take and how their usage is told.
const std::map<std::string, std::string> kUsages = {
    {"channels", "IMAGE [--format text|csv|json] [--all]"},
    {"export", "IMAGE [CSV]"},
    {"import", "IMAGE CSV [--output OUT]"},
    {"settings", "IMAGE [NAME=VALUE]... [--format text|json] [--output OUT]"},
    {"limits", "IMAGE [N=FREQ[,MODE]]... [--format text|json] [--output OUT]"},
    {"diff", "A B [--format text|json]"},
    {"check", "IMAGE"},
    {"read", "OUT [--com N=DEVICE|--port DEVICE] [--yes]"},
    {"write", "IMAGE [--com N=DEVICE|--port DEVICE] [--yes]"},
    {"ports", ""},
    {"archive", "[show IMAGE|restore IMAGE OUT]"},
    {"print", "IMAGE --pdf OUT [--range A-B]"},
};

class Usage : public CliTest {
  protected:
    Ended wrong(const std::string& name, const std::string& what) const {
        const std::string& usage = kUsages.at(name);
        return {2, "",
                "memwright-cli: " + what + "\nUsage: memwright-cli " + name +
                    (usage.empty() ? "" : " ") + usage + "\n"};
    }

    void SetUp() override { put("a.120", Image()); }
};

TEST_F(Usage, help_lists_every_command_and_gives_an_example) {
    const Ended help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.errors, "");
    EXPECT_THAT(help.output, StartsWith("Usage: memwright-cli COMMAND"));
    EXPECT_THAT(help.output, HasSubstr("\nExample: memwright-cli channels radio.120\n"));
    for (const auto& [name, usage] : kUsages) {
        EXPECT_THAT(help.output, HasSubstr("\n  " + name + " "));
    }
}

TEST_F(Usage, help_of_a_command_tells_its_arguments_and_gives_an_example) {
    for (const auto& [name, usage] : kUsages) {
        const Ended help = run({name, "--help"});
        EXPECT_EQ(help.status, 0) << name;
        EXPECT_EQ(help.errors, "");
        EXPECT_THAT(help.output, StartsWith("Usage: memwright-cli " + name +
                                            (usage.empty() ? "" : " ") + usage + "\n"));
        EXPECT_THAT(help.output, HasSubstr("\nExample: memwright-cli " + name));
        EXPECT_THAT(help.output, EndsWith("\n"));
    }
}

TEST_F(Usage, help_is_given_whatever_else_is_asked_for_and_does_nothing) {
    EXPECT_EQ(run({"import", "--output", "b.120", "--nonsense", "--help"}).output,
              run({"import", "--help"}).output);
    EXPECT_EQ(run({"settings", "a.120", "lamp=ON", "--help"}).status, 0);
    EXPECT_EQ(text("a.120"), Image().text());
}

TEST_F(Usage, behind_two_dashes_help_is_the_name_of_a_file) {
    put("--help", Image().channel(1, "A", "145"));
    EXPECT_EQ(run({"export", "--", "--help"}),
              done("Ch,MHz,Mode,Pref,Label\r\n0,145.00000,NFM,,\"A\"\r\n"));
}

TEST_F(Usage, the_version_is_told) {
    EXPECT_EQ(run({"--version"}), done("memwright-cli " MEMWRIGHT_VERSION "\n"));
}

TEST_F(Usage, without_a_command_or_with_an_unknown_one_help_is_pointed_to) {
    const std::string more = "\nmemwright-cli --help tells more.\n";
    EXPECT_EQ(run(Words{}), (Ended{2, "", "memwright-cli: A command is missing." + more}));
    for (const char* const name : {"chanels", "CHANNELS", "", "-", "--", "--all", "-h", "a.120"}) {
        EXPECT_EQ(run({name, "a.120"}), (Ended{2, "",
                                               "memwright-cli: There is no command \"" +
                                                   std::string(name) + "\"." + more}));
    }
}

TEST_F(Usage, every_command_refuses_unknown_options) {
    for (const auto& [name, usage] : kUsages) {
        EXPECT_EQ(run({name, "--verbose"}), wrong(name, "There is no option --verbose."));
        EXPECT_EQ(run({name, "--verbose=1"}), wrong(name, "There is no option --verbose."));
        EXPECT_EQ(run({name, "-v"}), wrong(name, "There is no option -v."));
    }
}

TEST_F(Usage, every_command_counts_its_arguments) {
    const std::map<std::string, std::pair<Words, Words>> too_few_and_too_many = {
        {"channels", {{}, {"a.120", "b"}}},
        {"export", {{}, {"a.120", "x.csv", "b"}}},
        {"import", {{"a.120"}, {"a.120", "x.csv", "b"}}},
        {"settings", {{}, {}}},
        {"limits", {{}, {}}},
        {"diff", {{"a.120"}, {"a.120", "a.120", "b"}}},
        {"check", {{}, {"a.120", "b"}}},
        {"read", {{"--yes"}, {"x.120", "b"}}},
        {"write", {{"--yes"}, {"a.120", "b"}}},
        {"ports", {{}, {"b"}}},
        {"archive", {{"restore", "1"}, {"show", "1", "b"}}},
        {"print", {{"--pdf", "x.pdf"}, {"a.120", "b"}}},
    };
    for (const auto& [name, both] : too_few_and_too_many) {
        const auto& [too_few, too_many] = both;
        if (name != "ports") {
            EXPECT_EQ(run(Words{name} + too_few), wrong(name, "An argument is missing."));
            EXPECT_EQ(run(Words{name} + too_few + Words{""}).status, 2);
        }
        if (!too_many.empty()) {
            EXPECT_EQ(run(Words{name} + too_many), wrong(name, "\"b\" is one argument too many."));
        }
    }
    EXPECT_EQ(folder_.names(), Words{"a.120"});
}

struct WrongArguments {
    Words arguments;
    const char* what;
};

TEST_F(Usage, options_have_to_be_right) {
    const WrongArguments all[] = {
        {{"channels", "a.120", "--format"}, "--format needs a value."},
        {{"channels", "a.120", "--format="}, "--format needs a value."},
        {{"channels", "a.120", "--format", ""}, "--format needs a value."},
        {{"channels", "a.120", "--format", "xml"}, "--format is text, csv or json, not \"xml\"."},
        {{"channels", "a.120", "--format=JSON"}, "--format is text, csv or json, not \"JSON\"."},
        {{"channels", "a.120", "--all=yes"}, "--all takes no value."},
        {{"channels", "a.120", "--all", "--all"}, "--all is given twice."},
        {{"channels", "--format", "csv", "a.120", "--format=csv"}, "--format is given twice."},
        {{"channels", ""}, "An argument is empty."},
        {{"settings", "a.120", "--format", "csv"}, "--format is text or json, not \"csv\"."},
        {{"limits", "a.120", "--format", "csv"}, "--format is text or json, not \"csv\"."},
        {{"diff", "a.120", "a.120", "--format", "csv"}, "--format is text or json, not \"csv\"."},
        {{"settings", "a.120", "lamp=ON", "--output="}, "--output needs a value."},
        {{"import", "-", "-"}, "IMAGE and CSV cannot both be standard input."},
        {{"diff", "-", "-"}, "A and B cannot both be standard input."},
        {{"archive", "find", "1"}, "archive shows or restores an image; \"find\" is neither."},
        {{"archive", "show"}, "An argument is missing."},
        {{"archive", "restore", "1", "x.120", "b"}, "\"b\" is one argument too many."},
        {{"print", "a.120"}, "--pdf OUT is missing."},
        {{"print", "a.120", "--pdf", ""}, "--pdf needs a value."},
        {{"read", "x.120"}, "There is no terminal to press Enter at: give --yes to begin at once."},
        {{"write", "a.120"},
         "There is no terminal to press Enter at: give --yes to begin at once."},
        {{"read", "x.120", "--yes", "--port", "/dev/x", "--com", "1=/dev/x"},
         "--port and --com exclude each other."},
        {{"read", "x.120", "--yes", "--port", ""}, "--port needs a value."},
        {{"write", "a.120", "--yes", "--com", "1="},
         "--com is N=DEVICE with N from 1 to 12, not \"1=\"."},
        {{"write", "a.120", "--yes", "--com", "0=/dev/x"},
         "--com is N=DEVICE with N from 1 to 12, not \"0=/dev/x\"."},
        {{"read", "x.120", "--yes", "--com", "13=/dev/x"},
         "--com is N=DEVICE with N from 1 to 12, not \"13=/dev/x\"."},
        {{"read", "x.120", "--yes", "--com", "/dev/x"},
         "--com is N=DEVICE with N from 1 to 12, not \"/dev/x\"."},
        {{"write", "a.120", "--yes", "--com", "x=/dev/x"},
         "--com is N=DEVICE with N from 1 to 12, not \"x=/dev/x\"."},
        {{"read", "x.120", "--yes", "--com", "1x=/dev/x"},
         "--com is N=DEVICE with N from 1 to 12, not \"1x=/dev/x\"."},
        {{"read", "x.120", "--yes", "--com", "99999999999=/dev/x"},
         "--com is N=DEVICE with N from 1 to 12, not \"99999999999=/dev/x\"."},
    };
    for (const auto& [arguments, what] : all) {
        EXPECT_EQ(run(arguments), wrong(arguments.front(), what));
    }
    EXPECT_EQ(folder_.names(), Words{"a.120"});
    EXPECT_EQ(text("a.120"), Image().text());
}

TEST_F(Usage, options_may_stand_anywhere_and_carry_their_value_either_way) {
    const Ended json = run({"settings", "a.120", "--format", "json"});
    EXPECT_THAT(json.output, StartsWith("{"));
    EXPECT_EQ(run({"settings", "--format", "json", "a.120"}), json);
    EXPECT_EQ(run({"settings", "--format=json", "a.120"}), json);
    EXPECT_EQ(run({"settings", "--format=json", "--", "a.120"}), json);
}

}  // namespace
}  // namespace memwright::cli_tests
