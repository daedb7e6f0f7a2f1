// read, write and ports with a radio that answers.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <sstream>

#include "cli/support/radio_test.h"
#include "fakes/seeded_random.h"

namespace memwright::cli_tests {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

Image any_image(SeededRandom& random) {
    Image image;
    for (int i = 0; i < layout::kImageSize; ++i) image.set(i, {random.byte()});
    return image;
}

TEST_F(RadioTest, read_keeps_the_bytes_as_they_come_and_tells_of_wrong_checksums) {
    SeededRandom random;
    const Image image = any_image(random);
    start_radio({"--image", put("radio.120", image), "--fault", "checksum@0", "checksum@230",
                 "checksum@235"});
    put_text("out.120", std::string(9000, 'o'));
    RunningCli cli(in_real_time({"read", "out.120", "--port", port, "--yes"}));
    EXPECT_EQ(
        cli.end(),
        (Ended{0, "",
               kReadInstructions +
                   "Read from VR-120 complete.\n"
                   "Warning: Block 0 came with a wrong checksum. Doubtful: frequencies, modes "
                   "and preferences of Bank 0 - 0 to Bank 0 - 7.\n"
                   "Warning: Block 230 came with a wrong checksum. Doubtful: settings or "
                   "search limits (bytes 7360 to 7391).\n"
                   "Read again, or compare two reads with memwright-cli diff.\n"}));
    EXPECT_TRUE(text("out.120") == image.text());
    EXPECT_EQ(folder_.names(), (Words{"out.120", "radio.120"}));
}

TEST_F(RadioTest, read_at_a_terminal_waits_for_Enter_and_shows_how_far_it_is) {
    SeededRandom random;
    const Image image = any_image(random);
    start_radio({"--image", put("radio.120", image)});
    Terminal terminal;
    auto with_terminal = command({"read", "-", "--com", "1=" + port});
    with_terminal.input = terminal.path();
    with_terminal.errors = terminal.path();
    RunningCli cli(with_terminal);
    terminal.wait_for("Press Enter for OK, Ctrl-C to stop.");
    EXPECT_TRUE(radio->says_nothing_for(0));
    terminal.type("what?");
    terminal.type("\n");
    terminal.wait_for("] " + std::string("  1%"));
    const Ended ended = cli.end();
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(ended.output == image.text());
    const std::string shown = terminal.shown();
    EXPECT_THAT(shown, HasSubstr("\r[........................................]   1%"));
    EXPECT_THAT(shown, HasSubstr("\r[####################....................]  50%"));
    EXPECT_THAT(shown, HasSubstr("\r[########################################] 100%\r\n"
                                 "Read from VR-120 complete.\r\n"));
    EXPECT_THAT(shown, Not(HasSubstr("Warning")));
}

TEST_F(RadioTest, write_sends_the_bytes_as_they_stand) {
    SeededRandom random;
    const Image image = any_image(random);
    put("back.120", Image(image).rest("what the radio does not get"));
    start_radio({"--mode", "receive", "--save", file("received.120")});
    Terminal terminal;
    auto with_terminal = in_real_time({"write", "back.120", "--port", port});
    with_terminal.input = terminal.path();
    RunningCli cli(with_terminal);
    cli.wait_for_error("Press Enter");
    terminal.type("\n");
    EXPECT_EQ(cli.end(),
              (Ended{0, "", kWriteInstructions + kPrompt + "Write To VR-120 complete.\n"}));
    EXPECT_EQ(radio->line(), "receiving");
    EXPECT_THAT(radio->line().value_or(""), HasSubstr("received: 7392 bytes"));
    EXPECT_TRUE(text("received.120") == image.text());
    EXPECT_EQ(text("back.120").size(), 7392U + 27U);
}

TEST_F(RadioTest, write_takes_its_image_from_standard_input) {
    SeededRandom random;
    const Image image = any_image(random);
    start_radio({"--mode", "receive", "--save", file("received.120")});
    auto piped = command({"write", "-", "--port", port, "--yes"});
    piped.input = put("given.120", image);
    RunningCli cli(piped);
    EXPECT_EQ(cli.end(), (Ended{0, "", kWriteInstructions + "Write To VR-120 complete.\n"}));
    EXPECT_EQ(radio->line(), "receiving");
    EXPECT_THAT(radio->line().value_or(""), HasSubstr("received: 7392 bytes"));
    EXPECT_TRUE(text("received.120") == image.text());
}

class Ports : public CliTest {
  protected:
    void store(const std::string& settings) const {
        const auto folder = home_.path() / ".config" / "Memwright";
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "Memwright.ini") << "[Ports]\n" << settings;
    }
};

TEST_F(Ports, lists_devices_with_their_numbers) {
    store("COM12=/dev/last\n");  // so that there is one wherever this runs
    const Ended ended = run({"ports"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.errors, "");
    std::istringstream lines(ended.output);
    int number = 0;
    const std::regex form(R"((COM (\d+) +|- +)/dev/.*)");
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        ASSERT_TRUE(std::regex_match(line, match, form)) << line;
        if (!match[2].matched) continue;
        EXPECT_GT(std::stoi(match[2]), number) << line;
        number = std::stoi(match[2]);
    }
    EXPECT_EQ(number, 12);
}

TEST_F(Ports, lists_what_was_chosen_in_the_window) {
    store("COM3=/dev/chosen\nCOM12=/dev/last\n");
    const Ended ended = run({"ports"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT("\n" + ended.output, HasSubstr("\nCOM 3   /dev/chosen  not present\n"));
    EXPECT_THAT("\n" + ended.output, HasSubstr("\nCOM 12  /dev/last  not present\n"));
}

TEST_F(Ports, names_of_devices_hold_no_commands_for_a_terminal) {
    store("COM3=\"/dev/\\x1b[31m\\x9b\\x202e\\nx\"\n");
    const Ended ended = run({"ports"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT("\n" + ended.output, HasSubstr("\nCOM 3   /dev/?[31m???x  not present\n"));
}

TEST_F(Ports, transfers_use_what_was_chosen_in_the_window) {
    store("COM1=/dev/chosen-once\n");
    const Ended ended = run({"read", "out.120", "--yes"});
    EXPECT_EQ(ended.status, 4);
    EXPECT_THAT(ended.errors,
                HasSubstr("Cannot open COM 1 (/dev/chosen-once): there is no such device."));
}

}  // namespace
}  // namespace memwright::cli_tests
