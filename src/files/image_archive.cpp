#include "files/image_archive.h"

#include <algorithm>
#include <string_view>

#include "base/error.h"
#include "base/number_text.h"

namespace memwright {
namespace {

constexpr const char* kExtension = ".120";

constexpr std::string_view kTimestamp = "dddd-dd-dd dd.dd.dd ";

// "2026-11-21 12.34.56 read.120" and the like. Whatever else lies in the folder is the user's.
bool is_ours(const std::string& name) {
    if (!name.ends_with(kExtension) || name.size() < kTimestamp.size()) return false;
    for (std::size_t i = 0; i < kTimestamp.size(); ++i) {
        if (kTimestamp[i] == 'd' ? !is_digit(name[i]) : name[i] != kTimestamp[i]) return false;
    }
    return true;
}

bool is_set_aside(const std::string& name) {
    return std::string_view(name).substr(kTimestamp.size()).starts_with(ImageArchive::kSetAside);
}

bool is_later(const std::string& name, const std::string& timestamp) {
    return name.compare(0, timestamp.size(), timestamp) > 0;
}

}  // namespace

void ImageArchive::keep(const MemoryImage& image, const std::string& timestamp,
                        const std::string& what) {
    if (folder_.empty()) return;
    files_.make_private_folder(data_folder_);
    files_.make_private_folder(folder_);
    const std::string stem = timestamp + " " + what;
    std::string name = stem + kExtension;
    auto old = names_or_none();
    const auto is_taken = [&] {
        return std::ranges::find(old, name) != old.end() || files_.exists(path(name));
    };
    for (int n = 2; is_taken(); ++n) {
        if (holds(name, image)) return;
        name = stem + " " + std::to_string(n) + kExtension;
    }
    // The new one is complete before the old one goes. What claims to be of a later time was kept
    // before the clock was set back, hence before all others.
    std::stable_partition(old.begin(), old.end(),
                          [&](const std::string& other) { return !is_later(other, timestamp); });
    files_.replace_private(path(name), image.bytes());
    std::size_t kept = 1;
    for (const std::string& other : old) {
        const bool counts = is_set_aside(other) == is_set_aside(name);
        if ((kept < kMost || !counts) && !holds(other, image)) {
            if (counts) ++kept;
            continue;
        }
        try {
            files_.remove(path(other));
        } catch (const FileError&) {
            // One too many harms nobody; the next time tries again.
        }
    }
}

std::string ImageArchive::try_to_keep(const MemoryImage& image, const std::string& timestamp,
                                      const std::string& what) {
    try {
        keep(image, timestamp, what);
    } catch (const FileError& error) {
        return std::string("No copy of the image was kept. ") + error.what();
    }
    return {};
}

// No image is turned away because the others cannot be listed.
std::vector<std::string> ImageArchive::names_or_none() const {
    try {
        return names();
    } catch (const FileError&) {
        return {};
    }
}

std::vector<std::string> ImageArchive::names() const {
    std::vector<std::string> names;
    if (folder_.empty()) return names;
    for (std::string& name : files_.files_in(folder_)) {
        if (is_ours(name)) names.push_back(std::move(name));
    }
    std::ranges::reverse(names);
    return names;
}

std::optional<MemoryImage> ImageArchive::latest_of_a_radio() const {
    for (const std::string& name : names_or_none()) {
        if (is_set_aside(name)) continue;
        try {
            Bytes bytes(layout::kImageSize);
            if (files_.open_input(path(name))->read(bytes) == bytes.size()) {
                return MemoryImage(bytes);
            }
        } catch (const FileError&) {
            // An earlier one does as well.
        }
    }
    return std::nullopt;
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
