// A snapshot through bytes and back, and what is none.

#include "files/snapshot.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "fakes/seeded_random.h"
#include "image/mod_vr120.h"
#include "native/file_system.h"
#include "table/channel_table.h"
#include "table/columns.h"

namespace memwright {
namespace {

constexpr int kRows = columns::kRows - 1;
constexpr int kCols = columns::kCount - 1;

// Every such-th case is enough, beginning anywhere.
constexpr int kStep = 23;

std::string any_text(SeededRandom& random, int longest) {
    std::string text(static_cast<std::size_t>(random.between(0, longest)), ' ');
    for (char& c : text) c = static_cast<char>(random.byte());
    return text;
}

Edit::Selection any_selection(SeededRandom& random) {
    return {random.between(0, kRows),
            random.between(0, kCols),
            {random.between(0, kRows), random.between(-1, kRows)}};
}

Edit any_step(SeededRandom& random) {
    const auto any_cell = [&] {
        return GridCell{any_text(random, 8), static_cast<Colour>(random.between(0, 0xFFFFFF))};
    };
    Edit step{any_text(random, 20), {}, {}, any_selection(random), any_selection(random)};
    for (int n = random.between(0, 9); n > 0; --n) {
        step.cells.push_back(
            {random.between(0, kRows), random.between(0, kCols), any_cell(), any_cell()});
    }
    for (int n = random.between(0, 9); n > 0; --n) {
        step.bytes.push_back(
            {static_cast<std::uint16_t>(random.between(0, 7391)), random.byte(), random.byte()});
    }
    return step;
}

Snapshot any_snapshot(SeededRandom& random, int longest_cell) {
    Snapshot snapshot;
    snapshot.path = any_text(random, 300);
    snapshot.when = any_text(random, 30);
    for (int i = 0; i < layout::kImageSize; ++i) snapshot.image.set(i, random.byte());
    for (int i = 0; i < kRows * kCols; ++i) {
        snapshot.cells.push_back(any_text(random, longest_cell));
    }
    for (int n = random.between(0, 20); n > 0; --n) {
        snapshot.history.steps.push_back(any_step(random));
    }
    snapshot.history.done = static_cast<std::size_t>(
        random.between(0, static_cast<int>(snapshot.history.steps.size())));
    return snapshot;
}

// Small and quick to check: most of its cells are empty.
Snapshot small_snapshot(SeededRandom& random) {
    Snapshot snapshot{.path = "/home/user/Gr\xC3\xBC\xC3\x9F.120",
                      .when = "21.11.26 12:34",
                      .image = {},
                      .cells = std::vector<std::string>(std::size_t{kRows} * kCols)};
    for (int i = 0; i < layout::kImageSize; ++i) snapshot.image.set(i, random.byte());
    snapshot.cells.front() = "TOWER";
    snapshot.cells[1] = "118.10000";
    snapshot.cells.back() = "end";
    return snapshot;
}

bool is_refused(const Bytes& bytes) {
    try {
        snapshot_from(bytes);
        return false;
    } catch (const InputError&) {
        return true;
    }
}

TEST(Snapshot, random_tables_and_images_come_back_whole) {
    SeededRandom random;
    for (const int longest : {0, 1, 10, 300}) {
        const Snapshot snapshot = any_snapshot(random, longest);
        EXPECT_TRUE(snapshot_from(bytes_of(snapshot)) == snapshot) << longest;
    }
}

TEST(Snapshot, a_table_without_a_file_comes_back_without_one) {
    SeededRandom random;
    Snapshot snapshot = small_snapshot(random);
    snapshot.path.clear();
    EXPECT_EQ(snapshot_from(bytes_of(snapshot)).path, "");
}

TEST(Snapshot, every_truncation_is_refused) {
    SeededRandom random;
    const Bytes whole = bytes_of(small_snapshot(random));
    ASSERT_FALSE(is_refused(whole));
    const auto size = static_cast<int>(whole.size());
    for (int kept = random.between(0, kStep - 1); kept < size; kept += kStep) {
        ASSERT_TRUE(is_refused({whole.begin(), whole.begin() + kept})) << kept;
    }
}

TEST(Snapshot, every_flipped_byte_is_refused) {
    SeededRandom random;
    Bytes bytes = bytes_of(small_snapshot(random));
    ASSERT_FALSE(is_refused(bytes));
    const int first = random.between(0, kStep - 1);
    for (auto i = static_cast<std::size_t>(first); i < bytes.size(); i += kStep) {
        const auto flip = static_cast<std::uint8_t>(random.between(1, 0xFF));
        bytes[i] ^= flip;
        ASSERT_TRUE(is_refused(bytes)) << "byte " << i << " ^ " << int{flip};
        bytes[i] ^= flip;
    }
}

TEST(Snapshot, a_byte_too_many_is_refused) {
    SeededRandom random;
    Bytes bytes = bytes_of(small_snapshot(random));
    bytes.push_back(0);
    EXPECT_TRUE(is_refused(bytes));
}

TEST(Snapshot, what_is_something_else_is_refused) {
    EXPECT_TRUE(is_refused({}));
    EXPECT_TRUE(is_refused(Bytes(3, 'x')));
    EXPECT_TRUE(is_refused(Bytes(layout::kImageSize, 0)));
    EXPECT_TRUE(is_refused(Bytes(100'000, 0xFF)));
}

// The sum over all bytes, as it stands at the end of a snapshot.
Bytes with_its_sum(Bytes bytes) {
    std::uint32_t sum = 2166136261U;
    for (const std::uint8_t byte : bytes) sum = (sum ^ byte) * 16777619U;
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<std::uint8_t>(sum >> shift));
    }
    return bytes;
}

TEST(Snapshot, one_of_a_later_version_of_the_program_is_refused_though_it_is_whole) {
    SeededRandom random;
    Bytes bytes = bytes_of(small_snapshot(random));
    bytes.resize(bytes.size() - 4);
    ASSERT_FALSE(is_refused(with_its_sum(bytes)));
    const std::string beginning = "Memwright recovery ";
    ASSERT_EQ(std::string(bytes.begin(), bytes.begin() + 20), beginning + "2");
    bytes[beginning.size()] = '3';
    EXPECT_TRUE(is_refused(with_its_sum(bytes)));
}

TEST(Snapshot, lengths_that_lead_past_the_end_are_refused_though_the_sum_is_right) {
    SeededRandom random;
    Bytes bytes = bytes_of(small_snapshot(random));
    bytes.resize(bytes.size() - 4);
    for (int i = 0; i < 4; ++i) bytes[21 + static_cast<std::size_t>(i)] = 0xFF;
    EXPECT_TRUE(is_refused(with_its_sum(bytes)));
    EXPECT_TRUE(is_refused(with_its_sum({bytes.begin(), bytes.begin() + 21})));
}

TEST(Snapshot, bytes_behind_the_last_cell_are_refused_though_the_sum_is_right) {
    SeededRandom random;
    Bytes bytes = bytes_of(small_snapshot(random));
    bytes.resize(bytes.size() - 4);
    bytes.push_back(0);
    EXPECT_TRUE(is_refused(with_its_sum(bytes)));
}

TEST(Snapshot, the_cells_of_a_table_go_back_into_it_labels_and_headings_left_alone) {
    SeededRandom random;
    NativeFileSystem files;
    modVR120 store(files);
    MSFlexGrid grid("MSFlexGrid1");
    const MenuEntry mnuSaveOnly("mnuSaveOnly", "&Save");
    ChannelTable table(store, grid, mnuSaveOnly);
    table.initgrid();
    std::vector<std::string> typed;
    for (int row = 1; row <= kRows; ++row) {
        for (int col = 1; col <= kCols; ++col) {
            typed.push_back(any_text(random, 12));
            grid.set_text(row, col, typed.back());
        }
    }
    const auto cells = cells_of(grid);
    EXPECT_TRUE(cells == typed);
    table.initgrid();
    int signals = 0;
    const Connection counting = grid.changed.connect([&](const GridChange&) { ++signals; });
    fill_cells(grid, cells);
    EXPECT_EQ(signals, 1);
    EXPECT_TRUE(cells_of(grid) == typed);
    EXPECT_EQ(grid.TextMatrix(1, 0), "Bank 0 - 0");
    EXPECT_EQ(grid.TextMatrix(kRows, 0), "Bank 9 - 63");
    EXPECT_EQ(grid.TextMatrix(0, 1), "Tag");
}

TEST(Snapshot, of_the_first_version_has_no_steps) {
    SeededRandom random;
    Snapshot snapshot = small_snapshot(random);
    Bytes bytes = bytes_of(snapshot);
    constexpr std::size_t kSum = 4;
    constexpr std::size_t kNoSteps = 8;
    bytes.resize(bytes.size() - kSum - kNoSteps);
    bytes[std::string("Memwright recovery ").size()] = '1';
    std::uint32_t sum = 2166136261U;
    for (const std::uint8_t byte : bytes) sum = (sum ^ byte) * 16777619U;
    for (std::size_t i = 0; i < kSum; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(sum >> (8 * i)));
    }
    EXPECT_EQ(snapshot_from(bytes), snapshot);
}

TEST(Snapshot, keeps_the_latest_steps_that_there_is_room_for) {
    SeededRandom random;
    Snapshot snapshot = small_snapshot(random);
    Edit large{"Load", {}, {}, {}, {}};
    for (int row = 1; row <= kRows; ++row) {
        large.cells.push_back({row, columns::kTag, {"", 0}, {std::string(200, 'x'), 0}});
    }
    snapshot.history = {{large, large, large, {"Cut", {}, {}, {}, {}}}, 4};
    const KeptSteps kept = snapshot_from(bytes_of(snapshot)).history;
    EXPECT_EQ(kept.done, kept.steps.size());
    ASSERT_EQ(kept.steps.size(), 2U);
    EXPECT_EQ(kept.steps.back().command, "Cut");
    // Without room for the steps that are done, those that were taken back are not kept either.
    snapshot.history.done = 0;
    EXPECT_TRUE(snapshot_from(bytes_of(snapshot)).history.steps.empty());
}

TEST(Snapshot, with_a_step_outside_of_the_table_is_none) {
    SeededRandom random;
    Snapshot snapshot = small_snapshot(random);
    for (const auto& [row, col] : {std::pair(641, 1), {1, 15}}) {
        snapshot.history = {{{"Cut", {{row, col, {}, {}}}, {}, {}, {}}}, 1};
        EXPECT_TRUE(is_refused(bytes_of(snapshot))) << row << " " << col;
    }
    for (const Edit::Selection& wrong :
         {Edit::Selection{641, 1, {}}, {1, 15, {}}, {1, 1, {641, 0}}, {1, 1, {1, 641}}}) {
        snapshot.history = {{{"Cut", {}, {}, wrong, {}}}, 1};
        EXPECT_TRUE(is_refused(bytes_of(snapshot))) << wrong.row << " " << wrong.col;
    }
    snapshot.history = {{{"Cut", {}, {{7392, 0, 0}}, {}, {}}}, 1};
    EXPECT_TRUE(is_refused(bytes_of(snapshot)));
}

}  // namespace
}  // namespace memwright
