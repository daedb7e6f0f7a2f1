#pragma once

// A one-line text box of a dialog. Characters that its control does not accept are not taken,
// however they come. Its text is in the radio's character set.

#include <QLineEdit>
#include <vector>

#include "controls/controls.h"

namespace memwright::qt {

class LineBox final : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;

    void show_control(TextBox& box);

  protected:
    void focusOutEvent(QFocusEvent* event) override;

  private:
    TextBox* box_ = nullptr;
    std::vector<Connection> connections_;
};

}  // namespace memwright::qt
