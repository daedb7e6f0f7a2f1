#include "image/mod_vr120.h"

namespace memwright {

void modVR120::OpenVR120(const std::string& FilePath) {
    Bytes bytes;
    try {
        files_.read(FilePath, layout::kImageSize, bytes);
    } catch (...) {
        auto partly_read = MemoryImage;
        partly_read.assign(bytes);
        set_image(partly_read);
        throw;
    }
    set_image(::memwright::MemoryImage(bytes));
}

bool modVR120::FileExists(const std::string& fpath) const noexcept { return files_.exists(fpath); }

}  // namespace memwright
