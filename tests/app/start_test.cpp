#include <filesystem>

#include "app/program_under_test.h"

namespace memwright {
namespace {

using Calls = std::vector<std::string>;

class Start : public ProgramTest {};

TEST_F(Start, shows_the_title_with_the_version_and_who_wrote_it) {
    program.start();
    EXPECT_EQ(form.caption.title, "Memwright v1.0");
    EXPECT_TRUE(form.caption.caption.get().starts_with("Memwright v1.0 - By "));
    EXPECT_GT(form.caption.caption.get().size(), std::string("Memwright v1.0 - By ").size());
}

TEST_F(Start, takes_the_design_text_off_the_status_line) {
    EXPECT_EQ(form.Label1.caption.get(), "Transferring....98%");
    program.start();
    EXPECT_EQ(form.Label1.caption.get(), "");
}

TEST_F(Start, makes_the_status_window_read_only_and_the_grid_disabled) {
    program.start();
    EXPECT_TRUE(form.Text1.read_only);
    EXPECT_FALSE(form.MSFlexGrid1.enabled);
}

TEST_F(Start, enables_the_file_and_transfer_menus) {
    form.DisableGui();
    program.start();
    EXPECT_TRUE(form.mnuFile.enabled);
    EXPECT_TRUE(form.mnuTransfer.enabled);
    EXPECT_FALSE(form.mnuEdit.enabled) << "which the start does not set";
}

TEST_F(Start, builds_the_empty_table) {
    program.start();
    EXPECT_EQ(form.MSFlexGrid1.Rows(), 641);
    EXPECT_EQ(form.MSFlexGrid1.Cols(), 15);
    EXPECT_EQ(form.MSFlexGrid1.TextMatrix(640, 0), "Bank 9 - 63");
    EXPECT_EQ(form.MSFlexGrid1.TextMatrix(1, columns::kFreq), "");
}

TEST_F(Start, takes_its_steps_in_this_order) {
    store("DebugWin", "False");
    store("FilePath", folder.file("radio"));
    std::filesystem::create_directory(folder.path() / "radio");
    Calls order;
    std::vector<Connection> connections;
    const auto log = [&](auto& property, const std::string& name) {
        connections.push_back(property.changed.connect([&order, name] { order.push_back(name); }));
    };
    log(form.caption.caption, "caption");
    log(form.Text1.read_only, "read only");
    log(form.MSFlexGrid1.enabled, "MSFlexGrid1");
    for (const auto& [menu, items] : form.menus()) {
        log(menu.enabled, menu.name);
        for (MenuEntry* item : items) {
            if (item->name.starts_with("mnu")) log(item->enabled, item->name);
        }
    }
    log(form.mnuShwDbg.checked, "mnuShwDbg checked");
    log(form.Text1.visible, "Text1 visible");
    log(form.Label1.caption, "Label1");
    connections.push_back(form.MSFlexGrid1.changed.connect([&](const GridChange& /*change*/) {
        EXPECT_EQ(std::filesystem::path(native.current_folder()).filename(), "radio");
        EXPECT_TRUE(window.calls.empty());
        order.emplace_back("table");
    }));
    program.start();
    const Calls wanted = {"caption",     "read only", "MSFlexGrid1",       "mnuVR120Settings",
                          "mnuSaveOnly", "mnuSave",   "mnuImport",         "mnuExport",
                          "mnuPrint",    "mnuWrite",  "mnuShwDbg checked", "Text1 visible",
                          "Label1",      "table"};
    EXPECT_EQ(order, wanted);
    EXPECT_FALSE(window.calls.empty());
}

TEST_F(Start, for_the_first_time_centres_the_window_as_designed_and_then_sizes_it) {
    program.start();
    EXPECT_EQ(window.calls,
              (Calls{"WindowState=0", "Top=5100", "Height=7050", "Left=9900", "Width=9990"}));
    EXPECT_TRUE(form.mnuShwDbg.checked);
    EXPECT_TRUE(form.Text1.visible);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(settings.saved.empty());
}

TEST_F(Start, restores_the_stored_place) {
    store("Top", "100");
    store("Height", "8000.5");
    store("Left", "-15");
    store("Width", "12000");
    program.start();
    EXPECT_EQ(window.calls,
              (Calls{"WindowState=0", "Top=100", "Height=8000.5", "Left=-15", "Width=12000"}));
}

TEST_F(Start, skips_a_stored_length_that_is_no_number) {
    store("Top", "high");
    store("Width", "");
    program.start();
    EXPECT_EQ(window.calls, (Calls{"WindowState=0", "Height=7050", "Left=9900"}));
    EXPECT_EQ(window.its_width, 9000);
}

TEST_F(Start, skips_a_step_that_the_window_refuses) {
    window.refused = {"WindowState", "Top", "Left"};
    program.start();
    EXPECT_EQ(window.calls, (Calls{"Height=7050", "Width=9990"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Start, opens_maximised_without_touching_the_place) {
    store("WindowState", "2");
    store("Top", "100");
    program.start();
    EXPECT_EQ(window.calls, (Calls{"WindowState=2"}));
    EXPECT_EQ(window.its_state, WindowState::maximised);
}

TEST_F(Start, opens_minimised_if_that_is_what_is_stored) {
    store("WindowState", "1");
    program.start();
    EXPECT_EQ(window.calls, (Calls{"WindowState=1"}));
}

TEST_F(Start, takes_any_other_stored_state_for_a_normal_window) {
    for (const char* state : {"wide", "", "3", "-1", "99999"}) {
        window.calls.clear();
        store("WindowState", state);
        program.start();
        EXPECT_EQ(window.its_state, WindowState::normal) << state;
        EXPECT_EQ(window.calls.size(), 4U) << state;
    }
}

TEST_F(Start, shows_or_hides_the_status_window_as_stored) {
    const std::vector<std::pair<std::string, bool>> cases = {
        {"1", true},  {"True", true},   {"true", true},  {"-1", true},
        {"0", false}, {"False", false}, {"FALSE", false}};
    for (const auto& [text, shown] : cases) {
        store("DebugWin", text);
        form.mnuShwDbg.checked = !shown;
        program.start();
        EXPECT_EQ(form.mnuShwDbg.checked.get(), shown) << text;
        EXPECT_EQ(form.Text1.visible.get(), shown) << text;
    }
}

TEST_F(Start, keeps_the_designed_check_mark_if_the_stored_text_is_no_boolean) {
    for (const char* text : {"perhaps", "", "Yes"}) {
        store("DebugWin", text);
        program.start();
        EXPECT_TRUE(form.mnuShwDbg.checked) << text;
        EXPECT_TRUE(form.Text1.visible) << text;
    }
    form.mnuShwDbg.checked = false;  // had the form been designed so
    program.start();
    EXPECT_FALSE(form.mnuShwDbg.checked);
    EXPECT_FALSE(form.Text1.visible) << "it follows the check mark";
}

TEST_F(Start, enters_the_stored_folder_and_open_starts_there) {
    std::filesystem::create_directory(folder.path() / "radio");
    store("FilePath", folder.file("radio"));
    program.start();
    EXPECT_EQ(std::filesystem::path(native.current_folder()),
              std::filesystem::canonical(folder.path() / "radio"));
    dialogs.names.emplace_back(std::nullopt);
    form.mnuOpen.clicked();
    ASSERT_EQ(dialogs.asked.size(), 1U);
    EXPECT_EQ(dialogs.asked[0].request.folder, folder.file("radio"));
}

TEST_F(Start, stays_in_its_folder_if_none_is_stored) {
    const std::string before = native.current_folder();
    program.start();
    EXPECT_EQ(native.current_folder(), before);
}

TEST_F(Start, skips_a_stored_folder_that_is_there_no_more) {
    const std::string before = native.current_folder();
    store("FilePath", folder.file("gone"));
    program.start();
    EXPECT_EQ(native.current_folder(), before);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(form.MSFlexGrid1.Rows(), 641) << "the next steps went on";
    EXPECT_EQ(window.calls.size(), 5U);
}

TEST_F(Start, lays_the_controls_out_for_the_restored_window) {
    program.start();
    EXPECT_EQ(form.MSFlexGrid1.height.get(), 7050 - 3200);
    EXPECT_EQ(form.MSFlexGrid1.width.get(), 9990 - 1800);
}

TEST_F(Start, starts_the_stall_watch_for_the_programs_whole_life) {
    program.start();
    ASSERT_EQ(loop.timers.size(), 1U);
    EXPECT_EQ(loop.timers[0].interval, std::chrono::milliseconds(5000));
    EXPECT_FALSE(loop.timers[0].alive.expired());
}

TEST_F(Start, the_stall_watch_changes_nothing_that_is_seen) {
    start_with_a_file();
    const auto before = enabled_names();
    for (int i = 0; i < 3; ++i) loop.timers.at(0).tick();
    form.mnuforce.clicked();
    EXPECT_EQ(enabled_names(), before);
    EXPECT_EQ(form.Label1.caption.get(), "");
    EXPECT_EQ(form.Text1.text.get(), "");
    EXPECT_TRUE(messages.shown.empty());
}

}  // namespace
}  // namespace memwright
