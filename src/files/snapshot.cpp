#include "files/snapshot.h"

#include <algorithm>
#include <string_view>

#include "base/error.h"
#include "table/columns.h"

namespace memwright {
namespace {

using namespace columns;

constexpr std::string_view kMagic = "Memwright recovery 1\n";
constexpr int kBitsPerByte = 8;
constexpr std::size_t kNumberBytes = 4;
constexpr std::size_t kCells = static_cast<std::size_t>(kRows - 1) * (kCount - 1);

// Of all bytes before it (FNV-1a).
std::uint32_t sum_of(std::span<const std::uint8_t> bytes) {
    std::uint32_t sum = 2166136261U;
    for (const std::uint8_t byte : bytes) sum = (sum ^ byte) * 16777619U;
    return sum;
}

void put_number(Bytes& bytes, std::size_t number) {
    for (std::size_t i = 0; i < kNumberBytes; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(number >> (kBitsPerByte * i)));
    }
}

void put_text(Bytes& bytes, const std::string& text) {
    put_number(bytes, text.size());
    bytes.insert(bytes.end(), text.begin(), text.end());
}

[[noreturn]] void refuse() {
    throw InputError("This is no recovery file of Memwright, or not the whole of one.");
}

class Reader {
  public:
    explicit Reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::span<const std::uint8_t> take(std::size_t count) {
        if (count > bytes_.size()) refuse();
        const auto taken = bytes_.first(count);
        bytes_ = bytes_.subspan(count);
        return taken;
    }
    std::size_t number() {
        std::size_t value = 0;
        const auto taken = take(kNumberBytes);
        for (std::size_t i = 0; i < kNumberBytes; ++i) {
            value |= std::size_t{taken[i]} << (kBitsPerByte * i);
        }
        return value;
    }
    std::string text() {
        const auto taken = take(number());
        return {taken.begin(), taken.end()};
    }
    std::size_t left() const { return bytes_.size(); }

  private:
    std::span<const std::uint8_t> bytes_;
};

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
    Bytes bytes(kMagic.begin(), kMagic.end());
    put_text(bytes, snapshot.path);
    put_text(bytes, snapshot.when);
    const auto image = snapshot.image.bytes();
    bytes.insert(bytes.end(), image.begin(), image.end());
    for (const std::string& cell : snapshot.cells) put_text(bytes, cell);
    put_number(bytes, sum_of(bytes));
    return bytes;
}

Snapshot snapshot_from(const Bytes& bytes) {
    if (bytes.size() < kMagic.size() + kNumberBytes) refuse();
    const auto content = std::span(bytes).first(bytes.size() - kNumberBytes);
    if (Reader(std::span(bytes).last(kNumberBytes)).number() != sum_of(content)) refuse();
    Reader reader(content);
    if (!std::ranges::equal(reader.take(kMagic.size()), kMagic)) refuse();
    Snapshot snapshot;
    snapshot.path = reader.text();
    snapshot.when = reader.text();
    snapshot.image = MemoryImage(reader.take(layout::kImageSize));
    while (snapshot.cells.size() < kCells) snapshot.cells.push_back(reader.text());
    if (reader.left() != 0) refuse();
    return snapshot;
}

}  // namespace memwright
