#include "radio/command_line.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace memwright::radio {
namespace {

CommandLine parsed(const std::vector<std::string>& arguments) {
    return parse_command_line(arguments);
}

TEST(CommandLine, without_arguments_is_automatic_at_the_pace_of_the_line) {
    const CommandLine line = parsed({});
    EXPECT_EQ(line.options.mode, Mode::automatic);
    EXPECT_EQ(line.options.pace, Pace::line);
    EXPECT_TRUE(line.options.faults.empty());
    EXPECT_EQ(line.options.short_frames_before, Options{}.short_frames_before);
    EXPECT_EQ(line.image + line.save, "");
    EXPECT_FALSE(line.help || line.version);
}

TEST(CommandLine, takes_every_option) {
    const CommandLine line = parsed({"--image", "a.120", "--save=b.120", "--pace", "none", "--mode",
                                     "receive", "--help", "--version"});
    EXPECT_EQ(line.image, "a.120");
    EXPECT_EQ(line.save, "b.120");
    EXPECT_EQ(line.options.pace, Pace::none);
    EXPECT_EQ(line.options.mode, Mode::receive);
    EXPECT_TRUE(line.help && line.version);
    EXPECT_EQ(parsed({"--mode=send", "--pace=line"}).options.mode, Mode::send);
    EXPECT_EQ(parsed({"--mode", "auto"}).options.mode, Mode::automatic);
}

TEST(CommandLine, takes_several_faults_and_short_frames_together_or_one_by_one) {
    const std::vector<Fault> faults = {{FaultKind::checksum, 5}, {FaultKind::hang_up, kClosing, 3}};
    const CommandLine together =
        parsed({"--fault", "checksum@5", "hang-up@closing:3", "--short-frame", "0", "239"});
    const CommandLine one_by_one = parsed({"--fault=checksum@5", "--short-frame=0", "--fault",
                                           "hang-up@closing:3", "--short-frame", "239"});
    for (const CommandLine& line : {together, one_by_one}) {
        EXPECT_EQ(line.options.faults, faults);
        EXPECT_EQ(line.options.short_frames_before, (std::vector{0, 239}));
    }
    EXPECT_TRUE(parsed({"--short-frame", "none"}).options.short_frames_before.empty());
}

TEST(CommandLine, refuses_what_it_does_not_know) {
    const std::vector<std::vector<std::string>> wrong = {
        {"file"},
        {"--nonsense"},
        {"-h"},
        {""},
        {"--image"},
        {"--image="},
        {"--image", "--save"},
        {"--help=now"},
        {"--help", "now"},
        {"--pace", "slow"},
        {"--mode"},
        {"--mode", "SEND"},
        {"--fault"},
        {"--fault", "checksum"},
        {"--short-frame", "240"},
        {"--short-frame", "-1"},
        {"--short-frame", "99999999999"},
        {"--short-frame", "1", "x"},
        {"--short-frame", "1x"},
    };
    for (const auto& arguments : wrong) {
        EXPECT_THROW(parsed(arguments), ConversionError) << testing::PrintToString(arguments);
    }
}

TEST(CommandLine, tells_what_is_wrong) {
    try {
        parsed({"--mode", "both"});
        FAIL();
    } catch (const ConversionError& error) {
        EXPECT_STREQ(error.what(), "No such mode: \"both\". It is auto, send or receive.");
    }
}

TEST(CommandLine, has_a_help_that_names_every_option_and_every_kind_of_fault) {
    for (const char* const text :
         {"--image", "--save", "--pace", "--mode", "--fault", "--short-frame", "--help",
          "--version", "checksum", "missing-byte", "extra-byte", "silence", "garbage", "hang-up",
          "block-number", "trickle"}) {
        EXPECT_NE(help_text().find(text), std::string::npos) << text;
    }
}

}  // namespace
}  // namespace memwright::radio
