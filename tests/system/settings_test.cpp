// The dialogs of the settings and of the search limits, worked by keyboard alone: from an opened
// file to the saved one.

#include <gmock/gmock.h>

#include "radio/demonstration.h"
#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

using testing::ElementsAreArray;
using testing::Eq;

constexpr std::size_t kFirstLimit = 6912;
constexpr std::size_t kLastRow = 7152;

class SystemSettings : public MemwrightDesktop {
  protected:
    std::filesystem::path image() const { return file("image.120"); }

    // Starts with an image that its own table does not change. Returns its bytes.
    Bytes start_with_image() {
        const MemoryImage shown = through_the_table(radio::demonstration_memory());
        Bytes bytes(shown.bytes().begin(), shown.bytes().end());
        write_file(image(), bytes);
        start({image().string()});
        wait_for_caption(std::string(kTitle) + " - " + image().string());
        return bytes;
    }

    Accessible open_settings() {
        keyboard.press("Alt+V");
        keyboard.press("Enter");
        return program->dialog("Settings");
    }
    Accessible open_limits() {
        keyboard.press("Alt+V");
        keyboard.press("Down");
        keyboard.press("Enter");
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

}  // namespace
}  // namespace memwright::systest
