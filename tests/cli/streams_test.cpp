// Standard streams that are full, closed, or empty.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/support/cli_test.h"
#include "radio/demonstration.h"
#include "support/built_programs.h"

namespace memwright::cli_tests {
namespace {

using ::testing::StartsWith;

// What goes to standard output, one way or another.
const std::vector<Words> kAnswers = {{"--help"},
                                     {"--version"},
                                     {"export", "--help"},
                                     {"channels", "a.120"},
                                     {"channels", "a.120", "--format", "json"},
                                     {"export", "a.120"},
                                     {"export", "a.120", "-"},
                                     {"import", "a.120", "list.csv", "--output", "-"},
                                     {"settings", "a.120"},
                                     {"settings", "a.120", "lamp=ON", "--output", "-"},
                                     {"limits", "a.120"},
                                     {"limits", "a.120", "0=145", "--output", "-"},
                                     {"diff", "a.120", "b.120"},
                                     {"check", "b.120"},
                                     {"print", "a.120", "--pdf", "-"}};

class Streams : public CliTest {
  protected:
    void SetUp() override {
        const Image image(radio::demonstration_memory());
        put("a.120", image);
        put("b.120", Image(image).set(6666, {9}));
        put_text("list.csv", "Ch,MHz,Mode,Pref,Label\r\n5,121.5,AM,,GUARD\r\n");
    }

    // With streams closed, for which it takes a shell.
    systest::Command closing(const std::string& streams, const Words& arguments) const {
        systest::Command shell = command(
            Words{"-c", "exec \"$0\" \"$@\" " + streams, systest::built_program("memwright-cli")} +
            arguments);
        shell.program = "/bin/sh";
        return shell;
    }

    void expect_files_as_they_were() const {
        EXPECT_EQ(folder_.names(), (Words{"a.120", "b.120", "list.csv"}));
        EXPECT_EQ(text("a.120"), Image(radio::demonstration_memory()).text());
    }
};

TEST_F(Streams, standard_output_that_is_full_is_a_failure) {
    for (const Words& words : kAnswers) {
        auto full = command(words);
        full.output = "/dev/full";
        const Ended ended = run_to_end(full);
        EXPECT_EQ(ended.status, 4) << words.front();
        EXPECT_THAT(
            ended.errors,
            ::testing::HasSubstr("memwright-cli: Cannot write to standard output: No space left on "
                                 "device.\nWhat arrived there is not whole: "));
    }
    expect_files_as_they_were();
}

TEST_F(Streams, standard_output_that_is_closed_is_a_failure) {
    for (const Words& words : kAnswers) {
        const Ended ended = run_to_end(closing(">&-", words));
        EXPECT_EQ(ended.status, 4) << words.front();
        EXPECT_THAT(ended.errors,
                    ::testing::HasSubstr(
                        "memwright-cli: Cannot write to standard output: Bad file descriptor."));
    }
    expect_files_as_they_were();
}

TEST_F(Streams, nobody_has_to_read_messages) {
    auto full = command({"import", "a.120", "-"});
    full.errors = "/dev/full";
    EXPECT_EQ(run_to_end(full, "Ch\n1,384,AM,,A\n2,122,AM,,B\n").status, 0);
    EXPECT_EQ(run_to_end(closing("2>&-", {"channels", "gone.120"})).status, 4);
    EXPECT_EQ(run_to_end(closing("2>&-", {"nonsense"})).status, 2);
}

// No file that is opened gets the number of a closed stream, and with it what is meant for that.
TEST_F(Streams, that_are_closed_are_not_taken_for_files) {
    EXPECT_EQ(run_to_end(closing("<&- >&- 2>&-", {"export", "a.120", "list.csv"})).status, 0);
    EXPECT_EQ(text("list.csv"), run({"export", "a.120"}).output);
    put_text("list.csv", "Ch\r\n1,384,AM,,A\r\n2,122,AM,,B\r\n");
    const std::string imported = run({"import", "a.120", "list.csv", "--output", "-"}).output;
    EXPECT_EQ(imported.size(), 7392U);
    EXPECT_EQ(run_to_end(closing("<&- >&- 2>&-", {"import", "a.120", "list.csv"})).status, 0);
    EXPECT_EQ(text("a.120"), imported);
}

TEST_F(Streams, standard_input_that_is_closed_is_a_failure) {
    const Ended ended = run_to_end(closing("<&-", {"channels", "-"}));
    EXPECT_EQ(ended.status, 4);
    EXPECT_EQ(ended.output, "");
    EXPECT_THAT(ended.errors,
                StartsWith("memwright-cli: Cannot read standard input: Bad file descriptor.\n"));
}

TEST_F(Streams, standard_input_that_is_a_folder_is_a_failure) {
    auto folder = command({"export", "-"});
    folder.input = folder_.path();
    const Ended ended = run_to_end(folder);
    EXPECT_EQ(ended.status, 4);
    EXPECT_THAT(ended.errors,
                StartsWith("memwright-cli: Cannot read standard input: Is a directory.\n"));
}

TEST_F(Streams, standard_input_that_is_empty_is_no_image) {
    const Ended ended = run({"channels", "-"});
    EXPECT_EQ(ended.status, 3);
    EXPECT_THAT(ended.errors,
                StartsWith("memwright-cli: standard input is no memory image: it has 0 bytes"));
}

// 64 KiB are read at a time.
TEST_F(Streams, and_files_may_be_longer_than_what_is_read_at_a_time) {
    constexpr std::size_t kPiece = 64 * 1024;
    for (const std::size_t size : {kPiece - 1, kPiece, kPiece + 1, 2 * kPiece, 200'000UL}) {
        std::string rest(size - 7392, '.');
        rest.back() = '!';
        const Image image = Image(radio::demonstration_memory()).rest(rest);
        const std::string changed = Image(image).limit(0, "145.5", 1).text();
        put("long.120", image);
        EXPECT_TRUE(run({"limits", "-", "0=145.5,NFM"}, image.text()) == done(changed)) << size;
        EXPECT_TRUE(run({"limits", "long.120", "0=145.5,NFM"}) == done()) << size;
        EXPECT_TRUE(text("long.120") == changed) << size;
    }
}

TEST_F(Streams, a_refused_import_leaves_standard_output_empty) {
    const Ended ended = run({"import", "a.120", "-", "--output", "-"}, "Ch\r\nnonsense\r\n");
    EXPECT_EQ(ended.status, 3);
    EXPECT_EQ(ended.output, "");
    EXPECT_THAT(ended.errors, StartsWith("memwright-cli: Cannot import line 2 of -: "));
}

}  // namespace
}  // namespace memwright::cli_tests
