// read and write when the radio, the port or the user ends them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include "cli/support/radio_test.h"
#include "fakes/pseudo_terminal.h"

namespace memwright::cli_tests {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string kReadCancelled = "Read from VR-120 cancelled. Nothing was written.\n";
const std::string kNothingSent = "Write To VR-120 cancelled. Nothing was sent.\n";
const std::string kPartSent =
    "Write To VR-120 cancelled. Write to the radio again before you use it.\n";

class RadioTrouble : public RadioTest {
  protected:
    // These end soon, and what ends them has to come in time.
    systest::Command command(const Words& arguments) const { return in_real_time(arguments); }

    void SetUp() override {
        put_text("out.120", "what was there");
        put("a.120", Image());
    }
    void TearDown() override {
        EXPECT_EQ(text("out.120"), "what was there");
        EXPECT_EQ(folder_.names(), (Words{"a.120", "out.120"}));
        EXPECT_EQ(text("a.120"), Image().text());
    }

    // What a transfer of the radio's comes to; nobody has it in hand then.
    std::string radio_says() { return radio->line().value_or("(nothing)"); }
};

TEST_F(RadioTrouble, a_block_that_is_too_short_is_the_radios_failure) {
    start_radio({"--fault", "missing-byte@3:5"});
    RunningCli cli(command({"read", "out.120", "--port", port, "--yes"}));
    EXPECT_EQ(
        cli.end(),
        (Ended{5, "",
               kReadInstructions +
                   "memwright-cli: The read from the VR-120 failed at block 4 of 240: 40 bytes "
                   "arrived instead of 41.\n"
                   "Check the plugs of the clone cable, and begin again.\n"}));
}

TEST_F(RadioTrouble, a_line_that_drops_is_told_with_its_port) {
    start_radio({"--fault", "hang-up@3:5"});
    RunningCli cli(command({"read", "out.120", "--port", port, "--yes"}));
    EXPECT_EQ(cli.end(),
              (Ended{4, "",
                     kReadInstructions + "memwright-cli: Lost COM 1 (" + port +
                         "): the other end hung up or the device was unplugged.\n"
                         "The port is closed. Check the cable and the plugs, then start the "
                         "transfer again.\n"}));
}

TEST_F(RadioTrouble, a_line_that_drops_ends_a_write) {
    start_radio({"--mode", "receive", "--fault", "hang-up@3:5"});
    RunningCli cli(command({"write", "a.120", "--port", port, "--yes"}));
    const Ended ended = cli.end();
    EXPECT_EQ(ended.status, 4);
    EXPECT_THAT(ended.errors, HasSubstr("memwright-cli: Lost COM 1 (" + port + ")"));
}

TEST_F(RadioTrouble, a_line_that_takes_no_more_ends_a_write_with_the_number_of_its_bytes) {
    ::memwright::fakes::PseudoTerminal line;
    RunningCli cli(command({"write", "a.120", "--port", line.path(), "--yes"}));
    std::size_t arrived = line.receive(540, std::chrono::seconds(30)).size();
    ASSERT_EQ(arrived, 540U);
    const ::memwright::fakes::StoppedLine stopped(line.path());
    const Ended ended = cli.end();
    // What came before the line was stopped counts, too.
    while (!line.is_silent()) arrived += line.receive(1).size();
    EXPECT_EQ(ended.status, 4);
    EXPECT_THAT(ended.errors,
                HasSubstr("memwright-cli: The serial port has stopped taking bytes: only " +
                          std::to_string(arrived) + " of "));
}

TEST_F(RadioTrouble, a_device_that_is_none_is_told) {
    for (const Words& words : {Words{"read", "out.120"}, Words{"write", "a.120"}}) {
        const Ended gone = run(words + Words{"--yes", "--port", "/dev/nowhere"});
        EXPECT_EQ(gone.status, 4);
        EXPECT_EQ(gone.output, "");
        EXPECT_THAT(
            gone.errors,
            HasSubstr(
                "memwright-cli: Cannot open COM 1 (/dev/nowhere): there is no such device.\n"));
        const Ended other = run(words + Words{"--yes", "--com", "1=" + file("a.120")});
        EXPECT_EQ(other.status, 4);
        EXPECT_THAT(other.errors, HasSubstr("memwright-cli: Cannot open COM 1 (" + file("a.120") +
                                            "): it is a regular file, not a serial device.\n"));
    }
}

TEST_F(RadioTrouble, nothing_that_is_no_image_is_sent) {
    start_radio();
    const Ended small = run({"write", "out.120", "--yes", "--port", port});
    EXPECT_EQ(small,
              (Ended{3, "",
                     "memwright-cli: out.120 is no memory image: it has 14 bytes, and an image has "
                     "7392.\nName a file that was saved or read as an image (*.120, *.tk1).\n"}));
    const Ended none = run({"write", "b.120", "--yes", "--port", port});
    EXPECT_EQ(none.status, 4);
    EXPECT_THAT(none.errors, StartsWith("memwright-cli: Cannot open b.120: No such file"));
}

TEST_F(RadioTrouble, either_signal_ends_a_read_that_listens) {
    for (const int number : {SIGINT, SIGTERM}) {
        start_radio({"--mode", "receive"});
        RunningCli cli(command({"read", "out.120", "--port", port, "--yes"}));
        cli.wait_for_error("3. Press [Mode]");
        cli.signal(number);
        EXPECT_EQ(cli.end(), (Ended{4, "", kReadInstructions + kReadCancelled}));
    }
}

TEST_F(RadioTrouble, either_signal_ends_a_read_that_has_begun) {
    for (const int number : {SIGINT, SIGTERM}) {
        start_radio();
        Terminal terminal;
        auto with_bar = command({"read", "out.120", "--port", port, "--yes"});
        with_bar.errors = terminal.path();
        RunningCli cli(with_bar);
        terminal.wait_for("  2%");
        cli.signal(number);
        EXPECT_EQ(cli.end().status, 4);
        EXPECT_THAT(
            terminal.shown(),
            ::testing::EndsWith("%\r\nRead from VR-120 cancelled. Nothing was written.\r\n"));
        EXPECT_EQ(radio_says(), "sending: 240 blocks");
        EXPECT_THAT(radio_says(), StartsWith("sent in part: "));
    }
}

TEST_F(RadioTrouble, either_signal_ends_a_write_that_has_begun) {
    for (const int number : {SIGINT, SIGTERM}) {
        start_radio({"--mode", "receive"});
        RunningCli cli(command({"write", "a.120", "--port", port, "--yes"}));
        EXPECT_EQ(radio_says(), "receiving");
        cli.signal(number);
        EXPECT_EQ(cli.end(), (Ended{4, "", kWriteInstructions + kPartSent}));
        EXPECT_THAT(radio_says(), StartsWith("received in part or damaged, not kept: "));
    }
}

// Ctrl-C, the end of the input, and being told to end.
TEST_F(RadioTrouble, instructions_that_are_declined_begin_nothing) {
    const std::pair<Words, std::string> all[] = {
        {{"read", "out.120"}, kReadInstructions + kPrompt + kReadCancelled},
        {{"write", "a.120"}, kWriteInstructions + kPrompt + kNothingSent}};
    for (const auto& [words, said] : all) {
        for (const int number : {SIGINT, SIGTERM, 0}) {
            start_radio({"--mode", "receive"});
            Terminal terminal;
            auto with_terminal = command(words + Words{"--port", port});
            with_terminal.input = terminal.path();
            RunningCli cli(with_terminal);
            cli.wait_for_error("Press Enter");
            if (number == 0) {
                terminal.type("\x04");
            } else {
                cli.signal(number);
            }
            EXPECT_EQ(cli.end(), (Ended{4, "", said}));
            radio->signal(SIGTERM);
            EXPECT_EQ(radio->line(), std::nullopt);
        }
    }
}

}  // namespace
}  // namespace memwright::cli_tests
