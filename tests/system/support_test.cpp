// The support library of the system tests, tried on a small program that has one of everything.

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>

#include "system/support/application.h"
#include "system/support/file_dialog.h"
#include "system/support/mouse.h"

namespace memwright::systest {
namespace {

using testing::Eq;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Ne;

// A desktop with the sample program on it, its window open and holding the keyboard.
class SystemSupport : public testing::Test {
  protected:
    std::string status() const { return window.described("Status").name(); }
    void expect_status(const std::string& text) const {
        expect_eventually([this] { return status(); }, Eq(text));
    }
    Accessible entry() const { return window.find({.role = Role::kText, .name = "Entry"}); }
    Accessible grid() const { return window.find({.role = Role::kTable, .name = "Grid"}); }

    Desktop desktop;
    Keyboard& keyboard = desktop.keyboard();
    Mouse mouse{desktop};
    Application sample{desktop, SYSTEM_SAMPLE};
    Accessible window = sample.main_window("Sample");
};

using SystemReading = SystemSupport;
using SystemMouse = SystemSupport;
using SystemKeyboard = SystemSupport;
using SystemWindow = SystemSupport;
using SystemFileDialog = SystemSupport;
using SystemScreen = SystemSupport;

TEST_F(SystemReading, menu_items_tell_their_state_while_the_menu_is_closed) {
    EXPECT_TRUE(window.menu_item("Open...").enabled());
    EXPECT_FALSE(window.menu_item("Disabled").enabled());
    EXPECT_FALSE(window.menu_item("Tick").checked());
    sample.choose({"Options", "Tick"});
    window.menu_item("Tick").wait_for(State::kChecked);
    expect_status("ticked");
}

TEST_F(SystemReading, any_cell_of_a_large_table_is_read_without_scrolling_to_it) {
    EXPECT_EQ(grid().row_count(), 640);
    EXPECT_EQ(grid().column_count(), 5);
    EXPECT_EQ(grid().cell_text(0, 0), "R0C0");
    EXPECT_EQ(grid().cell_text(639, 4), "R639C4");
    EXPECT_EQ(grid().column_heading(3), "Column 3");
    EXPECT_EQ(grid().row_heading(501), "Row 501");
    EXPECT_FALSE(grid().cell(639, 4).showing());
    EXPECT_THROW(grid().cell(640, 0), NotThere);
}

TEST_F(SystemReading, controls_tell_what_they_hold) {
    EXPECT_EQ(status(), "started");
    EXPECT_EQ(window.find({.role = Role::kProgressBar}).value(), 40);
    EXPECT_EQ(window.find({.role = Role::kComboBox}).name(), "First");
    EXPECT_TRUE(entry().is(State::kEditable));
    EXPECT_TRUE(entry().focused());
    EXPECT_FALSE(window.button("Press").focused());
}

TEST_F(SystemReading, a_lookup_in_vain_shows_the_whole_tree) {
    try {
        window.find({.role = Role::kPushButton, .name = "Absent"}, Milliseconds{50});
        FAIL() << "found what is not there";
    } catch (const NotThere& error) {
        EXPECT_THAT(error.what(), HasSubstr("an element of role 43 called 'Absent'"));
        EXPECT_THAT(error.what(), HasSubstr("label 'started'"));
    }
}

TEST_F(SystemReading, a_lookup_ends_at_once_when_the_program_has_died) {
    sample.kill();
    const auto before = std::chrono::steady_clock::now();
    EXPECT_THROW(window.button("Absent"), std::runtime_error);
    EXPECT_LT(std::chrono::steady_clock::now() - before, kPatience / 4);
}

TEST_F(SystemReading, rectangles_are_where_the_window_is_also_when_it_has_moved) {
    const TopWindow top = desktop.window("Sample");
    top.move_to({40, 60});
    top.resize(820, 600);
    expect_eventually([&] { return top.rectangle().width; }, Eq(820));
    sample.settle();
    EXPECT_EQ(window.rectangle(), top.rectangle());
    EXPECT_TRUE(top.rectangle().contains(window.button("Press").rectangle()));
}

TEST_F(SystemMouse, two_clicks_in_a_row_are_two_clicks) {
    const Accessible button = window.button("Press");
    mouse.click(button);
    mouse.click(button);
    expect_status("pressed 2");
}

TEST_F(SystemMouse, a_double_click_reaches_the_cell_under_it) {
    mouse.double_click(grid().cell(3, 2));
    expect_status("double 3,2");
    grid().cell(3, 2).wait_for(State::kSelected);
}

TEST_F(SystemMouse, the_wheel_brings_other_rows_in_sight) {
    const Point place = mouse.aim(grid().cell(4, 1));
    mouse.wheel(place, Button::kWheelDown, 20);
    grid().cell(4, 1).wait_for(State::kShowing, false);
    mouse.wheel(place, Button::kWheelUp, 20);
    grid().cell(4, 1).wait_for(State::kShowing);
}

TEST_F(SystemMouse, the_right_button_asks_for_the_context_menu) {
    mouse.right_click(window.button("Press"));
    expect_status("context");
}

TEST_F(SystemMouse, a_drag_selects_text) {
    keyboard.type("something");
    expect_eventually([this] { return entry().text(); }, Eq("something"));
    const Point start{entry().rectangle().x + 2, entry().rectangle().centre().y};
    mouse.drag({start.x + 300, start.y}, start);
    keyboard.type("else");
    expect_eventually([this] { return entry().text(); }, Eq("else"));
}

TEST_F(SystemMouse, a_box_is_checked_and_a_list_opened_and_chosen_from) {
    const Accessible box = window.find({.role = Role::kCheckBox, .name = "Check me"});
    mouse.click(box);
    box.wait_for(State::kChecked);
    const Accessible choice = window.find({.role = Role::kComboBox});
    mouse.click(choice);
    const Accessible list = choice.find({.role = Role::kList, .showing = true});
    mouse.click(list.find({.role = Role::kListItem, .name = "Third"}));
    expect_eventually([&] { return choice.name(); }, Eq("Third"));
}

TEST_F(SystemMouse, submenus_open_on_the_way_to_their_items) {
    sample.choose({"Options", "Deeper", "Bottom"});
    expect_status("bottom");
}

TEST_F(SystemMouse, a_disabled_item_does_nothing) {
    sample.choose({"File", "Disabled"});
    sample.settle();
    EXPECT_EQ(status(), "started");
    EXPECT_THAT(sample.output(), IsEmpty());
}

TEST(SystemScale, clicks_find_their_target_at_one_and_a_half_times_the_size) {
    Desktop desktop;
    Application sample(desktop, SYSTEM_SAMPLE, {}, {{"QT_SCALE_FACTOR", "1.5"}});
    const Accessible window = sample.main_window("Sample");
    EXPECT_EQ(desktop.window("Sample").rectangle().width, 1050);
    Mouse(desktop).click(window.button("Press"));
    expect_eventually([&] { return window.described("Status").name(); }, Eq("pressed 1"));
}

TEST_F(SystemKeyboard, text_arrives_as_typed_with_shifted_and_foreign_characters) {
    const std::string text = "Ab9 {|}~\"'\\/?:+_^ \u00e9\u00df\u00b0\u20ac\u0152";
    keyboard.type(text);
    expect_eventually([this] { return entry().text(); }, Eq(text));
    keyboard.press("Enter");
    expect_status("entered " + text);
}

TEST_F(SystemKeyboard, all_keys_are_dealt_with_once_the_program_has_settled) {
    std::string text;
    for (int round = 0; round < 40; ++round) {
        keyboard.type("0123456789");
        text += "0123456789";
        sample.settle();
        ASSERT_EQ(entry().text(), text);
    }
}

TEST_F(SystemKeyboard, chords_open_menus_and_press_shortcuts) {
    keyboard.press("Alt+F");
    window.menu_item("Open...").wait_for(State::kShowing);
    keyboard.press("Esc");
    window.menu_item("Open...").wait_for(State::kShowing, false);
    keyboard.press("ctrl+O");
    sample.dialog("Open a file");
    keyboard.press("Esc");
    expect_status("open ");
}

TEST_F(SystemKeyboard, an_unknown_key_is_refused) {
    EXPECT_THROW(keyboard.press("ctrl+Nonsense"), std::runtime_error);
}

TEST_F(SystemKeyboard, a_message_box_takes_each_of_its_three_answers) {
    const std::pair<const char*, const char*> answers[] = {
        {"Alt+Y", "yes"}, {"Alt+N", "no"}, {"Esc", "cancel"}};
    for (const auto& [key, answer] : answers) {
        sample.choose({"Options", "Ask"});
        sample.message_box("Sample asks", "Save the changes?");
        keyboard.press(key);
        expect_status(answer);
        EXPECT_FALSE(sample.has_window("Sample asks"));
    }
}

TEST_F(SystemWindow, a_close_is_refused_with_cancel_and_carried_out_otherwise) {
    desktop.window("Sample").close();
    mouse.click(sample.message_box("Sample asks").button("Cancel"));
    expect_status("stays");
    sample.main_window("Sample");
    keyboard.press("Alt+F4");
    mouse.click(sample.message_box("Sample asks").button("No"));
    EXPECT_EQ(sample.wait_for_exit(), ExitStatus{});
    EXPECT_EQ(sample.output(), "stays\ncloses\n");
}

TEST_F(SystemWindow, the_active_window_is_the_one_in_front) {
    EXPECT_EQ(desktop.active_title(), "Sample");
    sample.choose({"Options", "Ask"});
    const Accessible box = sample.message_box("Sample asks");
    EXPECT_EQ(desktop.active_title(), "Sample asks");
    mouse.click(box.button("No"));
    box.wait_gone();
    sample.main_window("Sample");
    EXPECT_EQ(desktop.active_title(), "Sample");
}

TEST_F(SystemFileDialog, a_file_is_saved_under_the_path_typed) {
    sample.choose({"File", "Save As..."});
    enter_path(sample, "Save a file", desktop.folder() / "Some name.120");
    expect_status("save " + (desktop.folder() / "Some name.120").string());
}

TEST_F(SystemFileDialog, an_existing_file_is_asked_about_first) {
    const auto file = desktop.folder() / "there.120";
    std::ofstream(file) << "x";
    sample.choose({"File", "Save As..."});
    enter_path(sample, "Save a file", file);
    mouse.click(sample.message_box("Save a file", "there.120 already exists").button("Yes"));
    expect_status("save " + file.string());
}

TEST_F(SystemFileDialog, an_existing_file_is_opened) {
    const auto file = desktop.folder() / "there.120";
    std::ofstream(file) << "x";
    keyboard.press("ctrl+o");
    enter_path(sample, "Open a file", file);
    expect_status("open " + file.string());
}

TEST_F(SystemScreen, pixels_and_pictures_show_the_window) {
    const Rectangle shown = desktop.window("Sample").rectangle();
    EXPECT_EQ(desktop.screen().rectangle(), (Rectangle{0, 0, 1280, 1024}));
    EXPECT_EQ(desktop.screen().pixel({1, 1}), (Colour{0, 0, 0}));
    expect_eventually(
        [&] {
            return desktop.screen().pixel({shown.x + 400, shown.y + 5});
        },
        Ne(Colour{0, 0, 0}));
    const auto file = desktop.folder() / "screen.png";
    desktop.screen().picture(shown).save(file);
    std::ifstream in(file, std::ios::binary);
    const std::string png{std::istreambuf_iterator<char>(in), {}};
    ASSERT_GT(png.size(), 24U);
    EXPECT_EQ(png.substr(1, 3), "PNG");
    EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x02\xBC\0\0\x01\xF4", 8));  // 700 by 500
}

}  // namespace
}  // namespace memwright::systest
