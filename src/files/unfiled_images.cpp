#include "files/unfiled_images.h"

#include <algorithm>

#include "base/error.h"
#include "table/channel_table.h"

namespace memwright {
namespace {

// What an image becomes by being shown in the table and taken back.
MemoryImage through_the_table(const MemoryImage& image) {
    ImageCodec store(image);
    MSFlexGrid grid{""};
    const MenuEntry enabled{"", ""};
    ChannelTable table(store, grid, enabled);
    table.ParseVR120Data();
    table.SaveVR120Data();
    return store.MemoryImage;
}

}  // namespace

void UnfiledImages::set_aside(const MemoryImage& image, const std::string& path) {
    if (archive_.folder().empty()) return;
    try {
        if (is_in(path, image) || is_in_archive(image)) return;
        archive_.keep(image, clock_.timestamp(), ImageArchive::kSetAside);
    } catch (const FileError& error) {
        note_(std::string("The table that was in no file was not set aside. ") + error.what());
    }
}

bool UnfiledImages::is_in_archive(const MemoryImage& image) const {
    try {
        return std::ranges::any_of(archive_.names(), [&](const std::string& name) {
            return is_in(archive_.path(name), image);
        });
    } catch (const FileError&) {
        return false;  // one that cannot be listed turns no image away
    }
}

// A file that cannot be read holds nothing.
bool UnfiledImages::is_in(const std::string& path, const MemoryImage& image) const {
    if (path.empty()) return false;
    Bytes bytes(layout::kImageSize);
    try {
        bytes.resize(files_.open_input(path)->read(bytes));
    } catch (const FileError&) {
        return false;
    }
    const MemoryImage filed(bytes);  // of a short file as it is when it is opened
    return filed == image || through_the_table(filed) == image;
}

}  // namespace memwright
