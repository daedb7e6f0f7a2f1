// What assistive programs ask over the accessibility bus.

#include <gtest/gtest.h>

#include <climits>

#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

class SystemAccessibility : public MemwrightDesktop {};

TEST_F(SystemAccessibility, questions_about_rows_and_columns_that_are_not_there_are_answered) {
    start({changing_image().string()});
    const Accessible table = grid();
    for (const int number : {INT_MIN, -1, 15, 640, INT_MAX}) {
        EXPECT_EQ(table.column_heading(number), "") << number;
    }
    for (const int number : {INT_MIN, -1, 640, 641, INT_MAX}) {
        EXPECT_EQ(table.row_heading(number), "") << number;
    }
    EXPECT_EQ(table.column_heading(2), "Freq");
    EXPECT_EQ(table.row_heading(639), "Bank 9 - 63");
    EXPECT_TRUE(program->running());
}

}  // namespace
}  // namespace memwright::systest
