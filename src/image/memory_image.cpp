#include "image/memory_image.h"

#include <string>

#include "base/error.h"

namespace memwright {

std::size_t MemoryImage::checked(int loffset) {
    if (loffset < 0 || loffset >= layout::kImageSize) {
        throw IndexError("The memory image has no byte " + std::to_string(loffset) +
                         ": its offsets are 0 to " + std::to_string(layout::kImageSize - 1) + ".");
    }
    return static_cast<std::size_t>(loffset);
}

}  // namespace memwright
