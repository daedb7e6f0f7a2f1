#include "base/enumeration.h"

#include <gtest/gtest.h>

namespace memwright {
namespace {

TEST(Enumeration, items_stand_as_in_a_sentence) {
    EXPECT_EQ(enumeration({}, "and"), "");
    EXPECT_EQ(enumeration({"text"}, "or"), "text");
    EXPECT_EQ(enumeration({"text", "json"}, "or"), "text or json");
    EXPECT_EQ(enumeration({"COM1", "COM2", "COM3"}, "and"), "COM1, COM2 and COM3");
}

}  // namespace
}  // namespace memwright
