#include "image/number_text.h"

#include <gtest/gtest.h>

namespace memwright {
namespace {

TEST(NumberText, lHex_writes_at_least_two_digits) {
    EXPECT_EQ(lHex(0), "00");
    EXPECT_EQ(lHex(10), "0A");
    EXPECT_EQ(lHex(255), "FF");
    EXPECT_EQ(lHex(256), "100");
}

}  // namespace
}  // namespace memwright
