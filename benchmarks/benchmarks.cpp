#include <benchmark/benchmark.h>

#include "operation.h"

int main(int argc, char** argv) {
    using memwright::benchmarks::Operation;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    for (const Operation& operation : memwright::benchmarks::all_operations()) {
        benchmark::RegisterBenchmark(operation.name.c_str(), [operation](benchmark::State& state) {
            const auto run = operation.prepare();
            for (auto _ : state) run();
            state.SetItemsProcessed(state.iterations() * operation.items);
        });
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
