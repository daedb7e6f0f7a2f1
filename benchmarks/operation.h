#pragma once

// What is measured: operations of the core, each prepared once and then run as often as the one who
// measures likes. `benchmarks` times them with Google Benchmark; `hot_paths` runs one of them once,
// for callgrind to count its instructions.

#include <functional>
#include <string>
#include <vector>

namespace memwright::benchmarks {

struct Operation {
    std::string name;  // "table/from_image"
    int items;         // in a run: memories, lines, blocks, bytes or texts, as the name says
    bool counted;      // by hot_paths too; not what would take it minutes
    std::function<std::function<void()>()> prepare;
};

using Operations = std::vector<Operation>;

void add_codec(Operations& operations);
void add_table(Operations& operations);
void add_csv(Operations& operations);
void add_link(Operations& operations);

inline Operations all_operations() {
    Operations operations;
    add_codec(operations);
    add_table(operations);
    add_csv(operations);
    add_link(operations);
    return operations;
}

// The compiler has to believe that somebody looks at the value.
template <class Value>
void use(const Value& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

}  // namespace memwright::benchmarks
