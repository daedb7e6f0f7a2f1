// The examples of docs/command-line.md, as they stand there, do what the text around them says.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "cli/support/radio_test.h"
#include "radio/demonstration.h"
#include "support/built_programs.h"

namespace memwright::cli_tests {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;

struct Example {
    std::string heading;
    std::string commands;
};

std::vector<Example> examples() {
    std::ifstream document(MEMWRIGHT_DOCUMENT);
    std::vector<Example> all;
    std::string heading;
    bool inside = false;
    for (std::string line; std::getline(document, line);) {
        if (line == "```") inside = false;
        if (inside) all.back().commands += line + "\n";
        if (line.starts_with("## ")) heading = line.substr(3);
        if (line == "```sh") {
            inside = true;
            all.push_back({heading, ""});
        }
    }
    return all;
}

class Document : public RadioTest {
  protected:
    // Runs the example below a heading as a user's shell does, but ends at the first failure.
    Ended run_example(const std::string& heading) {
        for (const Example& example : examples()) {
            if (example.heading != heading) continue;
            systest::Command shell = command({"-e", "-u", "-c", example.commands});
            shell.program = "/bin/sh";
            shell.environment["PATH"] = systest::built_programs().string() + ":/usr/bin:/bin";
            shell.environment["PORT"] = port;
            shell.environment["OTHER_PORT"] = other_port_;
            RunningCli running(shell);
            return running.end();
        }
        ADD_FAILURE() << "no example below " << heading;
        return {};
    }

    void start_other_radio(const Words& arguments) {
        other_radio_.emplace(Words{"--pace", "none"} + arguments);
        other_port_ = other_radio_->line().value_or("");
    }

    Image demonstration_{radio::demonstration_memory()};
    std::optional<radio::Vr120Sim> other_radio_;
    std::string other_port_;
};

TEST_F(Document, has_the_examples_that_are_tried_here) {
    Words headings;
    for (const Example& example : examples()) headings.push_back(example.heading);
    EXPECT_EQ(headings,
              (Words{"A nightly backup", "Merging two lists", "Moving a list between radios",
                     "An image that was lost", "Settings and limits from a script"}));
}

TEST_F(Document, a_first_nightly_backup_is_kept_under_its_date_and_as_the_latest) {
    start_radio();
    const Ended ended = run_example("A nightly backup");
    EXPECT_EQ(ended.status, 0) << ended;
    EXPECT_EQ(ended.output, "");
    const auto names = folder_.names();
    ASSERT_EQ(names.size(), 2U);
    EXPECT_THAT(names[0], MatchesRegex("20[0-9][0-9]-[0-9][0-9]-[0-9][0-9]\\.120"));
    EXPECT_EQ(names[1], "latest.120");
    EXPECT_EQ(text(names[0]), demonstration_.text());
    EXPECT_EQ(text("latest.120"), demonstration_.text());
}

TEST_F(Document, a_nightly_backup_tells_what_has_changed_since_the_last_one) {
    put("latest.120", Image(demonstration_).set(6666, {1}));
    start_radio();
    const Ended ended = run_example("A nightly backup");
    EXPECT_EQ(ended.status, 0) << ended;
    EXPECT_EQ(ended.output, "lamp: ON -> AUTO\nThe radio has changed since the last backup.\n");
    EXPECT_EQ(text("latest.120"), demonstration_.text());
}

TEST_F(Document, merging_two_lists_keeps_what_is_there_and_adds_the_others) {
    put("mine.120", Image().channel(1, "MINE", "145.5").channel(3, "Z\xFC", "433.5", "AM", "On"));
    put("club.120", Image()
                        .channel(1, "CLUB", "88.3")
                        .channel(2, "NEW", "121.5", "AM")
                        .channel(640, "END", "1.5"));
    const Ended ended = run_example("Merging two lists");
    EXPECT_EQ(ended.status, 0) << ended;
    EXPECT_EQ(ended.errors, "");
    EXPECT_EQ(text("merged.120"), Image()
                                      .channel(1, "MINE", "145.5")
                                      .channel(2, "NEW", "121.5", "AM")
                                      .channel(3, "Z\xFC", "433.5", "AM", "On")
                                      .channel(640, "END", "1.5")
                                      .text());
    EXPECT_THAT(ended.output, HasSubstr("Bank 0 - 1: tag (empty) -> NEW\n"));
    EXPECT_THAT(ended.output, HasSubstr("Bank 9 - 63: freq (empty) -> 1.50000\n"));
}

TEST_F(Document, moving_a_list_keeps_the_other_radios_settings_and_limits) {
    const Image from = Image().channel(1, "MOVED", "145.5").set(6666, {2});
    const Image to = Image().channel(640, "STAYS", "1.5").set(6666, {1}).limit(3, "27.405", 1);
    put("from.120", from);
    put("to.120", to);
    start_radio({"--image", file("from.120")});
    start_other_radio({"--image", file("to.120"), "--save", file("received.120")});
    const Ended ended = run_example("Moving a list between radios");
    EXPECT_EQ(ended.status, 0) << ended;
    EXPECT_EQ(text("old.120"), from.text());
    EXPECT_EQ(text("new.120"), Image(to).channel(1, "MOVED", "145.5").text());
    // Written once it has taken all of it.
    EXPECT_EQ(other_radio_->line(), "sending: 240 blocks");
    EXPECT_EQ(other_radio_->line(), "sent: 240 blocks");
    EXPECT_EQ(other_radio_->line(), "receiving");
    EXPECT_THAT(other_radio_->line().value_or(""), HasSubstr("received: 7392 bytes"));
    EXPECT_EQ(text("received.120"), text("new.120"));
}

TEST_F(Document, an_image_that_was_lost_is_in_the_archive) {
    start_radio();
    RunningCli read(command({"read", "radio.120", "--port", port, "--yes"}));
    ASSERT_EQ(read.end().status, 0);
    ASSERT_TRUE(std::filesystem::remove(file("radio.120")));
    const Ended ended = run_example("An image that was lost");
    EXPECT_EQ(ended.status, 0) << ended;
    EXPECT_THAT(ended.output, MatchesRegex("1   20[-0-9]+ [0-9.]+ read\\.120\n.*"));
    EXPECT_EQ(text("lost.120"), demonstration_.text());
}

TEST_F(Document, settings_and_limits_are_changed_and_shown) {
    put("radio.120", Image().channel(1, "A", "145.5"));
    const Ended ended = run_example("Settings and limits from a script");
    EXPECT_EQ(ended.status, 0) << ended;
    EXPECT_EQ(text("radio.120"), Image()
                                     .channel(1, "A", "145.5")
                                     .set(6669, {4})
                                     .set(6688, {0x09, 0x02})
                                     .set(6912, {0x14, 0x40, 0x00, 0x01, 0x14, 0x60, 0x00, 0x01})
                                     .text());
    EXPECT_THAT(ended.output, ::testing::StartsWith("{\"scan-resume\": \"5 Sec\", "));
}

}  // namespace
}  // namespace memwright::cli_tests
