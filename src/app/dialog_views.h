#pragma once

// How the modal dialogs come onto the screen.

namespace memwright {

class FillSeries;
class Form2;
class Form5;
class MoveTo;
class frmLimitSearch;
class frmMiscSetting;
class frmPrint;

class DialogViews {
  public:
    virtual ~DialogViews() = default;

    // Return when the dialog is closed.
    virtual void show_modal(Form2& form) = 0;
    virtual void show_modal(Form5& form) = 0;
    virtual void show_modal(frmMiscSetting& form) = 0;
    virtual void show_modal(frmLimitSearch& form) = 0;
    virtual void show_modal(frmPrint& form) = 0;
    virtual void show_modal(FillSeries& form) = 0;
    virtual void show_modal(MoveTo& form) = 0;
};

}  // namespace memwright
