#pragma once

// A memory image with its operations, for the tests of them.

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "fakes/seeded_random.h"
#include "image/mod_vr120.h"
#include "native/file_system.h"

namespace memwright {

class ImageStore {
  public:
    modVR120& operator*() { return store_; }
    modVR120* operator->() { return &store_; }

    // The four bytes of the record of memory `index`.
    void put_record(int index, const std::array<int, 4>& bytes) {
        for (int i = 0; i < 4; ++i) {
            const int byte = bytes[static_cast<std::size_t>(i)];
            store_.set_byte(4 * index + i, static_cast<std::uint8_t>(byte));
        }
    }
    std::array<int, 4> record(int index) const {
        std::array<int, 4> bytes{};
        for (int i = 0; i < 4; ++i) {
            bytes[static_cast<std::size_t>(i)] = store_.MemoryImage.get(4 * index + i);
        }
        return bytes;
    }

    // The six bytes of the label of memory `index`.
    std::string label(int index) const {
        std::string bytes;
        for (int i = 0; i < 6; ++i) {
            bytes += static_cast<char>(store_.MemoryImage.get(2560 + 6 * index + i));
        }
        return bytes;
    }
    void put_label(int index, const std::string& bytes) {
        for (int i = 0; i < 6; ++i) {
            store_.set_byte(2560 + 6 * index + i,
                                   static_cast<std::uint8_t>(bytes[static_cast<std::size_t>(i)]));
        }
    }

    void fill(SeededRandom& random) {
        for (int i = 0; i < 7392; ++i) store_.set_byte(i, random.byte());
    }

    // The first offset at which the image differs from another, within a range that may change
    // left out; -1 if it is the same elsewhere.
    int first_change(const MemoryImage& before, int may_change, int size) const {
        for (int i = 0; i < 7392; ++i) {
            if (i >= may_change && i < may_change + size) continue;
            if (store_.MemoryImage.get(i) != before.get(i)) return i;
        }
        return -1;
    }

  private:
    NativeFileSystem files_;
    modVR120 store_{files_};
};

}  // namespace memwright
