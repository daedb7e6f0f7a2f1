#pragma once

// The channel table in the grid: the user's working copy of the 640 channel memories. It is rebuilt
// from the memory image and encoded into it as a whole. A row is occupied if its frequency text
// starts with a number other than 0; any other row is an empty memory, whatever else stands in it.

#include <cstdint>

#include "controls/controls.h"
#include "image/image_codec.h"
#include "table/ms_flex_grid.h"

namespace memwright {

class ChannelTable {
  public:
    // SaveVR120Data works only while `mnuSaveOnly` is enabled.
    ChannelTable(ImageCodec& store, MSFlexGrid& grid, const MenuEntry& mnuSaveOnly)
        : store_(store), grid_(grid), mnuSaveOnly_(mnuSaveOnly) {}

    // Rebuilds the table with labels and headings, and without any channel.
    void initgrid();

    // Image to table, from scratch.
    void ParseVR120Data();

    // Table to image.
    void SaveVR120Data();

    // Colours the rows by their "Masked" texts: rows 1 to 240, and one row. The second leaves the
    // current cell in that row's last column.
    void MaskColor();
    void MaskColorBOLD(int tmpr);

    // Takes the image as it is for unchanged.
    void SetChangeCheck();

    // Takes the image for changed, whatever its sum.
    void count_as_changed() { ChangeCheckSum_ = kNoSum; }

    // Table to image, then: does the sum of its bytes differ from that of the unchanged image?
    bool IsDataChanged();

    std::int32_t ChangeCheckSum() const { return ChangeCheckSum_; }

  private:
    static constexpr std::int32_t kNoSum = -1;  // of no bytes at all

    std::int32_t byte_sum() const;

    ImageCodec& store_;
    MSFlexGrid& grid_;
    const MenuEntry& mnuSaveOnly_;
    std::int32_t ChangeCheckSum_ = 0;
};

}  // namespace memwright
