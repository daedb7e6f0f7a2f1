#pragma once

// The modal dialogs on the screen.

#include <QWidget>

#include "app/dialog_views.h"

namespace memwright::qt {

class QtDialogViews final : public DialogViews {
  public:
    explicit QtDialogViews(QWidget& owner) : owner_(owner) {}

    void show_modal(Form2& form) override;
    void show_modal(Form5& form) override;
    void show_modal(frmMiscSetting& form) override;
    void show_modal(frmLimitSearch& form) override;
    void show_modal(frmPrint& form) override;
    void show_modal(FillSeries& form) override;
    void show_modal(MoveTo& form) override;

  private:
    QWidget& owner_;
};

}  // namespace memwright::qt
