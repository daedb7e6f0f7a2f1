#pragma once

// A memory image of random bytes for the tests of the dialogs that change single settings in it.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "fakes/seeded_random.h"
#include "image/mod_vr120.h"
#include "native/file_system.h"

namespace memwright {

class RadioImage {
  public:
    modVR120& store() { return store_; }
    const MemoryImage& image() const { return store_.MemoryImage; }

    int byte(int offset) const { return store_.MemoryImage.get(offset); }
    void put(int offset, int value) { store_.set_byte(offset, static_cast<std::uint8_t>(value)); }
    void put(int offset, std::initializer_list<int> values) {
        for (const int value : values) put(offset++, value);
    }
    void put_bit(int offset, int bit, int value) {
        put(offset, (byte(offset) & ~(1 << bit)) | value << bit);
    }
    void randomise(SeededRandom& random, int from = 0) {
        for (int offset = from; offset < layout::kImageSize; ++offset) put(offset, random.byte());
    }

    // The bytes that differ from another image, as "offset: old > new".
    std::vector<std::string> changes_from(const MemoryImage& before) const {
        std::vector<std::string> changes;
        for (int offset = 0; offset < layout::kImageSize; ++offset) {
            if (byte(offset) == before.get(offset)) continue;
            changes.push_back(std::to_string(offset) + ": " + std::to_string(before.get(offset)) +
                              " > " + std::to_string(byte(offset)));
        }
        return changes;
    }

  private:
    NativeFileSystem files_;
    modVR120 store_{files_};
};

}  // namespace memwright
