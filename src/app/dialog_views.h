#pragma once

// How the modal dialogs come onto the screen.

namespace memwright {

class Form2;
class Form5;
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
};

}  // namespace memwright
