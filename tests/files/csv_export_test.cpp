// The channel list as a CSV file, byte for byte.

#include <gmock/gmock.h>

#include "base/error.h"
#include "files/csv_test.h"

namespace memwright {
namespace {

using testing::HasSubstr;
using Names = std::vector<std::string>;

class Export : public CsvTest {
  protected:
    // The one line that a table of one channel in the first row gives, without its end.
    std::string line_of(const Channel& channel) {
        fill(1, channel);
        const std::string text = exported();
        const std::string header = kHeader;
        EXPECT_TRUE(text.starts_with(header) && text.ends_with("\r\n")) << text;
        if (text.size() < header.size() + 2) return "(no line)";
        return text.substr(header.size(), text.size() - header.size() - 2);
    }
};

TEST_F(Export, asks_for_a_file_with_its_title_and_filters_in_the_current_folder) {
    exported();
    ASSERT_EQ(dialogs.asked.size(), 1U);
    EXPECT_TRUE(dialogs.asked[0].saving);
    const FileRequest& request = dialogs.asked[0].request;
    EXPECT_EQ(request.title, "Save As...");
    ASSERT_EQ(request.filters.size(), 2U);
    EXPECT_EQ(request.filters[0].caption, "CSV Files (*.csv)");
    EXPECT_EQ(request.filters[0].patterns, "*.csv");
    EXPECT_EQ(request.filters[1].caption, "All Files (*.*)");
    EXPECT_EQ(request.filters[1].patterns, "*.*");
    EXPECT_EQ(request.folder, native.current_folder());
}

TEST_F(Export, of_an_empty_table_is_the_header_alone) {
    EXPECT_EQ(exported(), "Ch,MHz,Mode,Pref,Label\r\n");
}

TEST_F(Export, gives_a_line_for_each_occupied_row_from_the_first_to_the_last) {
    fill(640, {"LAST", "1299.00000", "WFM", "Off"});
    fill(65, {"B", "433.50000", "NFM", "On"});
    fill(6, {"TOWER", "118.10000", "AM", "On"});
    fill(1, {"A 1", "145.51250", "NFM", "Off"});
    EXPECT_EQ(exported(),
              "Ch,MHz,Mode,Pref,Label\r\n"
              "0,145.51250,NFM,,\"A 1\"\r\n"
              "5,118.10000,AM,p,\"TOWER\"\r\n"
              "100,433.50000,NFM,p,\"B\"\r\n"
              "963,1299.00000,WFM,,\"LAST\"\r\n");
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(display.shares.empty() && display.notes.empty()) << "nothing is shown";
}

TEST_F(Export, numbers_every_memory_by_a_hundred_times_its_bank_and_its_index) {
    std::string wanted = kHeader;
    for (int i = 0; i < layout::kMemories; ++i) {
        fill(i + 1, {"", "145.00000"});
        wanted += std::to_string(i / 64 * 100 + i % 64) + ",145.00000,NFM,,\"\"\r\n";
    }
    EXPECT_EQ(exported(), wanted);
}

TEST_F(Export, writes_frequency_and_mode_as_the_cells_show_them) {
    EXPECT_EQ(line_of({"A", "145.5", "NFM"}), "0,145.5,NFM,,\"A\"");
    EXPECT_EQ(line_of({"A", "0145.51233 MHz", "x y"}), "0,0145.51233 MHz,x y,,\"A\"");
    EXPECT_EQ(line_of({"A", "9999", ""}), "0,9999,,,\"A\"");
    EXPECT_EQ(row(1), (Channel{"A", "9999", ""})) << "the table stays as it is";
}

TEST_F(Export, writes_a_p_for_exactly_the_preference_On) {
    EXPECT_EQ(line_of({"A", "145", "AM", "On"}), "0,145,AM,p,\"A\"");
    for (const char* const other : {"Off", "", "on", "ON", "On ", "p", "True"}) {
        EXPECT_EQ(line_of({"A", "145", "AM", other}), "0,145,AM,,\"A\"") << other;
    }
}

TEST_F(Export, puts_the_label_between_quotes_and_escapes_nothing) {
    for (const char* const label :
         {"", "AIR,1", "\"", "\"\"", "a\"b", "a  ", " a", "a\nb", "a\r\nb", "too long a label"}) {
        EXPECT_EQ(line_of({label, "145"}), "0,145,NFM,,\"" + std::string(label) + "\"");
    }
}

TEST_F(Export, writes_every_byte_of_a_label_as_it_stands) {
    std::string wanted = kHeader;
    for (int byte = 0; byte < 256; ++byte) {
        const std::string label = {'x', static_cast<char>(byte), 'y'};
        fill(byte + 1, {label, "145"});
        wanted += std::to_string(byte / 64 * 100 + byte % 64) + ",145,NFM,,\"" + label + "\"\r\n";
    }
    EXPECT_EQ(exported(), wanted);
}

TEST_F(Export, leaves_out_rows_whose_frequency_reads_as_zero) {
    int row = 0;
    for (const char* const frequency : {"", "0", "0.00000", "000", ".", "abc", "-145", " 145"}) {
        fill(++row, {"LABEL", frequency, "AM", "On"});
    }
    EXPECT_EQ(exported(), kHeader);
    fill(2, {"LABEL", "0.00001", "AM", "On"});
    fill(3, {"LABEL", "1x", "AM", "On"});
    EXPECT_EQ(exported(), kHeader + std::string("1,0.00001,AM,p,\"LABEL\"\r\n"
                                                "2,1x,AM,p,\"LABEL\"\r\n"));
}

TEST_F(Export, brings_the_table_into_the_image_first) {
    edit("NEW");
    table.SetChangeCheck();
    const auto reference = table.ChangeCheckSum();
    exported();
    const auto bytes = store.MemoryImage.bytes();
    EXPECT_EQ(tag_in({bytes.begin(), bytes.end()}), "NEW");
    EXPECT_EQ(table.ChangeCheckSum(), reference) << "nothing counts as saved";
}

TEST_F(Export, leaves_the_image_while_the_save_command_is_disabled) {
    edit("NEW");
    mnuSaveOnly.enabled = false;
    EXPECT_THAT(exported(), HasSubstr("\"NEW\""));
    EXPECT_EQ(store.MemoryImage, MemoryImage{});
}

TEST_F(Export, that_is_cancelled_does_nothing_at_all) {
    edit("NEW");
    dialogs.names.emplace_back(std::nullopt);
    csv.mnuExport_Click();
    EXPECT_EQ(store.MemoryImage, MemoryImage{});
    EXPECT_TRUE(folder.names().empty());
    EXPECT_TRUE(files.written.empty());
}

TEST_F(Export, cuts_the_name_at_a_nul_and_adds_csv_only_where_there_is_no_dot_anywhere) {
    std::filesystem::create_directory(folder.path() / "dotted.d");
    const struct {
        std::string chosen;
        std::string written;
    } examples[] = {
        {"list", "list.csv"},
        {"list.csv", "list.csv"},
        {"list.CSV", "list.CSV"},
        {"list.txt", "list.txt"},
        {"list.", "list."},
        {".list", ".list"},
        {"my list", "my list.csv"},
        {"dotted.d/list", "dotted.d/list"},
        {std::string("list\0.txt", 9), "list.csv"},
        {std::string("list.txt\0behind", 15), "list.txt"},
    };
    for (const auto& [chosen, written] : examples) {
        files.written.clear();
        dialogs.names.emplace_back(folder.file(chosen));
        csv.mnuExport_Click();
        EXPECT_EQ(files.written, Names{folder.file(written)}) << chosen;
        EXPECT_EQ(text_of(written), kHeader);
    }
}

TEST_F(Export, replaces_a_file_whole_and_without_a_question) {
    put_text("out.csv", std::string(100000, 'x'));
    EXPECT_EQ(exported(), kHeader);
    EXPECT_EQ(folder.names(), Names{"out.csv"});
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(dialogs.asked.size(), 1U);
}

TEST_F(Export, makes_the_folder_of_the_file_the_current_one) {
    std::filesystem::create_directory(folder.path() / "sub");
    exported("sub/out.csv");
    EXPECT_EQ(std::filesystem::current_path(), std::filesystem::canonical(folder.path() / "sub"));
    exported("sub/again.csv");
    EXPECT_EQ(dialogs.asked.back().request.folder, native.current_folder());
}

TEST_F(Export, that_fails_reports_it_and_leaves_what_was_there) {
    put_text("out.csv", "old");
    edit("NEW");
    files.writing_fails = true;
    EXPECT_THROW(exported(), FileError);
    EXPECT_EQ(text_of("out.csv"), "old");
    EXPECT_EQ(folder.names(), Names{"out.csv"});
    EXPECT_EQ(shown_tag(), "NEW");

    files.writing_fails = false;
    EXPECT_THAT(exported(), HasSubstr("\"NEW\""));
}

TEST_F(Export, into_a_folder_or_where_there_is_none_names_the_file_and_the_cause) {
    std::filesystem::create_directory(folder.path() / "sub.csv");
    for (const char* const name : {"sub.csv", "missing/out.csv"}) {
        try {
            exported(name);
            FAIL() << "exported to " << name;
        } catch (const FileError& error) {
            EXPECT_THAT(error.what(), HasSubstr("Cannot save " + folder.file(name) + ": "));
        }
    }
    EXPECT_EQ(folder.names(), Names{"sub.csv"});
    EXPECT_TRUE(std::filesystem::is_empty(folder.path() / "sub.csv"));
}

}  // namespace
}  // namespace memwright
