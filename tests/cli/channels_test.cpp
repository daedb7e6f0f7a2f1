// channels: what the table shows, in three formats.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/support/cli_test.h"
#include "cli/support/json.h"
#include "radio/demonstration.h"

namespace memwright::cli_tests {
namespace {

// "Zürich €" and so on, in the radio's character set; what a terminal would take for commands; and
// what other formats take for their own.
const char* const kForeign = "Z\xFCr\x80";
const char* const kQuotes = "\"\\,'";
const char* const kControls = "a\n\x1B\x07\x7F\x81";

Image some_image() {
    Image image;
    image.channel(1, "TOWER", "118.1", "AM", "On")
        .channel(64, kForeign, "145.5125")
        .channel(65, kQuotes, "0.5", "WFM", "On")
        .channel(640, kControls, "1299", "");
    return image;
}

class Channels : public CliTest {
  protected:
    std::string image_ = put("radio.120", some_image());
};

TEST_F(Channels, as_text_are_a_table_of_the_occupied_memories) {
    const std::string table =
        "#            Tag     Freq        Mode  Pref\n"
        "Bank 0 - 0   TOWER   118.10000   AM    On\n"
        "Bank 0 - 63  Z\xC3\xBCr\xE2\x82\xAC    145.51250   NFM   Off\n"
        "Bank 1 - 0   \"\\,'    0.50000     WFM   On\n"
        "Bank 9 - 63  a?????  1299.00000        Off\n";
    EXPECT_EQ(run({"channels", image_}), done(table));
    EXPECT_EQ(run({"channels", "--format", "text", "radio.120"}), done(table));
    EXPECT_EQ(run({"channels", "-"}, some_image().text()), done(table));
}

// In UTF-8 they begin with the byte that others begin with that a terminal might take for commands.
TEST_F(Channels, as_text_show_the_characters_next_to_those_that_are_not_shown) {
    put("signs.120", Image().channel(1, "\x7E\x81\xA0\xA3\xB5\xBF", "145.5"));
    EXPECT_EQ(run({"channels", "signs.120"}),
              done("#            Tag     Freq        Mode  Pref\n"
                   "Bank 0 - 0   ~?\xC2\xA0\xC2\xA3\xC2\xB5\xC2\xBF  145.50000   NFM   Off\n"));
}

TEST_F(Channels, as_csv_are_what_is_exported_but_in_UTF_8) {
    EXPECT_EQ(run({"channels", image_, "--format", "csv"}),
              done("Ch,MHz,Mode,Pref,Label\r\n"
                   "0,118.10000,AM,p,\"TOWER\"\r\n"
                   "63,145.51250,NFM,,\"Z\xC3\xBCr\xE2\x82\xAC\"\r\n"
                   "100,0.50000,WFM,p,\"\"\\,'\"\r\n"
                   "963,1299.00000,,,\"a\n\x1B\x07\x7F\xC2\x81\"\r\n"));
}

TEST_F(Channels, as_JSON_are_objects_with_the_texts_of_the_table) {
    const auto memory = [](double row, double bank, double index, const char* tag, const char* freq,
                           const char* mode, const char* pref) {
        return Json{JsonObject{{"row", {row}},
                               {"bank", {bank}},
                               {"index", {index}},
                               {"tag", {std::string(tag)}},
                               {"freq", {std::string(freq)}},
                               {"mode", {std::string(mode)}},
                               {"pref", {std::string(pref)}}}};
    };
    const Ended json = run({"channels", image_, "--format", "json"});
    EXPECT_EQ(json.status, 0);
    EXPECT_EQ(json.errors, "");
    EXPECT_EQ(
        read_json(json.output),
        (Json{JsonArray{memory(1, 0, 0, "TOWER", "118.10000", "AM", "On"),
                        memory(64, 0, 63, "Z\xC3\xBCr\xE2\x82\xAC", "145.51250", "NFM", "Off"),
                        memory(65, 1, 0, "\"\\,'", "0.50000", "WFM", "On"),
                        memory(640, 9, 63, "a\n\x1B\x07\x7F\xC2\x81", "1299.00000", "", "Off")}}));
}

TEST_F(Channels, every_character_of_the_radio_comes_through_JSON) {
    Image image;
    for (int row = 1; row <= 256; ++row) {
        image.channel(row, "", "100").set(label_of(row), {static_cast<std::uint8_t>(row - 1), '.'});
    }
    const Json json = read_json(run({"channels", "-", "--format", "json"}, image.text()).output);
    ASSERT_EQ(json.array().size(), 256U);
    EXPECT_EQ(json.array()[0]["tag"].text(), std::string("\0.", 2));
    EXPECT_EQ(json.array()[0x1F]["tag"].text(), "\x1F.");
    EXPECT_EQ(json.array()['"']["tag"].text(), "\".");
    EXPECT_EQ(json.array()[0x80]["tag"].text(), "\xE2\x82\xAC.");
    EXPECT_EQ(json.array()[0x81]["tag"].text(), "\xC2\x81.");
    EXPECT_EQ(json.array()[0xFF]["tag"].text(), "\xC3\xBF.");
}

TEST_F(Channels, all_of_them_are_640) {
    const Ended text = run({"channels", image_, "--all"});
    EXPECT_EQ(std::ranges::count(text.output, '\n'), 641);
    EXPECT_THAT(text.output, ::testing::HasSubstr("\nBank 0 - 1\nBank 0 - 2\n"));
    const Json json = read_json(run({"channels", image_, "--all", "--format", "json"}).output);
    ASSERT_EQ(json.array().size(), 640U);
    for (std::size_t i = 0; i < 640; ++i) {
        EXPECT_EQ(json.array()[i]["row"].number(), static_cast<double>(i + 1));
        EXPECT_EQ(json.array()[i]["bank"].number(), static_cast<double>(i / 64));
        EXPECT_EQ(json.array()[i]["index"].number(), static_cast<double>(i % 64));
    }
    EXPECT_EQ(json.array()[1]["freq"].text() + json.array()[1]["tag"].text() +
                  json.array()[1]["mode"].text() + json.array()[1]["pref"].text(),
              "");
    const Ended csv = run({"channels", image_, "--all", "--format", "csv"});
    EXPECT_EQ(std::ranges::count(csv.output, '\r'), 641);
    EXPECT_THAT(csv.output, ::testing::HasSubstr("\r\n1,,,,\"\"\r\n"));
}

TEST_F(Channels, of_an_empty_image_are_none) {
    put("empty.120", Image());
    EXPECT_EQ(run({"channels", "empty.120"}),
              done("#            Tag     Freq        Mode  Pref\n"));
    EXPECT_EQ(run({"channels", "empty.120", "--format", "csv"}),
              done("Ch,MHz,Mode,Pref,Label\r\n"));
    EXPECT_EQ(read_json(run({"channels", "empty.120", "--format", "json"}).output),
              (Json{JsonArray{}}));
}

TEST_F(Channels, a_memory_of_no_megahertz_is_empty_as_in_the_table) {
    EXPECT_EQ(read_json(run({"channels", "-", "--format", "json"}, std::string(7392, '\0')).output),
              (Json{JsonArray{}}));
}

TEST_F(Channels, reading_changes_no_file) {
    for (const char* const format : {"text", "csv", "json"}) {
        run({"channels", image_, "--format", format});
    }
    EXPECT_EQ(folder_.names(), Words{"radio.120"});
    EXPECT_EQ(text("radio.120"), some_image().text());
}

}  // namespace
}  // namespace memwright::cli_tests
