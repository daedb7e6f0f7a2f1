// The window that lists the notices of this run.

#include <gmock/gmock.h>

#include "gui/support/appearance.h"
#include "gui/support/notice_test.h"
#include "qt/notice_list.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;

class NoticeListTest : public NoticeTest {
  protected:
    qt::NoticeList& list() { return widget<qt::NoticeList>("NoticeList"); }
    QTreeWidget& entries() { return widget<QTreeWidget>("NoticesOfThisRun"); }
    std::string whole_text() {
        return qt::to_utf8(widget<QPlainTextEdit>("NoticeWholeText").toPlainText());
    }
    void open() {
        choose("mnuHelp", "NoticesEntry");
        list().activateWindow();
        if (!wait_until([&] { return list().isActiveWindow(); })) FAIL() << "it does not open";
    }
};

TEST_F(NoticeListTest, opens_from_the_menu_with_the_latest_first_and_its_whole_text) {
    add("one");
    notices().add({.text = "two\nlines", .details = "a\r\nb"});
    notices().dismiss();
    notices().record({.text = "seen"});
    open();
    EXPECT_EQ(list().windowTitle(), "Notices");
    EXPECT_EQ(focused(), "NoticesOfThisRun");
    ASSERT_EQ(entries().topLevelItemCount(), 3);
    EXPECT_EQ(entries().topLevelItem(0)->text(1), "seen");
    EXPECT_EQ(entries().topLevelItem(1)->text(1), "two lines");
    EXPECT_EQ(entries().topLevelItem(2)->text(1), "one");
    EXPECT_NE(entries().topLevelItem(0)->text(0), "");
    EXPECT_EQ(whole_text(), "seen");
    press(Qt::Key_Down);
    EXPECT_EQ(whole_text(), "two\nlines\n\na\nb");
}

TEST_F(NoticeListTest, opens_from_the_bar_and_escape_closes_it) {
    open_some_image();
    add("one");
    press(Qt::Key_F6);
    press(Qt::Key_Backtab);
    EXPECT_EQ(focused(), "NoticeListButton");
    press(Qt::Key_Return);
    ASSERT_TRUE(wait_until([&] { return list().isActiveWindow(); }));
    press(Qt::Key_Escape);
    EXPECT_FALSE(list().isVisible());
    EXPECT_TRUE(shown()) << "it was not the notice that was meant";
}

TEST_F(NoticeListTest, says_so_when_there_was_none) {
    open();
    EXPECT_EQ(entries().topLevelItemCount(), 0);
    EXPECT_EQ(whole_text(), "There has been no notice in this run.");
    EXPECT_FALSE(button("NoticeListAction").isVisible());
}

TEST_F(NoticeListTest, follows_what_comes_and_keeps_what_is_selected) {
    add("one");
    open();
    add("two");
    ASSERT_EQ(entries().topLevelItemCount(), 2);
    EXPECT_EQ(entries().topLevelItem(0)->text(1), "two");
    EXPECT_EQ(whole_text(), "one");
}

TEST_F(NoticeListTest, offers_the_action_as_long_as_it_holds) {
    int acted = 0;
    notices().add({.text = "one", .about = "it", .action = "&Undo", .act = [&] { ++acted; }});
    notices().dismiss();
    open();
    ASSERT_TRUE(button("NoticeListAction").isVisible());
    EXPECT_EQ(button("NoticeListAction").text(), "&Undo");
    QTest::keyClick(&list(), Qt::Key_U, Qt::AltModifier);
    EXPECT_TRUE(wait_until([&] { return acted == 1; }));
    notices().withdraw("it");
    EXPECT_FALSE(button("NoticeListAction").isVisible());
}

TEST_F(NoticeListTest, tab_visits_the_list_the_text_and_the_buttons) {
    notices().add({.text = "one", .action = "&Undo", .act = [] {}});
    open();
    std::vector<std::string> visited{focused()};
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_Tab);
        visited.push_back(focused());
    }
    EXPECT_THAT(visited, ElementsAre("NoticesOfThisRun", "NoticeWholeText", "NoticeListAction",
                                     "NoticeListClose", "NoticesOfThisRun"));
    auto& action = button("NoticeListAction");
    EXPECT_TRUE(wait_until([&] { return clipped_texts(list()).empty(); }))
        << action.width() << " x " << action.height() << " instead of "
        << action.minimumSizeHint().width() << " x " << action.minimumSizeHint().height();
}

TEST_F(NoticeListTest, its_size_is_remembered) {
    open();
    list().resize(700, 500);
    press(Qt::Key_Escape);
    restart();
    open();
    EXPECT_EQ(list().size(), QSize(700, 500));
}

TEST_F(NoticeListTest, a_stored_size_that_makes_no_sense_is_not_taken) {
    store_setting("ListWidth", "rubbish", "Memwright", "Notices");
    store_setting("ListHeight", "1e300", "Memwright", "Notices");
    open();
    EXPECT_GE(list().width(), list().minimumSizeHint().width());
    EXPECT_LE(list().height(), window().screen()->availableGeometry().height());
}

TEST_F(NoticeListTest, goes_with_the_window) {
    add("one");
    open();
    static_cast<QWidget&>(window()).close();
    EXPECT_TRUE(wait_until([&] { return window().findChild<QDialog*>() == nullptr; }));
}

}  // namespace
}  // namespace memwright::gui
