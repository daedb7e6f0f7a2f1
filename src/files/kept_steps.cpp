#include "files/kept_steps.h"

#include <algorithm>

#include "table/columns.h"

namespace memwright {
namespace {

constexpr int kShort = 2;
constexpr int kByte = 1;

std::size_t size(int number) { return static_cast<std::size_t>(number); }

void put(ByteWriter& writer, const GridCell& cell) {
    writer.text(cell.text);
    writer.number(cell.colour);
}

void put(ByteWriter& writer, const Edit::Selection& selection) {
    for (const int row : {selection.row, selection.marked.first, selection.marked.last + 1}) {
        writer.number(size(row), kShort);
    }
    writer.number(size(selection.col), kByte);
}

Bytes bytes_of(const Edit& step) {
    ByteWriter writer;
    writer.text(step.command);
    put(writer, step.selected_before);
    put(writer, step.selected_after);
    writer.number(step.cells.size());
    for (const Edit::Cell& cell : step.cells) {
        writer.number(size(cell.row), kShort);
        writer.number(size(cell.col), kByte);
        put(writer, cell.before);
        put(writer, cell.after);
    }
    writer.number(step.bytes.size());
    for (const Edit::Byte& byte : step.bytes) {
        writer.number(byte.offset, kShort);
        writer.number(byte.before, kByte);
        writer.number(byte.after, kByte);
    }
    return writer.bytes;
}

int take_number(ByteReader& reader, int most, int width) {
    return static_cast<int>(reader.number_up_to(size(most), width));
}

GridCell take_cell(ByteReader& reader) {
    std::string text = reader.text();
    return {std::move(text), static_cast<Colour>(reader.number())};
}

Edit::Selection take_selection(ByteReader& reader) {
    Edit::Selection selection{};
    selection.row = take_number(reader, columns::kRows - 1, kShort);
    selection.marked.first = take_number(reader, columns::kRows - 1, kShort);
    selection.marked.last = take_number(reader, columns::kRows, kShort) - 1;
    selection.col = take_number(reader, columns::kCount - 1, kByte);
    return selection;
}

Edit take_step(ByteReader& reader) {
    Edit step;
    step.command = reader.text();
    step.selected_before = take_selection(reader);
    step.selected_after = take_selection(reader);
    for (std::size_t left = reader.number(); left > 0; --left) {
        const int row = take_number(reader, columns::kRows - 1, kShort);
        const int col = take_number(reader, columns::kCount - 1, kByte);
        GridCell before = take_cell(reader);
        step.cells.push_back({row, col, std::move(before), take_cell(reader)});
    }
    for (std::size_t left = reader.number(); left > 0; --left) {
        const int offset = take_number(reader, layout::kImageSize - 1, kShort);
        const auto before = static_cast<std::uint8_t>(reader.number(kByte));
        step.bytes.push_back({static_cast<std::uint16_t>(offset), before,
                              static_cast<std::uint8_t>(reader.number(kByte))});
    }
    return step;
}

}  // namespace

void put(ByteWriter& writer, const std::deque<Edit>& steps, std::size_t done) {
    std::deque<Bytes> kept;
    std::size_t size = 0;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        kept.push_front(bytes_of(*step));
        size += kept.front().size();
        if (size <= kMostStepBytes) continue;
        kept.pop_front();
        break;
    }
    const std::size_t forgotten = steps.size() - kept.size();
    // Without the steps that are done, those that were taken back have nothing to begin with.
    if (forgotten > done) kept.clear();
    writer.number(kept.size());
    writer.number(kept.empty() ? 0 : done - forgotten);
    for (const Bytes& step : kept) writer.raw(step);
}

KeptSteps take_steps(ByteReader& reader) {
    KeptSteps kept;
    std::size_t left = reader.number();
    kept.done = reader.number_up_to(left);
    for (; left > 0; --left) kept.steps.push_back(take_step(reader));
    return kept;
}

}  // namespace memwright
