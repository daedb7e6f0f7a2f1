// Files that an import chooses and reads, and what it says of lines that cannot be used.

#include <gmock/gmock.h>

#include "files/csv_test.h"
#include "files/line_reader.h"

namespace memwright {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using Names = std::vector<std::string>;

class ImportFile : public CsvTest {
  protected:
    void SetUp() override {
        fill(6, {"OLD", "118.1", "am", "On"});
        before = texts();
    }

    std::string report(int line, const std::string& cause, const std::string& text) const {
        return "Cannot import line " + std::to_string(line) + " of " + folder.file("in.csv") +
               ": " + cause + ".\n\n    " + text +
               "\n\nThe lines before it are in the table. Correct this line and import the file "
               "again.";
    }
    void expect_unchanged() {
        EXPECT_EQ(texts(), before);
        EXPECT_EQ(store.MemoryImage, MemoryImage{});
        EXPECT_TRUE(display.notes.empty());
    }

    std::vector<std::string> before;
};

TEST_F(ImportFile, asks_for_a_file_with_its_title_and_filters_in_the_current_folder) {
    import_lines("");
    ASSERT_EQ(dialogs.asked.size(), 1U);
    EXPECT_FALSE(dialogs.asked[0].saving);
    const FileRequest& request = dialogs.asked[0].request;
    EXPECT_EQ(request.title, "Import CSV");
    ASSERT_EQ(request.filters.size(), 2U);
    EXPECT_EQ(request.filters[0].caption, "CSV Files (*.csv)");
    EXPECT_EQ(request.filters[0].patterns, "*.csv");
    EXPECT_EQ(request.filters[1].caption, "All Files (*.*)");
    EXPECT_EQ(request.filters[1].patterns, "*.*");
    EXPECT_EQ(request.folder, native.current_folder());
}

TEST_F(ImportFile, cancelled_in_its_dialog_changes_nothing) {
    dialogs.names.emplace_back(std::nullopt);
    csv.mnuImport_Click();
    expect_unchanged();
    EXPECT_EQ(display.ends, 0);
}

TEST_F(ImportFile, cuts_the_name_at_a_nul_and_adds_nothing_to_it) {
    put_text("list", std::string(kHeader) + "0,145.00000,NFM,,\"RIGHT\"\r\n");
    put_text("list.csv", std::string(kHeader) + "0,145.00000,NFM,,\"WRONG\"\r\n");
    EXPECT_EQ(import_file(folder.file(std::string("list\0.csv", 9))), "imported");
    EXPECT_EQ(shown_tag(), "RIGHT");
    EXPECT_EQ(import_file(folder.file("list")), "imported");
    EXPECT_EQ(shown_tag(), "RIGHT");
}

TEST_F(ImportFile, makes_the_folder_of_the_file_the_current_one) {
    std::filesystem::create_directory(folder.path() / "sub");
    EXPECT_EQ(import_file(put_text("sub/in.csv", kHeader)), "imported");
    EXPECT_EQ(std::filesystem::current_path(), std::filesystem::canonical(folder.path() / "sub"));
}

TEST_F(ImportFile, leaves_the_file_as_it_is) {
    const std::string text = std::string(kHeader) + "0,145,NFM,,\"A\"\n5,339.5,AM,p,B";
    EXPECT_EQ(import_text(text), "imported");
    EXPECT_EQ(text_of("in.csv"), text);
    EXPECT_EQ(folder.names(), Names{"in.csv"});
}

TEST_F(ImportFile, reads_lines_whatever_ends_them) {
    const std::string first = "0,145.00000,NFM,,\"A\"", second = "1,118.10000,AM,p,\"B\"";
    const std::string header = "Ch,MHz,Mode,Pref,Label";
    for (const std::string& text : {
             header + "\r\n" + first + "\r\n" + second + "\r\n",
             header + "\n" + first + "\n" + second + "\n",
             header + "\n" + first + "\r\n" + second + "\n",
             header + "\r\n" + first + "\n" + second + "\r\n",
             header + "\r\n" + first + "\r\n" + second,
             header + "\n" + first + "\n" + second,
             header + "\r\n" + first + "\r\n" + second + "\r",
         }) {
        table.initgrid();
        EXPECT_EQ(import_text(text), "imported") << text;
        EXPECT_EQ(row(1), (Channel{"A", "145.00000", "NFM", "Off"})) << text;
        EXPECT_EQ(row(2), (Channel{"B", "118.10000", "AM", "On"})) << text;
    }
}

TEST_F(ImportFile, puts_a_label_together_in_which_line_feeds_stand) {
    for (const std::string label : {"A\nB", "\n", "\nA", "A\n!", "\n\n\n\n\n\n", "\n\"", "\"\n",
                                    "\"\n\"", "A\"\n\nB", "\r", "A\rB", "A\n\rB"}) {
        for (const char* const end : {"\r\n", "\n", ""}) {
            table.initgrid();
            EXPECT_EQ(import_lines("1,118.10000,AM,,\"BEFORE\"\r\n0,145.00000,NFM,p,\"" + label +
                                   "\"" + end),
                      "imported");
            EXPECT_EQ(row(1), (Channel{label, "145.00000", "NFM", "On"}));
            EXPECT_EQ(row(2).tag, "BEFORE");
        }
        EXPECT_EQ(import_lines("0,145.00000,NFM,,\"" + label + "\"\r\n5,118.10000,AM,,\"\n\"\r\n"),
                  "imported");
        EXPECT_EQ(row(1).tag, label);
        EXPECT_EQ(row(6).tag, "\n");
    }
}

TEST_F(ImportFile, counts_the_lines_that_a_label_takes) {
    EXPECT_EQ(import_lines("0,145.00000,NFM,,\"A\nB\nC\"\r\n964,1,AM,,\"X\"\r\n"),
              report(5, "channel 964 is no memory: banks are 0 to 9, memories 0 to 63",
                     "964,1,AM,,\"X\""));
    EXPECT_EQ(import_lines("964,1,AM,,\"X\nY\"\r\n"),
              report(2, "channel 964 is no memory: banks are 0 to 9, memories 0 to 63",
                     "964,1,AM,,\"X?Y\""));
    EXPECT_EQ(import_lines("0,339.5,AM,,\"X\nY\"\r\n0,339.5,AM,,\"\n\"\r\n"), "imported");
    EXPECT_EQ(display.notes.back(),
              "Line 2 was skipped: the radio cannot receive 339.5 MHz.\r\n"
              "Line 4 was skipped: the radio cannot receive 339.5 MHz.");
}

TEST_F(ImportFile, does_not_take_a_short_line_behind_a_label_for_a_part_of_it) {
    const std::string whole = "0,145.00000,NFM,,\"A\"\n";
    EXPECT_EQ(import_lines(whole + "x\n"),
              report(3, "it has 1 field instead of five: Ch,MHz,Mode,Pref,Label", "x"));
    EXPECT_EQ(import_lines(whole + "\n"), report(3, "it is empty", ""));
    EXPECT_EQ(
        import_lines(whole + "much too long\"\n"),
        report(3, "it has 1 field instead of five: Ch,MHz,Mode,Pref,Label", "much too long\""));
    EXPECT_EQ(row(1).tag, "A");
    EXPECT_EQ(import_lines("0,145.00000,NFM,,\"A\nB\"\r\nx\"\r\n"),
              report(4, "it has 1 field instead of five: Ch,MHz,Mode,Pref,Label", "x\""))
        << "a label ends where a line ends with CR LF";
    EXPECT_EQ(row(1).tag, "A\nB");
}

TEST_F(ImportFile, puts_together_only_what_a_quoted_label_can_be) {
    const std::string cause = "it has 1 field instead of five: Ch,MHz,Mode,Pref,Label";
    EXPECT_EQ(import_lines("0,145.00000,NFM,,A\nx\"\n"), report(3, cause, "x\""))
        << "it has no quote in front";
    EXPECT_EQ(import_lines("0,145.00000,NFM,,\"A\",B\nx\"\n"), report(3, cause, "x\""))
        << "it does not end the line";
    EXPECT_EQ(import_lines("0,145.00000,NFM,,\"ABC\nDEF\"\n"), report(3, cause, "DEF\""))
        << "it has seven characters";
    EXPECT_EQ(import_lines("0,145.00000,NFM,,\"A\nB\"\nx\n"), report(4, cause, "x"))
        << "it has ended";
    EXPECT_EQ(import_lines("0,145.00000,NFM,,\"ABCDEFGH\"\n"), "imported");
    EXPECT_EQ(row(1).tag, "ABCDEF");
}

TEST_F(ImportFile, takes_the_shortest_line_behind_an_empty_label_for_a_line) {
    fill(1, {"GOES", "145.00000"});
    EXPECT_EQ(import_lines("5,145.00000,NFM,,\"\"\n,,,,\"\n1,118.10000,AM,,\"B\"\n"), "imported");
    EXPECT_EQ(row(6), (Channel{"", "145.00000"}));
    EXPECT_EQ(row(1), (Channel{"", "", "", ""})) << "no channel and no frequency";
    EXPECT_EQ(row(2).tag, "B");
}

TEST_F(ImportFile, reports_too_few_fields) {
    const std::string fields = " instead of five: Ch,MHz,Mode,Pref,Label";
    EXPECT_EQ(import_lines("5\r\n"), report(2, "it has 1 field" + fields, "5"));
    EXPECT_EQ(import_lines("5,145\r\n"), report(2, "it has 2 fields" + fields, "5,145"));
    EXPECT_EQ(import_lines("5,145,AM\r\n"), report(2, "it has 3 fields" + fields, "5,145,AM"));
    EXPECT_EQ(import_lines("5,145,AM,p\r\n"), report(2, "it has 4 fields" + fields, "5,145,AM,p"));
    EXPECT_EQ(import_lines("5;145;AM;p;X\n"), report(2, "it has 1 field" + fields, "5;145;AM;p;X"));
    expect_unchanged();
}

TEST_F(ImportFile, reports_an_empty_line_wherever_it_stands) {
    EXPECT_EQ(import_lines("\r\n"), report(2, "it is empty", ""));
    EXPECT_EQ(import_lines("\r\n0,145,AM,,A\r\n"), report(2, "it is empty", ""));
    expect_unchanged();
    EXPECT_EQ(import_lines("0,145,AM,,A\r\n\r\n"), report(3, "it is empty", ""));
}

TEST_F(ImportFile, reports_channels_that_are_no_memories) {
    for (const std::string channel : {"964", "999", "970", "9864"}) {
        EXPECT_EQ(
            import_lines(channel + ",145,AM,,\"X\"\r\n"),
            report(2, "channel " + channel + " is no memory: banks are 0 to 9, memories 0 to 63",
                   channel + ",145,AM,,\"X\""));
    }
    expect_unchanged();
}

TEST_F(ImportFile, shows_of_a_bad_line_no_more_than_its_beginning_and_no_control_characters) {
    EXPECT_EQ(import_lines("x\ty\x01z\r\n"),
              report(2, "it has 1 field instead of five: Ch,MHz,Mode,Pref,Label", "x?y?z"));
    EXPECT_EQ(import_lines(std::string(121, 'x') + "\r\n"),
              report(2, "it has 1 field instead of five: Ch,MHz,Mode,Pref,Label",
                     std::string(120, 'x') + " ..."));
    EXPECT_EQ(
        import_lines(std::string(120, 'x') + "\r\n"),
        report(2, "it has 1 field instead of five: Ch,MHz,Mode,Pref,Label", std::string(120, 'x')));
    EXPECT_EQ(import_lines("\x80\xFC\r\n"),
              report(2, "it has 1 field instead of five: Ch,MHz,Mode,Pref,Label",
                     "\xE2\x82\xAC\xC3\xBC"));
}

TEST_F(ImportFile, shows_of_a_long_channel_no_more_than_its_beginning) {
    EXPECT_EQ(import_lines(std::string(50000, '9') + ",145,AM,,\"X\"\r\n"),
              report(2, "channel 999999999999... is no memory: banks are 0 to 9, memories 0 to 63",
                     std::string(120, '9') + " ..."));
}

TEST_F(ImportFile, that_fails_leaves_the_lines_before_in_the_table_and_the_image_alone) {
    const std::string text = import_lines(
        "0,145.5,nfm,p,\"AB  \"\r\n"
        "1,339.5,NFM,,\"X\"\r\n"
        "2,bad\r\n"
        "3,145.00000,NFM,,\"AFTER\"\r\n");
    EXPECT_THAT(text, StartsWith("Cannot import line 4 of "));
    EXPECT_EQ(row(1), (Channel{"AB  ", "145.5", "nfm", "On"})) << "not brought into form";
    EXPECT_EQ(row(3), (Channel{"", "", "", ""}));
    EXPECT_EQ(row(4), (Channel{"", "", "", ""}));
    EXPECT_EQ(row(6), (Channel{"OLD", "118.1", "am", "On"}));
    EXPECT_EQ(store.MemoryImage, MemoryImage{});
    EXPECT_EQ(display.notes,
              std::vector<std::string>{"Line 3 was skipped: the radio cannot receive 339.5 MHz."});
    EXPECT_EQ(display.ends, 1);
}

TEST_F(ImportFile, can_be_corrected_and_imported_again) {
    EXPECT_NE(import_lines("0,145.5,NFM,p,\"AB\"\r\n2,bad\r\n"), "imported");
    EXPECT_EQ(import_lines("0,145.5,NFM,p,\"AB\"\r\n2,146,AM,,\"C\"\r\n"), "imported");
    EXPECT_EQ(row(1), (Channel{"AB", "145.50000", "NFM", "On"}));
    EXPECT_EQ(row(3), (Channel{"C", "146.00000", "AM", "Off"}));
    EXPECT_EQ(row(6), (Channel{"OLD", "118.10000", "", "On"}));
}

TEST_F(ImportFile, a_line_without_an_end_is_reported_and_not_shown_whole) {
    const std::string text = import_lines("0,145,NFM,,A\r\n1,145,NFM,," +
                                          std::string(3 * LineReader::kLongestLine, 'x'));
    EXPECT_EQ(text, report(3, "it is longer than 1048576 characters",
                           "1,145,NFM,," + std::string(120 - 11, 'x') + " ..."));
    EXPECT_EQ(row(1), (Channel{"A", "145"}));
}

TEST_F(ImportFile, a_missing_file_is_an_error_and_not_created) {
    const std::string path = folder.file("missing.csv");
    EXPECT_THAT(import_file(path), StartsWith("Cannot open " + path + ": "));
    EXPECT_TRUE(folder.names().empty());
    expect_unchanged();
}

TEST_F(ImportFile, a_folder_is_refused) {
    std::filesystem::create_directory(folder.path() / "sub.csv");
    const std::string path = folder.file("sub.csv");
    EXPECT_THAT(import_file(path), StartsWith("Cannot open " + path + ": it is a folder."));
    expect_unchanged();
}

TEST_F(ImportFile, that_cannot_be_read_at_all_changes_nothing) {
    files.reading_fails = true;
    EXPECT_EQ(import_lines("0,145.00000,NFM,,\"A\"\r\n"),
              "Cannot read " + folder.file("in.csv") + ": the disk is gone.");
    expect_unchanged();
    EXPECT_EQ(display.ends, 1);
}

}  // namespace
}  // namespace memwright
