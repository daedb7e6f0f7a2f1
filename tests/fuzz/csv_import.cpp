// A CSV file: into an empty table, out of it again, and that into another one.

#include "base/error.h"
#include "fakes/memory_files.h"
#include "files/csv_files.h"
#include "files/snapshot.h"
#include "fuzz/bench.h"
#include "fuzz/target.h"
#include "image/blocked_ranges.h"
#include "table/columns.h"

namespace memwright::fuzz {
namespace {

class CountedImport final : public ImportDisplay {
  public:
    int ends = 0;
    int notes = 0;

    bool go_on(double share) override {
        EXPECT_GE(share, 0);
        EXPECT_LE(share, 1);
        return true;
    }
    void end() override { ++ends; }
    void note_skipped(const std::string& /*path*/, const std::string& lines) override {
        EXPECT_FALSE(lines.empty());
        ++notes;
    }
};

// A table of its own that files are imported into and exported from.
struct CsvBench : Bench {
    explicit CsvBench(FileSystem& files_of_machine) : Bench(files_of_machine) {
        form.mnuSaveOnly.enabled = true;
        table.SaveVR120Data();
    }

    // False if a line could not be used. Anything else that is thrown is a fault.
    bool imported(const std::string& path) {
        try {
            csv.import_from(path);
            return true;
        } catch (const InputError& error) {
            EXPECT_FALSE(error.what_is_wrong().empty());
        }
        // The user goes on with the lines before it.
        table.SaveVR120Data();
        table.ParseVR120Data();
        return false;
    }

    CountedImport display;
    CsvFiles csv{table, grid, dialogs, files, display};
};

// An import skips what the radio cannot receive. A frequency may come to lie there by the way
// through the table, so such rows would not come back.
void drop_what_is_blocked(Bench& bench) {
    for (int row = 1; row < bench.grid.Rows(); ++row) {
        const std::string& frequency = bench.grid.TextMatrix(row, columns::kFreq);
        if (CheckBlocked(frequency) != frequency) bench.grid.set_text(row, columns::kFreq, "");
    }
    bench.table.SaveVR120Data();
    settle(bench);
}

}  // namespace

void csv_import(Input input) {
    fakes::MemoryFiles files;
    files.replace("/in.csv", input);
    CsvBench first(files);
    first.imported("/in.csv");
    EXPECT_EQ(first.display.ends, 1);
    EXPECT_LE(first.display.notes, 1);
    settle(first);
    drop_what_is_blocked(first);
    first.csv.export_to("/out.csv");

    CsvBench second(files);
    EXPECT_TRUE(second.imported("/out.csv"));
    EXPECT_EQ(second.display.notes, 0);
    EXPECT_EQ(cells_of(second.grid), cells_of(first.grid));
    EXPECT_EQ(second.store.MemoryImage, first.store.MemoryImage);
    second.csv.export_to("/again.csv");
    EXPECT_EQ(files.files["/again.csv"], files.files["/out.csv"]);
}

}  // namespace memwright::fuzz
