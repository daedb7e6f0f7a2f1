// A stored place of the window that no screen shows any more.

#include <QScreen>

#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

class Sight : public WindowTest {
  protected:
    // Starts with a place that was stored on some other screen; in pixels.
    void start_at(const QRect& place) {
        const auto store = [this](const char* key, int pixels) {
            store_setting(key, std::to_string(pixels * 15).c_str());
        };
        store("Left", place.left());
        store("Top", place.top());
        store("Width", place.width());
        store("Height", place.height());
        start();
    }
    QRect place() { return window().frameGeometry(); }
    static QRect room() { return QGuiApplication::primaryScreen()->availableGeometry(); }

    void expect_all_in_sight_at(const QRect& stored) {
        start_at(stored);
        EXPECT_TRUE(wait_until([&] { return room().contains(place()); })) << shown();
        windowed_.reset();
    }
    void expect_exactly_at(const QRect& stored) {
        start_at(stored);
        EXPECT_TRUE(wait_until([&] { return place() == stored; })) << shown();
        windowed_.reset();
    }
    std::string shown() {
        return std::to_string(place().left()) + ", " + std::to_string(place().top()) + ", " +
               std::to_string(place().width()) + " x " + std::to_string(place().height());
    }
};

TEST_F(Sight, a_window_off_the_screen_comes_back_into_it) {
    for (const QPoint& corner :
         {QPoint(room().right() + 50, 100), QPoint(-5000, 100), QPoint(100, room().bottom() + 50),
          QPoint(100, -3000), QPoint(20000, 20000), QPoint(-20000, -20000)}) {
        SCOPED_TRACE(std::to_string(corner.x()) + ", " + std::to_string(corner.y()));
        expect_all_in_sight_at(QRect(corner, QSize(700, 500)));
    }
}

TEST_F(Sight, a_window_of_which_too_little_can_be_grasped_comes_back) {
    expect_all_in_sight_at(QRect(room().right() - 50, 100, 700, 500));
    expect_all_in_sight_at(QRect(-650, 100, 700, 500));
    expect_all_in_sight_at(QRect(100, room().bottom() - 5, 700, 500));
    expect_all_in_sight_at(QRect(100, -20, 700, 500));
}

TEST_F(Sight, it_keeps_its_size_where_that_fits) {
    start_at(QRect(20000, 100, 700, 500));
    EXPECT_TRUE(wait_until([&] { return place().size() == QSize(700, 500); })) << shown();
    EXPECT_EQ(place().right(), room().right());
    EXPECT_EQ(place().top(), 100);
}

TEST_F(Sight, a_window_larger_than_the_screen_becomes_as_large_as_that) {
    const QRect there = room();
    expect_all_in_sight_at(QRect(0, 0, there.width() * 2, there.height() * 2));
    expect_all_in_sight_at(QRect(50, 50, there.width() + 1, 500));
    expect_all_in_sight_at(QRect(50, 50, 700, there.height() + 1));
    start_at(QRect(-100, -100, there.width() * 2, there.height() * 2));
    EXPECT_TRUE(wait_until([&] { return place() == there; })) << shown();
}

TEST_F(Sight, any_other_window_stays_exactly_where_it_was) {
    const QRect there = room();
    expect_exactly_at(QRect(30, 40, 700, 500));
    expect_exactly_at(QRect(0, 0, 700, 500));
    expect_exactly_at(QRect(QPoint(0, 0), there.size()));
    // Partly outside, but with enough of its title bar to be dragged.
    expect_exactly_at(QRect(there.right() - 200, 100, 700, 500));
    expect_exactly_at(QRect(100, there.bottom() - 60, 700, 500));
    // The platform adds its frame on this side.
    start_at(QRect(-500, 100, 700, 500));
    EXPECT_TRUE(wait_until([&] { return place().size() == QSize(700, 500); })) << shown();
    EXPECT_NEAR(place().left(), -500, 2);
    EXPECT_EQ(place().top(), 100);
}

}  // namespace
}  // namespace memwright::gui
