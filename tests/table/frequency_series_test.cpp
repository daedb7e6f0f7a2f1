// Rows that go on in steps of frequency, and tags that are numbered on.

#include "table/frequency_series.h"

#include <gmock/gmock.h>

#include "fakes/seeded_random.h"
#include "image/frequency_text.h"

namespace memwright {
namespace {

using namespace columns;
using testing::ElementsAre;

// The first row, and empty ones after it.
TableRows begun_with(const std::string& freq, const std::string& tag, std::size_t rows) {
    TableRows all(rows);
    all[0].at(kFreq).text = freq;
    all[0].at(kTag).text = tag;
    all[0].at(kMode).text = "AM";
    all[0].at(kPref).text = "On";
    return all;
}

std::vector<std::string> column_of(const FilledRows& filled, int col) {
    std::vector<std::string> texts;
    for (const TableRow& row : filled.rows) texts.push_back(row.text(col));
    return texts;
}

std::int64_t step_of(std::string_view text) { return step_from_text(text).value(); }

TEST(FrequencySeries, a_step_is_read_in_kilohertz_with_a_point_or_a_comma) {
    const std::vector<std::pair<std::string, std::optional<std::int64_t>>> kExamples = {
        {"12.5", 1'250'000},
        {"12,5", 1'250'000},
        {"-6.25", -625'000},
        {"8.33333", 833'333},
        {"25", 2'500'000},
        {"0", 0},
        {".5", 50'000},
        {"5.", 500'000},
        {"00025", 2'500'000},
        {"1300000", 130'000'000'000},
        {"99999999999999999999999", 1'000'000'000'000},
        {"-99999999999999999999999", -1'000'000'000'000},
        {"8.333333", std::nullopt},
        {"", std::nullopt},
        {"-", std::nullopt},
        {".", std::nullopt},
        {"--5", std::nullopt},
        {"5-", std::nullopt},
        {"1.2.3", std::nullopt},
        {"1.2,3", std::nullopt},
        {"+5", std::nullopt},
        {" 5", std::nullopt},
        {"5 kHz", std::nullopt}};
    for (const auto& [text, step] : kExamples) EXPECT_EQ(step_from_text(text), step) << text;
}

TEST(FrequencySeries, tags_are_numbered_on_within_six_characters) {
    struct Example {
        const char* tag;
        int n;
        std::optional<std::string> next;
    };
    const std::vector<Example> kExamples = {
        {"CH09", 1, "CH10"},       {"CH9", 1, "CH10"},        {"CH099", 1, "CH100"},
        {"CH 7", 3, "CH 10"},      {"ABCDE9", 1, "ABCD10"},   {"ABC999", 1, "AB1000"},
        {"ABC997", 639, "AB1636"}, {"2M", 1, "2M"},           {"", 5, ""},
        {"TOWER", 1, "TOWER"},     {"007", 1, "008"},         {"CH09  ", 1, "CH10"},
        {"999998", 1, "999999"},   {"999999", 1, {}},         {"0000001", 1, {}},
        {"2M70-1", 1, "2M70-2"},   {"99999999999999", 1, {}}, {"LONGTAG9", 1, "LONG10"}};
    for (const Example& example : kExamples) {
        EXPECT_EQ(numbered_on(example.tag, example.n), example.next) << example.tag;
    }
}

TEST(FrequencySeries, fills_frequency_mode_pref_and_tag_and_leaves_the_other_columns) {
    TableRows rows = begun_with("145.50000", "CH09", 3);
    rows[1] = begun_with("430.00000", "OLD", 1)[0];
    rows[1].at(kMode).text = "WFM";
    rows[1].at(kStep) = {"5 KHz", 0xC0C0C0};
    const FilledRows filled_rows = filled(rows, {step_of("12.5"), true}, 5);
    EXPECT_EQ(filled_rows.problem, "");
    EXPECT_THAT(column_of(filled_rows, kFreq), ElementsAre("145.50000", "145.51250", "145.52500"));
    EXPECT_THAT(column_of(filled_rows, kTag), ElementsAre("CH09", "CH10", "CH11"));
    EXPECT_THAT(column_of(filled_rows, kMode), ElementsAre("AM", "AM", "AM"));
    EXPECT_THAT(column_of(filled_rows, kPref), ElementsAre("On", "On", "On"));
    EXPECT_EQ(filled_rows.rows[1].at(kStep), (GridCell{"5 KHz", 0xC0C0C0}));
    EXPECT_EQ(filled_rows.rows[0], rows[0]);
    EXPECT_THAT(column_of(filled(rows, {step_of("12.5"), false}, 5), kTag),
                ElementsAre("CH09", "CH09", "CH09"));
}

TEST(FrequencySeries, frequencies_are_those_that_would_have_been_typed) {
    struct Example {
        const char* first;
        const char* step;
        std::vector<std::string> next;
    };
    const std::vector<Example> kExamples = {
        {"145.50000", "6.25", {"145.50625", "145.51250", "145.51875"}},
        {"145.50000", "-25", {"145.47500", "145.45000", "145.42500"}},
        {"118.00000", "8.33333", {"118.00800", "118.01600", "118.02500"}},
        {"1299.97500", "12.5", {"1299.98700", "1300"}},
        {"0.00100", "0.25", {"0.00125", "0.00150", "0.00175"}},
        {"99.9", "100", {"100.00000", "100.10000", "100.20000"}}};
    for (const Example& example : kExamples) {
        const auto rows = begun_with(example.first, "", 4);
        std::vector<std::string> wanted = example.next;
        const FilledRows result = filled(rows, {step_of(example.step)}, 1);
        if (wanted.back() == "1300") {
            EXPECT_EQ(result.problem, "Row 3 would get 1300 MHz or more.");
            continue;
        }
        wanted.insert(wanted.begin(), example.first);
        EXPECT_EQ(column_of(result, kFreq), wanted);
    }
}

TEST(FrequencySeries, counts_the_frequencies_that_a_blocked_range_has_changed) {
    const FilledRows result = filled(begun_with("338.50000", "", 6), {step_of("500")}, 1);
    EXPECT_THAT(column_of(result, kFreq), ElementsAre("338.50000", "340.00000", "340.00000",
                                                      "340.00000", "340.50000", "341.00000"));
    EXPECT_EQ(result.blocked, 2);
}

TEST(FrequencySeries, stops_before_a_frequency_or_a_tag_that_cannot_be) {
    struct Example {
        const char* first;
        const char* tag;
        const char* step;
        const char* problem;
    };
    const std::vector<Example> kExamples = {
        {"0.05000", "", "-25", "Row 7 would get a frequency of 0 or less."},
        {"0.02500", "", "-30", "Row 6 would get a frequency of 0 or less."},
        {"0.00025", "", "-0.15", "Row 6 would get a frequency of 0 or less."},
        {"1299.00000", "", "500", "Row 7 would get 1300 MHz or more."},
        {"145.50000", "", "99999999999999999", "Row 6 would get 1300 MHz or more."},
        {"145.50000", "", "-99999999999999999", "Row 6 would get a frequency of 0 or less."},
        {"145.50000", "999998", "25", "Row 7 would get a tag with more than 6 digits."}};
    for (const Example& example : kExamples) {
        const FilledRows result =
            filled(begun_with(example.first, example.tag, 4), {step_of(example.step), true}, 5);
        EXPECT_EQ(result.problem, example.problem);
        EXPECT_THAT(result.rows, testing::IsEmpty());
    }
}

TEST(FrequencySeries, whatever_is_filled_is_occupied_and_stays_as_it_is_when_typed_again) {
    SeededRandom random;
    int filled_ones = 0;
    for (int times = 0; times < 1000; ++times) {
        const auto rows =
            begun_with(std::to_string(random.between(1, 1299)) + "." + random.text("0123456789", 5),
                       random.text("AB09 ", 6), 20);
        const FrequencySeries series{random.between(-200'000'000, 200'000'000), random.coin()};
        const FilledRows result = filled(rows, series, 1);
        if (!result.problem.empty()) continue;
        ++filled_ones;
        ASSERT_EQ(result.rows.size(), rows.size());
        for (std::size_t n = 1; n < rows.size(); ++n) {
            const std::string frequency = result.rows[n].text(kFreq);
            std::string typed = frequency;
            ASSERT_EQ(FormatFreq(typed), frequency);
            ASSERT_FALSE(result.rows[n].is_empty());
            ASSERT_LE(result.rows[n].text(kTag).size(), 6U);
        }
    }
    EXPECT_GT(filled_ones, 100);
}

}  // namespace
}  // namespace memwright
