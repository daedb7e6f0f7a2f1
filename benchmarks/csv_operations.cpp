// CSV export and import, with a file system in memory: what the disk takes is not ours.

#include <algorithm>
#include <memory>

#include "fakes/scripted_dialogs.h"
#include "files/csv_files.h"
#include "occupied_memory.h"
#include "operation.h"

namespace memwright::benchmarks {
namespace {

class NoDisplay final : public ImportDisplay {
  public:
    bool go_on(double /*share*/) override { return true; }
    void end() override {}
    void note_skipped(const std::string& /*path*/, const std::string& lines) override {
        use(lines);
    }
};

struct Csv : OccupiedTable {
    void put(const std::string& path, const std::string& text) {
        files.files[path].assign(text.begin(), text.end());
    }

    fakes::ScriptedFileDialogs dialogs;
    NoDisplay display;
    CsvFiles csv{table, grid, dialogs, files, display};
};

// Lines for the 640 memories, again and again.
std::string lines(int count, const char* frequency = nullptr) {
    std::string text = "Ch,MHz,Mode,Pref,Label\r\n";
    for (int i = 0; i < count; ++i) {
        const int index = i % layout::kMemories;
        const Channel channel(index);
        const int number =
            index / layout::kMemoriesPerBank * 100 + index % layout::kMemoriesPerBank;
        text += std::to_string(number) + "," +
                (frequency != nullptr ? frequency : channel.frequency) + "," + channel.mode + "," +
                (channel.preference == "On" ? "p" : "") + ",\"" + channel.label + "\"\r\n";
    }
    return text;
}

Operation import(const char* name, int count, bool counted, const char* frequency = nullptr) {
    return {std::string("csv/") + name, count, counted, [count, frequency] {
                auto csv = std::make_shared<Csv>();
                csv->put("in.csv", lines(count, frequency));
                return [csv] { csv->csv.import_from("in.csv"); };
            }};
}

// What memory allows: the same million lines, only copied.
Operation copy() {
    return {"memory/copy_1000000_lines", 1'000'000, false, [] {
                auto text = std::make_shared<const std::string>(lines(1'000'000));
                auto target = std::make_shared<std::string>(text->size(), ' ');
                return [text, target] {
                    std::ranges::copy(*text, target->begin());
                    use(*target);
                };
            }};
}

}  // namespace

void add_csv(Operations& operations) {
    operations.push_back(
        {"csv/export_640", layout::kMemories, true,
         [] { return [csv = std::make_shared<Csv>()] { csv->csv.export_to("out.csv"); }; }});
    operations.push_back(import("import_640", layout::kMemories, true));
    operations.push_back(import("import_100000", 100'000, false));
    operations.push_back(import("import_1000000", 1'000'000, false));
    operations.push_back(import("import_100000_skipped", 100'000, false, "351.50000"));
    operations.push_back(import("import_1000000_skipped", 1'000'000, false, "351.50000"));
    operations.push_back(copy());
}

}  // namespace memwright::benchmarks
