#include "app/program.h"

#include <utility>

#include "app/dialogs.h"
#include "app/frm_limit_search.h"
#include "app/frm_misc_setting.h"
#include "app/frm_print.h"
#include "base/error.h"
#include "link/doubtful_blocks.h"

namespace memwright {

Program::Program(Platform platform, ComPorts& ports)
    : platform_(platform),
      ports_(ports),
      store_(platform.files),
      table_(store_, form.MSFlexGrid1, form.mnuSaveOnly),
      editor_(form.MSFlexGrid1, form.TxtGrid, form.CboGrid, platform.cells,
              [this] { pop_up_edit_menu(); }),
      rows_(form.MSFlexGrid1, table_, editor_, platform.messages,
            {form.mnuCut, form.mnuCopy, form.mnuPaste}),
      image_files_(store_, table_, form.MSFlexGrid1, form, form.caption,
                   {platform.messages, platform.file_dialogs, platform.files}),
      shell_(form, platform.window, platform.settings, platform.files, table_, image_files_),
      status_window_(form.Text1, form.mnuShwDbg, platform.settings,
                     [this] { shell_.Form_Resize(); }),
      errors_(platform.messages, status_window_, [this] { return control_.running(); }),
      stall_watch_(form.Label1),
      control_({form.TransferProgress, form.ReceivedLabel, form.TransferButton}, platform.port,
               form, platform.messages),
      link_(platform.port, platform.settings, platform.clock, platform.loop,
            {form.Label1, form.Text1}, control_),
      clone_read_(link_, store_, table_, image_files_, form, platform.messages),
      clone_write_(link_, store_, table_, form, platform.messages),
      import_progress_(form, status_window_, platform.loop),
      csv_files_(table_, form.MSFlexGrid1, platform.file_dialogs, platform.files, import_progress_),
      printing_(platform.printer, platform.clock, platform.messages,
                [this] { return image_files_.current_path(); }),
      closing_(shell_, image_files_, control_, platform.window,
               [this](const std::function<void()>& procedure) { guard(procedure); }),
      kept_images_({store_, table_, image_files_, clone_read_, clone_write_, form.mnuSaveOnly},
                   platform.files, platform.clock, platform.folders.data,
                   [this](const std::string& text) { status_window_.add_line(text); }),
      recovery_({store_, table_, form.MSFlexGrid1, image_files_, form},
                {platform.files, platform.locks, platform.clock, platform.loop, platform.messages,
                 platform.folders.state},
                [this](const std::string& text) { status_window_.add_line(text); }) {
    connect_menus();
    connect_buttons();
    connect_grid();
    connect_overlays();
    connect_transfers();
}

void Program::start() {
    errors_.guard([this] {
        rows_.reset_buffer();
        shell_.Form_Load();
        shell_.Form_Resize();
    });
    errors_.guard([this] { recovery_.begin(); });
    connections_.push_back(
        platform_.loop.every(StallWatch::kInterval, [this] { stall_watch_.Timer1_Timer(); }));
}

void Program::resized() {
    shell_.Form_Resize();
    editor_.place_overlays();
}

void Program::pop_up_edit_menu() {
    rows_.mnuEdit_Click();
    platform_.window.pop_up_menu(form.mnuEdit.name);
}

bool Program::close_allowed() {
    bool allowed = false;
    guard([&] { allowed = closing_.allowed(); });
    if (!allowed) return false;
    errors_.guard([&] { kept_images_.set_table_aside(); });
    errors_.guard([&] { recovery_.end(); });
    control_.abandon();
    import_progress_.cancel();
    return true;
}

void Program::escape_pressed() {
    if (form.TransferButton.visible) form.TransferButton.clicked();
}

void Program::open_named(const std::string& path) {
    if (!form.mnuFile.enabled) return;
    guard([&] { image_files_.open_named(path); });
}

template <class Form, class... Arguments>
void Program::show_dialog(Arguments&&... arguments) {
    Form dialog(std::forward<Arguments>(arguments)...);
    platform_.dialogs.show_modal(dialog);
}

void Program::mnuPrint_Click() {
    frmPrint dialog;
    platform_.dialogs.show_modal(dialog);
    // Deliberate: whichever rows, always across the paper.
    constexpr bool kHorizontal = true;
    if (const auto rows = dialog.wanted()) {
        printing_.PrintGrid(form.MSFlexGrid1, "Memwright", kHorizontal, rows->first, rows->last);
    }
}

void Program::transfer_button_clicked() {
    if (import_progress_.running()) {
        import_progress_.cancel();
    } else {
        control_.button_click();
    }
}

void Program::offer_recovery() {
    errors_.guard([&] { recovery_.offer(); });
}

// What is done to the image, however it ended, is kept for the case of a crash. Changes of the
// table are noticed by themselves.
void Program::guard(const std::function<void()>& procedure) {
    const MemoryImage before = store_.MemoryImage;
    errors_.guard(procedure);
    if (store_.MemoryImage != before) recovery_.note_change();
}

void Program::connect(Signal<>& signal, std::function<void()> procedure) {
    connections_.push_back(signal.connect([this, run = std::move(procedure)] { guard(run); }));
}

void Program::connect_menus() {
    connect(form.mnuOpen.clicked, [this] { image_files_.mnuOpen_Click(); });
    connect(form.mnuSaveOnly.clicked, [this] { image_files_.mnuSaveOnly_Click(); });
    connect(form.mnuSave.clicked, [this] { image_files_.mnuSave_Click(); });
    connect(form.mnuImport.clicked, [this] { csv_files_.mnuImport_Click(); });
    connect(form.mnuExport.clicked, [this] { csv_files_.mnuExport_Click(); });
    connect(form.mnuPrint.clicked, [this] { mnuPrint_Click(); });
    connect(form.mnuexit.clicked, [this] { platform_.window.close(); });
    connect(form.mnuEdit.clicked, [this] { rows_.mnuEdit_Click(); });
    connect(form.mnuCut.clicked, [this] { rows_.mnuCut_Click(); });
    connect(form.mnuCopy.clicked, [this] { rows_.mnuCopy_Click(); });
    connect(form.mnuPaste.clicked, [this] { rows_.mnuPaste_Click(); });
    connect(form.mnuPort.clicked, [this] { show_dialog<Form2>(platform_.settings, ports_); });
    connect(form.mnuShwDbg.clicked, [this] { status_window_.mnuShwDbg_Click(); });
    connect(form.mnuMiscSettings.clicked, [this] { show_dialog<frmMiscSetting>(store_); });
    connect(form.mnuSearchBandMem.clicked, [this] { show_dialog<frmLimitSearch>(store_); });
    connect(form.mnuRead.clicked, [this] {
        closing_.transfer_begins();
        clone_read_.mnuRead_Click();
        closing_.transfer_ended();
    });
    connect(form.mnuWrite.clicked, [this] {
        closing_.transfer_begins();
        clone_write_.mnuWrite_Click();
        closing_.transfer_ended();
    });
    connect(form.mnuforce.clicked, [this] { stall_watch_.mnuforce_Click(); });
    connect(form.mnuabout.clicked, [this] { show_dialog<Form5>(); });
}

void Program::connect_buttons() {
    connect(form.Command1.clicked, [this] { rows_.Command1_Click(); });
    connect(form.Command2.clicked, [this] { rows_.Command2_Click(); });
    connect(form.Command3.clicked, [this] { rows_.Command3_Click(); });
    connect(form.Command4.clicked, [this] { rows_.Command4_Click(); });
    connect(form.Command5.clicked, [this] { rows_.Command5_Click(); });
    connect(form.TransferButton.clicked, [this] { transfer_button_clicked(); });
}

void Program::connect_grid() {
    MSFlexGrid& grid = form.MSFlexGrid1;
    connect(grid.clicked, [this] { editor_.MSFlexGrid1_Click(); });
    connect(grid.double_clicked, [this] { editor_.MSFlexGrid1_DblClick(); });
    connect(grid.scrolled, [this] { editor_.MSFlexGrid1_Scroll(); });
    connections_.push_back(grid.mouse_down.connect([this](MouseButton button, MouseCell cell) {
        errors_.guard([&] { editor_.MSFlexGrid1_MouseDown(button, cell); });
    }));
    connections_.push_back(grid.mouse_up.connect([this](MouseButton button, MouseCell cell) {
        errors_.guard([&] { rows_.MSFlexGrid1_MouseUp(button, cell); });
    }));
}

void Program::connect_transfers() {
    connections_.push_back(clone_read_.received.connect([this](const MemoryImage&) {
        for (const std::string& doubt : doubts_about(clone_read_.doubtful_blocks())) {
            status_window_.add_line(doubt);
        }
    }));
}

void Program::connect_overlays() {
    form.TxtGrid.key_press = [this](char& KeyAscii) { return editor_.TxtGrid_KeyPress(KeyAscii); };
    form.TxtGrid.key_down = [this](Key key, bool shift) {
        return editor_.TxtGrid_KeyDown(key, shift);
    };
    form.CboGrid.key_down = [this](Key key, bool shift) {
        return editor_.CboGrid_KeyDown(key, shift);
    };
    connect(form.TxtGrid.focus_lost, [this] { editor_.TxtGrid_LostFocus(); });
    connect(form.CboGrid.focus_lost, [this] { editor_.CboGrid_LostFocus(); });
    connect(form.CboGrid.edited, [this] { editor_.CboGrid_Change(); });
    connect(form.CboGrid.picked, [this] { editor_.CboGrid_Click(); });
}

}  // namespace memwright
