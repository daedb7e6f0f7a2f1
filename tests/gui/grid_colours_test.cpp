// What the grid looks like: the colours of cells in a light and in a dark palette.

#include <QScrollBar>

#include "gui/support/appearance.h"
#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

constexpr Colour kMasked = 0xC0C0C0;

class GridColours : public WindowTest, public ::testing::WithParamInterface<bool> {
  protected:
    void SetUp() override {
        if (GetParam()) palette_.emplace(dark_palette());
        start();
        open_some_image();
        // Wide strokes, whose middle has the colour of the text and nothing else.
        QFont font = grid().font();
        font.setPixelSize(40);
        font.setBold(true);
        grid().setFont(font);
        form().MSFlexGrid1.set_row(1);
        form().MSFlexGrid1.set_col(4);
    }

    QImage picture_of_cell(int row, int col) {
        const QRect place = grid().visualRect(grid().model()->index(row - 1, col));
        // Without the ruled lines.
        return picture_of(*grid().viewport(), place.adjusted(2, 2, -2, -2));
    }

    static int difference(const QColor& a, const QColor& b) {
        return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                         std::abs(a.blue() - b.blue())});
    }

    std::optional<WithPalette> palette_;
};

TEST_P(GridColours, a_cell_of_colour_0_has_the_text_colour_of_the_palette) {
    ASSERT_EQ(form().MSFlexGrid1.colour(2, 2), Colour{0});
    const QColor text = grid().palette().color(QPalette::Active, QPalette::Text);
    EXPECT_LE(difference(ink_of(picture_of_cell(2, 2)), text), 8);
}

TEST_P(GridColours, a_masked_cell_has_its_own_colour) {
    form().MSFlexGrid1.set_colour(2, 2, kMasked);
    EXPECT_LE(difference(ink_of(picture_of_cell(2, 2)), QColor(0xC0, 0xC0, 0xC0)), 8);
    form().MSFlexGrid1.set_colour(2, 2, 0);
    EXPECT_GT(difference(ink_of(picture_of_cell(2, 2)), QColor(0xC0, 0xC0, 0xC0)), 8);
}

TEST_P(GridColours, texts_are_easy_to_read_in_every_row) {
    for (int row = 2; row <= 4; ++row) {
        const QImage cell = picture_of_cell(row, 2);
        EXPECT_GE(contrast(ink_of(cell), background_of(cell)), 7) << row;
    }
}

TEST_P(GridColours, rows_alternate) {
    const QColor first = background_of(picture_of_cell(2, 2));
    const QColor second = background_of(picture_of_cell(3, 2));
    EXPECT_NE(first, second);
    EXPECT_EQ(background_of(picture_of_cell(4, 2)), first);
}

TEST_P(GridColours, the_current_cell_stands_out_and_can_be_read) {
    const QImage before = picture_of_cell(2, 2);
    form().MSFlexGrid1.set_row(2);
    form().MSFlexGrid1.set_col(2);
    const QImage marked = picture_of_cell(2, 2);
    EXPECT_GE(contrast(background_of(marked), background_of(before)), 2);
    EXPECT_GE(contrast(ink_of(marked), background_of(marked)), 3);
}

TEST_P(GridColours, headings_and_labels_can_be_read) {
    form().MSFlexGrid1.set_row(2);
    QWidget* const labels = grid().verticalHeader()->viewport();
    const int top = grid().verticalHeader()->sectionViewportPosition(3);
    const QImage label =
        picture_of(*labels, QRect(4, top + 4, labels->width() - 8, grid().rowHeight(3) - 8));
    EXPECT_GE(contrast(ink_of(label), background_of(label)), 7);
    auto& corner = widget<QWidget>("CornerHeading");
    const QImage heading = picture_of(corner, corner.rect().adjusted(4, 4, -4, -4));
    EXPECT_GE(contrast(ink_of(heading), background_of(heading)), 7);
}

TEST_P(GridColours, a_locked_table_shows_no_marked_cell) {
    form().DisableGui();
    EXPECT_EQ(background_of(picture_of_cell(1, 4)), background_of(picture_of_cell(3, 4)));
}

INSTANTIATE_TEST_SUITE_P(palettes, GridColours, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "dark" : "light"; });

using GridPalette = StartedWindowTest;

TEST_F(GridPalette, a_palette_that_changes_while_the_program_runs_reaches_the_table) {
    open_some_image();
    const QRect place(QPoint(), grid().viewport()->size());
    const QColor light = background_of(picture_of(*grid().viewport(), place));
    const WithPalette dark(dark_palette());
    QCoreApplication::processEvents();
    EXPECT_GT(contrast(light, background_of(picture_of(*grid().viewport(), place))), 7);
}

TEST_F(GridPalette, all_rows_are_painted_quickly_while_scrolling) {
    open_some_image();
    QScrollBar& bar = *grid().verticalScrollBar();
    for (int row = 0; row <= bar.maximum(); row += 40) {
        bar.setValue(row);
        const QImage image = picture_of(*grid().viewport(), grid().viewport()->rect());
        ASSERT_NE(ink_of(image), background_of(image)) << row;
    }
}

}  // namespace
}  // namespace memwright::gui
