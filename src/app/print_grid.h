#pragma once

// Prints rows of a grid, a page at a time. Lengths in twips.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/message_box.h"
#include "platform/printer.h"
#include "platform/time.h"
#include "table/ms_flex_grid.h"

namespace memwright {

class GridPrinting {
  public:
    // `current_path` gives the name of the file that is printed above each page's grid.
    GridPrinting(Printer& printer, Clock& clock, MessageBox& messages,
                 std::function<std::string()> current_path)
        : printer_(printer),
          clock_(clock),
          messages_(messages),
          current_path_(std::move(current_path)) {}

    // Prints rows sStart to sEnd and says how many pages that made. PrinterError; IndexError for a
    // row that the grid does not have, when its page is reached.
    void PrintGrid(const MSFlexGrid& pGrid, const std::string& sTitle, bool pHorizontal,
                   std::int16_t sStart, std::int16_t sEnd);

  private:
    struct Paper;
    struct Page;

    void prepare_grid(const MSFlexGrid& pGrid, int rows);
    void print_heading(PrintedDocument& document, const Page& page) const;
    void copy_row(const MSFlexGrid& pGrid, int from, int to);

    Printer& printer_;
    Clock& clock_;
    MessageBox& messages_;
    std::function<std::string()> current_path_;
    std::unique_ptr<MSFlexGrid> page_grid_;  // what is drawn on a page; never shown
};

}  // namespace memwright
