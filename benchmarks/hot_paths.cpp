// hot_paths           lists the operations
// hot_paths NAME      runs one of them once, after a run that nobody counts
//
// callgrind --toggle-collect=memwright_counted counts the instructions of that run alone.

#include <algorithm>
#include <functional>
#include <iostream>

#include "operation.h"

extern "C" [[gnu::noinline]] void memwright_counted(const std::function<void()>& run) { run(); }

int main(int argc, char** argv) {
    const auto operations = memwright::benchmarks::all_operations();
    if (argc == 1) {
        for (const auto& operation : operations) {
            if (operation.counted) std::cout << operation.name << '\n';
        }
        return 0;
    }
    const auto found =
        std::ranges::find(operations, argv[1], &memwright::benchmarks::Operation::name);
    if (found == operations.end()) {
        std::cerr << "hot_paths: there is no operation " << argv[1] << '\n';
        return 2;
    }
    const auto run = found->prepare();
    run();
    memwright_counted(run);
}
