// The menu tree as it stands on the screen.

#include <gmock/gmock.h>

#include <QMenuBar>

#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

struct Entry {
    const char* name;
    const char* caption;                  // "-" for a separator line
    bool at_start;                        // enabled then
    std::vector<std::string> items = {};  // of the list that it opens, if always the same
};

struct Menu {
    Entry menu;
    std::vector<Entry> entries;
};

const std::vector<Menu> kMenus = {
    {{"mnuFile", "&File", true},
     {{"NewEntry", "&New", true},
      {"mnuOpen", "&Open", true},
      {"RecentMenu", "Open &Recent", false},
      {"mnuSaveOnly", "&Save", false},
      {"mnuSave", "Save &As...", false},
      {"mnuSep1", "-", true},
      {"mnuImport", "&Import From .CSV...", false},
      {"mnuExport", "&Export To .CSV...", false},
      {"mnusepa", "-", true},
      {"mnuPrint", "&Print", false},
      {"mnusepq", "-", true},
      {"mnuexit", "E&xit", true}}},
    {{"mnuEdit", "&Edit Channels", true},
     {{"UndoEntry", "&Undo", false},
      {"RedoEntry", "&Redo", false},
      {"LineBelowUndo", "-", true},
      {"mnuCut", "Cu&t", true},
      {"mnuCopy", "&Copy", true},
      {"mnuPaste", "&Paste", true},
      {"LineAboveRows", "-", true},
      {"InsertRowEntry", "&Insert Row", false},
      {"CloseUpEntry", "C&lose Up", false},
      {"SortRowsMenu", "&Sort Marked Rows", false, {"By &Frequency", "By &Tag", "By &Mode"}},
      {"FillSeriesEntry", "&Fill Series...", false},
      {"MoveToEntry", "&Move To...", false},
      {"SetModeMenu", "Set M&ode", false, {"&NFM", "&WFM", "&AM"}},
      {"SetPrefMenu", "Set Pr&ef", false, {"&Off", "O&n"}},
      {"LineAboveFind", "-", true},
      {"FindEntry", "Fi&nd...", false},
      {"FindNextEntry", "Find Ne&xt", false},
      {"FindPreviousEntry", "Find Pre&vious", false},
      {"GoToEntry", "&Go To Memory...", false}}},
    {{"mnuOptions", "&Settings", true},
     {{"mnuPort", "&Port...", true}, {"mnuShwDbg", "&Show Status Window", true}}},
    {{"mnuVR120Settings", "&VR120 Settings", false},
     {{"mnuMiscSettings", "&Set Mode Settings...", true},
      {"mnuSearchBandMem", "&Search Band Memories", true}}},
    {{"mnuTransfer", "&Transfer", true},
     {{"mnuRead", "&Read from VR-120", true},
      {"mnuWrite", "&Write To VR-120", false},
      {"mnuforce", "&Force Timeout", true}}},
    {{"mnuHelp", "&Help", true},
     {{"mnuabout", "&About...", true}, {"NoticesEntry", "&Notices...", true}}},
};

class Menus : public StartedWindowTest {
  protected:
    QMenuBar& bar() { return *window().menuBar(); }

    // Checks the whole tree, whether enabled or not by `enabled`.
    void check(const std::function<bool(const Entry&)>& enabled) {
        const auto shown_menus = bar().actions();
        ASSERT_EQ(shown_menus.size(), static_cast<int>(kMenus.size()));
        for (int i = 0; i < shown_menus.size(); ++i) {
            const Menu& menu = kMenus[static_cast<std::size_t>(i)];
            QMenu* const shown = shown_menus[i]->menu();
            ASSERT_NE(shown, nullptr);
            EXPECT_EQ(qt::to_utf8(shown->objectName()), menu.menu.name);
            EXPECT_EQ(qt::to_utf8(shown->title()), menu.menu.caption);
            EXPECT_EQ(shown_menus[i]->isEnabled(), enabled(menu.menu)) << menu.menu.name;
            EXPECT_TRUE(shown_menus[i]->isVisible()) << menu.menu.name;
            check_entries(*shown, menu.entries, enabled);
        }
    }

  private:
    static std::vector<std::string> items_of(const QMenu* list) {
        std::vector<std::string> captions;
        if (list == nullptr) return captions;
        for (const QAction* item : list->actions()) captions.push_back(qt::to_utf8(item->text()));
        return captions;
    }

    static void check_entries(const QMenu& shown, const std::vector<Entry>& entries,
                              const std::function<bool(const Entry&)>& enabled) {
        const auto actions = shown.actions();
        ASSERT_EQ(actions.size(), static_cast<int>(entries.size()));
        for (int i = 0; i < actions.size(); ++i) {
            const Entry& entry = entries[static_cast<std::size_t>(i)];
            const QAction& action = *actions[i];
            const QObject& named =
                action.menu() == nullptr ? static_cast<const QObject&>(action) : *action.menu();
            EXPECT_EQ(qt::to_utf8(named.objectName()), entry.name);
            // Which files there were is up to the user.
            if (std::string(entry.name) != "RecentMenu") {
                EXPECT_EQ(items_of(action.menu()), entry.items) << entry.name;
            }
            const bool separator = std::string(entry.caption) == "-";
            EXPECT_EQ(action.isSeparator(), separator) << entry.name;
            if (separator) continue;
            EXPECT_EQ(qt::to_utf8(action.text()), entry.caption);
            EXPECT_EQ(action.isEnabled(), enabled(entry)) << entry.name;
            EXPECT_EQ(action.isCheckable(), std::string(entry.name) == "mnuShwDbg") << entry.name;
            EXPECT_TRUE(action.isVisible()) << entry.name;
        }
    }
};

TEST_F(Menus, at_start_only_that_can_be_chosen_which_needs_no_image) {
    check([](const Entry& entry) { return entry.at_start; });
}

TEST_F(Menus, with_an_image_everything_can_be_chosen) {
    open_some_image();
    check([](const Entry& entry) {
        const std::string name = entry.name;
        return name != "UndoEntry" && name != "RedoEntry";
    });
}

TEST_F(Menus, in_a_transfer_every_menu_is_locked_and_its_entries_stay_as_they_were) {
    form().DisableGui();
    check([](const Entry& entry) {
        const bool is_menu = std::ranges::any_of(
            kMenus, [&](const Menu& menu) { return menu.menu.name == entry.name; });
        return !is_menu && entry.at_start;
    });
}

TEST_F(Menus, mnemonics_of_the_edit_menu_and_its_lists_are_unique) {
    for (const char* const menu : {"mnuEdit", "SortRowsMenu", "SetModeMenu", "SetPrefMenu"}) {
        std::string letters;
        for (const QAction* const action : widget<QMenu>(menu).actions()) {
            const QKeySequence keys = QKeySequence::mnemonic(action->text());
            if (!keys.isEmpty()) letters += static_cast<char>(keys[0].key());
        }
        std::ranges::sort(letters);
        EXPECT_EQ(std::ranges::adjacent_find(letters), letters.end()) << menu << ": " << letters;
    }
}

TEST_F(Menus, the_status_window_is_toggled_from_its_entry) {
    auto& entry = widget<QAction>("mnuShwDbg");
    EXPECT_TRUE(entry.isChecked());
    EXPECT_TRUE(widget<QPlainTextEdit>("Text1").isVisible());

    choose("mnuOptions", "mnuShwDbg");
    EXPECT_FALSE(entry.isChecked());
    EXPECT_FALSE(widget<QPlainTextEdit>("Text1").isVisible());
    EXPECT_EQ(setting("DebugWin"), "False");

    choose("mnuOptions", "mnuShwDbg");
    EXPECT_TRUE(entry.isChecked());
    EXPECT_TRUE(widget<QPlainTextEdit>("Text1").isVisible());
    EXPECT_EQ(setting("DebugWin"), "True");
}

TEST_F(Menus, accelerators_open_a_menu_and_choose_an_entry) {
    QTest::keyClick(&window(), Qt::Key_S, Qt::AltModifier);
    auto& menu = widget<QMenu>("mnuOptions");
    ASSERT_TRUE(wait_until([&] { return menu.isVisible(); }));
    QTest::keyClick(&menu, Qt::Key_S);
    EXPECT_FALSE(form().mnuShwDbg.checked);
}

}  // namespace
}  // namespace memwright::gui
