// What assistive programs ask over the accessibility bus.

#include <gtest/gtest.h>

#include <algorithm>
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

// What a screen reader says by itself: an element in the role of a notification that is shown.
TEST_F(SystemAccessibility, notices_are_told_as_they_come_also_while_another_one_is_shown) {
    desktop.bus().listen_for_state("showing");
    const auto image = changing_image();
    start({image.string()});
    wait_for_caption(std::string(kTitle) + " - " + image.string());
    const auto told = [&](const std::string& name) {
        return std::ranges::any_of(desktop.bus().heard(), [&](const ObjectName& object) {
            try {
                const Accessible element(*program, object);
                return element.name() == name && element.role_name() == "notification" &&
                       element.showing();
            } catch (const NotThere&) {
                return false;  // a menu that has gone
            }
        });
    };
    for (const std::string name : {"first.csv", "second.csv"}) {
        const std::string text = "Ch,MHz,Mode,Pref,Label\r\n0,339.5,AM,p,\"X\"\r\n";
        write_file(file(name), Bytes(text.begin(), text.end()));
        choose("File", "Import From .CSV...");
        enter_path(*program, "Import CSV", file(name));
        EXPECT_TRUE(wait_until([&] {
            return told("Notice: " + name +
                        ": Line 2 was skipped: the radio cannot receive 339.5 MHz.");
        })) << program->tree();
    }
    program->find({.role = Role::kLabel, .name = "1 of 2", .showing = true});
}

}  // namespace
}  // namespace memwright::systest
