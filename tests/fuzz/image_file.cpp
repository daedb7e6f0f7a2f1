// An image file: opened, through the table, and saved.

#include <algorithm>
#include <fstream>
#include <iterator>
#include <numeric>

#include "files/snapshot.h"
#include "fuzz/bench.h"
#include "fuzz/sandbox.h"
#include "fuzz/target.h"
#include "image/layout.h"
#include "native/file_system.h"
#include "table/columns.h"

namespace memwright::fuzz {
namespace {

constexpr const char* kPath = "mem.120";

void put(const char* path, Input bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

Bytes get(const char* path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

int sum_of(const MemoryImage& image) {
    return std::accumulate(image.bytes().begin(), image.bytes().end(), 0);
}

std::span<const std::uint8_t> part(const MemoryImage& image, int offset, int size) {
    return std::span<const std::uint8_t>(image.bytes())
        .subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(size));
}

bool is_all(std::span<const std::uint8_t> bytes, std::uint8_t value) {
    return std::ranges::all_of(bytes, [&](std::uint8_t byte) { return byte == value; });
}

// What the way through the table may change: `after` is the image then.
void expect_only_the_table_changed(const MSFlexGrid& grid, const MemoryImage& before,
                                   const MemoryImage& after) {
    constexpr int kModeAndPreference = 0x07;
    for (int i = 0; i < layout::kMemories; ++i) {
        const int record = layout::kRecords + layout::kRecordSize * i;
        const int label = layout::kLabels + layout::kLabelSize * i;
        if (is_occupied(grid.TextMatrix(i + 1, columns::kFreq))) {
            EXPECT_TRUE(std::ranges::equal(part(after, label, layout::kLabelSize),
                                           part(before, label, layout::kLabelSize)));
            EXPECT_EQ(after.get(record + layout::kFlags) & kModeAndPreference,
                      before.get(record + layout::kFlags) & kModeAndPreference);
        } else {
            EXPECT_TRUE(is_all(part(after, record, layout::kRecordSize), 0xFF));
            EXPECT_TRUE(is_all(part(after, label, layout::kLabelSize), ' '));
        }
    }
    const int rest = layout::kImageSize - layout::kRadioSettings;
    EXPECT_TRUE(std::ranges::equal(part(after, layout::kRadioSettings, rest),
                                   part(before, layout::kRadioSettings, rest)));
}

// The start of the file is the image; what stood behind it still does.
void expect_saved(Input input, const MemoryImage& image) {
    const Bytes saved = get(kPath);
    ASSERT_EQ(saved.size(), std::max<std::size_t>(input.size(), layout::kImageSize));
    const auto rest = saved.begin() + layout::kImageSize;
    EXPECT_TRUE(std::equal(saved.begin(), rest, image.bytes().begin()));
    if (input.size() > layout::kImageSize) {
        EXPECT_TRUE(std::equal(rest, saved.end(), input.begin() + layout::kImageSize));
    }
}

}  // namespace

void image_file(Input input) {
    const Sandbox sandbox;
    put(kPath, input);
    NativeFileSystem files;
    Bench bench(files);
    bench.image_files.open_named(kPath);

    const MemoryImage opened = bench.store.MemoryImage;
    const auto known = std::min<std::size_t>(input.size(), layout::kImageSize);
    const auto bytes = std::span<const std::uint8_t>(opened.bytes());
    EXPECT_TRUE(std::ranges::equal(bytes.first(known), input.first(known)));
    EXPECT_TRUE(is_all(bytes.subspan(known), 0));
    EXPECT_EQ(bench.image_files.current_path(), kPath);
    const auto shown = cells_of(bench.grid);

    const bool changed = bench.table.IsDataChanged();
    const MemoryImage encoded = bench.store.MemoryImage;
    EXPECT_EQ(changed, sum_of(encoded) != sum_of(opened));
    expect_only_the_table_changed(bench.grid, opened, encoded);

    bench.image_files.mnuSaveOnly_Click();
    EXPECT_EQ(bench.store.MemoryImage, encoded);
    expect_saved(input, encoded);
    EXPECT_FALSE(bench.table.IsDataChanged());
    EXPECT_EQ(cells_of(bench.grid), shown);

    settle(bench);
    const MemoryImage settled = bench.store.MemoryImage;
    bench.image_files.mnuSaveOnly_Click();
    bench.image_files.open_named(kPath);
    EXPECT_FALSE(bench.table.IsDataChanged());
    EXPECT_EQ(bench.store.MemoryImage, settled);
}

}  // namespace memwright::fuzz
