#include "table/grid_picture.h"

#include "base/charset.h"

namespace memwright {
namespace {

constexpr double kPoints = 9;
constexpr double kTextMargin = 60;
constexpr Colour kRules = 0xA0A0A0;
constexpr Colour kShade = 0xE8E8E8;

// The places of the lines between rows or columns: one more than there are of them.
template <class Length>
std::vector<double> edges(int count, Length length) {
    std::vector<double> places{0};
    for (int i = 0; i < count; ++i) places.push_back(places.back() + length(i));
    return places;
}

}  // namespace

Picture picture_of(const MSFlexGrid& grid, int fixed_cols) {
    const auto x = edges(grid.Cols(), [&](int col) { return grid.ColWidth(col); });
    const auto y = edges(grid.Rows(), [&](int row) { return grid.RowHeight(row); });
    Picture picture;
    picture.width = x.back();
    picture.height = y.back();
    for (std::size_t row = 0; row + 1 < y.size(); ++row) {
        for (std::size_t col = 0; col + 1 < x.size(); ++col) {
            if (x[col + 1] == x[col]) continue;
            const Picture::Area cell{x[col], y[row], x[col + 1] - x[col], y[row + 1] - y[row]};
            const bool fixed = row == 0 || static_cast<int>(col) < fixed_cols;
            if (fixed) picture.fills.push_back({cell, kShade});
            const int r = static_cast<int>(row), c = static_cast<int>(col);
            const std::string& text = grid.TextMatrix(r, c);
            if (text.empty()) continue;
            const Picture::Area inside{cell.left + kTextMargin, cell.top,
                                       cell.width - 2 * kTextMargin, cell.height};
            picture.texts.push_back(
                {inside, utf8_from_radio(text), kPoints, fixed, grid.colour(r, c)});
        }
    }
    for (const double place : y) {
        picture.lines.push_back({0, place, picture.width, place, kRules});
    }
    for (std::size_t col = 0; col < x.size(); ++col) {
        if (col > 0 && x[col] == x[col - 1]) continue;
        picture.lines.push_back({x[col], 0, x[col], picture.height, kRules});
    }
    return picture;
}

}  // namespace memwright
