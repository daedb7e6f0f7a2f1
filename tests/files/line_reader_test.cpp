// Lines of a text file, whatever ends them.

#include "files/line_reader.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/seeded_random.h"

namespace memwright {
namespace {

// A file that is a text.
class TextFile final : public InputFile {
  public:
    explicit TextFile(std::string text) : text_(std::move(text)) {}

    std::uint64_t size() const override { return text_.size(); }
    std::size_t read(std::span<std::uint8_t> bytes) override {
        const std::size_t count = std::min(bytes.size(), text_.size() - read_);
        std::copy_n(text_.begin() + static_cast<std::ptrdiff_t>(read_), count, bytes.begin());
        read_ += count;
        return count;
    }

  private:
    std::string text_;
    std::size_t read_ = 0;
};

LineReader reader_of(const std::string& text) {
    return LineReader(std::make_unique<TextFile>(text));
}

using Lines = std::vector<std::string>;

Lines lines_of(const std::string& text) {
    LineReader reader = reader_of(text);
    Lines lines;
    while (const auto line = reader.peek()) {
        EXPECT_EQ(line->number, lines.size() + 1);
        lines.emplace_back(line->text);
        reader.skip();
    }
    return lines;
}

TEST(LineReader, ends_lines_with_cr_lf_or_lf_and_the_last_one_with_nothing) {
    const struct {
        std::string text;
        Lines lines;
    } examples[] = {
        {"", {}},
        {"a", {"a"}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\nb\n", {"a", "b"}},
        {"a\r\nb\nc", {"a", "b", "c"}},
        {"\n", {""}},
        {"\r\n", {""}},
        {"\n\r\n\n", {"", "", ""}},
        {"a\n\n", {"a", ""}},
        {"a\r", {"a"}},
        {"\r", {""}},
        {"a\rb\n", {"a\rb"}},
        {"a\r\r\nb", {"a\r", "b"}},
        {"a\n\rb\n", {"a", "\rb"}},
        {std::string("a\0b\nc\0", 6), {std::string("a\0b", 3), std::string("c\0", 2)}},
    };
    for (const auto& [text, lines] : examples) {
        EXPECT_EQ(lines_of(text), lines) << testing::PrintToString(text);
    }
}

TEST(LineReader, tells_which_lines_end_with_a_line_feed_alone) {
    LineReader reader = reader_of("a\r\nb\n\r\n\nlast");
    std::vector<bool> feeds;
    for (; reader.peek(); reader.skip()) feeds.push_back(reader.peek()->feed_only);
    EXPECT_EQ(feeds, (std::vector<bool>{false, true, false, true, false}));
}

TEST(LineReader, gives_the_same_line_until_it_is_skipped_and_none_behind_the_end) {
    LineReader reader = reader_of("a\nb");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(reader.peek()->text, "a");
    reader.skip();
    for (int i = 0; i < 3; ++i) EXPECT_EQ(reader.peek()->text, "b");
    for (int i = 0; i < 3; ++i) {
        reader.skip();
        EXPECT_FALSE(reader.peek());
    }
}

TEST(LineReader, skips_a_line_that_nobody_looked_at) {
    LineReader reader = reader_of("header\nb\n");
    reader.skip();
    ASSERT_TRUE(reader.peek());
    EXPECT_EQ(reader.peek()->text, "b");
    EXPECT_EQ(reader.peek()->number, 2U);
}

TEST(LineReader, skips_a_line_of_any_length) {
    for (const std::size_t length : {LineReader::kChunk - 1, LineReader::kChunk,
                                     2 * LineReader::kLongestLine, 3 * LineReader::kChunk}) {
        LineReader reader = reader_of(std::string(length, 'x') + "\r\nb\n");
        reader.skip();
        ASSERT_TRUE(reader.peek()) << length;
        EXPECT_EQ(reader.peek()->text, "b") << length;
        EXPECT_EQ(reader.peek()->number, 2U);

        LineReader without_end = reader_of(std::string(length, 'x'));
        without_end.skip();
        EXPECT_FALSE(without_end.peek()) << length;
    }
}

TEST(LineReader, puts_lines_together_that_the_pieces_of_the_file_cut_anywhere) {
    for (std::size_t before = LineReader::kChunk - 4; before <= LineReader::kChunk + 1; ++before) {
        const std::string first(before, 'x');
        EXPECT_EQ(lines_of(first + "\r\nsecond\r\n"), (Lines{first, "second"})) << before;
        EXPECT_EQ(lines_of(first + "\r"), Lines{first}) << before;
        EXPECT_EQ(lines_of(first), Lines{first}) << before;
        EXPECT_EQ(lines_of(first + "\n\nz"), (Lines{first, "", "z"})) << before;
    }
}

TEST(LineReader, reads_random_texts_as_they_were_put_together) {
    SeededRandom random;
    for (int round = 0; round < 20; ++round) {
        Lines lines;
        std::string text;
        while (text.size() < 3 * LineReader::kChunk) {
            // Rarely one that is longer than what is read at a time.
            const int longest = random.between(0, 200) == 0 ? 150000 : 40;
            std::string line(static_cast<std::size_t>(random.between(0, longest)), ' ');
            for (char& c : line) c = random.one_of(std::string_view("ab,\"\r\0", 6));
            while (line.ends_with('\r')) line.pop_back();
            text += line + (random.coin() ? "\r\n" : "\n");
            lines.push_back(std::move(line));
        }
        ASSERT_EQ(lines_of(text), lines);
    }
}

TEST(LineReader, tells_how_much_is_read_before_each_piece_but_the_first) {
    const std::size_t size = 3 * LineReader::kChunk + 100;
    LineReader reader =
        reader_of(std::string(size / 2, 'x') + "\n" + std::string(size / 2 - 1, 'y'));
    std::vector<double> shares;
    reader.chunk_read = [&](double share) { shares.push_back(share); };
    while (reader.peek()) reader.skip();
    ASSERT_EQ(shares.size(), 3U);
    for (std::size_t i = 0; i < shares.size(); ++i) {
        EXPECT_DOUBLE_EQ(shares[i], static_cast<double>((i + 1) * LineReader::kChunk) /
                                        static_cast<double>(size));
    }
}

TEST(LineReader, tells_nothing_of_a_file_that_is_read_in_one_go) {
    LineReader reader = reader_of(std::string(LineReader::kChunk - 1, '\n'));
    int told = 0;
    reader.chunk_read = [&](double) { ++told; };
    while (reader.peek()) reader.skip();
    EXPECT_EQ(told, 0);
}

TEST(LineReader, stops_where_it_is_told_to_stop) {
    class Stop {};
    LineReader reader = reader_of(std::string(10 * LineReader::kChunk, '\n'));
    int told = 0;
    reader.chunk_read = [&](double) {
        if (++told == 2) throw Stop();
    };
    std::size_t lines = 0;
    try {
        for (; reader.peek(); reader.skip()) ++lines;
        FAIL() << "read to the end";
    } catch (const Stop&) {
    }
    EXPECT_EQ(lines, 2 * LineReader::kChunk);
}

// What ends lines of a file that grew while it was read.
TEST(LineReader, never_tells_of_more_than_the_whole_file) {
    class GrowingFile final : public InputFile {
      public:
        std::uint64_t size() const override { return 0; }
        std::size_t read(std::span<std::uint8_t> bytes) override {
            if (++reads_ > 3) return 0;
            std::ranges::fill(bytes, std::uint8_t{'\n'});
            return bytes.size();
        }

      private:
        int reads_ = 0;
    };
    LineReader reader(std::make_unique<GrowingFile>());
    std::vector<double> shares;
    reader.chunk_read = [&](double share) { shares.push_back(share); };
    while (reader.peek()) reader.skip();
    EXPECT_EQ(shares, (std::vector<double>{1, 1, 1}));
}

TEST(LineReader, reads_a_line_of_the_longest_length) {
    const std::string longest(LineReader::kLongestLine, 'x');
    EXPECT_EQ(lines_of("a\n" + longest + "\r\nb\n"), (Lines{"a", longest, "b"}));
    EXPECT_EQ(lines_of(longest), Lines{longest});
}

TEST(LineReader, refuses_a_line_that_does_not_end_and_says_which_one) {
    LineReader reader = reader_of("a\nb\n" + std::string(20 * LineReader::kLongestLine, 'x'));
    std::size_t pieces = 0;
    reader.chunk_read = [&](double) { ++pieces; };
    try {
        while (reader.peek()) reader.skip();
        FAIL() << "a line of 20 megabytes";
    } catch (const BadLine& line) {
        EXPECT_EQ(line.number, 3U);
        EXPECT_EQ(line.text, std::string(LineReader::kLongestLine, 'x'));
        EXPECT_EQ(line.cause, "it is longer than 1048576 characters");
    }
    EXPECT_LE(pieces, LineReader::kLongestLine / LineReader::kChunk + 1) << "not read to its end";
    EXPECT_THROW(lines_of(std::string(LineReader::kLongestLine + 1, 'x')), BadLine);
}

}  // namespace
}  // namespace memwright
