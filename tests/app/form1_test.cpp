// The main window's controls: the menu tree, and the lock around transfers.

#include "app/form1.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/program_under_test.h"

namespace memwright {
namespace {

struct Entry {
    std::string name;
    std::string caption;
    bool enabled_at_start = true;
};

struct Menu {
    Entry menu;
    std::vector<Entry> items;
};

// The original entries. Others may stand between them.
const std::vector<Menu> kTree = {
    {{"mnuFile", "&File"},
     {{"mnuOpen", "&Open"},
      {"mnuSaveOnly", "&Save", false},
      {"mnuSave", "Save &As...", false},
      {"mnuSep1", "-"},
      {"mnuImport", "&Import From .CSV...", false},
      {"mnuExport", "&Export To .CSV...", false},
      {"mnusepa", "-"},
      {"mnuPrint", "&Print", false},
      {"mnusepq", "-"},
      {"mnuexit", "E&xit"}}},
    {{"mnuEdit", "&Edit Channels"},
     {{"mnuCut", "Cu&t"}, {"mnuCopy", "&Copy"}, {"mnuPaste", "&Paste"}}},
    {{"mnuOptions", "&Settings"}, {{"mnuPort", "&Port..."}, {"mnuShwDbg", "&Show Status Window"}}},
    {{"mnuVR120Settings", "&VR120 Settings", false},
     {{"mnuMiscSettings", "&Set Mode Settings..."}, {"mnuSearchBandMem", "&Search Band Memories"}}},
    {{"mnuTransfer", "&Transfer"},
     {{"mnuRead", "&Read from VR-120"},
      {"mnuWrite", "&Write To VR-120", false},
      {"mnuforce", "&Force Timeout"}}},
    {{"mnuHelp", "&Help"}, {{"mnuabout", "&About..."}}}};

void expect_entry(const MenuEntry& entry, const Entry& wanted) {
    EXPECT_EQ(entry.name, wanted.name);
    EXPECT_EQ(entry.caption.get(), wanted.caption) << entry.name;
    EXPECT_TRUE(entry.visible) << entry.name;
    EXPECT_EQ(entry.enabled.get(), wanted.enabled_at_start) << entry.name;
}

class Menus : public ProgramTest {};

TEST_F(Menus, stand_in_their_order_with_their_captions_and_states_after_the_start) {
    program.start();
    const auto menus = form.menus();
    ASSERT_EQ(menus.size(), kTree.size());
    for (std::size_t m = 0; m < menus.size(); ++m) {
        expect_entry(menus[m].entry, kTree[m].menu);
        std::vector<const MenuEntry*> original;
        for (const MenuEntry* item : menus[m].items) {
            if (item->name.starts_with("mnu")) original.push_back(item);
        }
        ASSERT_EQ(original.size(), kTree[m].items.size()) << menus[m].entry.name;
        for (std::size_t i = 0; i < original.size(); ++i) {
            expect_entry(*original[i], kTree[m].items[i]);
        }
    }
}

TEST_F(Menus, only_the_status_window_has_a_check_mark) {
    program.start();
    for (const auto& [menu, items] : form.menus()) {
        EXPECT_FALSE(menu.checked) << menu.name;
        for (const MenuEntry* item : items) {
            EXPECT_EQ(item->checked.get(), item == &form.mnuShwDbg) << item->name;
        }
    }
}

TEST_F(Menus, all_open_up_once_an_image_is_there) {
    start_with_a_file();
    EXPECT_TRUE(form.MSFlexGrid1.enabled);
    for (const auto& [menu, items] : form.menus()) {
        EXPECT_TRUE(menu.enabled) << menu.name;
        for (const MenuEntry* item : items) {
            if (!item->name.starts_with("mnu")) continue;
            EXPECT_TRUE(item->enabled) << item->name;
        }
    }
}

// Names the controls in the order in which they are enabled or disabled.
class Lock : public testing::Test {
  protected:
    Lock() {
        watch(form.MSFlexGrid1);
        for (const auto& [menu, items] : form.menus()) {
            watch(menu);
            for (MenuEntry* item : items) watch(*item);
        }
    }

    void disable_all() {
        form.MSFlexGrid1.enabled = false;
        for (const auto& [menu, items] : form.menus()) {
            menu.enabled = false;
            for (MenuEntry* item : items) item->enabled = false;
        }
        order.clear();
    }

    Form1 form;
    std::vector<std::string> order;

  private:
    void watch(Control& control) {
        connections_.push_back(control.enabled.changed.connect(
            [this, &control] { order.push_back((control.enabled ? "+" : "-") + control.name); }));
    }

    std::vector<Connection> connections_;
};

TEST_F(Lock, DisableGui_disables_the_grid_and_the_menus_in_this_order) {
    form.DisableGui();
    EXPECT_EQ(order,
              (std::vector<std::string>{"-MSFlexGrid1", "-mnuFile", "-mnuEdit", "-mnuOptions",
                                        "-mnuVR120Settings", "-mnuTransfer", "-mnuHelp"}));
    EXPECT_TRUE(form.mnuforce.enabled) << "it cannot be reached through its menu, that is all";
}

TEST_F(Lock, EnableGui_enables_the_items_that_need_an_image_too) {
    disable_all();
    form.EnableGui();
    EXPECT_EQ(order, (std::vector<std::string>{"+MSFlexGrid1", "+mnuFile", "+mnuEdit",
                                               "+mnuOptions", "+mnuVR120Settings", "+mnuTransfer",
                                               "+mnuHelp", "+mnuSaveOnly", "+mnuSave", "+mnuImport",
                                               "+mnuExport", "+mnuPrint", "+mnuWrite"}));
}

TEST_F(Lock, unlock_gui_gives_back_what_was_enabled_and_nothing_more) {
    form.mnuVR120Settings.enabled = false;
    form.MSFlexGrid1.enabled = false;
    form.mnuSaveOnly.enabled = false;
    form.DisableGui();
    order.clear();
    form.unlock_gui();
    EXPECT_EQ(order, (std::vector<std::string>{"+mnuFile", "+mnuEdit", "+mnuOptions",
                                               "+mnuTransfer", "+mnuHelp"}));
    EXPECT_FALSE(form.MSFlexGrid1.enabled);
    EXPECT_FALSE(form.mnuVR120Settings.enabled);
    EXPECT_FALSE(form.mnuSaveOnly.enabled);
}

TEST_F(Lock, unlock_gui_works_once_for_each_lock) {
    form.DisableGui();
    form.unlock_gui();
    form.mnuHelp.enabled = false;
    form.unlock_gui();
    EXPECT_FALSE(form.mnuHelp.enabled);
}

TEST_F(Lock, unlock_gui_has_nothing_to_do_after_EnableGui) {
    form.DisableGui();
    form.EnableGui();
    form.mnuHelp.enabled = false;
    form.unlock_gui();
    EXPECT_FALSE(form.mnuHelp.enabled);
}

TEST_F(Lock, the_buttons_beside_the_grid_stay_as_they_are) {
    form.DisableGui();
    for (const CommandButton* button : {&form.Command1, &form.Command2, &form.Command3,
                                        &form.Command4, &form.Command5, &form.TransferButton}) {
        EXPECT_TRUE(button->enabled) << button->name;
    }
}

TEST(Form1Design, buttons_stand_beside_the_grid_without_touching_it_or_each_other) {
    Form1 form;
    const std::vector<const CommandButton*> column = {
        &form.Command2, &form.Command1, &form.Command3, &form.Command4, &form.Command5};
    for (std::size_t i = 0; i < column.size(); ++i) {
        EXPECT_LE(column[i]->left + column[i]->width, form.MSFlexGrid1.left.get());
        if (i == 0) continue;
        EXPECT_GE(column[i]->top.get(), column[i - 1]->top + column[i - 1]->height);
    }
}

TEST(Form1Design, the_save_and_load_buttons_have_their_captions) {
    const Form1 form;
    EXPECT_EQ(form.Command4.caption.get(), "Save");
    EXPECT_EQ(form.Command5.caption.get(), "Load");
}

TEST(Form1Design, what_belongs_to_a_transfer_is_not_seen_before_one) {
    const Form1 form;
    EXPECT_FALSE(form.ReceivedLabel.visible);
    EXPECT_FALSE(form.TransferProgress.visible);
    EXPECT_FALSE(form.TransferButton.visible);
}

}  // namespace
}  // namespace memwright
