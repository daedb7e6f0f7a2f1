#pragma once

// A memory image that a test puts together. It begins empty: no memory and no search limit has a
// frequency, every setting is its first choice, and no band is linked.

#include <cstdint>
#include <string>
#include <vector>

#include "image/mod_vr120.h"
#include "native/file_system.h"

namespace memwright::cli_tests {

using Bytes = std::vector<std::uint8_t>;

class Image {
  public:
    Image();
    explicit Image(const MemoryImage& image) { store_.set_image(image); }
    Image(const Image& other) : Image(other.store_.MemoryImage) { rest_ = other.rest_; }
    Image& operator=(const Image&) = delete;

    // The memory of a row, 1 to 640. The label is in the radio's character set.
    Image& channel(int row, const std::string& tag, const std::string& frequency,
                   const std::string& mode = "NFM", const std::string& pref = "Off");
    Image& limit(int number, const std::string& frequency, int mode = 0);
    Image& set(int offset, std::vector<std::uint8_t> values);

    // What a longer file holds behind the image.
    Image& rest(const std::string& text);

    std::uint8_t at(int offset) const { return store_.MemoryImage.get(offset); }
    Bytes bytes() const;
    std::string text() const;

  private:
    NativeFileSystem files_;
    modVR120 store_{files_};
    std::string rest_;
};

// Where a memory's record, its flags and its label lie.
constexpr int record_of(int row) { return layout::kRecords + layout::kRecordSize * (row - 1); }
constexpr int flags_of(int row) { return record_of(row) + layout::kFlags; }
constexpr int label_of(int row) { return layout::kLabels + layout::kLabelSize * (row - 1); }

}  // namespace memwright::cli_tests
