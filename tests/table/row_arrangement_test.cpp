// What becomes of whole rows that are inserted, closed up, sorted, set or moved.

#include "table/row_arrangement.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "fakes/seeded_random.h"

namespace memwright {
namespace {

using namespace columns;
using testing::ElementsAre;

struct Made {
    std::string tag;
    std::string freq;
    std::string mode = "NFM";
};

TableRow row_with(const Made& made) {
    TableRow row;
    row.at(kTag).text = made.tag;
    row.at(kFreq).text = made.freq;
    row.at(kMode).text = made.mode;
    return row;
}

TableRows rows_with(const std::vector<Made>& all) {
    TableRows rows;
    for (const Made& made : all) rows.push_back(row_with(made));
    return rows;
}

// Named by the tags alone: a capital is a memory, "." an empty one.
TableRows lettered_rows(const std::string& letters) {
    TableRows rows;
    for (const char letter : letters) {
        rows.push_back(letter == '.' ? TableRow{} : row_with({std::string(1, letter), "145.0"}));
    }
    return rows;
}

std::string letters_of(const TableRows& rows) {
    std::string letters;
    for (const TableRow& row : rows) letters += row.text(kTag).empty() ? "." : row.text(kTag);
    return letters;
}

std::vector<std::string> texts_of(const TableRows& rows, int col) {
    std::vector<std::string> texts;
    for (const TableRow& row : rows) texts.push_back(row.text(col));
    return texts;
}

TEST(RowArrangement, a_row_is_empty_if_its_frequency_reads_as_zero_whatever_else_it_holds) {
    const std::vector<std::pair<std::string, bool>> kExamples = {
        {"", true},     {"0", true},      {"0.000", true},          {"abc", true},
        {"-145", true}, {" 145.0", true}, {"145.00000", false},     {"0.00050", false},
        {".5", false},  {"1x", false},    {"145.0 anything", false}};
    for (const auto& [freq, empty] : kExamples) {
        EXPECT_EQ(row_with({"TAG", freq}).is_empty(), empty) << freq;
    }
}

TEST(RowArrangement, the_first_empty_row_is_found) {
    EXPECT_EQ(first_empty(lettered_rows("AB.C.")), 2);
    EXPECT_EQ(first_empty(lettered_rows(".")), 0);
    EXPECT_EQ(first_empty(lettered_rows("AB")), std::nullopt);
    EXPECT_EQ(first_empty({}), std::nullopt);
}

TEST(RowArrangement, an_inserted_row_is_empty_and_the_others_go_one_down) {
    const std::vector<std::pair<std::string, std::string>> kExamples = {
        {"A.", ".A"}, {"ABC.", ".ABC"}, {"..", ".."}, {".", "."}, {"", ""}};
    for (const auto& [before, after] : kExamples) {
        EXPECT_EQ(letters_of(with_first_inserted(lettered_rows(before))), after) << before;
    }
}

TEST(RowArrangement, an_inserted_row_has_no_colour_either) {
    TableRows rows = lettered_rows("A.");
    rows[0].at(kTag).colour = 0xC0C0C0;
    rows = with_first_inserted(rows);
    EXPECT_EQ(rows[0], TableRow{});
    EXPECT_EQ(rows[1].at(kTag).colour, 0xC0C0C0U);
}

TEST(RowArrangement, closing_up_keeps_the_order_and_leaves_the_empty_rows_at_the_end) {
    const std::vector<std::pair<std::string, std::string>> kExamples = {
        {".A..BC.", "ABC...."}, {"ABC", "ABC"}, {"...", "..."}, {"..A", "A.."}, {"", ""}};
    for (const auto& [before, after] : kExamples) {
        EXPECT_EQ(letters_of(closed_up(lettered_rows(before))), after) << before;
    }
}

TEST(RowArrangement, closing_up_keeps_what_stands_in_rows_without_a_frequency) {
    const TableRows rows = closed_up(rows_with({{"FIRST", ""}, {"A", "145"}, {"LAST", "0"}}));
    EXPECT_THAT(texts_of(rows, kTag), ElementsAre("A", "FIRST", "LAST"));
}

TEST(RowArrangement, by_frequency_numbers_count_and_equal_ones_keep_their_order) {
    const TableRows rows = sorted(rows_with({{"A", "1000.00000"},
                                             {"B", "145.5"},
                                             {"C", ""},
                                             {"D", "99.90000"},
                                             {"E", "145.50000"},
                                             {"F", "0"}}),
                                  SortKey::frequency);
    EXPECT_EQ(letters_of(rows), "DBEACF");
}

TEST(RowArrangement, by_tag_the_codes_of_the_characters_count_and_rows_without_a_tag_come_last) {
    const TableRows rows = sorted(rows_with({{"\xC4", "1"},
                                             {"", "2"},
                                             {"b", "3"},
                                             {"B", "4"},
                                             {"10", "5"},
                                             {"9", "6"},
                                             {"AB  ", "7"},
                                             {"A", "", "empty"},
                                             {"AB", "8"},
                                             {"  ", "9"},
                                             {"AB ", "10"}}),
                                  SortKey::tag);
    EXPECT_THAT(texts_of(rows, kFreq),
                ElementsAre("5", "6", "7", "8", "10", "4", "3", "1", "2", "9", ""));
}

TEST(RowArrangement, by_mode_the_order_of_the_choices_counts_and_other_texts_come_last) {
    const TableRows rows = sorted(rows_with({{"A", "1", "AM"},
                                             {"B", "1", ""},
                                             {"C", "1", "WFM"},
                                             {"D", "1", "nfm"},
                                             {"E", "", "NFM"},
                                             {"F", "1", "NFM"},
                                             {"G", "1", "AM"}}),
                                  SortKey::mode);
    EXPECT_EQ(letters_of(rows), "FCAGBDE");
}

TEST(RowArrangement, a_column_is_set_in_occupied_rows_alone) {
    const TableRows rows =
        with_text(rows_with({{"A", "1"}, {"B", "", "WFM"}, {"C", "2", ""}}), kMode, "AM");
    EXPECT_THAT(texts_of(rows, kMode), ElementsAre("AM", "WFM", "AM"));
}

struct MoveExample {
    const char* before;  // rows 11 and on
    RowMove move;
    const char* after;
};

std::ostream& operator<<(std::ostream& out, const MoveExample& example) {
    return out << example.before << ": " << example.move.block.first << "-"
               << example.move.block.last << " to " << example.move.to;
}

TEST(RowArrangement, a_moved_block_swaps_overwrites_or_slides) {
    using enum RowMove::Kind;
    const std::vector<MoveExample> kExamples = {{"ABCDEF", {{11, 12}, 15, swap}, "EFCDAB"},
                                                {"ABCDEF", {{15, 16}, 11, swap}, "EFCDAB"},
                                                {"ABCD", {{11, 12}, 13, swap}, "CDAB"},
                                                {"AB..", {{11, 12}, 13, swap}, "..AB"},
                                                {"ABCDEF", {{11, 12}, 15, overwrite}, "..CDAB"},
                                                {"ABCDEF", {{15, 16}, 11, overwrite}, "EFCD.."},
                                                {"ABCD", {{11, 12}, 13, overwrite}, "..AB"},
                                                {"ABCDE", {{11, 13}, 13, overwrite}, "DEABC"},
                                                {"ABCDE", {{13, 15}, 11, overwrite}, "CDEAB"},
                                                {"ABCD", {{11, 13}, 12, overwrite}, "DABC"}};
    for (const MoveExample& example : kExamples) {
        EXPECT_EQ(letters_of(moved(lettered_rows(example.before), example.move)), example.after)
            << example;
        EXPECT_EQ(example.move.problem(), "") << example;
    }
}

TEST(RowArrangement, a_move_says_why_it_cannot_be_done) {
    using enum RowMove::Kind;
    struct Example {
        RowMove move;
        const char* problem;
    };
    const std::vector<Example> kExamples = {
        {{{1, 64}, 577, swap}, ""},
        {{{1, 3}, 638, overwrite}, ""},
        {{{1, 3}, 639, swap}, "Only 2 rows are left from there to the end of the table."},
        {{{1, 3}, 639, overwrite}, "Only 2 rows are left from there to the end of the table."},
        {{{1, 3}, 640, swap}, "Only 1 row is left from there to the end of the table."},
        {{{5, 7}, 5, swap}, "The rows are there already."},
        {{{5, 7}, 5, overwrite}, "The rows are there already."},
        {{{5, 7}, 7, swap}, "The rows overlap with those that they would be swapped with."},
        {{{5, 7}, 3, swap}, "The rows overlap with those that they would be swapped with."},
        {{{5, 7}, 8, swap}, ""},
        {{{5, 7}, 2, swap}, ""}};
    for (const Example& example : kExamples) {
        EXPECT_EQ(example.move.problem(), example.problem) << example.move.to;
    }
}

class RandomArrangements : public testing::Test {
  protected:
    // Rows that can be told apart, about a third of them empty.
    TableRows some_rows(int count) {
        TableRows rows(static_cast<std::size_t>(count));
        for (std::size_t place = 0; place < rows.size(); ++place) {
            TableRow& row = rows[place];
            for (GridCell& cell : row.cells) cell = {random.text("AB1 \xE9", 3), Colour{0}};
            row.at(kFreq).text = random.between(0, 2) == 0 ? "" : random.text("1234.", 5, 1);
            row.at(kMode).text = random.coin() ? "AM" : "WFM";
            row.at(kNameless) = {std::to_string(place), random.coin() ? 0xC0C0C0U : 0U};
        }
        return rows;
    }
    // In an order of its own.
    static std::vector<std::string> all_of(const TableRows& rows) {
        std::vector<std::string> all;
        for (const TableRow& row : rows) {
            std::string& text = all.emplace_back();
            for (const auto& [cell, colour] : row.cells) {
                text += cell + "|" + std::to_string(colour) + "|";
            }
        }
        std::ranges::sort(all);
        return all;
    }
    RowMove some_move(int rows) {
        const int count = random.between(1, rows / 2);
        const int first = random.between(1, rows - count + 1);
        return {{first, first + count - 1},
                random.between(1, rows - count + 1),
                random.coin() ? RowMove::Kind::swap : RowMove::Kind::overwrite};
    }

    SeededRandom random;
};

TEST_F(RandomArrangements, lose_no_row_and_double_none) {
    for (int times = 0; times < 300; ++times) {
        const TableRows rows = some_rows(random.between(0, 40));
        const auto before = all_of(rows);
        ASSERT_EQ(all_of(closed_up(rows)), before);
        for (const SortKey key : {SortKey::frequency, SortKey::tag, SortKey::mode}) {
            const TableRows after = sorted(rows, key);
            ASSERT_EQ(all_of(after), before);
            ASSERT_EQ(sorted(after, key), after);
            ASSERT_EQ(closed_up(after), after);
        }
    }
}

TEST_F(RandomArrangements, insert_a_row_for_an_empty_one_that_drops_out) {
    for (int times = 0; times < 300; ++times) {
        TableRows rows = some_rows(random.between(2, 20));
        rows.back() = TableRow{};
        auto before = all_of(rows);
        const TableRows after = with_first_inserted(rows);
        ASSERT_EQ(all_of(after), before);
        ASSERT_EQ(after.front(), TableRow{});
    }
}

TEST_F(RandomArrangements, move_a_block_and_lose_only_what_it_overwrites) {
    constexpr int kCount = 30;
    int slid = 0;
    for (int times = 0; times < 1000; ++times) {
        const TableRows table = some_rows(kCount);
        const RowMove move = some_move(kCount);
        if (!move.problem().empty()) continue;
        const auto part = [](const TableRows& rows, RowRange range, int from) {
            return TableRows(rows.begin() + (range.first - from),
                             rows.begin() + (range.last - from) + 1);
        };
        const RowRange extent = move.extent();
        const TableRows before = part(table, extent, 1);
        const TableRows after = moved(before, move);
        ASSERT_EQ(part(after, move.target(), extent.first), part(table, move.block, 1));
        slid += move.overlaps() ? 1 : 0;
        if (move.kind == RowMove::Kind::swap || move.overlaps()) {
            ASSERT_EQ(all_of(after), all_of(before));
        } else {
            ASSERT_EQ(part(after, move.block, extent.first),
                      TableRows(part(table, move.block, 1).size()));
        }
    }
    EXPECT_GT(slid, 50);
}

}  // namespace
}  // namespace memwright
