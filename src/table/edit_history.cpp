#include "table/edit_history.h"

#include <algorithm>

#include "image/layout.h"

namespace memwright {
namespace {

bool is_typed(const Edit& edit) { return edit.command == "Type" || edit.command == "Choose"; }

bool is_move(const Edit& edit) { return edit.command == "Move Up" || edit.command == "Move Down"; }

bool same_cell(const Edit::Selection& one, const Edit::Selection& other) {
    return one.row == other.row && one.col == other.col;
}

// That the table is written into the image comes along with a save, a transfer or a question. No
// user sees it, so it is no step.
bool is_encoding(const Edit& edit) {
    return edit.cells.empty() && std::ranges::all_of(edit.bytes, [](const Edit::Byte& byte) {
               return byte.offset < layout::kRadioSettings;
           });
}

}  // namespace

EditHistory::EditHistory(EditRecorder& recorder) : recorder_(recorder) {
    connections_ = {recorder.edited.connect([this](const Edit& edit) { add(edit); }),
                    recorder.scope_ended.connect([this] {
                        if (recorder_.open_scopes() < ignored_scope_) ignored_scope_ = 0;
                    })};
}

void EditHistory::begin() { resume({}, 0); }

void EditHistory::resume(std::deque<Edit> steps, std::size_t done) {
    steps_ = std::move(steps);
    done_ = done;
    before_first_ = {};
    typing_ = false;
    ignored_scope_ = recorder_.open_scopes();
    changed();
}

const Edit* EditHistory::next_to_undo() const { return done_ == 0 ? nullptr : &steps_[done_ - 1]; }

const Edit* EditHistory::next_to_redo() const {
    return done_ == steps_.size() ? nullptr : &steps_[done_];
}

void EditHistory::undo() {
    if (done_ == 0) return;
    apply(steps_[--done_].inverse());
    if (done_ == 0) before_first_ = {};
    changed();
}

void EditHistory::redo() {
    if (done_ == steps_.size()) return;
    apply(steps_[done_++]);
    changed();
}

void EditHistory::apply(const Edit& edit) {
    typing_ = false;
    recorder_.finish_edit();
    applying_ = true;
    recorder_.apply(edit);
    recorder_.finish_edit();
    applying_ = false;
}

void EditHistory::close_step() { typing_ = false; }

void EditHistory::add(const Edit& edit) {
    if (applying_ || ignored_scope_ != 0 || edit.command.empty()) return;
    if (!edit.changes_content()) {
        typing_ = typing_ && same_cell(edit.selected_before, edit.selected_after);
    } else if (is_encoding(edit)) {
        add_encoding(edit);
    } else {
        add_step(edit);
        changed();
    }
}

void EditHistory::add_encoding(const Edit& edit) {
    Edit& step = done_ == 0 ? before_first_ : steps_[done_ - 1];
    const Edit::Selection selected = step.selected_after;
    step = step.then(edit);
    step.selected_after = selected;
}

bool EditHistory::goes_on(const Edit& edit) const {
    if (done_ == 0) return false;
    const Edit& last = steps_[done_ - 1];
    if (is_typed(edit)) return typing_ && same_cell(last.selected_after, edit.selected_after);
    return is_move(edit) && is_move(last) &&
           last.selected_after.marked == edit.selected_before.marked;
}

void EditHistory::add_step(const Edit& edit) {
    const bool joins = goes_on(edit);
    steps_.resize(done_);
    typing_ = is_typed(edit);
    if (!joins) {
        steps_.push_back(edit);
        if (done_ == 0) steps_.back().bytes = before_first_.then(edit).bytes;
        before_first_ = {};
        if (steps_.size() > kMostSteps) steps_.pop_front();
    } else {
        // A block that is back where it was has not been moved.
        steps_.back() = steps_.back().then(edit);
        if (!steps_.back().changes_content()) steps_.pop_back();
    }
    done_ = steps_.size();
}

}  // namespace memwright
