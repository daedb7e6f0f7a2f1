#pragma once

// What differs between two images: memories, settings and limits by their texts, everything else by
// its bytes. Texts are UTF-8.

#include <string>
#include <vector>

#include "cli/workbench.h"

namespace memwright::cli {

struct Difference {
    struct Field {
        std::string name;
        std::string a;
        std::string b;
    };
    enum class Kind { memory, setting, limit, byte };

    Kind kind;
    int number;        // the memory's row, the limit, the byte's offset
    std::string name;  // "Bank 0 - 5", "scan-resume", "limit 3", "byte 6700"
    std::vector<Field> fields;

    bool has(const std::string& field) const;
    bool is_of_existence() const;  // one of the images has no frequency there
};

// Two files that have been opened.
std::vector<Difference> differences(Workbench& a, Workbench& b);

}  // namespace memwright::cli
