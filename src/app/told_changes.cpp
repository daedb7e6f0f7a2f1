#include "app/told_changes.h"

#include <algorithm>
#include <array>
#include <utility>

#include "table/columns.h"
#include "table/edit_names.h"

namespace memwright {
namespace {

constexpr const char* kLastChange = "last change of rows";

bool is_one_of(const std::string& command, std::initializer_list<const char*> commands) {
    return std::ranges::find(commands, command) != commands.end();
}

// Something that the user could see before is no more.
bool took_something_away(const Edit& step) {
    return std::ranges::any_of(step.cells, [](const Edit::Cell& cell) {
        return cell.col <= columns::kPref && !cell.before.text.empty() &&
               cell.before.text != cell.after.text;
    });
}

bool is_told(const Edit& step) {
    return is_one_of(step.command,
                     {"Cut", "Delete", "Move Up", "Move Down", "Load", "Paste", "Copy Value"}) &&
           took_something_away(step);
}

// The rows that the command worked on, by their labels.
std::string memories_of(const MSFlexGrid& grid, const Edit& step) {
    RowRange rows = step.selected_after.marked;
    if (step.command == "Copy Value") rows = {step.selected_after.row, step.selected_after.row};
    if (step.command == "Load") rows = {step.cells.front().row, step.cells.back().row};
    rows.first = std::max(rows.first, 1);
    if (rows.last < rows.first) return {};
    const std::string first = grid.TextMatrix(rows.first, columns::kLabel);
    if (rows.first == rows.last) return " (" + first + ")";
    return " (" + first + " to " + grid.TextMatrix(rows.last, columns::kLabel) + ")";
}

}  // namespace

ToldChanges::ToldChanges(Form1& form, EditHistory& history, Notices& notices)
    : form_(form), history_(history), notices_(notices) {
    connections_ = {form_.MSFlexGrid1.marked_rows.changed.connect([this] { show_tips(); }),
                    history_.changed.connect([this] { look_at_last_step(); })};
    show_tips();
}

void ToldChanges::show_tips() {
    const RowRange rows = form_.MSFlexGrid1.marked_rows;
    const bool marked = rows.first != 0 && rows.last >= rows.first;
    const std::string which = marked ? rows_text(rows) : "the selected rows";
    form_.Command2.tip = "Move " + which + " up";
    form_.Command1.tip = "Move " + which + " down";
    form_.Command3.tip = "Empty " + which;
    form_.mnuCut.tip = "Cut " + which;
}

// What was told before can no longer be undone by itself once something else was changed.
void ToldChanges::look_at_last_step() {
    const Edit* const last = history_.next_to_undo();
    const bool done_last = history_.next_to_redo() == nullptr;
    if (last != nullptr && done_last && is_told(*last)) {
        told_ = name_of(*last) + memories_of(form_.MSFlexGrid1, *last) + ".";
        if (is_one_of(last->command, {"Cut", "Delete"})) {
            const RowRange rows = form_.MSFlexGrid1.marked_rows;
            form_.MSFlexGrid1.rows_wanted(rows.last, std::max(rows.first, 1));
        }
        notices_.add({.text = told_, .about = kLastChange, .action = "&Undo", .act = [this] {
                          form_.added.undo.clicked();
                      }});
    } else if (!done_last) {
        told_.clear();
        notices_.withdraw(kLastChange);
    } else if (const std::string told = std::exchange(told_, {}); !told.empty() && waits()) {
        notices_.add({.text = told, .about = kLastChange});
    }
}

bool ToldChanges::waits() const {
    return std::ranges::any_of(notices_.of_this_run(), [](const Notices::Entry& entry) {
        return entry.waiting && entry.notice.about == kLastChange;
    });
}

}  // namespace memwright
