// Files that take a while: progress, the way out, and what becomes of them in the middle.

#include <gmock/gmock.h>

#include "files/csv_test.h"
#include "files/line_reader.h"

namespace memwright {
namespace {

using testing::StartsWith;

constexpr int kMillion = 1000000;

std::string channel_of(int line) {
    const int memory = line % layout::kMemories;
    return std::to_string(memory / 64 * 100 + memory % 64);
}

// Each line of its own, every thousandth of a frequency that the radio cannot receive.
bool is_blocked(int line) { return line % 1000 == 999; }
std::string frequency_of(int line) {
    return is_blocked(line) ? "339.50000" : std::to_string(100 + line % 199) + ".50000";
}

std::string lines(int count) {
    std::string text = "Ch,MHz,Mode,Pref,Label\r\n";
    for (int line = 0; line < count; ++line) {
        text += channel_of(line) + "," + frequency_of(line) + ",NFM,p,\"L" +
                std::to_string(line % 10000) + "\"\r\n";
    }
    return text;
}

class LongImport : public CsvTest {
  protected:
    void SetUp() override {
        fill(6, {"OLD", "118.1", "am", "On"});
        before = texts();
    }
    void expect_unchanged() {
        EXPECT_EQ(texts(), before);
        EXPECT_EQ(store.MemoryImage, MemoryImage{});
        EXPECT_TRUE(display.notes.empty());
        EXPECT_TRUE(messages.shown.empty());
    }

    std::vector<std::string> before;
};

TEST_F(LongImport, a_million_lines_show_their_progress_and_end_in_the_table) {
    const std::string text = lines(kMillion);
    ASSERT_EQ(import_text(text), "imported");

    EXPECT_EQ(display.shares.size(), text.size() / LineReader::kChunk);
    for (std::size_t i = 0; i < display.shares.size(); ++i) {
        ASSERT_DOUBLE_EQ(display.shares[i], static_cast<double>((i + 1) * LineReader::kChunk) /
                                                static_cast<double>(text.size()));
    }
    EXPECT_EQ(display.ends, 1);

    for (int line = kMillion - layout::kMemories; line < kMillion; ++line) {
        const int last = is_blocked(line) ? line - layout::kMemories : line;
        ASSERT_EQ(row(line % layout::kMemories + 1),
                  (Channel{"L" + std::to_string(last % 10000), frequency_of(last), "NFM", "On"}))
            << line;
    }
    ASSERT_EQ(display.notes.size(), 1U) << "in one go";
    EXPECT_EQ(std::ranges::count(display.notes[0], '\n'), kMillion / 1000 - 1);
    EXPECT_THAT(display.notes[0],
                StartsWith("Line 1001 was skipped: the radio cannot receive 339.50000 MHz.\r\n"));
}

TEST_F(LongImport, cancelled_in_the_middle_changes_neither_table_nor_image) {
    display.user_goes_on = [&] { return display.shares.size() < 5; };
    EXPECT_EQ(import_text(lines(100000)), "imported") << "no error";
    EXPECT_EQ(display.shares.size(), 5U) << "not asked again";
    EXPECT_EQ(display.ends, 1);
    expect_unchanged();
}

TEST_F(LongImport, cancelled_before_a_line_that_cannot_be_used_reports_nothing) {
    display.user_goes_on = [] { return false; };
    EXPECT_EQ(import_text(lines(5000) + "bad\r\n"), "imported") << "no error";
    expect_unchanged();
}

TEST_F(LongImport, can_follow_a_cancelled_one) {
    display.user_goes_on = [] { return false; };
    import_text(lines(5000));
    display.user_goes_on = nullptr;
    EXPECT_EQ(import_text(lines(5000)), "imported");
    EXPECT_EQ(row(1).tag, "L4480");
    EXPECT_EQ(display.ends, 2);
}

TEST_F(LongImport, the_table_changes_at_the_end_alone) {
    int changes = 0;
    const auto connection = grid.changed.connect([&](const GridChange&) { ++changes; });
    display.user_goes_on = [&] {
        EXPECT_EQ(changes, 0);
        return true;
    };
    EXPECT_EQ(import_text(lines(5000)), "imported");
    EXPECT_EQ(changes, 2) << "filled, and shown again";
}

// All before the piece that cannot be read is in the table, as before a bad line.
TEST_F(LongImport, a_disk_that_fails_in_the_middle_leaves_the_lines_that_were_read) {
    const std::string text = lines(5000);
    const auto read = std::count(text.begin(), text.begin() + LineReader::kChunk, '\n') - 1;
    files.reading_fails = true;
    files.read_before_failure = LineReader::kChunk;
    EXPECT_EQ(import_text(text), "Cannot read " + folder.file("in.csv") + ": the disk is gone.");
    for (int line = static_cast<int>(read) - layout::kMemories; line < read; ++line) {
        const int last = is_blocked(line) ? line - layout::kMemories : line;
        ASSERT_EQ(row(line % layout::kMemories + 1).tag, "L" + std::to_string(last)) << line;
    }
    EXPECT_EQ(store.MemoryImage, MemoryImage{});
    EXPECT_EQ(display.notes.size(), 1U);
    EXPECT_EQ(display.ends, 1);
}

TEST_F(LongImport, a_file_that_is_removed_while_it_is_read_is_read_to_its_end) {
    display.user_goes_on = [&] {
        std::filesystem::remove(folder.path() / "in.csv");
        return true;
    };
    EXPECT_EQ(import_text(lines(5000)), "imported");
    EXPECT_EQ(row(1).tag, "L4480");
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(LongImport, a_file_that_is_cut_off_while_it_is_read_ends_there) {
    const std::string text = lines(5000);
    display.user_goes_on = [&] {
        std::filesystem::resize_file(folder.path() / "in.csv", LineReader::kChunk);
        return true;
    };
    const std::string rest = text.substr(0, LineReader::kChunk);
    const std::string last = rest.substr(rest.rfind('\n') + 1);
    ASSERT_LT(std::ranges::count(last, ','), 4) << "the cut is in the middle of the line";
    const auto number = std::ranges::count(rest, '\n') + 1;
    EXPECT_THAT(import_text(text), StartsWith("Cannot import line " + std::to_string(number) +
                                              " of " + folder.file("in.csv") + ": it has "));
}

}  // namespace
}  // namespace memwright
