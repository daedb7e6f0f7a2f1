#include "app/form1.h"

namespace memwright {
namespace {

// The design, in twips. The buttons stand in a column to the left of the grid; the status line and
// what belongs to it run below.
constexpr double kMargin = 120;
constexpr double kGridLeft = 1600;
constexpr double kButtonWidth = 1360;
constexpr double kButtonHeight = 405;
constexpr double kButtonStep = 480;
constexpr double kButtonGroupGap = 180;
constexpr double kStatusWindowHeight = 1650;
constexpr double kStatusLineHeight = 300;
constexpr double kReceivedWidth = 2700;
constexpr double kProgressLeft = 4400;
constexpr double kProgressWidth = 2500;
constexpr double kTransferButtonLeft = 7020;
constexpr double kTransferButtonHeight = 375;

void place(PlacedControl& control, double left, double top, double width, double height) {
    control.left = left;
    control.top = top;
    control.width = width;
    control.height = height;
}

}  // namespace

Form1::Form1() {
    // As drawn on the form: one heading row, one label column, and the first cell beside them.
    MSFlexGrid1.set_rows(2);
    MSFlexGrid1.set_cols(2);
    MSFlexGrid1.set_row(1);
    MSFlexGrid1.set_col(1);
    MSFlexGrid1.left = kGridLeft;
    MSFlexGrid1.top = kMargin;
    Text1.left = kGridLeft;
    Text1.height = kStatusWindowHeight;
    Label1.left = kMargin;
    Label1.height = kStatusLineHeight;
    Label1.caption = "Transferring....98%";

    Command1.caption = "Move";
    Command2.caption = "Move";
    Command3.caption = "Delete";
    Command4.caption = "Save";
    Command5.caption = "Load";
    Command4.tip = "Take the table over into the memory image";
    Command5.tip = "Go back to what the memory image holds";
    double top = kMargin;
    for (CommandButton* button : {&Command2, &Command1, &Command3, &Command4, &Command5}) {
        if (button == &Command4) top += kButtonGroupGap;
        place(*button, kMargin, top, kButtonWidth, kButtonHeight);
        top += kButtonStep;
    }

    place(ReceivedLabel, kGridLeft, 0, kReceivedWidth, kStatusLineHeight);
    place(TransferProgress, kProgressLeft, 0, kProgressWidth, kStatusLineHeight);
    place(TransferButton, kTransferButtonLeft, 0, kButtonWidth, kTransferButtonHeight);
    for (Control* control : std::initializer_list<Control*>{&ReceivedLabel, &TransferProgress,
                                                            &TransferButton, &TxtGrid, &CboGrid}) {
        control->visible = false;
    }
    mnuShwDbg.checked = true;
}

std::vector<Form1::Menu> Form1::menus() {
    return {{mnuFile,
             {&added.new_table, &mnuOpen, &added.recent, &mnuSaveOnly, &mnuSave, &mnuSep1,
              &mnuImport, &mnuExport, &mnusepa, &mnuPrint, &mnusepq, &mnuexit}},
            {mnuEdit,
             {&added.undo, &added.redo, &added.line_below_undo, &mnuCut, &mnuCopy, &mnuPaste,
              &added.line_above_rows, &added.insert_row, &added.close_up, &added.sort_rows,
              &added.fill_series, &added.move_to, &added.set_mode, &added.set_pref,
              &added.line_above_find, &added.find, &added.find_next, &added.find_previous,
              &added.go_to}},
            {mnuOptions, {&mnuPort, &mnuShwDbg}},
            {mnuVR120Settings, {&mnuMiscSettings, &mnuSearchBandMem}},
            {mnuTransfer, {&mnuRead, &mnuWrite, &mnuforce}},
            {mnuHelp, {&mnuabout, &added.notices}}};
}

std::vector<Control*> Form1::lockable() {
    return {&MSFlexGrid1,      &mnuFile,     &mnuEdit, &mnuOptions,
            &mnuVR120Settings, &mnuTransfer, &mnuHelp};
}

void Form1::DisableGui() {
    locked_.clear();
    TxtGrid.visible = false;
    CboGrid.visible = false;
    for (Control* control : lockable()) {
        if (control->enabled) locked_.push_back(control);
        control->enabled = false;
    }
}

void Form1::EnableGui() {
    locked_.clear();
    for (Control* control : lockable()) control->enabled = true;
    for (MenuEntry* item : {&mnuSaveOnly, &mnuSave, &mnuImport, &mnuExport, &mnuPrint, &mnuWrite}) {
        item->enabled = true;
    }
}

void Form1::unlock_gui() {
    for (Control* control : locked_) control->enabled = true;
    locked_.clear();
}

}  // namespace memwright
