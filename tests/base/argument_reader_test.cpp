#include "base/argument_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace memwright {
namespace {

using ::testing::ElementsAre;

// Each argument with what it is; an option's value, if `takes_value`, is taken with it.
std::vector<std::string> read(const std::vector<std::string>& given, bool takes_value = false) {
    std::vector<std::string> found;
    ArgumentReader reader(given);
    while (reader.next()) {
        if (reader.ends_options()) {
            found.emplace_back("end of options");
        } else if (!reader.is_option()) {
            found.push_back("argument " + reader.text());
        } else if (takes_value) {
            const std::string name = reader.name();
            found.push_back("option " + name + ": " + reader.take_value().value_or("(none)"));
        } else {
            found.push_back("option " + reader.text());
        }
    }
    return found;
}

TEST(ArgumentReader, nothing_is_read_from_nothing) { EXPECT_TRUE(read({}).empty()); }

TEST(ArgumentReader, options_begin_with_a_hyphen_and_stand_anywhere) {
    EXPECT_THAT(read({"a", "--all", "-x", "-", "", "b"}),
                ElementsAre("argument a", "option --all", "option -x", "argument -", "argument ",
                            "argument b"));
}

TEST(ArgumentReader, two_hyphens_end_the_options_once) {
    EXPECT_THAT(read({"--all", "--", "--all", "--"}),
                ElementsAre("option --all", "end of options", "argument --all", "argument --"));
}

TEST(ArgumentReader, a_value_stands_behind_the_equals_sign_or_is_the_next_argument) {
    EXPECT_THAT(read({"--com=1=/dev/x", "--com=", "--com", "1=/dev/y", "--com"}, true),
                ElementsAre("option --com: 1=/dev/x", "option --com: ", "option --com: 1=/dev/y",
                            "option --com: (none)"));
}

TEST(ArgumentReader, what_looks_like_an_option_may_be_a_value) {
    EXPECT_THAT(read({"--save", "--", "--save", "--all", "--all"}, true),
                ElementsAre("option --save: --", "option --save: --all", "option --all: (none)"));
}

TEST(ArgumentReader, an_option_takes_several_values_its_own_first) {
    const std::vector<std::string> given = {"--fault=a", "b", "c"};
    ArgumentReader reader(given);
    ASSERT_TRUE(reader.next());
    EXPECT_TRUE(reader.has_own_value());
    EXPECT_EQ(reader.take_value(), "a");
    EXPECT_FALSE(reader.has_own_value());
    ASSERT_NE(reader.following(), nullptr);
    EXPECT_EQ(*reader.following(), "b");
    EXPECT_EQ(reader.take_value(), "b");
    EXPECT_EQ(reader.take_value(), "c");
    EXPECT_EQ(reader.following(), nullptr);
    EXPECT_FALSE(reader.next());
}

}  // namespace
}  // namespace memwright
