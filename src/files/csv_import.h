#pragma once

// The lines of a CSV file on their way into the table: each is checked and taken apart as it is
// read; the table itself changes only at the end.

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/line_reader.h"
#include "table/columns.h"
#include "table/ms_flex_grid.h"

namespace memwright {

class CsvImport {
  public:
    // Takes over the next line. False at the end of the file; throws BadLine.
    bool take_line(LineReader& lines);

    // Puts the channels into the grid's rows. All other rows stay as they are.
    void fill(MSFlexGrid& grid) const;

    // Why lines were skipped: a line for each.
    const std::string& skipped() const { return skipped_; }

  private:
    struct Channel {
        std::string frequency;
        std::string mode;
        std::string label;
        bool preferred = false;
    };
    struct Piece {
        std::string text;
        std::size_t number;
    };

    void take(std::string_view line, std::size_t number);
    void note_skipped(const std::string& frequency, std::size_t number);
    void take_with_feeds(LineReader& lines);
    static std::vector<Piece> pieces_of_label(LineReader& lines);

    std::array<std::optional<Channel>, columns::kRows> channels_;  // by row
    std::string skipped_;
};

}  // namespace memwright
