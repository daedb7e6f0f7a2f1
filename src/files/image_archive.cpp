#include "files/image_archive.h"

#include <algorithm>

#include "platform/error.h"

namespace memwright {
namespace {

constexpr const char* kExtension = ".120";

}  // namespace

void ImageArchive::keep(const MemoryImage& image, const std::string& timestamp,
                        const std::string& what) {
    if (folder_.empty()) return;
    files_.make_folder(folder_);
    const std::string stem = timestamp + " " + what;
    std::string name = stem + kExtension;
    for (int n = 2; files_.exists(path(name)); ++n) {
        if (holds(name, image)) return;
        name = stem + " " + std::to_string(n) + kExtension;
    }
    // The new one is complete before the old one goes.
    const auto old = names();
    files_.replace(path(name), image.bytes());
    std::size_t kept = 1;
    for (const std::string& other : old) {
        if (kept == kMost || holds(other, image)) {
            files_.remove(path(other));
        } else {
            ++kept;
        }
    }
}

std::vector<std::string> ImageArchive::names() const {
    std::vector<std::string> names;
    if (folder_.empty()) return names;
    for (std::string& name : files_.files_in(folder_)) {
        if (name.ends_with(kExtension) && !name.starts_with('.')) names.push_back(std::move(name));
    }
    std::ranges::reverse(names);
    return names;
}

bool ImageArchive::holds(const std::string& name, const MemoryImage& image) const {
    Bytes bytes(layout::kImageSize + 1);
    try {
        bytes.resize(files_.open_input(path(name))->read(bytes));
    } catch (const FileError&) {
        return false;
    }
    return std::ranges::equal(bytes, image.bytes());
}

}  // namespace memwright
