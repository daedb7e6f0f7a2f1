#include "app/commands.h"

#include <utility>

#include "app/dialogs.h"
#include "app/frm_limit_search.h"
#include "app/frm_misc_setting.h"
#include "table/cell_rules.h"

namespace memwright {

Commands::Commands(Procedures& procedures, Events& events)
    : do_(procedures), form_(procedures.form), events_(events) {
    connect_file_menu();
    connect_other_menus();
    connect_transfer_menu();
    connect_buttons();
    connect_grid();
    connect_overlays();
}

void Commands::connect_file_menu() {
    events_.connect(form_.mnuOpen.clicked, "Open", [this] { do_.image_files.mnuOpen_Click(); });
    events_.connect(form_.mnuSaveOnly.clicked, "Save",
                    [this] { do_.image_files.mnuSaveOnly_Click(); });
    events_.connect(form_.mnuSave.clicked, "Save As", [this] { do_.image_files.mnuSave_Click(); });
    events_.connect(
        form_.mnuImport.clicked, "Import", [this] { do_.csv_files.mnuImport_Click(); },
        Events::Kind::waits);
    events_.connect(form_.mnuExport.clicked, "Export", [this] { do_.csv_files.mnuExport_Click(); });
    events_.connect(form_.mnuPrint.clicked, "Print", [this] { do_.mnuPrint_Click(); });
    events_.connect(form_.mnuexit.clicked, "Exit", [this] { do_.platform.window.close(); });
}

template <class Form, class... Arguments>
void Commands::show_dialog(Arguments&&... arguments) {
    Form dialog(std::forward<Arguments>(arguments)...);
    do_.platform.dialogs.show_modal(dialog);
}

void Commands::connect_other_menus() {
    events_.connect(form_.mnuEdit.clicked, "Edit Channels", [this] { do_.rows.mnuEdit_Click(); });
    events_.connect(form_.mnuCut.clicked, "Cut", [this] { do_.rows.mnuCut_Click(); });
    events_.connect(form_.mnuCopy.clicked, "Copy", [this] { do_.rows.mnuCopy_Click(); });
    events_.connect(form_.mnuPaste.clicked, "Paste", [this] { do_.rows.mnuPaste_Click(); });
    events_.connect(form_.mnuPort.clicked, "Port",
                    [this] { show_dialog<Form2>(do_.platform.settings, do_.ports); });
    events_.connect(form_.mnuShwDbg.clicked, "Show Status Window",
                    [this] { do_.status_window.mnuShwDbg_Click(); });
    events_.connect(form_.mnuMiscSettings.clicked, "Set Mode Settings",
                    [this] { show_dialog<frmMiscSetting>(do_.store); });
    events_.connect(form_.mnuSearchBandMem.clicked, "Search Band Memories",
                    [this] { show_dialog<frmLimitSearch>(do_.store); });
    events_.connect(form_.mnuforce.clicked, "Force Timeout",
                    [this] { do_.stall_watch.mnuforce_Click(); });
    events_.connect(form_.mnuabout.clicked, "About", [this] { show_dialog<Form5>(); });
}

void Commands::transfer(const std::function<void()>& procedure) {
    transfer_begins();
    procedure();
    transfer_ended();
}

void Commands::connect_transfer_menu() {
    events_.connect(
        form_.mnuRead.clicked, "Read",
        [this] { transfer([this] { do_.clone_read.mnuRead_Click(); }); }, Events::Kind::waits);
    events_.connect(
        form_.mnuWrite.clicked, "Write",
        [this] { transfer([this] { do_.clone_write.mnuWrite_Click(); }); }, Events::Kind::waits);
}

void Commands::connect_buttons() {
    events_.connect(form_.Command1.clicked, "Move Down", [this] { do_.rows.Command1_Click(); });
    events_.connect(form_.Command2.clicked, "Move Up", [this] { do_.rows.Command2_Click(); });
    events_.connect(form_.Command3.clicked, "Delete", [this] { do_.rows.Command3_Click(); });
    events_.connect(form_.Command4.clicked, "Save Table", [this] { do_.rows.Command4_Click(); });
    events_.connect(form_.Command5.clicked, "Load", [this] { do_.rows.Command5_Click(); });
    events_.connect(form_.TransferButton.clicked, "Transfer Button",
                    [this] { do_.TransferButton_Click(); });
}

void Commands::connect_grid() {
    MSFlexGrid& grid = form_.MSFlexGrid1;
    events_.connect(grid.clicked, "Click", [this] { do_.editor.MSFlexGrid1_Click(); });
    events_.connect(grid.double_clicked, "Open Editor",
                    [this] { do_.editor.MSFlexGrid1_DblClick(); });
    events_.connect(grid.scrolled, "Scroll", [this] { do_.editor.MSFlexGrid1_Scroll(); });
    connections_.push_back(grid.mouse_down.connect([this](MouseButton button, MouseCell cell) {
        events_.run(button == MouseButton::right ? "Copy Value" : "Select",
                    [&] { do_.editor.MSFlexGrid1_MouseDown(button, cell); });
    }));
    connections_.push_back(grid.mouse_up.connect([this](MouseButton button, MouseCell cell) {
        events_.run("Select", [&] { do_.rows.MSFlexGrid1_MouseUp(button, cell); });
    }));
}

void Commands::connect_overlays() {
    TextBox& text = form_.TxtGrid;
    ComboBox& list = form_.CboGrid;
    // What cannot fail and changes nothing is no event.
    text.key_press = [this](char& KeyAscii) { return do_.editor.TxtGrid_KeyPress(KeyAscii); };
    text.pasted = list.pasted = [this](const std::string& pasted, const std::string& around) {
        return cell_rules::pasted_text(form_.MSFlexGrid1.Col(), pasted, around);
    };
    text.key_down = [this](Key key, bool shift) {
        bool used = false;
        events_.run("Move", [&] { used = do_.editor.TxtGrid_KeyDown(key, shift); });
        return used;
    };
    list.key_down = [this](Key key, bool shift) {
        bool used = false;
        events_.run("Move", [&] { used = do_.editor.CboGrid_KeyDown(key, shift); });
        return used;
    };
    events_.connect(text.text.changed, "Type", [this] { do_.editor.TxtGrid_Change(); });
    events_.connect(text.focus_lost, "Close Editor", [this] { do_.editor.TxtGrid_LostFocus(); });
    events_.connect(list.focus_lost, "Close Editor", [this] { do_.editor.CboGrid_LostFocus(); });
    events_.connect(list.edited, "Type", [this] { do_.editor.CboGrid_Change(); });
    events_.connect(list.picked, "Choose", [this] { do_.editor.CboGrid_Click(); });
}

}  // namespace memwright
