// What assistive programs ask over the accessibility bus.

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

class SystemAccessibility : public MemwrightDesktop {
  protected:
    // Whether something has been shown that a screen reader says by itself. Each object is asked
    // once, when it has come: questions without end keep a program busy.
    bool told(const std::string& beginning) {
        for (const auto heard = desktop.bus().heard(); asked < heard.size();) {
            const Accessible element(*program, heard[asked++]);
            try {
                if (element.name().starts_with(beginning) &&
                    element.role_name() == "notification" && element.showing()) {
                    return true;
                }
            } catch (const NotThere&) {
                // a tip that has gone
            }
        }
        return false;
    }

  private:
    std::size_t asked = 0;
};

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

TEST_F(SystemAccessibility, the_label_that_the_keys_have_come_to_is_told_to_have_the_focus) {
    const auto image = changing_image();
    start({image.string()});
    wait_for_caption(std::string(kTitle) + " - " + image.string());
    desktop.bus().listen_for_state("focused");
    const auto told = [&](const std::string& label) {
        const auto heard = desktop.bus().heard();
        return std::ranges::any_of(heard, [&](const ObjectName& object) {
            const Accessible element(*program, object);
            return element.role() == Role::kRowHeader && element.name() == label;
        });
    };
    keyboard.press("Left");
    EXPECT_TRUE(wait_until([&] { return told("Bank 0 - 0"); }));
    keyboard.press("Down");
    EXPECT_TRUE(wait_until([&] { return told("Bank 0 - 1"); }));
    // The end that is marked.
    keyboard.press("Shift+Down");
    EXPECT_TRUE(wait_until([&] { return told("Bank 0 - 2"); }));
}

// What a screen reader says by itself: an element in the role of a notification that is shown.
TEST_F(SystemAccessibility, notices_are_told_as_they_come_also_while_another_one_is_shown) {
    const auto state = desktop.home() / ".local/state";
    std::filesystem::create_directories(state.parent_path());
    write_file(state, Bytes{1});
    desktop.bus().listen_for_state("showing");
    const auto image = changing_image();
    start({image.string()});
    wait_for_caption(std::string(kTitle) + " - " + image.string());
    mouse.double_click(grid().cell(0, 1));
    keyboard.type("a");
    EXPECT_TRUE(wait_until([&] { return told("Notice: Changes are not kept"); }))
        << program->tree();
    std::filesystem::remove(state);
    EXPECT_TRUE(wait_until([&] { return told("Notice: Changes are kept again"); }))
        << program->tree();
    program->find({.role = Role::kLabel, .name = "1 of 2", .showing = true});
}

TEST_F(SystemAccessibility, the_number_of_finds_is_told_with_the_memory_that_was_found) {
    desktop.bus().listen_for_state("showing");
    const auto image = changing_image();
    start({image.string()});
    wait_for_caption(std::string(kTitle) + " - " + image.string());
    ASSERT_TRUE(wait_until([&] { return grid().focused(); }));
    keyboard.press("Ctrl+F");
    keyboard.type("3-17");
    EXPECT_TRUE(wait_until([&] { return told("1 of 1: Bank 3 - 17"); })) << program->tree();
    keyboard.type("x");
    EXPECT_TRUE(wait_until([&] { return told("No memory found."); })) << program->tree();
}

}  // namespace
}  // namespace memwright::systest
