// export and import: the bytes of CSV files and of the images they are taken into.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "cli/support/running_cli.h"

namespace memwright::cli_tests {
namespace {

using ::testing::HasSubstr;

const std::string kHeader = "Ch,MHz,Mode,Pref,Label\r\n";

Image image_to_export() {
    Image image;
    image.channel(1, "TOWER", "118.1", "AM", "On").channel(128, "Z\xFCr\x80\x81", "145.5125");
    return image;
}

const std::string kExported =
    kHeader + "0,118.10000,AM,p,\"TOWER\"\r\n163,145.51250,NFM,,\"Z\xFCr\x80\x81\"\r\n";

class Csv : public CliTest {
  protected:
    std::string image_ = put("radio.120", image_to_export());
};

TEST_F(Csv, is_exported_to_standard_output_or_a_file_in_the_radios_characters) {
    EXPECT_EQ(run({"export", image_}), done(kExported));
    EXPECT_EQ(run({"export", image_, "-"}), done(kExported));
    EXPECT_EQ(run({"export", "-"}, image_to_export().text()), done(kExported));
    EXPECT_EQ(run({"export", "-", "new.csv"}, image_to_export().text()), done());
    EXPECT_EQ(text("new.csv"), kExported);
    put_text("new.csv", std::string(100'000, 'x'));
    EXPECT_EQ(run({"export", image_, "new.csv"}), done());
    EXPECT_EQ(text("new.csv"), kExported);
    EXPECT_EQ(text("radio.120"), image_to_export().text());
    EXPECT_EQ(folder_.names(), (Words{"new.csv", "radio.120"}));
}

TEST_F(Csv, keeps_the_name_that_it_is_given) {
    EXPECT_EQ(run({"export", image_, "list"}), done());
    EXPECT_EQ(folder_.names(), (Words{"list", "radio.120"}));
}

TEST_F(Csv, is_imported_in_place) {
    put_text("new.csv", kHeader + "1,121.5,AM,,\"GUARD\"\r\n163,433.512501,WFM,p,two\r\n");
    EXPECT_EQ(run({"import", image_, "new.csv"}), done());
    EXPECT_EQ(text("radio.120"), image_to_export()
                                     .channel(2, "GUARD", "121.5", "AM")
                                     .channel(128, "two", "433.5125", "WFM", "On")
                                     .text());
}

TEST_F(Csv, is_imported_into_another_file) {
    put_text("new.csv", kHeader + "1,121.5,AM,,\"GUARD\"\r\n");
    const std::string imported = image_to_export().channel(2, "GUARD", "121.5", "AM").text();
    EXPECT_EQ(run({"import", image_, "new.csv", "--output", "out.120"}), done());
    EXPECT_EQ(text("out.120"), imported);
    EXPECT_EQ(run({"import", image_, "new.csv", "--output=-"}), done(imported));
    EXPECT_EQ(run({"import", "-", "new.csv"}, image_to_export().text()), done(imported));
    EXPECT_EQ(run({"import", image_, "-", "--output", "two.120"}, text("new.csv")), done());
    EXPECT_EQ(text("two.120"), imported);
    EXPECT_EQ(text("radio.120"), image_to_export().text());
}

TEST_F(Csv, import_keeps_settings_limits_and_what_lies_behind_the_image) {
    Image image = image_to_export();
    for (int i = layout::kRadioSettings; i < layout::kImageSize; ++i) {
        image.set(i, {static_cast<std::uint8_t>(i * 7)});
    }
    image.rest("and more\n");
    put("radio.120", image);
    put_text("old.120", std::string(9000, 'o'));
    put_text("new.csv", kHeader + "1,121.5,AM,,\"GUARD\"\r\n");
    EXPECT_EQ(run({"import", image_, "new.csv", "--output", "old.120"}), done());
    EXPECT_EQ(run({"import", image_, "new.csv"}), done());
    EXPECT_EQ(text("radio.120"), image.channel(2, "GUARD", "121.5", "AM").text());
    EXPECT_EQ(text("old.120"), text("radio.120"));
}

TEST_F(Csv, lines_in_ranges_that_the_radio_cannot_receive_are_skipped_and_told) {
    put_text("new.csv",
             kHeader + "1,121.5,AM,,A\r\n2,384,AM,,B\r\n3,122,AM,,C\r\n999,870.5,AM,,D\r\n");
    EXPECT_EQ(run({"import", image_, "new.csv"}),
              (Ended{0, "",
                     "Line 3 was skipped: the radio cannot receive 384 MHz.\n"
                     "Line 5 was skipped: the radio cannot receive 870.5 MHz.\n"}));
    EXPECT_EQ(text("radio.120"),
              image_to_export().channel(2, "A", "121.5", "AM").channel(4, "C", "122", "AM").text());
}

struct BadCsv {
    const char* lines;
    const char* place;  // and why
    const char* line;
};

TEST_F(Csv, a_line_that_cannot_be_used_changes_nothing_and_is_told) {
    const BadCsv all[] = {
        {"1,121.5,AM,,A\r\n\r\n2,122,AM,,B\r\n", "line 3 of bad.csv: it is empty", ""},
        {"1,121.5,AM,A\r\n",
         "line 2 of bad.csv: it has 4 fields instead of five: Ch,MHz,Mode,Pref,Label",
         "1,121.5,AM,A"},
        {"1\r\n", "line 2 of bad.csv: it has 1 field instead of five: Ch,MHz,Mode,Pref,Label", "1"},
        {"1,121.5,AM,,A\n2,122,AM,,B\nZ\xFCrich\x1B\n",
         "line 4 of bad.csv: it has 1 field instead of five: Ch,MHz,Mode,Pref,Label",
         "Z\xC3\xBCrich?"},
        {"964,121.5,AM,,A\r\n",
         "line 2 of bad.csv: channel 964 is no memory: banks are 0 to 9, memories 0 to 63",
         "964,121.5,AM,,A"},
    };
    for (const auto& [lines, place, line] : all) {
        put_text("bad.csv", kHeader + lines);
        const std::string end =
            std::string(".\n\n    ") + line +
            "\n\nNothing was written. Correct this line and import the file again.\n";
        const Ended refused = {3, "", "memwright-cli: Cannot import " + std::string(place) + end};
        EXPECT_EQ(run({"import", image_, "bad.csv"}), refused);
        EXPECT_EQ(run({"import", image_, "bad.csv", "--output", "out.120"}), refused);
    }
    EXPECT_EQ(text("radio.120"), image_to_export().text());
    EXPECT_EQ(folder_.names(), (Words{"bad.csv", "radio.120"}));
}

TEST_F(Csv, skipped_lines_are_told_before_the_one_that_ends_the_import) {
    put_text("bad.csv", kHeader + "1,384,AM,,A\r\n\r\n");
    const Ended refused = run({"import", image_, "bad.csv"});
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.errors,
                ::testing::StartsWith("Line 2 was skipped: the radio cannot receive 384 MHz.\n"
                                      "memwright-cli: Cannot import line 3 of bad.csv"));
}

TEST_F(Csv, a_file_that_is_no_text_is_refused) {
    put_text("bad.csv", kHeader + std::string(2 * 1024 * 1024, 'x'));
    const Ended refused = run({"import", image_, "bad.csv"});
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.errors,
                HasSubstr("line 2 of bad.csv: it is longer than 1048576 characters"));
    EXPECT_EQ(text("radio.120"), image_to_export().text());
}

TEST_F(Csv, of_many_lines_is_imported_without_a_progress_bar_in_a_file) {
    std::string lines = kHeader;
    for (int i = 0; i < 20'000; ++i) lines += "1,121.5,AM,,GUARD\r\n";
    put_text("new.csv", lines);
    EXPECT_EQ(run({"import", image_, "new.csv"}), done());
    EXPECT_EQ(text("radio.120"), image_to_export().channel(2, "GUARD", "121.5", "AM").text());
}

TEST_F(Csv, of_many_pieces_tells_each_percent_once_at_a_terminal) {
    // A heading may be of any length.
    put_text("new.csv", std::string(8 * 1024 * 1024, 'x') + "\r\n1,121.5,AM,,GUARD\r\n");
    Terminal terminal;
    auto with_terminal = command({"import", image_, "new.csv"});
    with_terminal.errors = terminal.path();
    RunningCli cli(with_terminal);
    EXPECT_EQ(cli.end().status, 0);
    std::istringstream bars(terminal.shown());
    std::string bar;
    std::getline(bars, bar, '\r');
    for (int percent = 0; percent < 100; ++percent) {
        const std::string number = (percent < 10 ? "  " : " ") + std::to_string(percent);
        ASSERT_TRUE(std::getline(bars, bar, '\r'));
        EXPECT_THAT(bar, ::testing::EndsWith("] " + number + "%"));
    }
    EXPECT_TRUE(std::getline(bars, bar));
    EXPECT_EQ(bar, "");
    EXPECT_FALSE(std::getline(bars, bar));
    EXPECT_EQ(text("radio.120"), image_to_export().channel(2, "GUARD", "121.5", "AM").text());
}

TEST_F(Csv, exported_and_imported_into_an_empty_image_is_the_same_list) {
    put("empty.120", Image());
    EXPECT_EQ(run({"export", image_, "list.csv"}), done());
    EXPECT_EQ(run({"import", "empty.120", "list.csv"}), done());
    EXPECT_EQ(run({"export", "empty.120"}), done(kExported));
    EXPECT_EQ(text("empty.120"), text("radio.120"));
}

}  // namespace
}  // namespace memwright::cli_tests
