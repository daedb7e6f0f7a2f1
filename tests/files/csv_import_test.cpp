// What the lines of a CSV file become in the table.

#include <gmock/gmock.h>

#include <map>

#include "files/csv_test.h"
#include "files/line_reader.h"
#include "image/blocked_ranges.h"

namespace memwright {
namespace {

using testing::HasSubstr;

class Import : public CsvTest {
  protected:
    // The rows that are not as they were at the start.
    std::map<int, Channel> filled() const {
        std::map<int, Channel> rows;
        for (int number = 1; number <= layout::kMemories; ++number) {
            if (row(number) != Channel{"", "", "", ""}) rows[number] = row(number);
        }
        return rows;
    }
    using Rows = std::map<int, Channel>;

    // A file whose last line cannot be used leaves the lines before it as they stand in the file.
    Channel as_it_stands(const std::string& line) {
        EXPECT_THAT(import_lines(line + "\r\nbad\r\n"), HasSubstr("Cannot import line 3 of "));
        return row(1);
    }
};

TEST_F(Import, fills_the_row_of_each_line_and_no_other) {
    EXPECT_EQ(import_lines("0,145.51250,NFM,,\"A 1\"\r\n"
                           "5,118.10000,AM,p,\"TOWER\"\r\n"
                           "100,433.50000,WFM,p,\"B\"\r\n"
                           "963,1299.00000,WFM,,\"LAST\"\r\n"),
              "imported");
    EXPECT_EQ(filled(), (Rows{{1, {"A 1", "145.51250", "NFM", "Off"}},
                              {6, {"TOWER", "118.10000", "AM", "On"}},
                              {65, {"B", "433.50000", "WFM", "On"}},
                              {640, {"LAST", "1299.00000", "WFM", "Off"}}}));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(display.shares.empty() && display.notes.empty()) << "nothing is shown";
}

TEST_F(Import, throws_the_first_line_away_whatever_it_holds) {
    for (const std::string& header :
         {std::string("Ch,MHz,Mode,Pref,Label"), std::string(), std::string("x"),
          std::string("7,100,AM,p,\"NO\""), std::string("999,1,2"), std::string("\"open"),
          std::string("7,100,AM,p,\"NO"), std::string("\0\xFF,\t", 4),
          std::string(2 * LineReader::kLongestLine, ',')}) {
        for (const char* const end : {"\r\n", "\n"}) {
            grid.Clear();
            table.initgrid();
            EXPECT_EQ(import_text(header + end + "5,118.10000,AM,p,\"TOWER\"\r\n"), "imported");
            EXPECT_EQ(filled(), (Rows{{6, {"TOWER", "118.10000", "AM", "On"}}}))
                << header.substr(0, 20);
        }
    }
}

TEST_F(Import, of_a_file_without_lines_behind_the_header_changes_nothing) {
    fill(1, {"A", "145.00000"});
    for (const char* const text : {"", "Ch,MHz,Mode,Pref,Label", "Ch,MHz,Mode,Pref,Label\r\n"}) {
        EXPECT_EQ(import_text(text), "imported");
        EXPECT_EQ(filled(), (Rows{{1, {"A", "145.00000"}}}));
    }
}

TEST_F(Import, finds_the_row_by_bank_digit_and_two_digits_of_the_index) {
    const std::map<std::string, int> examples = {
        {"0", 1},     {"5", 6},     {"12", 13},   {"012", 13}, {"63", 64}, {"100", 65},
        {"163", 128}, {"963", 640}, {"099", 100}, {"99", 100}, {"64", 65}, {"1963", 128},
        {"", 1},      {"x07", 8},   {"9x1", 577}, {"Ch", 1},   {"-12", 13}};
    for (const auto& [channel, number] : examples) {
        table.initgrid();
        EXPECT_EQ(import_lines(channel + ",145.00000,NFM,,\"A\"\r\n"), "imported") << channel;
        EXPECT_EQ(filled(), (Rows{{number, {"A", "145.00000"}}})) << channel;
    }
}

TEST_F(Import, takes_every_memory_to_its_own_row) {
    std::string lines;
    Rows wanted;
    for (int i = 0; i < layout::kMemories; ++i) {
        const std::string label = "N" + std::to_string(i);
        lines += std::to_string(i / 64 * 100 + i % 64) + ",145.00000,NFM,,\"" + label + "\"\r\n";
        wanted[i + 1] = {label, "145.00000"};
    }
    EXPECT_EQ(import_lines(lines), "imported");
    EXPECT_EQ(filled(), wanted);
}

TEST_F(Import, lets_the_last_line_of_a_memory_win) {
    EXPECT_EQ(import_lines("5,145.00000,NFM,p,\"FIRST\"\r\n5,118.10000,AM,,\"LAST\"\r\n"),
              "imported");
    EXPECT_EQ(filled(), (Rows{{6, {"LAST", "118.10000", "AM", "Off"}}}));
}

TEST_F(Import, takes_exactly_a_small_p_for_the_preference) {
    EXPECT_EQ(as_it_stands("0,145,AM,p,A").preference, "On");
    for (const std::string other : {"P", "", "On", " p", "p ", "pp", "\"p\"", "1"}) {
        EXPECT_EQ(as_it_stands("0,145,AM," + other + ",A").preference, "Off") << other;
    }
}

TEST_F(Import, takes_quotes_off_a_label_that_has_both_and_cuts_it_to_six_characters) {
    const std::map<std::string, std::string> examples = {{"\"TOWER\"", "TOWER"},
                                                         {"TOWER", "TOWER"},
                                                         {"\"ABCDEFGH\"", "ABCDEF"},
                                                         {"ABCDEFGH", "ABCDEF"},
                                                         {"\"ABCDEF\"", "ABCDEF"},
                                                         {"\"ABC", "\"ABC"},
                                                         {"ABC\"", "ABC\""},
                                                         {"\"ABCDEFGH", "\"ABCDE"},
                                                         {"ABCDEFGH\"", "ABCDEF"},
                                                         {"\"\"", ""},
                                                         {"", ""},
                                                         {"\"", "\""},
                                                         {"\"\"\"", "\""},
                                                         {"\"a\"b\"", "a\"b"},
                                                         {" \"A\"", " \"A\""},
                                                         {"\"A\" ", "\"A\" "},
                                                         {"\" A \"", " A "},
                                                         {"'A'", "'A'"}};
    for (const auto& [field, label] : examples) {
        EXPECT_EQ(as_it_stands("0,145,AM,," + field).tag, label) << field;
    }
}

TEST_F(Import, takes_of_a_label_with_a_comma_what_stands_before_it) {
    EXPECT_EQ(import_lines("0,145.00000,NFM,,\"AIR,1\"\r\n"), "imported");
    EXPECT_EQ(row(1).tag, "\"AIR");
    EXPECT_EQ(import_lines("0,145.00000,NFM,,\"A\",\"B\",,more\r\n"), "imported");
    EXPECT_EQ(row(1).tag, "A") << "further fields are of no matter";
}

TEST_F(Import, takes_frequency_and_mode_as_they_stand_until_the_codec_has_them) {
    const std::map<std::string, std::string> frequencies = {
        {"145.5", "145.50000"},     {"145.5125", "145.51250"}, {"145.51233", "145.51200"},
        {"0145.5", "145.50000"},    {"145", "145.00000"},      {"1299.12375", "1299.12375"},
        {"145.5 MHz", "145.50000"}, {"5.25.7", "5.25000"}};
    for (const auto& [typed, shown] : frequencies) {
        EXPECT_EQ(as_it_stands("0," + typed + ",x y,,A"), (Channel{"A", typed, "x y", "Off"}));
        EXPECT_EQ(import_lines("0," + typed + ",nfm,,\"A \"\r\n"), "imported");
        EXPECT_EQ(row(1), (Channel{"A", shown, "", "Off"})) << typed;
    }
}

TEST_F(Import, brings_the_lines_through_the_image) {
    EXPECT_EQ(import_lines("0,145.5125,NFM,,\"NEW\"\r\n"), "imported");
    const auto bytes = store.MemoryImage.bytes();
    EXPECT_EQ(Bytes(bytes.begin(), bytes.end()).at(0), 0x14);
    EXPECT_EQ(tag_in({bytes.begin(), bytes.end()}), "NEW");
    EXPECT_EQ(grid.TextMatrix(1, columns::kStep), store.GetMemByte(0, 0)) << "shown again";
}

TEST_F(Import, of_a_frequency_that_reads_as_zero_empties_the_memory) {
    for (const char* const frequency : {"", "0", "abc"}) {
        fill(6, {"OLD", "145.00000"});
        EXPECT_EQ(import_lines("5," + std::string(frequency) + ",AM,p,\"X\"\r\n"), "imported");
        EXPECT_TRUE(filled().empty()) << frequency;
    }
}

TEST_F(Import, keeps_memories_that_the_file_does_not_name) {
    fill(1, {"A", "145.00000", "AM", "On"});
    fill(640, {"B", "118.1", "NFM", "Off"});
    EXPECT_EQ(import_lines("5,433.50000,NFM,,\"NEW\"\r\n"), "imported");
    EXPECT_EQ(filled(), (Rows{{1, {"A", "145.00000", "AM", "On"}},
                              {6, {"NEW", "433.50000", "NFM", "Off"}},
                              {640, {"B", "118.10000", "NFM", "Off"}}}));
}

TEST_F(Import, counts_as_a_change_that_is_not_saved) {
    table.SaveVR120Data();
    table.SetChangeCheck();
    const auto reference = table.ChangeCheckSum();
    EXPECT_EQ(import_lines("5,433.50000,NFM,,\"NEW\"\r\n"), "imported");
    EXPECT_EQ(table.ChangeCheckSum(), reference);
    EXPECT_TRUE(table.IsDataChanged());
}

TEST_F(Import, shows_the_image_as_it_was_while_the_save_command_is_disabled) {
    table.SaveVR120Data();
    const MemoryImage before = store.MemoryImage;
    mnuSaveOnly.enabled = false;
    EXPECT_EQ(import_lines("5,433.50000,NFM,,\"NEW\"\r\n"), "imported");
    EXPECT_EQ(store.MemoryImage, before);
    EXPECT_TRUE(filled().empty());
}

// A value inside of each range, as near to its bounds as it gets.
TEST_F(Import, skips_blocked_frequencies_and_notes_each_in_one_go) {
    const std::map<std::string, std::string> ranges = {
        {"338.99901", "339.99999"}, {"350.99901", "351.99999"}, {"371.99901", "372.99999"},
        {"383.38301", "384.99999"}, {"541.99901", "548.99999"}, {"557.99901", "571.99999"},
        {"604.99901", "614.99999"}, {"619.99901", "629.99999"}, {"783.99901", "797.99999"},
        {"806.99901", "819.99999"}, {"823.99901", "848.99999"}, {"868.99901", "893.99999"}};
    std::string lines, notes;
    int number = 1;
    for (const auto& [lower, upper] : ranges) {
        for (const std::string& frequency : {lower, upper}) {
            lines += "5," + frequency + ",NFM,,\"X\"\r\n";
            notes += (notes.empty() ? "" : "\r\n") + std::string("Line ") +
                     std::to_string(++number) + " was skipped: the radio cannot receive " +
                     frequency + " MHz.";
        }
    }
    fill(6, {"OLD", "145.00000"});
    EXPECT_EQ(import_lines(lines + "0,118.10000,AM,,\"A\"\r\n"), "imported");
    EXPECT_EQ(filled(), (Rows{{1, {"A", "118.10000", "AM", "Off"}}, {6, {"OLD", "145.00000"}}}));
    EXPECT_EQ(display.notes, std::vector<std::string>{notes});
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Import, takes_the_bounds_of_blocked_ranges) {
    for (const char* const frequency : {"338.99900", "340.00000", "383.38300", "894.00000"}) {
        EXPECT_EQ(import_lines("0," + std::string(frequency) + ",NFM,,\"A\"\r\n"), "imported");
        EXPECT_EQ(row(1).frequency, frequency);
    }
    EXPECT_TRUE(display.notes.empty());
}

// The frequency is looked at before anything is put into the row.
TEST_F(Import, skips_a_blocked_frequency_of_a_channel_that_is_no_memory) {
    EXPECT_EQ(import_lines("999,339.5,NFM,,\"X\"\r\n0,145.00000,NFM,,\"A\"\r\n"), "imported");
    EXPECT_EQ(filled(), (Rows{{1, {"A", "145.00000"}}}));
    EXPECT_EQ(display.notes,
              std::vector<std::string>{"Line 2 was skipped: the radio cannot receive 339.5 MHz."});
}

TEST_F(Import, notes_no_more_than_the_beginning_of_a_long_frequency) {
    EXPECT_EQ(import_lines("0,339.5" + std::string(5000, '0') + ",NFM,,\"X\"\r\n"), "imported");
    EXPECT_EQ(display.notes,
              std::vector<std::string>{
                  "Line 2 was skipped: the radio cannot receive 339.50000000... MHz."});
    EXPECT_EQ(import_lines("0,339.50000000,NFM,,\"X\"\r\n0,339.500000001,NFM,,\"X\"\r\n"),
              "imported");
    EXPECT_EQ(display.notes.back(),
              "Line 2 was skipped: the radio cannot receive 339.50000000 MHz.\r\n"
              "Line 3 was skipped: the radio cannot receive 339.50000000... MHz.");
}

}  // namespace
}  // namespace memwright
