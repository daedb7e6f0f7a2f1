#include "app/program.h"

namespace memwright {

Program::Program(Platform platform, ComPorts& ports)
    : notices(platform.clock),
      platform_(platform),
      procedures_(form, platform, ports, notices),
      edits_(form.MSFlexGrid1, procedures_.store),
      history_(edits_),
      errors_(platform.messages, notices, [this] { return procedures_.control.running(); }),
      events_(errors_, edits_),
      commands_(procedures_, events_),
      grid_keys_(form.MSFlexGrid1, {form.Command2, form.Command1, form.Command3}),
      closing_({procedures_.shell, procedures_.image_files, procedures_.control, commands_},
               platform.window, events_),
      first_steps_(form.MSFlexGrid1, notices, platform.settings),
      doubtful_read_(procedures_.clone_read, procedures_.image_files, form, notices),
      kept_images_({procedures_.store, procedures_.table, procedures_.image_files,
                    procedures_.clone_read, procedures_.clone_write, form.mnuSaveOnly},
                   platform.files, platform.clock, platform.folders.data,
                   [this](const std::string& text) { notices.add({.text = text}); }),
      recovery_({procedures_.store, procedures_.table, form.MSFlexGrid1, edits_, history_,
                 procedures_.image_files, form},
                {platform.files, platform.locks, platform.clock, platform.loop, platform.messages,
                 platform.folders.state},
                [this](const std::string& text) { notices.add({.text = text}); }),
      undo_({form, procedures_.editor, history_, procedures_.image_files, procedures_.clone_read},
            events_, notices),
      told_changes_(form, history_, notices),
      new_table_({form, procedures_.table, procedures_.image_files}, platform.files,
                 platform.folders.data, events_, notices),
      recent_files_(form, procedures_.image_files, platform.files, platform.settings, events_),
      find_line_(form, procedures_.rows, platform.cells, events_, notices),
      go_to_line_(form, platform.cells, events_, notices),
      row_commands_({form, procedures_.rows, platform.dialogs}, events_, notices) {}

void Program::start() {
    events_.run("Start", [this] {
        procedures_.rows.reset_buffer();
        procedures_.shell.Form_Load();
        procedures_.shell.Form_Resize();
        history_.begin();
    });
    errors_.guard([this] { recovery_.begin(); });
    connections_.push_back(platform_.loop.every(
        StallWatch::kInterval, [this] { procedures_.stall_watch.Timer1_Timer(); }));
}

void Program::resized() {
    procedures_.shell.Form_Resize();
    procedures_.editor.place_overlays();
}

bool Program::close_allowed() {
    bool allowed = false;
    events_.run("Close", [&] { allowed = closing_.allowed(); });
    if (!allowed) return false;
    events_.run("Close", [&] { kept_images_.set_table_aside(); });
    errors_.guard([&] { recovery_.end(); });
    procedures_.control.abandon();
    procedures_.import_progress.cancel();
    return true;
}

void Program::escape_pressed() {
    if (form.TransferButton.visible) form.TransferButton.clicked();
}

void Program::open_named(const std::string& path) {
    if (!form.mnuFile.enabled) return;
    events_.run("Open", [&] { procedures_.image_files.open_named(path); });
}

void Program::offer_recovery() {
    events_.run("Restore", [&] { recovery_.offer(); });
}

void Program::act_on_notice(std::size_t number) {
    // What a notice offers may be a command, which is a step of its own.
    events_.run(
        "Notice", [&] { notices.act(number); }, Events::Kind::waits);
}

}  // namespace memwright
