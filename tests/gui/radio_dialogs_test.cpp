// The dialogs of the settings and of the search limits in the real window: from the menu to the
// file.

#include <QLineEdit>

#include "gui/support/dialog_test.h"
#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

class RadioDialogs : public StartedWindowTest {
  protected:
    std::vector<Seen> in_settings(const Reply& work) {
        return answering({work}, [&] { choose("mnuVR120Settings", "mnuMiscSettings"); });
    }
    std::vector<Seen> in_limits(const Reply& work) {
        return answering({work}, [&] { choose("mnuVR120Settings", "mnuSearchBandMem"); });
    }
    std::vector<std::uint8_t> saved() {
        choose("mnuFile", "mnuSaveOnly");
        return folder_.get("radio.120");
    }
};

TEST_F(RadioDialogs, open_from_the_menu_and_are_saved_with_the_image) {
    open_some_image();
    auto expected = folder_.get("radio.120");
    in_settings([&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "frmMiscSetting");
        EXPECT_EQ(dialog.parentWidget(), &window());
        alt(dialog, 'L');
        key(dialog, Qt::Key_End);
        key(dialog, Qt::Key_Return);
    });
    in_limits([&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "frmLimitSearch");
        EXPECT_EQ(dialog.parentWidget(), &window());
        type(dialog, "145.5125");
        key(dialog, Qt::Key_Return);
    });
    expected[6666] = 2;
    expected[6912] = 0x14;
    expected[6913] = 0x55;
    expected[6914] = 0x12;
    expected[6915] = static_cast<std::uint8_t>((expected[6915] & 0x1F) | 0x40);
    EXPECT_EQ(saved(), expected);
}

TEST_F(RadioDialogs, give_the_keys_back_to_the_table) {
    open_some_image();
    grid().setFocus();
    in_settings(press_key(Qt::Key_Escape));
    EXPECT_TRUE(grid().hasFocus());
    in_limits(press_key(Qt::Key_Return));
    EXPECT_TRUE(grid().hasFocus());
}

}  // namespace
}  // namespace memwright::gui
