// The built program at its real pseudo-terminal.

#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "radio/computer.h"
#include "radio/demonstration.h"
#include "radio/image_file.h"
#include "radio/vr120_sim_process.h"
#include "support/temporary_folder.h"

namespace memwright::radio {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Words = std::vector<std::string>;

const Bytes kOpeningFrame = {0x0C, 0x01, 0x41, 0x31, 0x38, 0x12, 0x00, 0xC9};

// Takes the opening frame, all blocks and the closing frame; the image that they bring.
Bytes read_image(const Line& line) {
    EXPECT_EQ(line.receive(8), kOpeningFrame);
    Bytes image;
    for (int number = 0; number < 240; ++number) {
        const Bytes response = line.response(38);
        if (response.size() != 41 || response[7] != number) {
            ADD_FAILURE() << "no block " << number;
            return image;
        }
        if (number < 231) image.insert(image.end(), response.begin() + 8, response.begin() + 40);
    }
    EXPECT_EQ(line.response(8).size(), 11U);
    line.send({0x03, 0x06, 0x09});
    EXPECT_EQ(line.receive(3).size(), 3U);
    return image;
}

void write_image(const Line& line, const MemoryImage& image) {
    for (const Bytes& frame : frames_of_write(image)) {
        line.send(frame);
        EXPECT_EQ(line.receive(frame.size()), frame);
    }
}

class Vr120SimProgram : public testing::Test {
  protected:
    std::string file(const std::string& name) const { return folder_.file(name); }

    TemporaryFolder folder_;
};

TEST_F(Vr120SimProgram, prints_the_path_of_a_raw_terminal_first) {
    Vr120Sim sim({"--mode", "receive"});
    const auto path = sim.line();
    ASSERT_TRUE(path);
    EXPECT_TRUE(fs::is_character_file(*path)) << *path;
    const Line line(*path);
    termios settings{};
    ASSERT_EQ(tcgetattr(line.descriptor(), &settings), 0);
    EXPECT_EQ(settings.c_lflag & static_cast<tcflag_t>(ECHO | ICANON | ISIG), 0U);
    EXPECT_EQ(settings.c_iflag & static_cast<tcflag_t>(ICRNL | IXON), 0U);
    EXPECT_EQ(settings.c_oflag & static_cast<tcflag_t>(OPOST), 0U);
}

TEST_F(Vr120SimProgram, says_nothing_that_a_terminal_takes_for_a_command) {
    Vr120Sim wrong({"--\x1B[31m\xC2\x9B\xFF"});
    EXPECT_EQ(wrong.error_line(), "vr120-sim: No such argument: \"--?[31m??\".");
    EXPECT_EQ(wrong.error_line(), "vr120-sim --help tells more.");
    const std::string name = "\x1B[31m\xE2\x80\xAE.120";
    Vr120Sim sim({"--mode", "receive", "--save", file(name)});
    const Line line(sim.line().value_or(""));
    write_image(line, random_image(51));
    EXPECT_EQ(sim.line(), "receiving");
    EXPECT_EQ(sim.line(), "received: 7392 bytes, 240 blocks, 0 checksum errors, saved to " +
                              file("?[31m?.120"));
}

TEST_F(Vr120SimProgram, sends_the_image_of_a_file) {
    const MemoryImage image = random_image(50);
    save_image(file("in.120"), image);
    Vr120Sim sim(
        {"--image", file("in.120"), "--pace", "none", "--mode", "send", "--short-frame", "none"});
    const Line line(sim.line().value_or(""));
    EXPECT_EQ(read_image(line), bytes_of(image));
    EXPECT_EQ(sim.line(), "sending: 240 blocks");
    EXPECT_EQ(sim.line(), "sent: 240 blocks");
}

TEST_F(Vr120SimProgram, sends_the_demonstration_memory_after_a_second_otherwise) {
    Vr120Sim sim({"--pace", "none", "--short-frame", "none"});
    const auto start = Clock::now();
    const Line line(sim.line().value_or(""));
    EXPECT_EQ(read_image(line), bytes_of(demonstration_memory()));
    EXPECT_GE(Clock::now() - start, std::chrono::seconds(1));
}

TEST_F(Vr120SimProgram, saves_what_it_receives_and_sends_it_next) {
    const MemoryImage image = random_image(51);
    Vr120Sim sim({"--save", file("out.120"), "--pace", "none", "--short-frame", "none"});
    const auto path = sim.line();
    Line line(path.value_or(""));
    write_image(line, image);
    EXPECT_EQ(sim.line(), "receiving");
    EXPECT_EQ(sim.line(),
              "received: 7392 bytes, 240 blocks, 0 checksum errors, saved to " + file("out.120"));
    std::ifstream saved(file("out.120"), std::ios::binary);
    EXPECT_EQ(Bytes(std::istreambuf_iterator<char>(saved), std::istreambuf_iterator<char>()),
              bytes_of(image));
    EXPECT_TRUE(line.is_silent_for(1500));
    // Closed and opened faster than anybody could look.
    line.close();
    line.open(path.value_or(""));
    EXPECT_EQ(read_image(line), bytes_of(image));
}

TEST_F(Vr120SimProgram, notices_every_opening_of_the_line) {
    Vr120Sim sim({"--pace", "none", "--mode", "send"});
    const auto path = sim.line().value_or("");
    Line line(path);
    EXPECT_EQ(line.receive(8), kOpeningFrame);
    for (int i = 0; i < 20; ++i) {
        line.close();
        line.open(path);
        EXPECT_EQ(line.receive(8), kOpeningFrame);
    }
}

TEST_F(Vr120SimProgram, leaves_nothing_unread_for_the_next_opening_of_the_line) {
    Vr120Sim sim({"--pace", "none", "--mode", "send"});
    const auto path = sim.line().value_or("");
    Line line(path);
    EXPECT_EQ(line.receive(8), kOpeningFrame);
    line.send({0x03, 0x06, 0x09});
    EXPECT_EQ(line.receive(5).size(), 5U);
    line.close();
    EXPECT_EQ(sim.line(), "sending: 240 blocks");
    EXPECT_EQ(sim.line(), "sent in part: 1 block");
    line.open(path);
    EXPECT_EQ(line.receive(8), kOpeningFrame);
    EXPECT_TRUE(line.is_silent_for(200));
}

TEST_F(Vr120SimProgram, reports_a_wrong_checksum_and_saves_nothing) {
    Vr120Sim sim({"--save", file("out.120"), "--pace", "none"});
    const Line line(sim.line().value_or(""));
    auto frames = frames_of_write(random_image(52));
    ++frames[100].back();
    line.send(joined(frames));
    EXPECT_EQ(sim.line(), "receiving");
    EXPECT_EQ(sim.line(),
              "received in part or damaged, not kept: 240 blocks, 1 checksum error, 0 order "
              "errors, 0 content errors, 0 stray bytes");
    EXPECT_EQ(folder_.names().size(), 0U);
}

TEST_F(Vr120SimProgram, tells_when_it_cannot_save) {
    Vr120Sim sim({"--save", file("none/out.120"), "--pace", "none"});
    const Line line(sim.line().value_or(""));
    write_image(line, random_image(53));
    EXPECT_EQ(sim.line(), "receiving");
    const auto received = sim.line().value_or("");
    EXPECT_NE(received.find("0 checksum errors, not saved: Cannot save"), std::string::npos)
        << received;
}

TEST_F(Vr120SimProgram, takes_the_time_that_bytes_need_on_the_line) {
    Vr120Sim sim({"--mode", "send", "--short-frame", "none"});
    const auto start = Clock::now();
    const Line line(sim.line().value_or(""));
    EXPECT_EQ(line.receive(8).size(), 8U);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(line.response(38).size(), 41U);
    EXPECT_GE(Clock::now() - start, line_time(8 + 5 * 41));
}

TEST_F(Vr120SimProgram, hangs_up_after_the_last_byte_was_taken_and_ends) {
    Vr120Sim sim({"--mode", "send", "--fault", "hang-up@2:20"});
    const Line line(sim.line().value_or(""));
    EXPECT_EQ(line.receive(8), kOpeningFrame);
    EXPECT_EQ(line.response(38).size(), 41U);
    EXPECT_EQ(line.response(38).size(), 41U);
    EXPECT_EQ(line.response(38).size(), 3U + 20U);
    EXPECT_TRUE(line.hangs_up());
    std::uint8_t byte = 0;
    EXPECT_EQ(read(line.descriptor(), &byte, 1), 0);
    EXPECT_EQ(write(line.descriptor(), &byte, 1), -1);
    EXPECT_EQ(errno, EIO);
    EXPECT_EQ(sim.line(), "sending: 240 blocks");
    EXPECT_EQ(sim.line(), "fault: hang-up@2:20");
    EXPECT_EQ(sim.line(), "sent in part: 2 blocks");
    EXPECT_EQ(sim.line(), "hung up");
    EXPECT_EQ(sim.exit_status(), 0);
}

TEST_F(Vr120SimProgram, ends_well_on_signals) {
    for (const int signal : {SIGTERM, SIGINT}) {
        Vr120Sim sim({});
        const Line line(sim.line().value_or(""));
        sim.signal(signal);
        EXPECT_EQ(sim.exit_status(), 0);
        EXPECT_TRUE(line.hangs_up());
    }
}

TEST_F(Vr120SimProgram, uses_next_to_no_processor_time_while_nothing_happens) {
    Vr120Sim sim({"--mode", "receive"});
    const auto path = sim.line().value_or("");
    const double waiting = sim.processor_time();
    EXPECT_TRUE(sim.says_nothing_for(1000));
    EXPECT_LT(sim.processor_time() - waiting, 0.01);
    const Line line(path);
    const double open = sim.processor_time();
    EXPECT_TRUE(line.is_silent_for(1000));
    EXPECT_LT(sim.processor_time() - open, 0.01);
}

TEST_F(Vr120SimProgram, exits_with_2_and_a_message_on_wrong_arguments) {
    std::ofstream(file("short.120")) << "short";
    for (const Words& words : {Words{"--nonsense"},
                               {"--fault", "checksum@240"},
                               {"--pace"},
                               {"--image", file("none.120")},
                               {"--image", file("short.120")}}) {
        Vr120Sim sim(words);
        EXPECT_TRUE(sim.error_line().value_or("").starts_with("vr120-sim: ")) << words.back();
        EXPECT_EQ(sim.line(), std::nullopt);
        EXPECT_EQ(sim.exit_status(), 2);
    }
    EXPECT_FALSE(fs::exists(file("none.120")));
}

TEST_F(Vr120SimProgram, prints_its_help_and_its_version) {
    Vr120Sim help({"--help"});
    EXPECT_TRUE(help.line().value_or("").starts_with("Usage: vr120-sim "));
    EXPECT_EQ(help.exit_status(), 0);
    Vr120Sim version({"--version"});
    EXPECT_EQ(version.line(), "vr120-sim 1.0");
    EXPECT_EQ(version.exit_status(), 0);
}

}  // namespace
}  // namespace memwright::radio
