#include <gtest/gtest.h>

#include <string>

#include "platform/file_dialogs.h"

namespace memwright {
namespace {

using namespace std::string_literals;

TEST(FileNames, a_name_ends_at_its_first_NUL) {
    EXPECT_EQ(up_to_nul("mem.120"), "mem.120");
    EXPECT_EQ(up_to_nul("mem.120\0\0\0"s), "mem.120");
    EXPECT_EQ(up_to_nul("mem\0.120\0x"s), "mem");
    EXPECT_EQ(up_to_nul("\0mem"s), "");
    EXPECT_EQ(up_to_nul(""), "");
}

TEST(FileNames, a_name_without_any_dot_gets_the_extension) {
    EXPECT_EQ(with_extension("mem", ".120"), "mem.120");
    EXPECT_EQ(with_extension("/home/radio/mem", ".120"), "/home/radio/mem.120");
}

TEST(FileNames, a_name_with_a_dot_anywhere_stays_as_it_is) {
    EXPECT_EQ(with_extension("mem.bak", ".120"), "mem.bak");
    EXPECT_EQ(with_extension("mem.", ".120"), "mem.");
    EXPECT_EQ(with_extension(".mem", ".120"), ".mem");
    EXPECT_EQ(with_extension("/home/radio.d/mem", ".120"), "/home/radio.d/mem");
}

}  // namespace
}  // namespace memwright
