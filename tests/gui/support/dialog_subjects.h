#pragma once

// The dialogs of the program, each with what has to hold of it as of all of them.

#include <QDialog>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "gui/support/robot.h"
#include "qt/dialogs.h"

namespace memwright::gui {

// A dialog, and what it stores.
class DialogSubject {
  public:
    virtual ~DialogSubject() = default;

    // Shows it and does the work, which has to close it.
    virtual void show(qt::QtDialogViews& views, const Reply& work) = 0;

    // Changes something in the open dialog.
    virtual void change(QDialog& dialog) = 0;

    // What has been stored since the beginning.
    virtual std::vector<std::string> stored() const = 0;
};

struct DialogContract {
    const char* name;    // for the cases
    const char* object;  // of the dialog
    const char* title;
    std::vector<std::string> tour;    // whom Tab visits, from the first focus on
    std::string mnemonics;            // all letters, sorted
    std::vector<std::string> stores;  // a change that is accepted
    const char* widest_text;          // that its boxes have to show
    std::unique_ptr<DialogSubject> (*make)();

    bool can_cancel() const;  // has a button for it
    friend std::ostream& operator<<(std::ostream& out, const DialogContract& contract) {
        return out << contract.name;
    }
};

const std::vector<DialogContract>& dialog_contracts();

}  // namespace memwright::gui
