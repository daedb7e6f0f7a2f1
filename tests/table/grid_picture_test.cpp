// A grid as a drawing.

#include "table/grid_picture.h"

#include <gmock/gmock.h>

#include <set>

namespace memwright {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr double kRowHeight = 240;

// Three rows of three columns; the second column is not seen.
class GridPicture : public testing::Test {
  protected:
    GridPicture() {
        grid_.set_rows(3);
        grid_.set_cols(3);
        grid_.set_col_width(0, 1000);
        grid_.set_col_width(1, 0);
        grid_.set_col_width(2, 500);
        for (int row = 0; row < 3; ++row) {
            for (int col = 0; col < 3; ++col) {
                grid_.set_text(row, col,
                               std::string(1, static_cast<char>('a' + row)) + std::to_string(col));
            }
        }
    }

    static std::vector<std::string> texts(const Picture& picture) {
        std::vector<std::string> all;
        for (const auto& text : picture.texts) all.push_back(text.text);
        return all;
    }
    static const Picture::Text& text(const Picture& picture, const std::string& wanted) {
        for (const auto& found : picture.texts) {
            if (found.text == wanted) return found;
        }
        throw std::runtime_error("no text " + wanted);
    }

    MSFlexGrid grid_{"MSFlexGrid1"};
};

TEST_F(GridPicture, is_as_wide_as_its_columns_and_as_high_as_its_rows) {
    grid_.set_row_height(1, 400);
    const Picture picture = picture_of(grid_, 0);
    EXPECT_EQ(picture.width, 1500);
    EXPECT_EQ(picture.height, 2 * kRowHeight + 400);
}

TEST_F(GridPicture, each_cell_that_is_seen_has_its_text_inside_of_its_place) {
    grid_.set_row_height(1, 400);
    const Picture picture = picture_of(grid_, 0);
    EXPECT_THAT(texts(picture), ElementsAre("a0", "a2", "b0", "b2", "c0", "c2"));
    const auto& area = text(picture, "c2").area;
    EXPECT_EQ(area.top, kRowHeight + 400);
    EXPECT_EQ(area.height, kRowHeight);
    EXPECT_GT(area.left, 1000);
    EXPECT_LT(area.left + area.width, 1500);
    EXPECT_EQ(area.left - 1000, 1500 - (area.left + area.width)) << "as much room at either side";
    EXPECT_EQ(text(picture, "b0").area.height, 400);
}

TEST_F(GridPicture, the_rules_run_around_every_cell_and_twice_nowhere) {
    const Picture picture = picture_of(grid_, 0);
    std::multiset<double> across;
    std::multiset<double> down;
    for (const Picture::Line& line : picture.lines) {
        if (line.y1 == line.y2) {
            EXPECT_EQ(line.x1, 0);
            EXPECT_EQ(line.x2, 1500);
            across.insert(line.y1);
        } else {
            EXPECT_EQ(line.x1, line.x2);
            EXPECT_EQ(line.y1, 0);
            EXPECT_EQ(line.y2, 3 * kRowHeight);
            down.insert(line.x1);
        }
    }
    EXPECT_THAT(across, ElementsAre(0, 240, 480, 720));
    EXPECT_THAT(down, ElementsAre(0, 1000, 1500));
}

TEST_F(GridPicture, the_rule_of_a_first_column_that_is_not_seen_runs_once) {
    grid_.set_col_width(0, 0);
    grid_.set_col_width(1, 700);
    std::multiset<double> down;
    for (const Picture::Line& line : picture_of(grid_, 0).lines) {
        if (line.x1 == line.x2) down.insert(line.x1);
    }
    EXPECT_THAT(down, ElementsAre(0, 700, 1200));
}

TEST_F(GridPicture, rules_are_grey_shades_lighter_and_texts_of_9_points) {
    const Picture picture = picture_of(grid_, 1);
    for (const Picture::Line& line : picture.lines) EXPECT_EQ(line.colour, 0xA0A0A0U);
    for (const auto& fill : picture.fills) EXPECT_EQ(fill.colour, 0xE8E8E8U);
    for (const auto& text : picture.texts) EXPECT_EQ(text.points, 9);
}

TEST_F(GridPicture, headings_are_shaded_and_bold_and_so_are_fixed_columns) {
    const auto places = [](const Picture& picture) {
        std::set<std::pair<double, double>> found;
        for (const auto& fill : picture.fills) found.insert({fill.area.top, fill.area.left});
        return found;
    };
    const Picture plain = picture_of(grid_, 0);
    EXPECT_THAT(places(plain), ElementsAre(std::pair(0, 0), std::pair(0, 1000)));
    EXPECT_TRUE(text(plain, "a0").bold);
    EXPECT_FALSE(text(plain, "b0").bold);
    const Picture labelled = picture_of(grid_, 1);
    EXPECT_THAT(places(labelled), ElementsAre(std::pair(0, 0), std::pair(0, 1000),
                                              std::pair(240, 0), std::pair(480, 0)));
    EXPECT_TRUE(text(labelled, "b0").bold);
    EXPECT_FALSE(text(labelled, "b2").bold);
}

TEST_F(GridPicture, a_fill_covers_its_whole_cell) {
    const Picture picture = picture_of(grid_, 0);
    EXPECT_EQ(picture.fills.at(1).area, (Picture::Area{1000, 0, 500, kRowHeight}));
}

TEST_F(GridPicture, texts_keep_their_colour) {
    grid_.set_colour(1, 2, 0xC0C0C0);
    const Picture picture = picture_of(grid_, 0);
    EXPECT_EQ(text(picture, "b2").colour, 0xC0C0C0U);
    EXPECT_EQ(text(picture, "b0").colour, 0U);
}

TEST_F(GridPicture, every_character_of_the_radio_is_told_in_utf_8) {
    grid_.set_text(1, 0, "\x80\xE9\xFF");
    EXPECT_THAT(texts(picture_of(grid_, 0)), testing::Contains("\xE2\x82\xAC\xC3\xA9\xC3\xBF"));
}

TEST_F(GridPicture, an_empty_cell_has_no_text) {
    grid_.set_text(1, 0, "");
    EXPECT_THAT(texts(picture_of(grid_, 0)), ElementsAre("a0", "a2", "b2", "c0", "c2"));
}

TEST_F(GridPicture, neither_the_current_cell_nor_marked_rows_are_shown) {
    const auto all_of = [](const Picture& picture) {
        std::string told;
        for (const auto& [area, colour] : picture.fills) {
            told += std::to_string(area.left) + "/" + std::to_string(area.top) + "/" +
                    std::to_string(colour) + " ";
        }
        for (const auto& drawn : picture.texts) {
            told += drawn.text + "/" + std::to_string(drawn.colour) + (drawn.bold ? "b " : " ");
        }
        return told + std::to_string(picture.lines.size());
    };
    const std::string before = all_of(picture_of(grid_, 0));
    grid_.set_row(2);
    grid_.set_col(2);
    grid_.marked_rows = {1, 2};
    EXPECT_EQ(all_of(picture_of(grid_, 0)), before);
}

TEST_F(GridPicture, a_grid_of_nothing_is_a_picture_of_nothing) {
    const Picture picture = picture_of(MSFlexGrid("MSFlexGrid2"), 0);
    EXPECT_EQ(picture.width, 0);
    EXPECT_EQ(picture.height, 0);
    EXPECT_THAT(picture.texts, IsEmpty());
    EXPECT_THAT(picture.fills, IsEmpty());
}

}  // namespace
}  // namespace memwright
