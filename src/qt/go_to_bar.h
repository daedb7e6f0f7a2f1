#pragma once

// The bar that goes to a memory by its bank and number.

#include "app/go_to_line.h"
#include "qt/line_bar.h"

namespace memwright::qt {

class GoToBar final : public LineBar {
  public:
    GoToBar(GoToLine& line, QWidget& home);

  protected:
    void enter_pressed(bool /*shift*/) override { line_.go.clicked(); }
    CommandButton& close_control() override { return line_.close; }

  private:
    GoToLine& line_;
};

}  // namespace memwright::qt
