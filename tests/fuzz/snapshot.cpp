// A recovery file: refused, or the same bytes again; and its offer to the user.

#include "files/snapshot.h"

#include <algorithm>

#include "base/error.h"
#include "fakes/held_locks.h"
#include "fakes/memory_files.h"
#include "fakes/virtual_time.h"
#include "files/recovery.h"
#include "fuzz/bench.h"
#include "fuzz/target.h"
#include "radio/demonstration.h"
#include "table/columns.h"

namespace memwright::fuzz {
namespace {

constexpr const char* kFolder = "/state";
constexpr const char* kFile = "2026-11-21 12.34.56 1.recovery";
constexpr std::size_t kSumSize = 4;

// The sum over all bytes, as it stands at the end of a recovery file.
Bytes with_its_sum(Bytes bytes) {
    std::uint32_t sum = 2166136261U;
    for (const std::uint8_t byte : bytes) sum = (sum ^ byte) * 16777619U;
    for (unsigned i = 0; i < kSumSize; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(sum >> (8 * i)));
    }
    return bytes;
}

Bytes good_one() {
    fakes::MemoryFiles files;
    Bench bench(files);
    bench.store.set_image(radio::demonstration_memory());
    bench.table.ParseVR120Data();
    Bytes bytes = bytes_of(
        {"/home/user/old.120", "21.11.26 12:34", bench.store.MemoryImage, cells_of(bench.grid)});
    bytes.resize(bytes.size() - kSumSize);
    return bytes;
}

// Changes of a good one, six bytes each: what to do, in the lowest two bits of the first, and in
// the next whether places are counted from the end; three bytes for where, the lowest first; how
// much; and a value.
Bytes changed(Input changes) {
    static const Bytes kGood = good_one();
    constexpr std::size_t kSize = 6;
    Bytes bytes = kGood;
    for (; changes.size() >= kSize; changes = changes.subspan(kSize)) {
        const std::size_t where =
            changes[1] + std::size_t{changes[2]} * 0x100 + std::size_t{changes[3]} * 0x10000;
        const auto place = static_cast<std::ptrdiff_t>(where % (bytes.size() + 1));
        const bool from_end = (changes[0] & 4U) != 0;
        const auto at = from_end ? bytes.end() - place : bytes.begin() + place;
        const auto much = std::min<std::ptrdiff_t>(changes[4], bytes.end() - at);
        switch (changes[0] % 4) {
            case 0:
                if (at != bytes.end()) *at = changes[5];
                break;
            case 1:
                bytes.insert(at, changes[4], changes[5]);
                break;
            case 2:
                bytes.erase(at, at + much);
                break;
            default:
                std::fill(at, at + much, changes[5]);
                break;
        }
    }
    return bytes;
}

class OfferBench : public Bench {
  public:
    explicit OfferBench(FileSystem& files_of_machine) : Bench(files_of_machine) {
        recovery.begin();
    }

    fakes::HeldLocks locks;
    fakes::VirtualTime time;
    std::vector<std::string> notes;
    EditRecorder edits{grid, store};
    EditHistory history{edits};
    Recovery recovery{{store, table, grid, edits, history, image_files, form},
                      {files, locks, time, time, messages, kFolder},
                      [this](const std::string& text) { notes.push_back(text); }};
};

// Whatever stands in the cells, the table can be saved, and again, and comes to rest.
void expect_works_on(Bench& bench) {
    bench.table.SaveVR120Data();
    const MemoryImage saved = bench.store.MemoryImage;
    bench.table.SaveVR120Data();
    EXPECT_EQ(bench.store.MemoryImage, saved);
    settle(bench);
}

void offer(const Bytes& bytes, const std::optional<Snapshot>& snapshot, Answer answer) {
    const std::string path = std::string(kFolder) + "/" + kFile;
    fakes::MemoryFiles files;
    files.replace(path, bytes);
    OfferBench bench(files);
    const auto empty = cells_of(bench.grid);
    if (snapshot) bench.messages.answers = {answer};
    const bool taken = bench.recovery.offer();
    EXPECT_EQ(taken, snapshot && answer == Answer::yes);
    EXPECT_TRUE(bench.messages.answers.empty());
    EXPECT_EQ(bench.notes.empty(), snapshot.has_value());
    if (taken) {
        EXPECT_EQ(bench.store.MemoryImage, snapshot->image);
        EXPECT_EQ(cells_of(bench.grid), snapshot->cells);
        EXPECT_EQ(bench.image_files.current_path(), snapshot->path);
        EXPECT_EQ(files.files[path], bytes);
        EXPECT_TRUE(bench.table.IsDataChanged());
        expect_works_on(bench);
    } else {
        EXPECT_EQ(cells_of(bench.grid), empty);
        EXPECT_FALSE(files.exists(path));
        EXPECT_EQ(files.files[std::string(kFolder) + "/declined " + kFile], bytes);
    }
}

}  // namespace

void snapshot(Input input) {
    if (input.empty()) return;
    const unsigned how = input.front();
    const Input rest = input.subspan(1);
    const Bytes bytes =
        with_its_sum((how & 1U) != 0 ? changed(rest) : Bytes(rest.begin(), rest.end()));
    std::optional<Snapshot> read;
    try {
        read = snapshot_from(bytes);
        EXPECT_EQ(bytes_of(*read), bytes);
    } catch (const InputError&) {
        // No whole recovery file.
    }
    offer(bytes, read, (how & 2U) != 0 ? Answer::no : Answer::yes);
}

}  // namespace memwright::fuzz
