// The channel table of 640 occupied memories.

#include <memory>

#include "occupied_memory.h"
#include "operation.h"

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
}

}  // namespace memwright::benchmarks
