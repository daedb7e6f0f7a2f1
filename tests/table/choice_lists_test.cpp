// The choices of the columns that are edited with a list.

#include "table/choice_lists.h"

#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <vector>

#include "table/columns.h"

namespace memwright {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> words(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> found;
    for (std::string word; stream >> word;) found.push_back(word);
    return found;
}

TEST(ChoiceLists, short_ones_in_their_order) {
    EXPECT_THAT(choices_of(3), ElementsAre("NFM", "WFM", "AM"));
    EXPECT_THAT(choices_of(4), ElementsAre("Off", "On"));
    EXPECT_THAT(choices_of(6), ElementsAre("True", "False"));
    EXPECT_THAT(choices_of(7), ElementsAre("SIMP", "-RPT", "+RPT", "DUP"));
    EXPECT_THAT(choices_of(9), ElementsAre("OFF", "TONE", "TSQL", "DCS"));
    EXPECT_THAT(choices_of(12), ElementsAre("L1", "L2", "L3", "MAX"));
    EXPECT_THAT(choices_of(13), ElementsAre("NORM", "HALF"));
}

TEST(ChoiceLists, steps_with_9_KHz_last) {
    EXPECT_THAT(choices_of(5), ElementsAre("5 KHz", "10 KHz", "12.5 KHz", "15 KHz", "20 KHz",
                                           "25 KHz", "50 KHz", "100 KHz", "9 KHz"));
}

TEST(ChoiceLists, all_40_tones) {
    const auto tones = words(
        "67.0 69.3 71.9 74.4 77.0 79.7 82.5 85.4 88.5 91.5 94.8 97.4 100.0 103.5 107.2 110.9 114.8 "
        "118.8 123.0 127.3 131.8 136.5 141.3 146.2 151.4 156.7 162.2 167.9 173.8 179.9 186.2 189.9 "
        "192.8 203.5 210.7 218.1 225.7 233.6 241.8 250.3");
    ASSERT_EQ(tones.size(), 40U);
    EXPECT_EQ(choices_of(10), tones);
}

TEST(ChoiceLists, all_104_codes_with_their_leading_zeros) {
    const auto codes = words(
        "023 025 026 031 032 036 043 047 051 053 054 065 071 072 073 074 114 115 116 122 "
        "125 131 132 134 143 145 152 155 156 162 165 172 174 205 212 223 225 226 243 244 "
        "245 246 251 252 255 261 263 265 266 271 274 306 311 315 325 331 332 343 346 351 "
        "356 364 365 371 411 412 413 423 431 432 445 446 452 454 455 462 464 465 466 503 "
        "506 516 523 526 532 546 565 606 612 624 627 631 632 654 662 664 703 712 723 731 "
        "732 734 743 754");
    ASSERT_EQ(codes.size(), 104U);
    EXPECT_EQ(choices_of(11), codes);
}

TEST(ChoiceLists, none_for_the_other_columns) {
    for (const int column : {-1, 0, 1, 2, 8, 14, 15}) EXPECT_THAT(choices_of(column), IsEmpty());
}

TEST(ChoiceLists, the_beginning_of_a_choice_is_completed_in_the_choices_own_spelling) {
    struct Typed {
        int col;
        std::string text;
        std::string shown;
    };
    const std::vector<Typed> all = {
        {3, "w", "WFM"},      {3, "wf", "WFM"},      {3, "wfm", "WFM"}, {3, "N", "NFM"},
        {3, "a", "AM"},       {3, "wfmx", ""},       {3, "fm", ""},     {3, "", ""},
        {3, " w", ""},        {4, "o", "Off"},       {4, "on", "On"},   {4, "OF", "Off"},
        {5, "1", "10 KHz"},   {5, "12", "12.5 KHz"}, {5, "9", "9 KHz"}, {5, "5 k", "5 KHz"},
        {5, "50", "50 KHz"},  {5, "100", "100 KHz"}, {6, "t", "True"},  {7, "-", "-RPT"},
        {10, "100", "100.0"}, {10, "10", "100.0"},   {11, "02", "023"}, {12, "l", "L1"},
        {12, "l2", "L2"},     {1, "a", ""}};
    for (const auto& [col, text, shown] : all) {
        EXPECT_EQ(completed(choices_of(col), text), shown) << col << ": " << text;
    }
    EXPECT_EQ(completed({"LONGER", "LONG"}, "long"), "LONG");
}

}  // namespace
}  // namespace memwright
