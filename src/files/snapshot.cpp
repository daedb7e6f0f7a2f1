#include "files/snapshot.h"

#include <algorithm>
#include <string_view>

#include "files/byte_stream.h"
#include "table/columns.h"

namespace memwright {
namespace {

using namespace columns;

constexpr std::string_view kMagic = "Memwright recovery 2\n";
constexpr std::string_view kMagicWithoutSteps = "Memwright recovery 1\n";
constexpr std::size_t kSumBytes = 4;
constexpr std::size_t kCells = static_cast<std::size_t>(kRows - 1) * (kCount - 1);

// Of all bytes before it (FNV-1a).
std::uint32_t sum_of(std::span<const std::uint8_t> bytes) {
    std::uint32_t sum = 2166136261U;
    for (const std::uint8_t byte : bytes) sum = (sum ^ byte) * 16777619U;
    return sum;
}

}  // namespace

std::vector<std::string> cells_of(const MSFlexGrid& grid) {
    std::vector<std::string> cells;
    cells.reserve(kCells);
    for (int row = 1; row < kRows; ++row) {
        for (int col = 1; col < kCount; ++col) cells.push_back(grid.TextMatrix(row, col));
    }
    return cells;
}

void fill_cells(MSFlexGrid& grid, const std::vector<std::string>& cells) {
    const MSFlexGrid::Batch batch(grid);
    auto cell = cells.begin();
    for (int row = 1; row < kRows; ++row) {
        for (int col = 1; col < kCount; ++col) grid.set_text(row, col, *cell++);
    }
}

Bytes bytes_of(const Snapshot& snapshot) {
    ByteWriter writer;
    writer.bytes.assign(kMagic.begin(), kMagic.end());
    writer.text(snapshot.path);
    writer.text(snapshot.when);
    writer.raw(snapshot.image.bytes());
    for (const std::string& cell : snapshot.cells) writer.text(cell);
    put(writer, snapshot.history.steps, snapshot.history.done);
    writer.number(sum_of(writer.bytes));
    return writer.bytes;
}

Snapshot snapshot_from(const Bytes& bytes) {
    if (bytes.size() < kMagic.size() + kSumBytes) ByteReader::refuse();
    const auto content = std::span(bytes).first(bytes.size() - kSumBytes);
    if (ByteReader(std::span(bytes).last(kSumBytes)).number() != sum_of(content)) {
        ByteReader::refuse();
    }
    ByteReader reader(content);
    const auto magic = reader.raw(kMagic.size());
    const bool without_steps = std::ranges::equal(magic, kMagicWithoutSteps);
    if (!without_steps && !std::ranges::equal(magic, kMagic)) ByteReader::refuse();
    Snapshot snapshot;
    snapshot.path = reader.text();
    snapshot.when = reader.text();
    snapshot.image = MemoryImage(reader.raw(layout::kImageSize));
    while (snapshot.cells.size() < kCells) snapshot.cells.push_back(reader.text());
    if (!without_steps) snapshot.history = take_steps(reader);
    if (reader.left() != 0) ByteReader::refuse();
    return snapshot;
}

}  // namespace memwright
