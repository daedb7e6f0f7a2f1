// Labels, lists, names and arguments that hold what a terminal takes for commands. A terminal is a
// real pseudo-terminal.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "cli/support/json.h"
#include "cli/support/running_cli.h"

namespace memwright::cli_tests {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// ESC and CSI, the latter as a character of two bytes; the end of the line's direction.
const std::string kRed =
    "\x1B[31m\xC2\x9B"
    "31m\xE2\x80\xAE";
const std::string kHarmless = "?[31m?31m?";

class AtATerminal : public CliTest {
  protected:
    // What a terminal shows that all three streams are; its ends of lines are two characters.
    std::string shown(const Words& arguments, int status) const {
        Terminal terminal;
        auto at_terminal = command(arguments);
        at_terminal.output = at_terminal.errors = terminal.path();
        RunningCli cli(at_terminal);
        EXPECT_EQ(cli.end().status, status);
        std::string text = terminal.shown();
        std::erase(text, '\r');
        return text;
    }

    // A label of six bytes: ESC, a byte that is CSI in the radio's character set, and letters.
    const Image image_ = Image().channel(1, "\x1B\x81\x8D[1m", "145.5");
    std::string file_ = put("radio.120", image_);
};

TEST_F(AtATerminal, labels_are_texts_for_people_anywhere) {
    put("other.120", Image());
    EXPECT_THAT(run({"channels", file_}).output, HasSubstr(" ???[1m  145.50000 "));
    EXPECT_THAT(run({"diff", "other.120", file_}).output, HasSubstr("tag (empty) -> ???[1m\n"));
    EXPECT_THAT(shown({"channels", file_}, 0), HasSubstr(" ???[1m  145.50000 "));
    EXPECT_THAT(shown({"diff", "other.120", file_}, 1), HasSubstr("tag (empty) -> ???[1m\n"));
}

TEST_F(AtATerminal, answers_for_programs_are_exact_but_at_a_terminal) {
    put("other.120", Image());
    const std::string exact = "\x1B\xC2\x81\xC2\x8D[1m";
    const std::string quoted = "\\u001B\xC2\x81\xC2\x8D[1m";
    const std::string bytes = "\x1B\x81\x8D[1m";
    const struct {
        Words arguments;
        int status;
        std::string in_a_file, at_a_terminal;
    } all[] = {
        {{"channels", file_, "--format", "csv"}, 0, exact, "\"???[1m\"\n"},
        {{"channels", file_, "--format", "json"}, 0, quoted, "\"\\u001B??[1m\""},
        {{"diff", file_, "other.120", "--format", "json"}, 1, quoted, "\"\\u001B??[1m\""},
        {{"export", file_}, 0, bytes, "\"???[1m\"\n"},
        {{"limits", file_, "--output", "-"}, 0, bytes, "???[1m"},
    };
    for (const auto& [arguments, status, in_a_file, at_a_terminal] : all) {
        EXPECT_THAT(run(arguments).output, HasSubstr(in_a_file)) << arguments.front();
        const std::string text = shown(arguments, status);
        EXPECT_THAT(text, HasSubstr(at_a_terminal)) << arguments.front();
        EXPECT_EQ(text.find_first_of("\x1B\x81\x8D"), text.npos) << arguments.front();
    }
    EXPECT_EQ(run({"limits", file_, "--output", "-"}), done(image_.text()));
    read_json(run({"diff", file_, "other.120", "--format", "json"}).output);
}

TEST_F(AtATerminal, names_and_arguments_in_messages_are_harmless) {
    const std::string name = "list " + kRed + "\xFF.csv";
    const std::string harmless = "list " + kHarmless + "?.csv";
    EXPECT_EQ(run({"channels", name}).errors,
              "memwright-cli: Cannot open " + harmless +
                  ": No such file or directory.\n"
                  "Check that the file can be read, or open another one.\n");
    put_text(name, "Ch,MHz,Mode,Pref,Label\r\n1,121.5\r\n");
    EXPECT_THAT(run({"import", file_, name}).errors,
                StartsWith("memwright-cli: Cannot import line 2 of " + harmless + ": "));
    EXPECT_THAT(run({"export", file_, "no/" + name}).errors,
                StartsWith("memwright-cli: Cannot save no/" + harmless + ": "));
    EXPECT_THAT(run({kRed}).errors,
                StartsWith("memwright-cli: There is no command \"" + kHarmless + "\"."));
    EXPECT_THAT(run({"settings", file_, kRed + "=1"}).errors,
                StartsWith("memwright-cli: There is no setting \"" + kHarmless + "\"."));
    EXPECT_THAT(shown({"channels", "--" + kRed, file_}, 2),
                StartsWith("memwright-cli: There is no option --" + kHarmless + ".\n"));
}

TEST_F(AtATerminal, lines_of_a_list_in_messages_are_harmless) {
    put_text("bad.csv", "Ch,MHz,Mode,Pref,Label\r\n1,\x1B[31m\x81\x8D\x7F,AM\r\n");
    EXPECT_THAT(run({"import", file_, "bad.csv"}).errors, HasSubstr("\n\n    1,?[31m???,AM\n\n"));
    put_text("bad.csv", "Ch,MHz,Mode,Pref,Label\r\n1,384\x90\x1B,AM,,A\r\n");
    const std::string said = run({"import", file_, "bad.csv"}).errors;
    EXPECT_THAT(said, StartsWith("Line 2 was skipped: "));
    EXPECT_EQ(said.find_first_of("\x1B\x90"), said.npos);
}

TEST_F(AtATerminal, names_in_the_archive_are_harmless) {
    const fs::path kept = home_.path() / ".local/share/memwright/radio images";
    fs::create_directories(kept);
    const std::string image = image_.text();
    const std::string name = "2026-01-02 03.04.05 ";
    std::ofstream(kept / (name + kRed + "\n2   \xFF.120"), std::ios::binary) << image;
    EXPECT_EQ(run({"archive"}), done("1   " + name + kHarmless + "?2   ?.120\n"));
    EXPECT_EQ(run({"archive", "restore", "1", "-"}), done(image));
}

}  // namespace
}  // namespace memwright::cli_tests
