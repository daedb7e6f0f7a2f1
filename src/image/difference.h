#pragma once

// What differs between two images: memories, settings and limits by their texts, everything else by
// its bytes. Texts are in the radio's character set.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace memwright {

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

// Between the bytes of two image files: at least 7392 each, and what follows the image.
std::vector<Difference> differences(std::span<const std::uint8_t> a,
                                    std::span<const std::uint8_t> b);

}  // namespace memwright
