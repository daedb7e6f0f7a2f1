// The dialogs of the settings and of the search limits, worked by keyboard alone: from an opened
// file to the saved one.

#include <gmock/gmock.h>

#include <functional>

#include "radio/demonstration.h"
#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

using testing::ElementsAreArray;
using testing::Eq;
using testing::HasSubstr;

constexpr std::size_t kFirstLimit = 6912;
constexpr std::size_t kLastRow = 7152;

class SystemSettings : public MemwrightDesktop {
  protected:
    std::filesystem::path image() const { return file("image.120"); }

    // Starts with an image that its own table does not change. Returns its bytes.
    Bytes start_with_image(const std::function<void(Bytes&)>& change = [](Bytes&) {}) {
        const MemoryImage shown = through_the_table(radio::demonstration_memory());
        Bytes bytes(shown.bytes().begin(), shown.bytes().end());
        change(bytes);
        write_file(image(), bytes);
        start({image().string()});
        wait_for_caption(std::string(kTitle) + " - " + image().string());
        return bytes;
    }

    void choose_settings() {
        keyboard.press("Alt+V");
        keyboard.press("Enter");
    }
    void choose_limits() {
        keyboard.press("Alt+V");
        keyboard.press("Down");
        keyboard.press("Enter");
    }
    Accessible open_settings() {
        choose_settings();
        return program->dialog("Settings");
    }
    Accessible open_limits() {
        choose_limits();
        return program->dialog("Search Band Memories");
    }
    void press(std::initializer_list<const char*> keys) {
        for (const char* const key : keys) keyboard.press(key);
    }

    // Saves by keyboard; the file is a new one.
    void expect_saved(const Bytes& expected) {
        main();
        std::filesystem::remove(image());
        press({"Alt+F", "s"});
        ASSERT_TRUE(wait_until([&] { return std::filesystem::exists(image()); }));
        EXPECT_THAT(file_bytes(image()), ElementsAreArray(expected));
    }

    void change_settings() {
        press({"Alt+R", "End", "Alt+L", "End", "Alt+K", "Home", "Down", "Alt+A", "Alt+6"});
        press({"Alt+9", "Alt+W", "Home", "Down", "Down", "Down"});
    }
    static std::string text_of(const Accessible& dialog, const std::string& box) {
        return dialog.find({.role = Role::kText, .name = box}).text();
    }
};

TEST_F(SystemSettings, that_are_changed_by_keyboard_and_accepted_are_in_the_saved_file) {
    Bytes expected = start_with_image();
    const Accessible dialog = open_settings();
    change_settings();
    EXPECT_TRUE(dialog.find({.role = Role::kRadioButton, .name = "All"}).checked());
    keyboard.press("Enter");
    expected[6669] = 11;
    expected[6666] = 2;
    expected[6676] |= 0x08;  // Key Beep OFF, whatever the scan mode
    expected[6688] ^= 0x40;
    expected[6689] ^= 0x02;
    expected[6671] = 3;
    expect_saved(expected);

    const Accessible again = open_settings();
    EXPECT_TRUE(again.find({.role = Role::kRadioButton, .name = "Bank"}).checked());
    keyboard.press("Enter");
    expect_saved(expected);
}

TEST_F(SystemSettings, that_are_cancelled_are_not_in_the_saved_file) {
    const Bytes before = start_with_image();
    for (const char* const cancel : {"Esc", "Alt+C"}) {
        const Accessible dialog = open_settings();
        change_settings();
        keyboard.press(cancel);
        program->settle();
        EXPECT_FALSE(program->has_window("Settings")) << cancel;
        expect_saved(before);
    }
}

TEST_F(SystemSettings, limits_that_are_changed_by_keyboard_and_accepted_are_in_the_saved_file) {
    Bytes expected = start_with_image();
    const Accessible dialog = open_limits();
    keyboard.type("339.5");
    press({"Tab", "w"});
    expect_eventually([&] { return text_of(dialog, "L00, lower limit"); }, Eq("340.00000"));
    keyboard.press("Alt+-");
    keyboard.type("2000");
    keyboard.press("Enter");  // from within the box
    const auto put = [&](std::size_t offset, int first, int second, int third) {
        expected[offset] = static_cast<std::uint8_t>(first);
        expected[offset + 1] = static_cast<std::uint8_t>(second);
        expected[offset + 2] = static_cast<std::uint8_t>(third);
        expected[offset + 3] &= 0x1F;  // no fraction
    };
    put(kFirstLimit, 0x34, 0x00, 0x00);
    expected[kFirstLimit + 3] = static_cast<std::uint8_t>((expected[kFirstLimit + 3] & 0xFC) | 2);
    put(kLastRow, 0xC9, 0x90, 0x00);
    expect_saved(expected);
}

TEST_F(SystemSettings, limits_that_are_cancelled_are_not_in_the_saved_file) {
    const Bytes before = start_with_image();
    const Accessible dialog = open_limits();
    keyboard.type("145.5125");
    press({"Tab", "Home", "Alt+3"});
    keyboard.type("430");
    keyboard.press("Esc");
    program->settle();
    EXPECT_FALSE(program->has_window("Search Band Memories"));
    expect_saved(before);
}

TEST_F(SystemSettings, enter_in_an_open_list_chooses_in_it_and_leaves_the_dialog_open) {
    Bytes expected = start_with_image();
    const Accessible dialog = open_limits();
    press({"Tab", "Alt+Down"});
    const Accessible list = program->find({.role = Role::kList, .showing = true});
    press({"Home", "Down", "Enter"});
    list.wait_gone();
    program->settle();
    EXPECT_TRUE(program->has_window("Search Band Memories"));
    keyboard.press("Enter");
    expected[kFirstLimit + 3] = static_cast<std::uint8_t>((expected[kFirstLimit + 3] & 0xFC) | 1);
    expect_saved(expected);
}

TEST_F(SystemSettings, another_window_does_not_correct_what_is_being_typed_in_a_limit) {
    start_with_image();
    const Accessible dialog = open_limits();
    keyboard.type("339");
    {
        const Application other(desktop, MEMWRIGHT);
        other.main_window(std::string(kTitle) + " - By the Memwright developers");
        program->settle();
        EXPECT_EQ(text_of(dialog, "L00, lower limit"), "339");
    }
    desktop.window("Search Band Memories").activate();
    program->dialog("Search Band Memories");
    keyboard.type(".5");
    expect_eventually([&] { return text_of(dialog, "L00, lower limit"); }, Eq("339.5"));
    keyboard.press("Tab");
    expect_eventually([&] { return text_of(dialog, "L00, lower limit"); }, Eq("340.00000"));
    keyboard.press("Esc");
}

TEST_F(SystemSettings, an_image_that_a_list_cannot_show_is_reported_and_the_program_goes_on) {
    const Bytes before = start_with_image([](Bytes& bytes) { bytes[6671] = 4; });
    choose_settings();
    const Accessible report = program->message_box("Memwright", "\"Search Width\", at offset 6671");
    EXPECT_THAT(report.tree(), HasSubstr(" is 4,"));
    keyboard.press("Enter");
    main();
    EXPECT_FALSE(program->has_window("Settings"));
    open_limits();
    keyboard.press("Esc");
    expect_saved(before);
}

}  // namespace
}  // namespace memwright::systest
