// limits: 18 records, of which only the named ones change.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/support/cli_test.h"
#include "cli/support/json.h"
#include "fakes/seeded_random.h"
#include "radio/demonstration.h"

namespace memwright::cli_tests {
namespace {

int offset_of(int limit) { return limit < 16 ? 6912 + 4 * limit : 7152 + 4 * (limit - 16); }

class Limits : public CliTest {
  protected:
    std::string image_ = put("radio.120", Image(radio::demonstration_memory()));

    Ended wrong(const std::string& what) const {
        return {2, "",
                "memwright-cli: " + what +
                    "\nUsage: memwright-cli limits IMAGE [N=FREQ[,MODE]]... [--format text|json] "
                    "[--output OUT]\n"};
    }
};

const char* const kShown =
    "0=0.53100,AM\n"
    "1=1.60200,AM\n"
    "2=26.96500,AM\n"
    "3=27.40500,NFM\n"
    "4=76.00000,WFM\n"
    "5=108.00000,WFM\n"
    "6=108.00000,AM\n"
    "7=137.00000,AM\n"
    "8=144.00000,NFM\n"
    "9=146.00000,NFM\n"
    "10=156.00000,NFM\n"
    "11=162.02500,NFM\n"
    "12=430.00000,NFM\n"
    "13=440.00000,NFM\n"
    "14=446.00625,NFM\n"
    "15=446.09375,NFM\n"
    "16=0.10000,AUTO\n"
    "17=1299.00000,AUTO\n";

TEST_F(Limits, are_shown_as_text_and_as_JSON) {
    EXPECT_EQ(run({"limits", image_}), done(kShown));
    EXPECT_EQ(run({"limits", "-", "--format", "text"}, text("radio.120")), done(kShown));
    const Ended shown = run({"limits", image_, "--format", "json"});
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.errors, "");
    std::string lines;
    double number = 0;
    const Json json = read_json(shown.output);
    for (const Json& limit : json.array()) {
        EXPECT_EQ(limit.names(), (Words{"limit", "freq", "mode"}));
        EXPECT_EQ(limit["limit"].number(), number);
        lines += std::to_string(static_cast<int>(number++)) + "=" + limit["freq"].text() + "," +
                 limit["mode"].text() + "\n";
    }
    EXPECT_EQ(lines, kShown);
    EXPECT_EQ(text("radio.120"), Image(radio::demonstration_memory()).text());
}

TEST_F(Limits, without_a_frequency_are_shown_empty) {
    const std::string shown = run({"limits", "-"}, Image().text()).output;
    EXPECT_THAT(shown, ::testing::StartsWith("0=,AUTO\n1=,AUTO\n"));
    const Json json = read_json(run({"limits", "-", "--format", "json"}, Image().text()).output);
    EXPECT_EQ(json.array().size(), 18U);
    EXPECT_EQ(json.array()[17]["freq"].text(), "");
}

TEST_F(Limits, each_changes_the_bytes_of_its_record_alone) {
    SeededRandom random;
    const std::pair<const char*, std::vector<std::uint8_t>> modes[] = {
        {"AUTO", {0}}, {"NFM", {1}}, {"WFM", {2}}, {"AM", {3}}};
    for (int limit = 0; limit < 18; ++limit) {
        std::string before;
        for (int i = 0; i < 7500; ++i) before += static_cast<char>(random.byte());
        const auto record = static_cast<std::size_t>(offset_of(limit));
        for (const auto& [mode, bits] : modes) {
            put_text("any.120", before);
            std::string after = before;
            after[record] = '\x14';
            after[record + 1] = '\x55';
            after[record + 2] = '\x12';
            // "50" below the kilohertz, the mode, and bits 2 to 4 as they were.
            after[record + 3] = static_cast<char>((before[record + 3] & 0x1C) | 0x40 | bits[0]);
            const std::string change = std::to_string(limit) + "=145.5125," + mode;
            EXPECT_EQ(run({"limits", "any.120", change}), done());
            EXPECT_TRUE(text("any.120") == after) << change;
        }
    }
}

TEST_F(Limits, keep_their_mode_where_none_is_given_and_the_others_stay_empty) {
    put("radio.120", Image().set(offset_of(3) + 3, {0xFF}));
    EXPECT_EQ(run({"limits", image_, "3=27.405"}), done());
    EXPECT_EQ(text("radio.120"), Image().set(offset_of(3), {0x02, 0x74, 0x05, 0x1F}).text());
    EXPECT_THAT(run({"limits", image_}).output,
                ::testing::HasSubstr("\n2=,AUTO\n3=27.40500,AM\n4=,AUTO\n"));
}

TEST_F(Limits, frequencies_are_corrected_as_in_the_window) {
    const std::pair<const char*, const char*> all[] = {
        {"145", "145.00000"},       {"145.", "145.00000"},
        {".5", "0.50000"},          {"0", "0.00000"},
        {"145.51233", "145.51200"}, {"145.5125", "145.51250"},
        {"145.51275", "145.51275"}, {"145.1234567", "145.12300"},
        {"2000", "1299.00000"},     {"1299.99999", "1299.99900"},
        {"339.5", "340.00000"},     {"383.5", "385.00000"},
        {"383.3", "383.30000"},     {"870.5", "894.00000"},
        {"0145.5", "145.50000"},    {"1300", "1299.00000"},
        {"145.5 MHz", "145.50000"},
    };
    for (const auto& [given, shown] : all) {
        EXPECT_EQ(run({"limits", image_, std::string("9=") + given + ",NFM"}), done());
        EXPECT_THAT(run({"limits", image_}).output,
                    ::testing::HasSubstr("\n9=" + std::string(shown) + ",NFM\n"))
            << given;
    }
}

TEST_F(Limits, several_are_changed_at_once_here_or_in_another_file) {
    const std::string before = text("radio.120") + "rest";
    put_text("radio.120", before);
    const std::string after = Image(radio::demonstration_memory())
                                  .set(6912, {0x14, 0x40, 0x00, 0x01, 0x14, 0x60, 0x00, 0x03})
                                  .rest("rest")
                                  .text();
    EXPECT_EQ(run({"limits", image_, "0=144,NFM", "1=146", "--output", "out.120"}), done());
    EXPECT_EQ(text("out.120"), after);
    EXPECT_EQ(run({"limits", image_, "0=144,NFM", "1=146", "--output=-"}), done(after));
    EXPECT_EQ(run({"limits", "-", "0=144,NFM", "1=146"}, before), done(after));
    EXPECT_EQ(text("radio.120"), before);
    EXPECT_EQ(run({"limits", image_, "0=144,NFM", "1=146"}), done());
    EXPECT_EQ(text("radio.120"), after);
}

TEST_F(Limits, without_a_change_are_copied_with_the_rest_of_the_file) {
    const std::string before = text("radio.120") + "rest";
    put_text("radio.120", before);
    EXPECT_EQ(run({"limits", image_, "--output", "out.120"}), done());
    EXPECT_EQ(text("out.120"), before);
    EXPECT_EQ(run({"limits", image_, "--output", "-"}), done(before));
}

TEST_F(Limits, that_are_shown_can_be_given_back) {
    Words arguments = {"limits", image_};
    std::istringstream lines(kShown);
    for (std::string line; std::getline(lines, line);) arguments.push_back(line);
    EXPECT_EQ(run(arguments), done());
    EXPECT_EQ(text("radio.120"), Image(radio::demonstration_memory()).text());
}

TEST_F(Limits, wrong_changes_change_nothing) {
    const std::string form = ": a change is N=FREQ or N=FREQ,MODE, with N from 0 to 17.";
    const std::string modes = " is no mode: it is AUTO, NFM, WFM or AM.";
    const std::pair<std::string, std::string> all[] = {
        {"145", "\"145\"" + form},
        {"18=145", "\"18=145\"" + form},
        {"=145", "\"=145\"" + form},
        {"a=145", "\"a=145\"" + form},
        {"1a=145", "\"1a=145\"" + form},
        {"1=", "\"1=\": \"\" is no frequency in MHz, such as 145.5."},
        {"1=,NFM", "\"1=,NFM\": \"\" is no frequency in MHz, such as 145.5."},
        {"1=abc", "\"1=abc\": \"abc\" is no frequency in MHz, such as 145.5."},
        {"1=-5", "\"1=-5\": \"-5\" is no frequency in MHz, such as 145.5."},
        {"1=145,", "\"1=145,\": \"\"" + modes},
        {"1=145,nfm", "\"1=145,nfm\": \"nfm\"" + modes},
        {"1=145,5", "\"1=145,5\": \"5\"" + modes},
        {"1=145,NFM,", "\"1=145,NFM,\": \"NFM,\"" + modes},
    };
    for (const auto& [change, what] : all) {
        EXPECT_EQ(run({"limits", image_, "0=100", change}), wrong(what));
    }
    EXPECT_EQ(text("radio.120"), Image(radio::demonstration_memory()).text());
}

}  // namespace
}  // namespace memwright::cli_tests
