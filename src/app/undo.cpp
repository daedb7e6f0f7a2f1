#include "app/undo.h"

#include <algorithm>

#include "table/edit_names.h"

namespace memwright {

Undo::Undo(Work work, Events& events, Notices& notices)
    : work_(work), events_(events), notices_(notices) {
    AddedEntries& added = work_.form.added;
    events_.connect(added.undo.clicked, "Undo", [this] { undo(); });
    events_.connect(added.redo.clicked, "Redo", [this] { redo(); });
    events_.connect(work_.form.TxtGrid.escaped, "Undo", [this] { take_back_typing(); });
    events_.connect(work_.form.CboGrid.escaped, "Undo", [this] { take_back_typing(); });
    const auto close_step = [this] { work_.history.close_step(); };
    connections_ = {
        work_.history.changed.connect([this] { show_entries(); }),
        work_.form.TxtGrid.visible.changed.connect(close_step),
        work_.form.CboGrid.visible.changed.connect(close_step),
        work_.files.replaced.connect(
            [this](const MemoryImage&, const std::string&) { work_.history.begin(); }),
        // Before the first image there is nothing to go back to that could be written to a radio.
        work_.clone_read.replacing.connect([this] {
            if (!work_.form.mnuSaveOnly.enabled) work_.history.begin();
        })};
    show_entries();
}

void Undo::show_entries() {
    const auto show = [](MenuEntry& entry, const std::string& verb, const Edit* step) {
        entry.enabled = step != nullptr;
        entry.caption = step == nullptr ? verb : verb + " " + name_of(*step);
    };
    show(work_.form.added.undo, "&Undo", work_.history.next_to_undo());
    show(work_.form.added.redo, "&Redo", work_.history.next_to_redo());
}

void Undo::undo() {
    const Edit* const next = work_.history.next_to_undo();
    if (next == nullptr) return;
    if (is_editing() && work_.history.is_typing()) {
        take_back_typing();
        work_.editor.MSFlexGrid1_DblClick();
        return;
    }
    const Edit step = *next;
    close_editor();
    work_.history.undo();
    show(step, "Undone: ");
}

void Undo::redo() {
    const Edit* const next = work_.history.next_to_redo();
    if (next == nullptr) return;
    const Edit step = *next;
    close_editor();
    work_.history.redo();
    show(step, "Redone: ");
}

void Undo::take_back_typing() {
    if (!work_.history.is_typing()) return;
    const std::string name = name_of(*work_.history.next_to_undo());
    work_.history.undo();
    notices_.say("Undone: " + name);
}

void Undo::close_editor() {
    work_.form.TxtGrid.visible = false;
    work_.form.CboGrid.visible = false;
}

void Undo::show(const Edit& step, const std::string& what) {
    notices_.say(what + name_of(step));
    work_.form.MSFlexGrid1.focus_wanted();
    if (step.cells.empty()) return;
    const RowRange rows{step.cells.front().row, step.cells.back().row};
    const int current = work_.form.MSFlexGrid1.Row();
    if (current < rows.first || current > rows.last) {
        work_.form.MSFlexGrid1.rows_wanted(rows.last, rows.first);
    }
}

}  // namespace memwright
