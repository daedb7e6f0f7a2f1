#include "table/edit_recorder.h"

namespace memwright {
namespace {

Edit::Selection selection_of(const MSFlexGrid& grid) {
    return {grid.Row(), grid.Col(), grid.marked_rows};
}

}  // namespace

EditRecorder::EditRecorder(MSFlexGrid& grid, ImageCodec& image)
    : grid_(grid), image_(image), selected_(selection_of(grid)) {
    connections_ = {
        grid.cell_changing.connect([this](int row, int col) { note_cell(row, col); }),
        grid.changed.connect([this](const GridChange&) { content_changed(); }),
        grid.current_changed.connect([this] { something_changed(); }),
        grid.marked_rows.changed.connect([this] { something_changed(); }),
        image.written.connect([this](int loffset, std::span<const std::uint8_t> before) {
            note_bytes(loffset, before);
        })};
}

void EditRecorder::note_cell(int row, int col) {
    cells_.try_emplace({row, col}, grid_.cell(row, col));
}

void EditRecorder::note_bytes(int loffset, std::span<const std::uint8_t> before) {
    auto offset = static_cast<std::uint16_t>(loffset);
    for (const std::uint8_t byte : before) {
        if (image_.MemoryImage.get(offset) != byte) bytes_.try_emplace(offset, byte);
        ++offset;
    }
    content_changed();
}

void EditRecorder::content_changed() {
    something_changed();
    changed();
}

void EditRecorder::something_changed() {
    if (commands_.empty()) finish_edit();
}

Edit EditRecorder::so_far() const {
    Edit edit{
        commands_.empty() ? "" : commands_.back().name, {}, {}, selected_, selection_of(grid_)};
    for (const auto& [place, before] : cells_) {
        const auto& [row, col] = place;
        // Rows and columns that are no more are no part of an edit.
        if (row >= grid_.Rows() || col >= grid_.Cols()) continue;
        const GridCell& after = grid_.cell(row, col);
        if (before != after) edit.cells.push_back({row, col, before, after});
    }
    for (const auto& [offset, before] : bytes_) {
        const std::uint8_t after = image_.MemoryImage.get(offset);
        if (before != after) edit.bytes.push_back({offset, before, after});
    }
    return edit;
}

void EditRecorder::apply(const Edit& edit) {
    const EditScope scope(*this, edit.command);
    const MSFlexGrid::Batch batch(grid_);
    for (const Edit::Cell& cell : edit.cells) {
        grid_.set_text(cell.row, cell.col, cell.after.text);
        grid_.set_colour(cell.row, cell.col, cell.after.colour);
    }
    for (const Edit::Byte& byte : edit.bytes) image_.set_byte(byte.offset, byte.after);
    grid_.set_row(edit.selected_after.row);
    grid_.set_col(edit.selected_after.col);
    grid_.marked_rows = edit.selected_after.marked;
}

void EditRecorder::finish_edit() {
    const Edit edit = so_far();
    cells_.clear();
    bytes_.clear();
    selected_ = edit.selected_after;
    if (!edit.is_empty()) edited(edit);
}

void EditRecorder::begin(std::string command, bool waits) {
    finish_edit();
    commands_.push_back({std::move(command), waits});
}

void EditRecorder::end() {
    finish_edit();
    commands_.pop_back();
    scope_ended();
}

EditScope::EditScope(EditRecorder& recorder, std::string command, Kind kind)
    : recorder_(recorder), joined_(recorder.joins_another()) {
    if (!joined_) recorder_.begin(std::move(command), kind == Kind::waits);
}

EditScope::~EditScope() {
    if (!joined_) recorder_.end();
}

}  // namespace memwright
