#pragma once

// The bar that finds memories of the table and replaces texts in tags, in two lines; where it is
// too narrow for that, each of them is two. It marks the finds in the grid's labels and decides
// nothing.

#include <array>

#include "app/find_line.h"
#include "qt/grid_view.h"
#include "qt/line_bar.h"

namespace memwright::qt {

class FindBar final : public LineBar {
  public:
    FindBar(FindLine& line, GridView& grid);

  protected:
    void enter_pressed(bool shift) override;
    CommandButton& close_control() override { return line_.close; }
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void fit_width();

    FindLine& line_;
    std::array<QBoxLayout*, 2> lines_;
    std::array<QLabel*, 2> captions_;
    std::array<LineBox*, 2> boxes_;
};

}  // namespace memwright::qt
