// The manual pages: what formats them has nothing to say, "man" finds them, and they tell the same
// as the programs' own helps.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

#include "install/support/installation.h"
#include "support/read_file.h"

namespace memwright::install {
namespace {

namespace fs = std::filesystem;
using systest::read_file;
using testing::AnyOf;
using testing::ElementsAreArray;
using testing::HasSubstr;

constexpr const char* kMan = "/usr/bin/man";
constexpr const char* kOption = "(--[a-z][a-z-]*)";

std::vector<std::string> sorted(std::vector<std::string> texts) {
    std::ranges::sort(texts);
    return texts;
}

// A page as it is written, with plain hyphens.
std::string source_of(const fs::path& page) {
    return std::regex_replace(read_file(page), std::regex("\\\\-"), "-");
}

class ManPages : public testing::TestWithParam<std::string> {
  protected:
    void SetUp() override {
        if (const auto why = missing(kMan, "man-db"); !why.empty()) GTEST_SKIP() << why;
    }
    systest::Environment environment() const {
        systest::Environment found = installation.environment();
        found["MANPATH"] = (installation.share() / "man").string();
        found["MANWIDTH"] = "300";
        found["MANROFFSEQ"] = "";
        found["MAN_KEEP_FORMATTING"] = "";
        return found;
    }
    // What somebody at a wide terminal reads.
    std::string text_of(const std::string& page) const {
        return systest::output_of(kMan, {page}, environment());
    }

    Installation installation;
};

TEST_P(ManPages, are_formatted_without_a_warning) {
    const fs::path errors = installation.folder() / "errors";
    systest::Process man({.program = kMan,
                          .arguments = {"--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z",
                                        installation.page(GetParam())},
                          .environment = environment(),
                          .errors = errors});
    ASSERT_TRUE(systest::wait_until([&] { return man.exit_status().has_value(); }));
    EXPECT_TRUE(man.exit_status()->success());
    EXPECT_EQ(read_file(errors), "");
}

TEST_P(ManPages, are_found_where_they_are_installed) {
    EXPECT_EQ(systest::output_of(kMan, {"-w", GetParam()}, environment()),
              installation.page(GetParam()).string() + "\n");
    EXPECT_THAT(text_of(GetParam()), HasSubstr("\n       " + GetParam() + " - "));
}

TEST_P(ManPages, have_a_line_for_the_index) {
    EXPECT_THAT(systest::output_of("/usr/bin/lexgrog", {installation.page(GetParam())}),
                HasSubstr(": \"" + GetParam() + " - "));
}

TEST_P(ManPages, name_the_version_and_the_other_programs) {
    const std::string text = text_of(GetParam());
    EXPECT_THAT(text, HasSubstr("Memwright " PROJECT_VERSION));
    for (const std::string& program : kPrograms) {
        if (program == GetParam()) continue;
        EXPECT_THAT(text, HasSubstr(program + "(1)"));
    }
}

INSTANTIATE_TEST_SUITE_P(Programs, ManPages, testing::ValuesIn(kPrograms), [](const auto& test) {
    return std::regex_replace(test.param, std::regex("-"), "_");
});

// Programs whose whole help is one text.
class ManPagesAndHelp : public ManPages {};

TEST_P(ManPagesAndHelp, name_the_same_options) {
    const auto in_help = matches(installation.say(GetParam(), {"--help"}), kOption);
    const auto in_page = matches(source_of(installation.page(GetParam())), kOption);
    EXPECT_THAT(in_help, testing::SizeIs(testing::Ge(3U)));
    EXPECT_EQ(sorted(in_page), sorted(in_help));
}

INSTANTIATE_TEST_SUITE_P(Programs, ManPagesAndHelp, testing::Values("memwright", "vr120-sim"),
                         [](const auto& test) {
                             return std::regex_replace(test.param, std::regex("-"), "_");
                         });

class CommandLinePage : public ManPages {
  protected:
    std::vector<std::string> commands() const {
        return matches(installation.say("memwright-cli", {"--help"}), "^  ([a-z]+) ");
    }
    std::string help_of(const std::string& command) const {
        return installation.say("memwright-cli", {command, "--help"});
    }
    std::string page() const { return source_of(installation.page("memwright-cli")); }
};

TEST_F(CommandLinePage, shows_every_command_as_its_help_does) {
    ASSERT_THAT(commands(), testing::SizeIs(12));
    const std::string text = text_of("memwright-cli");
    for (const std::string& command : commands()) {
        const auto usage = matches(help_of(command), "^Usage: memwright-cli (.*)$");
        ASSERT_EQ(usage.size(), 1U) << command;
        // A short one has its explanation on the same line.
        const std::string shown = "\n       " + usage.front();
        EXPECT_THAT(text, AnyOf(HasSubstr(shown + '\n'), HasSubstr(shown + "  "))) << command;
    }
}

TEST_F(CommandLinePage, shows_no_command_that_there_is_not) {
    const std::string text = text_of("memwright-cli");
    const auto from = text.find("\nCOMMANDS\n");
    ASSERT_NE(from, std::string::npos);
    const std::string part = text.substr(from, text.find("\nOPTIONS\n") - from);
    std::vector<std::string> shown = matches(part, "^       ([a-z-]+)( |$)");
    std::erase(shown, "memwright-cli");
    EXPECT_THAT(shown, ElementsAreArray(commands()));
}

TEST_F(CommandLinePage, explains_the_options_of_the_commands_and_no_others) {
    std::vector<std::string> in_helps = {"--help", "--version"};
    installation.say("memwright-cli", {"--version"});
    for (const std::string& command : commands()) {
        for (const std::string& option : matches(help_of(command), kOption)) {
            if (std::ranges::find(in_helps, option) == in_helps.end()) in_helps.push_back(option);
        }
    }
    const std::string source = page();
    EXPECT_EQ(sorted(matches(source, kOption)), sorted(in_helps));
    const std::string options = source.substr(source.find(".SH OPTIONS"));
    EXPECT_EQ(sorted(matches(options, "^\\.BI? " + std::string(kOption))), sorted(in_helps));
}

TEST_F(CommandLinePage, explains_every_exit_status) {
    const std::string source = page();
    const auto from = source.find(".SH EXIT STATUS");
    const std::string part = source.substr(from, source.find(".SH EXAMPLES") - from);
    EXPECT_THAT(matches(part, "^\\.TP\\n([0-9])$"),
                ElementsAreArray({"0", "1", "2", "3", "4", "5"}));
}

}  // namespace
}  // namespace memwright::install
