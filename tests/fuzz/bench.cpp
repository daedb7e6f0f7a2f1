#include "fuzz/bench.h"

namespace memwright::fuzz {

void settle(Bench& bench) {
    constexpr int kMostRounds = 3;
    for (int round = 0; round <= kMostRounds; ++round) {
        const MemoryImage before = bench.store.MemoryImage;
        bench.table.ParseVR120Data();
        bench.table.SaveVR120Data();
        if (bench.store.MemoryImage == before) return;
    }
    ADD_FAILURE() << "the table changes the image again and again";
}

}  // namespace memwright::fuzz
