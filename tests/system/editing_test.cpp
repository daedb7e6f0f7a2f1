// A channel list made with the built program: typed with keys alone, moved, cut, pasted, saved.

#include <gmock/gmock.h>

#include <array>

#include "image/mod_vr120.h"
#include "native/file_system.h"
#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

using testing::ElementsAreArray;
using testing::Eq;

struct Channel {
    const char* tag;
    const char* frequency;  // as typed
    const char* mode;
    const char* preference;
};

constexpr std::array<Channel, 10> kTyped = {{{"tower", "118.5", "AM", "On"},
                                             {"ground", "121.725", "AM", "Off"},
                                             {"fm 1", "88.3", "WFM", "Off"},
                                             {"fm 2", "99.9", "WFM", "On"},
                                             {"2m a", "145.5", "NFM", "Off"},
                                             {"2m b", "145.575", "NFM", "Off"},
                                             {"70cm", "433.5", "NFM", "On"},
                                             {"pmr 1", "446.00625", "NFM", "Off"},
                                             {"ch*9+", "27.185", "AM", "Off"},
                                             {"last", "1.00000", "AM", "On"}}};

// Which of the typed channels each row holds in the end; -1 for none.
constexpr std::array<int, 12> kRows = {1, 2, 0, 3, 4, 5, -1, -1, 8, 9, 6, 7};

class SystemEditing : public MemwrightDesktop {
  protected:
    Point label(int row) const {
        const Rectangle first = grid().cell(0, 1).rectangle();
        const Rectangle next = grid().cell(1, 1).rectangle();
        return {first.x - 20, first.y + first.height / 2 + (row - 1) * (next.y - first.y)};
    }
    // The file as the memory image's own rules make it of the channels.
    static MemoryImage expected() {
        NativeFileSystem files;
        modVR120 store(files);
        for (int row = 0; row < 640; ++row) {
            const int bank = row / 64, memory = row % 64;
            const auto place = static_cast<std::size_t>(row);
            const int typed = place < kRows.size() ? kRows[place] : -1;
            if (typed < 0) {
                store.ClearMem(bank, memory);
                continue;
            }
            const Channel& channel = kTyped[static_cast<std::size_t>(typed)];
            std::string tag = channel.tag, frequency = channel.frequency;
            for (char& c : tag) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
            store.SetMemByte(bank, memory, 0);
            store.SetMemFreq(bank, memory, frequency);
            store.SetMemTag(bank, memory, tag);
            store.SetMode(bank, memory, channel.mode);
            store.SetPref(bank, memory, channel.preference);
        }
        return store.MemoryImage;
    }
};

TEST_F(SystemEditing, ten_channels_are_typed_moved_cut_pasted_and_saved) {
    const auto path = changing_image();
    start({path.string()});
    wait_for_caption(std::string(kTitle) + " - " + path.string());

    keyboard.press("Enter");
    for (const Channel& channel : kTyped) {
        for (const char* const text :
             {channel.tag, channel.frequency, channel.mode, channel.preference}) {
            keyboard.type(text);
            keyboard.press("Tab");
        }
    }
    keyboard.press("Esc");
    program->settle();
    EXPECT_EQ(cell(1, 1), "TOWER");
    EXPECT_EQ(cell(10, 1), "LAST");
    EXPECT_EQ(cell(10, 4), "On");

    // Row 1 goes down by two.
    mouse.click(label(1));
    const Accessible down = main().button("Move down");
    mouse.click(down);
    mouse.click(down);
    expect_eventually([&] { return cell(3, 1); }, Eq("TOWER"));

    // Rows 7 and 8 go to rows 11 and 12.
    mouse.drag(label(7), label(8));
    choose("Edit Channels", "Cut");
    expect_eventually([&] { return cell(7, 1); }, Eq(""));
    mouse.click(grid().cell(10, 1));
    choose("Edit Channels", "Paste");
    expect_eventually([&] { return cell(12, 1); }, Eq("PMR 1"));

    choose("File", "Save");
    program->settle();
    EXPECT_THAT(file_bytes(path), ElementsAreArray(expected().bytes()));
}

TEST_F(SystemEditing, after_a_menu_is_left_the_keys_go_on_in_the_grid) {
    const auto path = changing_image();
    start({path.string()});
    wait_for_caption(std::string(kTitle) + " - " + path.string());
    keyboard.type("abc");
    program->settle();
    keyboard.press("Alt+E");
    main().menu_item("Cut").wait_for(State::kShowing);
    keyboard.press("Esc");
    main().menu_item("Cut").wait_for(State::kShowing, false);
    keyboard.press("Esc");
    program->settle();
    EXPECT_TRUE(grid().focused());
    keyboard.press("Down");
    keyboard.type("def");
    expect_eventually([&] { return cell(2, 1); }, Eq("DEF"));
    EXPECT_EQ(cell(1, 1), "ABC");
}

TEST_F(SystemEditing, the_keys_go_on_in_the_grid_after_a_menu_that_was_opened_from_a_list) {
    const auto path = changing_image();
    start({path.string()});
    wait_for_caption(std::string(kTitle) + " - " + path.string());
    for (const char* const key : {"Right", "Right", "Enter"}) keyboard.press(key);
    main().find({.name = "Choice for the cell", .showing = true});
    keyboard.press("Alt+E");
    main().menu_item("Cut").wait_for(State::kShowing);
    keyboard.press("Esc");
    main().menu_item("Cut").wait_for(State::kShowing, false);
    keyboard.press("Esc");
    program->settle();
    EXPECT_TRUE(grid().focused());
    for (const char* const key : {"Down", "Left", "Left"}) keyboard.press(key);
    keyboard.type("abc");
    expect_eventually([&] { return cell(2, 1); }, Eq("ABC"));
}

TEST_F(SystemEditing, what_is_selected_elsewhere_and_pasted_with_the_middle_button_is_filtered) {
    const auto path = changing_image();
    start({path.string()});
    wait_for_caption(std::string(kTitle) + " - " + path.string());
    mouse.double_click(grid().cell(0, 3));
    keyboard.type("xyz");
    expect_eventually([&] { return cell(1, 3); }, Eq("xyz"));
    mouse.double_click(main().find({.role = Role::kComboBox, .showing = true}));
    keyboard.press("Esc");
    mouse.double_click(grid().cell(1, 1));
    keyboard.press("Delete");
    expect_eventually([&] { return cell(2, 1); }, Eq(""));
    mouse.click(main().find({.name = "Text of the cell", .showing = true}), Button::kMiddle);
    expect_eventually([&] { return cell(2, 1); }, Eq("XYZ"));
}

TEST_F(SystemEditing, a_command_by_mouse_closes_the_list_over_a_cell) {
    const auto path = changing_image();
    start({path.string()});
    wait_for_caption(std::string(kTitle) + " - " + path.string());
    keyboard.type("abc");
    keyboard.press("Esc");
    mouse.drag(label(2), label(5));
    mouse.double_click(grid().cell(3, 3));
    keyboard.type("AM");
    expect_eventually([&] { return cell(4, 3); }, Eq("AM"));
    choose("Edit Channels", "Cut");
    expect_eventually([&] { return cell(4, 3); }, Eq(""));
    keyboard.press("Up");
    keyboard.type("NFM");
    expect_eventually([&] { return cell(3, 1); }, Eq("NFM"));
    EXPECT_EQ(cell(4, 1), "");

    const Query list{.name = "Choice for the cell", .showing = true};
    for (const auto& [menu, entry] :
         {std::pair("Settings", "Show Status Window"), std::pair("Edit Channels", "Copy")}) {
        mouse.double_click(grid().cell(6, 3));
        main().find(list);
        choose(menu, entry);
        program->settle();
        EXPECT_FALSE(main().find_now(list)) << entry;
    }
}

TEST_F(SystemEditing, a_write_that_is_started_with_an_editor_open_sends_what_was_typed_last) {
    plug_in({"--mode", "receive"});
    const auto path = changing_image();
    start_in_quick_time({path.string()});
    wait_for_caption(std::string(kTitle) + " - " + path.string());
    keyboard.type("tower");
    keyboard.press("Tab");
    keyboard.type("118.5");
    choose("Transfer", "Write To VR-120");
    answer("Write To VR-120", kWriteInstructions, "OK");
    expect_status("Write To VR-120 complete.", kTransferPatience);
    radio->wait_for_line("received");
    NativeFileSystem files;
    modVR120 store(files);
    store.OpenVR120(radio_file().string());
    EXPECT_EQ(store.GetMemTag(0, 0), "TOWER");
    EXPECT_EQ(store.GetMemFreq(0, 0), "118.50000");
    EXPECT_EQ(store.GetMode(0, 0), "NFM");
}

}  // namespace
}  // namespace memwright::systest
