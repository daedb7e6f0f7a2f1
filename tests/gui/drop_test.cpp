// Files that are dropped on the window.

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

class Drop : public StartedWindowTest {
  protected:
    // Drags over the window and lets go, as far as the window lets it. True if it took the drop.
    bool drop(const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        const QPoint inside = window().rect().center();
        QDragEnterEvent enter(inside, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&window(), &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent drop(inside, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&window(), &drop);
        return drop.isAccepted();
    }

    QUrl other_image() {
        const MemoryImage image = some_image();
        return QUrl::fromLocalFile(qt::from_file_name(
            folder_.put("other.120", {image.bytes().begin(), image.bytes().end()})));
    }

    std::string other_caption() { return "Memwright v1.0 - " + folder_.file("other.120"); }
};

TEST_F(Drop, a_dropped_file_is_opened) {
    const QUrl file = other_image();
    EXPECT_TRUE(answering({}, [&] { EXPECT_TRUE(drop({file})); }).empty());
    EXPECT_TRUE(wait_until([&] { return grid().isEnabled(); }));
    EXPECT_EQ(caption(), other_caption());
    EXPECT_TRUE(grid().hasFocus());
}

TEST_F(Drop, the_question_about_changes_comes_first_and_cancel_changes_nothing) {
    const std::string path = open_some_image();
    change_table();
    const QUrl file = other_image();
    const auto seen = answering({press(QMessageBox::Cancel)}, [&] { EXPECT_TRUE(drop({file})); });
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].title, "Memwright");
    EXPECT_EQ(caption(), "Memwright v1.0 - " + path);
    EXPECT_EQ(form().MSFlexGrid1.TextMatrix(1, 2), "145.50000");
}

TEST_F(Drop, what_is_not_one_file_is_refused) {
    const QUrl file = other_image();
    EXPECT_FALSE(drop({}));
    EXPECT_FALSE(drop({file, file}));
    EXPECT_FALSE(drop({QUrl("https://example.org/radio.120")}));
    EXPECT_FALSE(grid().isEnabled());
}

TEST_F(Drop, nothing_can_be_dropped_while_the_window_is_locked) {
    const std::string path = open_some_image();
    form().DisableGui();
    EXPECT_FALSE(drop({other_image()}));
    EXPECT_EQ(caption(), "Memwright v1.0 - " + path);
}

TEST_F(Drop, a_file_that_was_dropped_just_before_a_transfer_locked_the_window_is_not_opened) {
    const std::string path = open_some_image();
    EXPECT_TRUE(drop({other_image()}));
    form().DisableGui();
    QCoreApplication::processEvents();
    EXPECT_EQ(caption(), "Memwright v1.0 - " + path);
}

TEST_F(Drop, a_folder_is_told_to_be_none) {
    const QUrl folder = QUrl::fromLocalFile(qt::from_file_name(folder_.path().string()));
    const auto seen = answering({press(QMessageBox::Ok)}, [&] { drop({folder}); });
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].icon, QMessageBox::Critical);
    EXPECT_FALSE(grid().isEnabled());
}

}  // namespace
}  // namespace memwright::gui
