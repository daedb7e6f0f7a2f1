// print: the pages as a PDF file, without a display.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "cli/support/cli_test.h"
#include "radio/demonstration.h"
#include "support/built_programs.h"
#include "support/run_program.h"

namespace memwright::cli_tests {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class Print : public CliTest {
  protected:
    std::string image_ = put("radio.120", Image(radio::demonstration_memory()));

    std::string fact(const std::string& name, const std::string& file) const {
        const std::string facts =
            "\n" + systest::output_of("/usr/bin/pdfinfo", {folder_.file(file)});
        const auto start = facts.find("\n" + name + ":");
        if (start == std::string::npos) return "";
        const auto value = facts.find_first_not_of(' ', start + name.size() + 2);
        return facts.substr(value, facts.find('\n', value) - value);
    }
    std::string pages(const std::string& file) const { return fact("Pages", file); }
    std::string words(const std::string& file) const {
        return systest::output_of("/usr/bin/pdftotext", {"-layout", folder_.file(file), "-"});
    }
};

TEST_F(Print, makes_the_pages_of_rows_1_to_240) {
    const Ended ended = run({"print", image_, "--pdf", "out.pdf"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(pages("out.pdf"), "7");
    EXPECT_EQ(fact("Title", "out.pdf"), "Memwright");
    const std::string shown = words("out.pdf");
    EXPECT_THAT(shown, HasSubstr("Page 1 of 7"));
    EXPECT_THAT(shown, HasSubstr("Page 7 of 7"));
    EXPECT_THAT(shown, HasSubstr("radio.120"));
    EXPECT_THAT(shown, HasSubstr("Bank 0 - 0 "));
    EXPECT_THAT(shown, HasSubstr("118.10000"));
    EXPECT_THAT(shown, HasSubstr("Bank 3 - 47"));
    EXPECT_THAT(shown, Not(HasSubstr("Bank 3 - 48")));
    EXPECT_EQ(folder_.names(), (Words{"out.pdf", "radio.120"}));
}

TEST_F(Print, makes_the_pages_of_a_range) {
    for (const auto& [range, count] :
         {std::pair("1-1", "1"), {"1-35", "1"}, {"1-36", "2"}, {"240-240", "1"}, {"1-240", "7"}}) {
        EXPECT_EQ(run({"print", image_, "--pdf", "out.pdf", "--range", range}).status, 0);
        EXPECT_EQ(pages("out.pdf"), count) << range;
    }
    EXPECT_EQ(run({"print", image_, "--pdf", "out.pdf", "--range", "65-66"}).status, 0);
    EXPECT_THAT(words("out.pdf"), HasSubstr("Bank 1 - 1\n"));
    EXPECT_THAT(words("out.pdf"), Not(HasSubstr("Bank 1 - 2\n")));
    EXPECT_THAT(words("out.pdf"), Not(HasSubstr("Bank 0 - 63\n")));
}

TEST_F(Print, refuses_ranges_that_are_none) {
    for (const char* const range :
         {"0-5", "1-241", "5-1", "5", "1-", "-5", "a-b", "1-2-3", "1,2", " 1-2", "0001-2"}) {
        EXPECT_EQ(run({"print", image_, "--pdf", "out.pdf", std::string("--range=") + range}),
                  (Ended{2, "",
                         "memwright-cli: --range is A-B with rows from 1 to 240, not \"" +
                             std::string(range) +
                             "\".\nUsage: memwright-cli print IMAGE --pdf OUT [--range A-B]\n"}));
    }
    EXPECT_EQ(folder_.names(), Words{"radio.120"});
}

TEST_F(Print, goes_to_standard_output) {
    const Ended ended = run({"print", "-", "--pdf", "-", "--range", "1-2"}, text("radio.120"));
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.output, StartsWith("%PDF-"));
    put_text("out.pdf", ended.output);
    EXPECT_EQ(pages("out.pdf"), "1");
}

TEST_F(Print, needs_no_display_and_no_home) {
    auto bare = command({"print", image_, "--pdf", "out.pdf"});
    bare.environment.erase("HOME");
    bare.environment["DISPLAY"] = ":12345";
    bare.environment["WAYLAND_DISPLAY"] = "nowhere";
    bare.environment["QT_QPA_PLATFORM"] = "xcb";
    EXPECT_EQ(run_to_end(bare).status, 0);
    EXPECT_EQ(pages("out.pdf"), "7");
}

TEST_F(Print, replaces_its_file_whole_or_not_at_all) {
    put_text("out.pdf", std::string(1'000'000, 'o'));
    EXPECT_EQ(run({"print", image_, "--pdf", "out.pdf"}).status, 0);
    EXPECT_EQ(pages("out.pdf"), "7");
    const std::string before = text("out.pdf");
    put_text("short.120", "short");
    EXPECT_EQ(run({"print", "short.120", "--pdf", "out.pdf"}).status, 3);
    EXPECT_TRUE(text("out.pdf") == before);
    std::filesystem::create_directory(folder_.path() / "folder");
    const Ended refused = run({"print", image_, "--pdf", "folder"});
    EXPECT_EQ(refused.status, 4);
    EXPECT_THAT(refused.errors, HasSubstr("memwright-cli: Cannot save folder: it is a folder."));
    EXPECT_EQ(run({"print", image_, "--pdf", "nowhere/out.pdf"}).status, 4);
    EXPECT_EQ(folder_.names(), (Words{"folder", "out.pdf", "radio.120", "short.120"}));
}

// What it needs for pages is a file beside the program, which may be missing or broken.
TEST_F(Print, without_a_part_of_the_program_says_what_to_do) {
    namespace fs = std::filesystem;
    const TemporaryFolder programs;
    systest::Command alone = command({"print", image_, "--pdf", "out.pdf"});
    alone.program = programs.path() / "memwright-cli";
    fs::copy_file(systest::built_program("memwright-cli"), alone.program);
    const fs::path part = programs.path() / "memwright-ports-and-pages.so";
    const auto expect_refused = [&](const std::string& why) {
        const Ended ended = run_to_end(alone);
        EXPECT_EQ(ended.status, 4);
        EXPECT_EQ(ended.output, "");
        EXPECT_THAT(ended.errors, StartsWith("memwright-cli: Cannot load a part of Memwright"));
        EXPECT_THAT(ended.errors, HasSubstr(why));
        EXPECT_THAT(ended.errors, HasSubstr("\nInstall Memwright again, with the packages"));
        EXPECT_EQ(folder_.names(), Words{"radio.120"});
    };
    expect_refused("No such file or directory");
    programs.put("memwright-ports-and-pages.so", {'t', 'e', 'x', 't'});
    expect_refused(part.string() + ": file too short");
    fs::copy_file(systest::built_programs() / "memwright-ports-and-pages.so", part,
                  fs::copy_options::overwrite_existing);
    EXPECT_EQ(run_to_end(alone).status, 0);
    EXPECT_EQ(pages("out.pdf"), "7");
}

// Under a limit, in blocks of 512 bytes, for the length of a file.
TEST_F(Print, that_finds_no_room_leaves_the_old_file_and_says_why) {
    put_text("out.pdf", "old");
    for (const char* const blocks : {"1", "16"}) {
        systest::Command limited = command({"print", image_, "--pdf", "out.pdf"});
        limited.arguments = Words{"-c", "trap '' XFSZ; ulimit -f $0; exec \"$@\"", blocks,
                                  limited.program.string()} +
                            limited.arguments;
        limited.program = "/bin/sh";
        const Ended ended = run_to_end(limited);
        EXPECT_EQ(ended.status, 4) << ended;
        EXPECT_THAT(ended.errors, HasSubstr("Cannot save out.pdf: File too large.\n"));
        EXPECT_EQ(text("out.pdf"), "old");
        EXPECT_EQ(folder_.names(), (Words{"out.pdf", "radio.120"}));
    }
}

}  // namespace
}  // namespace memwright::cli_tests
