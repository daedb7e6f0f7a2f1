#pragma once

// The modal dialogs on the screen.

#include <QWidget>

#include "app/dialogs.h"

namespace memwright::qt {

class QtDialogViews final : public DialogViews {
  public:
    explicit QtDialogViews(QWidget& owner) : owner_(owner) {}

    void show_modal(Form2& form) override;
    void show_modal(Form5& form) override;

  private:
    QWidget& owner_;
};

}  // namespace memwright::qt
