#include "link/status_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/memory_settings.h"

namespace memwright {
namespace {

using testing::ElementsAre;

class StatusWindowTest : public testing::Test {
  protected:
    StatusWindowTest()
        : focus_(Text1.focus_wanted.connect([this] { focus_wishes.push_back(Text1.text); })) {
        mnuShwDbg.checked = true;
    }

    // What the layout finds when it is called: the checked state and the window's.
    std::vector<std::pair<bool, bool>> layouts;
    std::vector<std::string> focus_wishes;
    fakes::MemorySettings settings;
    TextBox Text1{"Text1"};
    MenuEntry mnuShwDbg{"mnuShwDbg", "&Show Status Window"};
    StatusWindow window{Text1, mnuShwDbg, settings, [this] {
                            EXPECT_EQ(settings.saved.size(), layouts.size() + 1);
                            layouts.emplace_back(mnuShwDbg.checked, Text1.visible);
                        }};

  private:
    Connection focus_;
};

TEST_F(StatusWindowTest, DebugOut_appends_lines_that_end_with_carriage_return_and_line_feed) {
    window.DebugOut("one");
    EXPECT_EQ(Text1.text.get(), "one\r\n");
    window.DebugOut("");
    window.DebugOut("two");
    EXPECT_EQ(Text1.text.get(), "one\r\n\r\ntwo\r\n");
}

TEST_F(StatusWindowTest, DebugOut_puts_the_caret_behind_the_text) {
    Text1.caret = 1;
    window.DebugOut("one");
    EXPECT_EQ(Text1.caret.get(), 5U);
    window.DebugOut("two");
    EXPECT_EQ(Text1.caret.get(), 10U);
}

TEST_F(StatusWindowTest, DebugOut_gives_the_window_the_focus_once_the_text_is_there) {
    window.DebugOut("one");
    EXPECT_THAT(focus_wishes, ElementsAre("one\r\n"));
}

TEST_F(StatusWindowTest, DebugOut_leaves_the_focus_where_it_is_if_the_window_is_hidden) {
    Text1.visible = false;
    window.DebugOut("one");
    EXPECT_TRUE(focus_wishes.empty());
    EXPECT_EQ(Text1.text.get(), "one\r\n");
    EXPECT_EQ(Text1.caret.get(), 5U);
}

TEST_F(StatusWindowTest, the_toggle_hides_the_window_and_stores_False) {
    window.mnuShwDbg_Click();
    EXPECT_FALSE(mnuShwDbg.checked);
    EXPECT_FALSE(Text1.visible);
    EXPECT_EQ(settings.values.at("VR120/Settings/DebugWin"), "False");
    EXPECT_THAT(layouts, ElementsAre(std::pair(false, false)));
}

TEST_F(StatusWindowTest, the_toggle_shows_it_again_and_stores_True) {
    window.mnuShwDbg_Click();
    window.mnuShwDbg_Click();
    EXPECT_TRUE(mnuShwDbg.checked);
    EXPECT_TRUE(Text1.visible);
    EXPECT_EQ(settings.values.at("VR120/Settings/DebugWin"), "True");
    EXPECT_THAT(layouts, ElementsAre(std::pair(false, false), std::pair(true, true)));
    EXPECT_EQ(settings.values.size(), 1U);
}

TEST_F(StatusWindowTest, the_toggle_goes_by_the_check_mark_and_not_by_what_is_seen) {
    Text1.visible = false;
    window.mnuShwDbg_Click();
    EXPECT_FALSE(mnuShwDbg.checked);
    EXPECT_FALSE(Text1.visible);
}

TEST_F(StatusWindowTest, the_toggle_leaves_the_text_alone) {
    Text1.text = "one\r\n";
    window.mnuShwDbg_Click();
    window.mnuShwDbg_Click();
    EXPECT_EQ(Text1.text.get(), "one\r\n");
}

}  // namespace
}  // namespace memwright
