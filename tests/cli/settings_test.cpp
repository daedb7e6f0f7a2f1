// settings: every one of them has its bits in the image, and nothing else is touched.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "cli/support/cli_test.h"
#include "cli/support/json.h"
#include "fakes/seeded_random.h"
#include "radio/demonstration.h"

namespace memwright::cli_tests {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

// Where a setting lies, and what its bits are for its first, second... choice.
struct Row {
    const char* name;
    int offset;
    int bit;  // -1 for the whole byte
    Words choices;
};

const std::vector<Row> kRows = {
    {"scan-resume",
     6669,
     -1,
     {"1 Sec", "2 Sec", "3 Sec", "4 Sec", "5 Sec", "6 Sec", "7 Sec", "8 Sec", "9 Sec", "10 Sec",
      "11 Sec", "12 Sec"}},
    {"battery-save", 6667, -1, {"Off", "1 Sec", "3 Sec", "5 Sec", "7 Sec", "9 Sec"}},
    {"search-width", 6671, -1, {"5 MHz", "10 MHz", "50 MHz", "100 MHz"}},
    {"attenuator", 6673, 2, {"OFF", "ON"}},
    {"am-antenna", 6676, 0, {"External", "Bar"}},
    {"fm-antenna", 6677, 2, {"External", "Earphone"}},
    {"key-beep", 6676, 3, {"ON", "OFF"}},
    {"s-meter-beep", 6677, 5, {"OFF", "ON"}},
    {"s-meter-sens", 6677, 6, {"Normal", "Low"}},
    {"lamp", 6666, -1, {"AUTO", "ON", "OFF"}},
    {"smart-search", 6677, 3, {"Single", "Continue"}},
    {"keypad-lock", 6673, 6, {"OFF", "ON"}},
    {"fast-step", 6662, -1, {"10 KHz", "100 KHz", "1 MHz", "10 MHz", "100 MHz"}},
    {"search", 6676, 4, {"VFO", "Limit"}},
    {"scan-mode", 6676, 3, {"All", "Bank"}},
};

// An image file with anything in it, but for the settings that are numbers of choices.
std::string random_file(SeededRandom& random) {
    std::string file;
    for (int i = 0; i < 7392 + 100; ++i) file += static_cast<char>(random.byte());
    for (const Row& row : kRows) {
        const int last = static_cast<int>(row.choices.size()) - 1;
        if (row.bit < 0)
            file[static_cast<std::size_t>(row.offset)] = static_cast<char>(random.between(0, last));
    }
    return file;
}

void store(std::string& file, const Row& row, int choice) {
    char& byte = file[static_cast<std::size_t>(row.offset)];
    if (row.bit < 0) {
        byte = static_cast<char>(choice);
    } else {
        byte = static_cast<char>((byte & ~(1 << row.bit)) | (choice << row.bit));
    }
}

class Settings : public CliTest {
  protected:
    std::string image_ = put("radio.120", Image(radio::demonstration_memory()));

    Ended wrong(const std::string& what) const {
        return {2, "",
                "memwright-cli: " + what +
                    "\nUsage: memwright-cli settings IMAGE [NAME=VALUE]... [--format text|json] "
                    "[--output OUT]\n"};
    }
};

TEST_F(Settings, are_shown_by_their_names) {
    const std::string shown =
        "scan-resume=5 Sec\n"
        "battery-save=3 Sec\n"
        "search-width=10 MHz\n"
        "attenuator=OFF\n"
        "am-antenna=Bar\n"
        "fm-antenna=External\n"
        "key-beep=ON\n"
        "s-meter-beep=ON\n"
        "s-meter-sens=Normal\n"
        "lamp=AUTO\n"
        "smart-search=Continue\n"
        "keypad-lock=OFF\n"
        "fast-step=100 KHz\n"
        "search=Limit\n"
        "scan-mode=All\n"
        "linked-scan-bands=0,1,2,3,4,5,9\n";
    EXPECT_EQ(run({"settings", image_}), done(shown));
    EXPECT_EQ(run({"settings", "-"}, text("radio.120")), done(shown));
    EXPECT_EQ(text("radio.120"), Image(radio::demonstration_memory()).text());
}

TEST_F(Settings, as_JSON_are_one_object) {
    const Ended shown = run({"settings", image_, "--format", "json"});
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.errors, "");
    const Json json = read_json(shown.output);
    std::string lines;
    for (const auto& [name, value] : json.object()) lines += name + "=" + value.text() + "\n";
    EXPECT_EQ(lines, run({"settings", image_}).output);
}

TEST_F(Settings, every_choice_changes_the_bits_of_its_setting_alone) {
    SeededRandom random;
    for (const Row& row : kRows) {
        for (std::size_t i = 0; i < row.choices.size(); ++i) {
            const std::string before = random_file(random);
            std::string after = before;
            store(after, row, static_cast<int>(i));
            put_text("any.120", before);
            const std::string change = std::string(row.name) + "=" + row.choices[i];
            EXPECT_EQ(run({"settings", "any.120", change}), done());
            EXPECT_TRUE(text("any.120") == after) << change;
            EXPECT_THAT(run({"settings", "any.120"}).output, HasSubstr(change + "\n"));
        }
    }
}

TEST_F(Settings, linked_bands_have_a_bit_each) {
    SeededRandom random;
    for (int round = 0; round < 20; ++round) {
        const std::string before = random_file(random);
        std::string after = before;
        std::string list;
        for (int band = 0; band < 10; ++band) {
            const bool linked = round == 0 || (round > 1 && random.coin());
            if (linked) list += (list.empty() ? "" : ",") + std::to_string(band);
            store(after, {"", 6688 + band / 8, band % 8, {}}, linked ? 1 : 0);
        }
        put_text("any.120", before);
        EXPECT_EQ(run({"settings", "any.120", "linked-scan-bands=" + list}), done());
        EXPECT_TRUE(text("any.120") == after) << list;
        EXPECT_THAT(run({"settings", "any.120"}).output,
                    ::testing::EndsWith("\nlinked-scan-bands=" + list + "\n"));
    }
}

TEST_F(Settings, several_are_changed_at_once_and_may_come_in_any_case) {
    EXPECT_EQ(
        run({"settings", image_, "scan-resume=12 sec", "linked-scan-bands=9,0,3", "LAMP=auto"}),
        wrong("There is no setting \"LAMP\". Settings: scan-resume, battery-save, search-width, "
              "attenuator, am-antenna, fm-antenna, key-beep, s-meter-beep, s-meter-sens, lamp, "
              "smart-search, keypad-lock, fast-step, search, scan-mode, linked-scan-bands."));
    EXPECT_EQ(run({"settings", image_, "scan-resume=12 sec", "linked-scan-bands=9,0,3", "lamp=on"}),
              done());
    EXPECT_EQ(text("radio.120"), Image(radio::demonstration_memory())
                                     .set(6669, {11})
                                     .set(6688, {0x09, 0x02})
                                     .set(6666, {1})
                                     .text());
}

TEST_F(Settings, scan_mode_and_key_beep_are_one_bit) {
    EXPECT_EQ(run({"settings", image_, "scan-mode=Bank"}), done());
    EXPECT_THAT(run({"settings", image_}).output, HasSubstr("key-beep=OFF\n"));
    EXPECT_EQ(run({"settings", image_, "key-beep=ON"}), done());
    EXPECT_THAT(run({"settings", image_}).output, HasSubstr("scan-mode=All\n"));
    EXPECT_EQ(run({"settings", image_, "key-beep=OFF", "scan-mode=Bank"}), done());
    EXPECT_THAT(run({"settings", image_}).output, HasSubstr("key-beep=OFF\n"));
    const std::string before = text("radio.120");
    for (const auto& [mode, beep] : {std::pair("All", "OFF"), {"Bank", "ON"}}) {
        const std::string a = std::string("scan-mode=") + mode, b = std::string("key-beep=") + beep;
        const Ended refused = wrong(a + " and " + b +
                                    " exclude each other: the radio keeps both in one place, where "
                                    "Bank goes with OFF and All with ON.");
        EXPECT_EQ(run({"settings", image_, a, b}), refused);
        EXPECT_EQ(run({"settings", image_, b, a}), refused);
    }
    EXPECT_EQ(text("radio.120"), before);
}

TEST_F(Settings, what_is_shown_can_be_given_back) {
    SeededRandom random;
    const std::string before = random_file(random);
    put_text("any.120", before);
    Words arguments = {"settings", "any.120"};
    std::istringstream lines(run(arguments).output);
    for (std::string line; std::getline(lines, line);) arguments.push_back(line);
    ASSERT_EQ(arguments.size(), 18U);
    EXPECT_EQ(run(arguments), done());
    EXPECT_TRUE(text("any.120") == before);
}

TEST_F(Settings, go_into_another_file_with_output) {
    const std::string before = text("radio.120") + "rest";
    put_text("radio.120", before);
    const std::string after = Image(radio::demonstration_memory()).set(6666, {2}).text() + "rest";
    put_text("out.120", std::string(10'000, 'o'));
    EXPECT_EQ(run({"settings", image_, "lamp=OFF", "--output", "out.120"}), done());
    EXPECT_EQ(text("out.120"), after);
    EXPECT_EQ(run({"settings", image_, "lamp=OFF", "--output", "-"}), done(after));
    EXPECT_EQ(run({"settings", "-", "lamp=OFF"}, before), done(after));
    EXPECT_EQ(text("radio.120"), before);
    EXPECT_EQ(run({"settings", image_, "--output", "copy.120"}), done());
    EXPECT_EQ(text("copy.120"), before);
}

TEST_F(Settings, wrong_changes_change_nothing) {
    const std::pair<const char*, const char*> all[] = {
        {"lamp", "\"lamp\" is no NAME=VALUE."},
        {"lamp=", "\"\" is no choice of lamp: it is AUTO, ON or OFF."},
        {"lamp=1", "\"1\" is no choice of lamp: it is AUTO, ON or OFF."},
        {"lamp= ON", "\" ON\" is no choice of lamp: it is AUTO, ON or OFF."},
        {"scan-mode=bnk", "\"bnk\" is no choice of scan-mode: it is Bank or All."},
        {"search-width=5MHz",
         "\"5MHz\" is no choice of search-width: it is 5 MHz, 10 MHz, 50 MHz or 100 MHz."},
        {"linked-scan-bands=10", "\"10\" is no list of bands such as 0,3,9."},
        {"linked-scan-bands=0,", "\"0,\" is no list of bands such as 0,3,9."},
        {"linked-scan-bands=,0", "\",0\" is no list of bands such as 0,3,9."},
        {"linked-scan-bands=0;3", "\"0;3\" is no list of bands such as 0,3,9."},
        {"linked-scan-bands=a", "\"a\" is no list of bands such as 0,3,9."},
    };
    for (const auto& [change, what] : all) {
        EXPECT_EQ(run({"settings", image_, "attenuator=ON", change}), wrong(what));
    }
    EXPECT_THAT(run({"settings", image_, "=ON"}).errors,
                StartsWith("memwright-cli: There is no setting \"\". "));
    EXPECT_EQ(text("radio.120"), Image(radio::demonstration_memory()).text());
}

// Bytes that are no position in their list, as the window refuses them.
TEST_F(Settings, that_no_list_has_are_bad_input_with_file_and_place) {
    for (const Row& row : kRows) {
        if (row.bit >= 0) continue;
        const int first_wrong = static_cast<int>(row.choices.size());
        for (const int value : {first_wrong, 255}) {
            Image image;
            image.set(row.offset, {static_cast<std::uint8_t>(value)});
            put("odd.120", image);
            for (const Words& changes : {Words{}, Words{"attenuator=ON"}}) {
                const Ended refused = run(Words{"settings", "odd.120"} + changes);
                EXPECT_EQ(refused.status, 3);
                EXPECT_EQ(refused.output, "");
                EXPECT_THAT(refused.errors,
                            StartsWith("memwright-cli: odd.120: The settings cannot be shown: \""));
                EXPECT_THAT(refused.errors,
                            HasSubstr("at offset " + std::to_string(row.offset) +
                                      " of the memory image, is " + std::to_string(value)));
                EXPECT_THAT(refused.errors, HasSubstr("\nNothing was changed. Choose"));
            }
            EXPECT_EQ(text("odd.120"), image.text());
        }
    }
}

}  // namespace
}  // namespace memwright::cli_tests
