// Which memories a query finds, where one goes on from a row, and what becomes of tags.

#include "table/finding.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdlib>

#include "fakes/seeded_random.h"
#include "table/table_test.h"

namespace memwright {
namespace {

using namespace columns;
using finding::Find;
using finding::Finds;
using finding::Step;
using testing::ElementsAre;
using testing::IsEmpty;

class FindingTest : public TableTest {
  protected:
    FindingTest() { table.initgrid(); }

    Finds found(const std::string& query) const { return finding::finds_of(grid, query); }
    std::vector<int> rows(const std::string& query) const {
        std::vector<int> numbers;
        for (const Find& find : found(query)) numbers.push_back(find.row);
        return numbers;
    }
};

TEST_F(FindingTest, the_kinds_of_queries_by_examples) {
    put(2, {"145.50000", "HAM", "AM"});
    put(3, {"145.00000", "12", "WFM"});
    put(65, {"12.00000", "AIR", "AM", "On"});
    put(210, {"433.92500",
              "C\xC4"
              "FE"});  // a capital with two dots
    put(640, {"146.00000", "B/2-3"});
    struct Example {
        const char* query;
        Finds finds;
    };
    const Finds all_of_two_metres = {{2, kFreq}, {3, kFreq}, {640, kFreq}};
    const std::vector<Example> examples = {
        {"", {}},
        {" ", {}},
        {"HAM", {{2, kTag}}},
        {"a", {{2, kTag}, {65, kTag}}},
        {"c\xE4"
         "fe",
         {{210, kTag}}},
        {"xyz", {}},
        {"145.5", {{2, kFreq}}},
        {"145,5", {{2, kFreq}}},
        {" 145.50000 ", {{2, kFreq}}},
        {"145.500000", {{2, kFreq}}},
        {"145.500001", {}},
        {"145.", {{3, kFreq}}},
        {"145.5.", {}},
        {"433.925", {{210, kFreq}}},
        {"0", {}},
        {"145-146", all_of_two_metres},
        {"146-145", all_of_two_metres},
        {"145,0 - 146,0", all_of_two_metres},
        {"145.5-146", {{2, kFreq}, {640, kFreq}}},
        {"145.00001-145.99999", {{2, kFreq}}},
        {"145-146-147", {}},
        {"145-", {}},
        {"-145", {}},
        {"~145.25", {{2, kFreq}, {3, kFreq}}},
        {"~ 145,26", {{2, kFreq}}},
        {"~1", {{65, kFreq}}},
        {"~1299", {{210, kFreq}}},
        {"~", {}},
        {"~am", {}},
        {"AM", {{2, kTag}, {65, kMode}}},
        {"wfm", {{3, kMode}}},
        {" nfm ", {{210, kMode}, {640, kMode}}},
        {"fm", {}},
        {"12", {{3, kTag}, {65, kFreq}}},
        {"3-17", {{210, kTag}}},
        {"3 - 17", {{210, kTag}}},
        {"2-3", {{132, kTag}, {640, kTag}}},
        {"9-63", {{640, kTag}}},
        {"3.0-17", {{65, kFreq}}},
        {"3-64", {{65, kFreq}}},
        {"10-13", {{65, kFreq}}},
    };
    for (const Example& example : examples) {
        EXPECT_EQ(found(example.query), example.finds) << '"' << example.query << '"';
    }
}

TEST_F(FindingTest, frequencies_are_those_of_occupied_memories_alone) {
    put(2, {"0.00000", "A", ""});
    put(3, {"abc", "B", ""});
    EXPECT_THAT(found("0"), IsEmpty());
    EXPECT_THAT(found("0-1299"), IsEmpty());
    EXPECT_THAT(found("~0"), IsEmpty());
    EXPECT_THAT(rows("b"), ElementsAre(3)) << "a tag may stand in an empty memory, too";
}

TEST_F(FindingTest, going_on_goes_round_at_both_ends) {
    const Finds finds = {{2, kTag}, {5, kTag}, {9, kTag}};
    struct Example {
        int row;
        Step from, after, before;
    };
    for (const Example& example : {Example{0, {0, false}, {0, false}, {2, true}},
                                   Example{2, {0, false}, {1, false}, {2, true}},
                                   Example{3, {1, false}, {1, false}, {0, false}},
                                   Example{9, {2, false}, {0, true}, {1, false}},
                                   Example{640, {0, true}, {0, true}, {2, false}}}) {
        EXPECT_EQ(finding::from(finds, example.row), example.from) << example.row;
        EXPECT_EQ(finding::after(finds, example.row), example.after) << example.row;
        EXPECT_EQ(finding::before(finds, example.row), example.before) << example.row;
    }
    EXPECT_EQ(finding::from({}, 1), std::nullopt);
    EXPECT_EQ(finding::after({}, 1), std::nullopt);
    EXPECT_EQ(finding::before({}, 1), std::nullopt);
    EXPECT_EQ(finding::after({{4, kTag}}, 4), (Step{0, true}));
    EXPECT_EQ(finding::before({{4, kTag}}, 4), (Step{0, true}));
}

TEST_F(FindingTest, finds_are_a_block_if_their_rows_follow_one_another) {
    EXPECT_EQ(finding::block_of({}), std::nullopt);
    EXPECT_EQ(finding::block_of({{7, kTag}}), (RowRange{7, 7}));
    EXPECT_EQ(finding::block_of({{7, kTag}, {8, kMode}, {9, kTag}}), (RowRange{7, 9}));
    EXPECT_EQ(finding::block_of({{7, kTag}, {9, kTag}}), std::nullopt);
}

TEST_F(FindingTest, each_occurrence_in_a_tag_is_replaced_by_what_a_tag_takes) {
    struct Example {
        const char* tag;
        const char* text;
        const char* by;
        const char* result;
    };
    const Example examples[] = {
        {"ABAB", "a", "c", "CBCB"},
        {"ABAB", "AB", "", ""},
        {"AAA", "AA", "B", "BA"},
        {"AB", "A", "AA", "AAB"},
        {"REPTR", "R", "XYZ", "XYZEPT"},
        {"AB", "B", "#\xE9.\b-", "A-"},
        {"caf\xE9 1", "1", "2", "caf\xE9 2"},
        {"\xC9T", "\xE9", "E", "ET"},
        {"AB", "C", "D", "AB"},
        {"AB", "", "D", "AB"},
        {"", "A", "D", ""},
        {"A B", " ", "/", "A/B"},
    };
    for (const auto& [tag, text, by, result] : examples) {
        EXPECT_EQ(finding::with_text_replaced(tag, text, by), result) << tag << ": " << text;
    }
}

TEST_F(FindingTest, a_memory_is_named_by_its_bank_and_number_or_its_row) {
    for (const char* name : {"3-17", "3 17", "bank 3 17", "Bank 3 - 17", " BANK3-17 ", "03-17",
                             "3   17", "3- 17", "210", "row 210", "Row210"}) {
        EXPECT_EQ(finding::row_of_memory(name), 210) << name;
    }
    EXPECT_EQ(finding::row_of_memory("0-0"), 1);
    EXPECT_EQ(finding::row_of_memory("9 63"), 640);
    for (const char* name :
         {"",      " ",      "0",      "641",   "row",  "row 3-17", "row -1",
          "2a",    "bank",   "bank 3", "10-0",  "0-64", "3-017",    "3.17",
          "-3-17", "3-17-1", "3 -",    "3 1 7", "a-b",  "+3 17",    "bankk 3 17"}) {
        EXPECT_EQ(finding::row_of_memory(name), std::nullopt) << name;
    }
}

class RandomFinding : public FindingTest {
  protected:
    std::string frequency() {
        return std::to_string(random.between(144, 146)) + "." +
               std::to_string(random.between(100, 102)) + (random.coin() ? "00" : "50");
    }
    std::string query() {
        switch (random.between(0, 5)) {
            case 0:
                return frequency();
            case 1:
                return frequency() + "-" + frequency();
            case 2:
                return "~" + frequency();
            case 3:
                return std::to_string(random.between(0, 9)) + "-" +
                       std::to_string(random.between(0, 63));
            case 4:
                return random.coin() ? "nfm" : "AM";
            default:
                return random.text("ABab1", 2, 1);
        }
    }

    double smallest(const std::string& query) const {
        double least = 1e9;
        for (int row = 1; row <= layout::kMemories; ++row) {
            least = std::min(least, distance(row, query));
        }
        return least;
    }

    // As plainly as it can be said.
    bool expected(int row, const std::string& query) const {
        const std::string tag = grid.TextMatrix(row, kTag);
        const double here = std::strtod(grid.TextMatrix(row, kFreq).c_str(), nullptr);
        if (lower_case(tag).find(lower_case(query)) != std::string::npos) return true;
        if (lower_case(grid.TextMatrix(row, kMode)) == lower_case(query)) return true;
        const auto hyphen = query.find('-');
        if (hyphen != std::string::npos && query.find('.') == std::string::npos) {
            return grid.TextMatrix(row, kLabel) ==
                   "Bank " + query.substr(0, hyphen) + " - " + query.substr(hyphen + 1);
        }
        if (here == 0 || query.find('.') == std::string::npos) return false;
        if (query[0] == '~') return hertz(distance(row, query)) == hertz(smallest_distance);
        const double one = std::strtod(query.c_str(), nullptr);
        const double other =
            hyphen == std::string::npos ? one : std::strtod(&query[hyphen + 1], nullptr);
        return here >= std::min(one, other) && here <= std::max(one, other);
    }

    SeededRandom random;
    double smallest_distance = 0;  // of a query for the nearest memories

  private:
    static long long hertz(double megahertz) { return std::llround(megahertz * 1e6); }
    double distance(int row, const std::string& query) const {
        const double here = std::strtod(grid.TextMatrix(row, kFreq).c_str(), nullptr);
        return here == 0 ? 1e9 : std::abs(here - std::strtod(&query[1], nullptr));
    }
};

TEST_F(RandomFinding, finds_what_a_plain_search_finds) {
    std::size_t finds = 0;
    for (int table_number = 0; table_number < 6; ++table_number) {
        for (int row = 1; row <= layout::kMemories; ++row) {
            const bool occupied = random.between(0, 3) > 0;
            put(row, {occupied ? frequency() : "", random.text("ABC12 ", 6),
                      occupied ? (random.coin() ? "NFM" : "AM") : ""});
        }
        for (int i = 0; i < 30; ++i) {
            const std::string asked = query();
            smallest_distance = asked[0] == '~' ? smallest(asked) : 0;
            std::vector<int> wanted;
            for (int row = 1; row <= layout::kMemories; ++row) {
                if (expected(row, asked)) wanted.push_back(row);
            }
            ASSERT_EQ(rows(asked), wanted) << asked;
            finds += wanted.size();
        }
    }
    EXPECT_GT(finds, 600U);
}

}  // namespace
}  // namespace memwright
