// The channel table of 640 occupied memories, and finding in it.

#include <memory>

#include "occupied_memory.h"
#include "operation.h"
#include "table/finding.h"

namespace memwright::benchmarks {
namespace {

template <class Run>
Operation on_table(const char* name, Run run) {
    return {std::string("table/") + name, layout::kMemories, true,
            [run] { return [run, table = std::make_shared<OccupiedTable>()] { run(*table); }; }};
}

}  // namespace

void add_table(Operations& operations) {
    operations.push_back(
        on_table("from_image", [](OccupiedTable& t) { t.table.ParseVR120Data(); }));
    operations.push_back(on_table("to_image", [](OccupiedTable& t) { t.table.SaveVR120Data(); }));
    operations.push_back(
        on_table("IsDataChanged", [](OccupiedTable& t) { use(t.table.IsDataChanged()); }));
    const auto find = [&](const char* name, const char* query) {
        operations.push_back(
            on_table(name, [query](OccupiedTable& t) { use(finding::finds_of(t.grid, query)); }));
    };
    find("find_text", "9");
    find("find_range", "145-146");
    find("find_nearest", "~145.5");
}

}  // namespace memwright::benchmarks
