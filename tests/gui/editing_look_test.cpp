// The overlays' places and what they look like.

#include <QApplication>
#include <cmath>

#include "gui/support/appearance.h"
#include "gui/support/editing_test.h"

namespace memwright::gui {
namespace {

class EditingLook : public EditingTest {
  protected:
    // In pixels of 15 twips.
    static int pixels(double twips) { return static_cast<int>(std::lround(twips / 15)); }
};

TEST_F(EditingLook, the_text_box_is_the_cell_less_40_twips_and_set_in_by_40) {
    for (const int col : {1, 2}) {
        open(4, col);
        const QRect cell_place = place_of_cell(4, col);
        const QRect place = place_of(box(), box().rect());
        const int inset = pixels(40);
        EXPECT_NEAR(place.left(), cell_place.left() + inset, 1);
        EXPECT_NEAR(place.top(), cell_place.top() + inset, 1);
        EXPECT_EQ(place.width(), pixels(cell_place.width() * 15 - 40));
        EXPECT_EQ(place.height(), pixels(cell_place.height() * 15 - 40));
    }
}

TEST_F(EditingLook, the_list_is_the_cell_less_10_twips_at_its_place) {
    for (const int col : {3, 4}) {
        open(4, col);
        const QRect cell_place = place_of_cell(4, col);
        const QRect place = place_of(list(), list().rect());
        EXPECT_EQ(place.topLeft(), cell_place.topLeft());
        EXPECT_EQ(place.width(), pixels(cell_place.width() * 15 - 10));
        EXPECT_EQ(place.height(), pixels(cell_place.height() * 15 - 10));
    }
}

TEST_F(EditingLook, overlays_have_the_font_of_the_cell) {
    open(4, 1);
    EXPECT_EQ(box().font(), grid().font());
    open(4, 3);
    EXPECT_EQ(list().font(), grid().font());
}

TEST_F(EditingLook, pictures_for_human_eyes) {
    if (!pictures_wanted()) GTEST_SKIP() << "MEMWRIGHT_PICTURES names no folder";
    for (const bool dark : {false, true}) {
        const WithPalette palette(dark ? dark_palette() : QApplication::palette());
        const std::string theme = dark ? "-dark" : "-light";
        for (const int col : {1, 2, 3, 4}) {
            open(4, col);
            take_picture(window(), "editing-" + std::to_string(col) + theme);
        }
    }
}

}  // namespace
}  // namespace memwright::gui
