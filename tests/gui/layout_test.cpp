// Where everything stands, for windows of several sizes; lengths in pixels, 15 twips each.

#include <gmock/gmock.h>

#include <QMenuBar>

#include "gui/support/appearance.h"
#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

using ::testing::IsEmpty;

int pixels_of(double twips) { return static_cast<int>(std::lround(twips / 15)); }

class Layout : public StartedWindowTest {
  protected:
    void show_status_window(bool shown) {
        if (form().mnuShwDbg.checked != shown) choose("mnuOptions", "mnuShwDbg");
    }

    void resize(QSize size) {
        window().resize(size);
        ASSERT_TRUE(wait_until([&] { return window().size() == size; }));
    }

    QRect place_of(const char* name) { return widget<QWidget>(name).geometry(); }

    // The part of the status line that its text takes.
    QRect status_text() {
        auto& label = widget<QLabel>("Label1");
        QRect place = label.geometry();
        place.setWidth(label.sizeHint().width());
        return place;
    }

    // As in the middle of a transfer.
    void show_transfer(const char* status) {
        form().Label1.caption = status;
        form().TransferProgress.visible = true;
        form().TransferProgress.percent = 100;
        form().TransferButton.caption = "Cancel";
        form().TransferButton.visible = true;
    }

    std::vector<std::string> overlaps() {
        std::vector<std::pair<std::string, QRect>> places;
        auto& canvas = widget<QWidget>("Canvas");
        for (const auto* const shown :
             canvas.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!shown->isVisible()) continue;
            const bool status = shown->objectName() == "Label1";
            places.emplace_back(qt::to_utf8(shown->objectName()),
                                status ? status_text() : shown->geometry());
        }
        std::vector<std::string> found;
        for (std::size_t i = 0; i < places.size(); ++i) {
            if (!canvas.rect().contains(places[i].second)) found.push_back(places[i].first);
            for (std::size_t j = 0; j < i; ++j) {
                if (places[i].second.intersects(places[j].second)) {
                    found.push_back(places[i].first + " and " + places[j].first);
                }
            }
        }
        return found;
    }
};

class LayoutOfSizes : public Layout, public ::testing::WithParamInterface<QSize> {};

TEST_P(LayoutOfSizes, the_controls_follow_the_size_of_the_whole_window) {
    resize(GetParam());
    for (const bool shown : {true, false, true}) {
        show_status_window(shown);
        const QSize whole = window().frameGeometry().size();
        const int grid_height = whole.height() - pixels_of(shown ? 3200 : 1300);
        const int grid_width = whole.width() - pixels_of(1800);
        EXPECT_EQ(place_of("MSFlexGrid1"),
                  QRect(pixels_of(1600), pixels_of(120), grid_width, grid_height));
        EXPECT_EQ(place_of("Text1"), QRect(pixels_of(1600), whole.height() - pixels_of(2800),
                                           grid_width, pixels_of(1650)));
        EXPECT_EQ(place_of("Label1"), QRect(pixels_of(120), whole.height() - pixels_of(1000),
                                            whole.width(), pixels_of(300)));
        EXPECT_EQ(widget<QWidget>("Text1").isVisible(), shown);
    }
}

TEST_P(LayoutOfSizes, the_grid_has_1900_twips_more_height_without_the_status_window) {
    resize(GetParam());
    const int height = place_of("MSFlexGrid1").height();
    const double twips = form().MSFlexGrid1.height;
    show_status_window(false);
    EXPECT_EQ(form().MSFlexGrid1.height, twips + 1900);
    EXPECT_NEAR(place_of("MSFlexGrid1").height(), height + 1900 / 15.0, 1);
}

TEST_P(LayoutOfSizes, nothing_overlaps_and_everything_is_inside_of_the_window) {
    resize(GetParam());
    for (const bool shown : {true, false}) {
        show_status_window(shown);
        show_transfer("Reading from VR-120: 100% complete...");
        EXPECT_THAT(overlaps(), IsEmpty());
        form().Label1.caption = "Listening...";
        form().ReceivedLabel.caption = "29999 bytes received";
        form().ReceivedLabel.visible = true;
        EXPECT_THAT(overlaps(), IsEmpty());
        form().ReceivedLabel.visible = false;
    }
}

TEST_P(LayoutOfSizes, no_text_is_clipped) {
    resize(GetParam());
    show_transfer("Reading from VR-120: 100% complete...");
    form().ReceivedLabel.caption = "29999 bytes received";
    form().ReceivedLabel.visible = true;
    auto clipped = clipped_texts(widget<QWidget>("Canvas"));
    // As wide as the whole window, it reaches past the frame.
    std::erase(clipped, "Label1");
    EXPECT_THAT(clipped, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(sizes, LayoutOfSizes,
                         ::testing::Values(QSize(580, 340), QSize(662, 466), QSize(900, 500),
                                           QSize(1200, 900)),
                         [](const auto& size) {
                             return std::to_string(size.param.width()) + "_by_" +
                                    std::to_string(size.param.height());
                         });

TEST_F(Layout, the_window_gets_no_smaller_than_a_few_rows_and_all_buttons_need) {
    window().resize(10, 10);
    EXPECT_EQ(window().size(), window().minimumSize());
    EXPECT_EQ(window().minimumSize(), QSize(580, 340));
    EXPECT_GE(grid().viewport()->height(), 4 * grid().rowHeight(0));
    const int columns = grid().horizontalHeader()->length();
    EXPECT_GE(grid().viewport()->width(), columns);
}

TEST_F(Layout, the_status_line_stays_in_the_window_under_a_tall_menu_bar) {
    QFont font = window().menuBar()->font();
    font.setPixelSize(60);
    window().menuBar()->setFont(font);
    auto& canvas = widget<QWidget>("Canvas");
    ASSERT_TRUE(wait_until([&] { return canvas.height() < window().height() - 60; }));
    resize(QSize(900, 700));
    show_transfer("Listening...");
    EXPECT_THAT(overlaps(), IsEmpty());
    EXPECT_LE(place_of("Label1").bottom(), canvas.height());
}

TEST_F(Layout, buttons_stand_in_one_column_in_their_order_beside_the_grid) {
    int bottom = 0;
    for (const char* const name : {"Command2", "Command1", "Command3", "Command4", "Command5"}) {
        const QRect place = place_of(name);
        EXPECT_EQ(place.left(), place_of("Command2").left()) << name;
        EXPECT_EQ(place.size(), place_of("Command2").size()) << name;
        EXPECT_GT(place.top(), bottom) << name;
        EXPECT_LT(place.right(), place_of("MSFlexGrid1").left()) << name;
        bottom = place.bottom();
    }
    EXPECT_EQ(place_of("Command2").top(), place_of("MSFlexGrid1").top());
}

TEST_F(Layout, what_belongs_to_the_status_line_is_in_line_with_it) {
    show_transfer("Listening...");
    form().ReceivedLabel.visible = true;
    const int middle = place_of("Label1").center().y();
    for (const char* const name : {"ReceivedLabel", "TransferProgress", "TransferButton"}) {
        EXPECT_NEAR(place_of(name).center().y(), middle, 1) << name;
    }
}

TEST_F(Layout, no_button_is_clipped_in_a_larger_font) {
    QFont font = QApplication::font();
    font.setPointSizeF(11);
    constexpr int kAround = 6;
    show_transfer("Listening...");
    for (auto* const button : window().findChildren<QPushButton*>()) {
        button->setFont(font);
        EXPECT_LE(button->sizeHint().width(), button->width()) << qt::to_utf8(button->objectName());
        EXPECT_LE(button->fontMetrics().height() + kAround, button->height())
            << qt::to_utf8(button->objectName());
    }
}

TEST_F(Layout, a_dark_palette_changes_no_place_and_clips_nothing) {
    const QRect before = place_of("MSFlexGrid1");
    const WithPalette dark(dark_palette());
    QCoreApplication::processEvents();
    show_transfer("Reading from VR-120: 100% complete...");
    EXPECT_EQ(place_of("MSFlexGrid1"), before);
    auto clipped = clipped_texts(widget<QWidget>("Canvas"));
    std::erase(clipped, "Label1");
    EXPECT_THAT(clipped, IsEmpty());
    for (const char* const name : {"Command1", "Command3", "TransferButton"}) {
        auto& button = widget<QWidget>(name);
        const QImage shown = picture_of(button, button.rect().adjusted(6, 4, -6, -4));
        EXPECT_GE(contrast(ink_of(shown), background_of(shown)), 7) << name;
    }
}

TEST_F(Layout, the_arrows_on_the_move_buttons_follow_the_palette_and_point_apart) {
    for (const bool dark : {false, true}) {
        std::optional<WithPalette> palette;
        if (dark) palette.emplace(dark_palette());
        const auto icon = [&](const char* name) {
            return widget<QPushButton>(name).icon().pixmap(QSize(64, 64), 1.0).toImage();
        };
        const QImage up = icon("Command2"), down = icon("Command1");
        // Beside the shaft there is the head on the one side, and nothing on the other.
        constexpr int kBeside = 20, kAbove = 28, kBelow = 36;
        EXPECT_EQ(up.pixelColor(kBeside, kAbove).alpha(), 255);
        EXPECT_EQ(up.pixelColor(kBeside, kBelow).alpha(), 0);
        EXPECT_EQ(down.pixelColor(kBeside, kAbove).alpha(), 0);
        EXPECT_EQ(down.pixelColor(kBeside, kBelow).alpha(), 255);
        EXPECT_EQ(up.pixelColor(kBeside, kAbove).lightness() > 128, dark);
    }
}

}  // namespace
}  // namespace memwright::gui
