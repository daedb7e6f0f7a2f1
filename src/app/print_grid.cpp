#include "app/print_grid.h"

#include <algorithm>

#include "table/grid_picture.h"

namespace memwright {
namespace {

constexpr int kCols = 14;
constexpr double kTitleLeft = 6500;
constexpr double kFileLeft = 650;
constexpr double kPictureLeft = 600;
constexpr double kPictureTop = 900;

// Deliberate: no printer has these fonts; each takes its nearest.
const PrinterFont kTitleFont{"Ariel", true, 12};
const PrinterFont kTextFont{"MS Sans Seriff", false, 10};

int number_of_pages(int start, int end, int rows_per_page) {
    // Deliberate: each page has a row of headings that is not counted here, so the last rows of
    // some ranges find no page.
    const int rows = std::max(end - start + 2, 0);
    return rows / rows_per_page + (rows % rows_per_page != 0 ? 1 : 0);
}

}  // namespace

struct GridPrinting::Paper {
    PaperOrientation orientation;
    int rows;  // with the headings
    double date_left;
    std::optional<PrintedDocument::Size> picture;
};

struct GridPrinting::Page {
    int number;
    int count;
    std::string title;
    double date_left;
};

void GridPrinting::PrintGrid(const MSFlexGrid& pGrid, const std::string& sTitle, bool pHorizontal,
                             std::int16_t sStart, std::int16_t sEnd) {
    const Paper paper = pHorizontal ? Paper{PaperOrientation::landscape, 36, 10000, std::nullopt}
                                    : Paper{PaperOrientation::portrait, 57, 7000,
                                            PrintedDocument::Size{.width = 11400, .height = 13950}};
    prepare_grid(pGrid, paper.rows);
    const auto document = printer_.begin(sTitle, paper.orientation);
    const int pages = number_of_pages(sStart, sEnd, paper.rows);
    int source = sStart;
    for (int page = 1; page <= pages; ++page) {
        print_heading(*document, {page, pages, sTitle, paper.date_left});
        copy_row(pGrid, 0, 0);
        for (int row = 1; row < paper.rows && source <= sEnd; ++row) {
            copy_row(pGrid, source++, row);
        }
        page_grid_->set_row(0);
        page_grid_->set_col(0);
        document->draw(picture_of(*page_grid_, 0), kPictureLeft, kPictureTop, paper.picture);
        document->new_page();
        page_grid_->Clear();
    }
    document->end();
    messages_.show({.text = sTitle + "\r\nPrinting " + std::to_string(pages) + " pages to " +
                            document->device_name(),
                    .title = "Memwright",
                    .buttons = Buttons::ok,
                    .icon = Icon::information});
}

void GridPrinting::prepare_grid(const MSFlexGrid& pGrid, int rows) {
    if (!page_grid_) page_grid_ = std::make_unique<MSFlexGrid>("MSFlexGrid1");
    page_grid_->Clear();
    page_grid_->set_rows(rows);
    page_grid_->set_cols(kCols);
    for (int col = 0; col < kCols; ++col) page_grid_->set_col_width(col, pGrid.ColWidth(col));
}

void GridPrinting::print_heading(PrintedDocument& document, const Page& page) const {
    document.set_y(0);
    document.set_x(kTitleLeft);
    document.set_font(kTitleFont);
    document.print_line(page.number == 1 ? page.title : " ");
    document.print_line("");

    document.set_font(kTextFont);
    document.set_x(kFileLeft);
    document.print_line(current_path_());
    document.print_line("");

    document.set_x(page.date_left);
    document.set_y(0);
    document.set_font(kTextFont);
    document.print_line(clock_.date_and_time() + " - Page " + std::to_string(page.number) + " of " +
                        std::to_string(page.count));
}

void GridPrinting::copy_row(const MSFlexGrid& pGrid, int from, int to) {
    for (int col = 0; col < page_grid_->Cols(); ++col) {
        page_grid_->set_text(to, col, pGrid.TextMatrix(from, col));
    }
}

}  // namespace memwright
