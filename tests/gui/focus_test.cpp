// Where the keys go.

#include <gmock/gmock.h>

#include <QApplication>

#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;

class Focus : public StartedWindowTest {
  protected:
    std::string focused() {
        QWidget* const widget = QApplication::focusWidget();
        return widget == nullptr ? "(none)" : qt::to_utf8(widget->objectName());
    }

    // Whom Tab visits, from the one that has the focus back to it.
    std::vector<std::string> tour(Qt::Key key = Qt::Key_Tab) {
        std::vector<std::string> visited{focused()};
        constexpr int kMany = 20;
        for (int i = 0; i < kMany; ++i) {
            QTest::keyClick(QApplication::focusWidget(), key);
            if (focused() == visited.front()) break;
            visited.push_back(focused());
        }
        return visited;
    }
};

TEST_F(Focus, goes_to_the_table_when_an_image_is_opened) {
    open_some_image();
    EXPECT_EQ(focused(), "MSFlexGrid1");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_EQ(form().MSFlexGrid1.Row(), 2);
}

TEST_F(Focus, goes_back_to_the_table_when_a_transfer_has_ended) {
    open_some_image();
    form().DisableGui();
    EXPECT_NE(focused(), "MSFlexGrid1");
    form().EnableGui();
    EXPECT_EQ(focused(), "MSFlexGrid1");
}

TEST_F(Focus, tab_visits_everything_in_the_order_in_which_it_stands) {
    open_some_image();
    EXPECT_THAT(tour(), ElementsAre("MSFlexGrid1", "Command2", "Command1", "Command3", "Command4",
                                    "Command5", "Text1"));
}

TEST_F(Focus, shift_tab_goes_the_same_way_back) {
    open_some_image();
    EXPECT_THAT(tour(Qt::Key_Backtab), ElementsAre("MSFlexGrid1", "Text1", "Command5", "Command4",
                                                   "Command3", "Command1", "Command2"));
}

TEST_F(Focus, the_button_of_a_transfer_comes_after_the_status_window) {
    open_some_image();
    form().DisableGui();
    form().TransferButton.caption = "Cancel";
    form().TransferButton.visible = true;
    widget<QPlainTextEdit>("Text1").setFocus();
    EXPECT_THAT(tour(), ElementsAre("Text1", "TransferButton", "Command2", "Command1", "Command3",
                                    "Command4", "Command5"));
}

TEST_F(Focus, a_hidden_status_window_is_left_out) {
    open_some_image();
    choose("mnuOptions", "mnuShwDbg");
    grid().setFocus();
    EXPECT_THAT(tour(), ElementsAre("MSFlexGrid1", "Command2", "Command1", "Command3", "Command4",
                                    "Command5"));
}

TEST_F(Focus, stays_in_the_table_when_the_status_window_comes_and_goes) {
    open_some_image();
    choose("mnuOptions", "mnuShwDbg");
    EXPECT_EQ(focused(), "MSFlexGrid1");
    choose("mnuOptions", "mnuShwDbg");
    EXPECT_EQ(focused(), "MSFlexGrid1");
}

TEST_F(Focus, space_presses_the_button_that_has_it) {
    open_some_image();
    const std::string before = form().MSFlexGrid1.TextMatrix(1, 2);
    change_table("99.90000");
    widget<QPushButton>("Command5").setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(form().MSFlexGrid1.TextMatrix(1, 2), before);
}

TEST_F(Focus, escape_does_nothing_when_no_transfer_runs) {
    open_some_image();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(grid().isEnabled());
}

}  // namespace
}  // namespace memwright::gui
