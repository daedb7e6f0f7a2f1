#include "app/recent_files.h"

#include <algorithm>
#include <iterator>

namespace memwright {
namespace {

constexpr const char* kRecentSection = "Recent files";
constexpr const char* kClear = "&Clear List";

// The end of a path tells more than its beginning.
std::string shortened(const std::string& path) {
    constexpr std::size_t kLongest = 60;
    if (path.size() <= kLongest) return path;
    std::size_t from = path.find('/', path.size() - kLongest);
    if (from == std::string::npos) from = path.find_last_of('/');
    return from == std::string::npos ? path : "..." + path.substr(from);
}

// A caption in which nothing of the path is taken for a mnemonic.
std::string caption_of(std::size_t number, const std::string& path) {
    constexpr std::size_t kDigits = 9;
    std::string caption = number < kDigits ? "&" + std::to_string(number + 1) + "  " : "1&0  ";
    for (const char c : shortened(path)) caption += c == '&' ? "&&" : std::string(1, c);
    return caption;
}

std::string key_of(std::size_t number) { return std::to_string(number + 1); }

}  // namespace

RecentFiles::RecentFiles(Form1& form, ImageFiles& image_files, FileSystem& files,
                         SettingsStore& settings, Events& events)
    : menu_(form.added.recent),
      image_files_(image_files),
      files_(files),
      settings_(settings),
      events_(events) {
    for (std::size_t n = 0; n < kMost; ++n) {
        const auto path = settings_.find(settings::kOwnApplication, kRecentSection, key_of(n));
        if (path && !path->empty()) paths_.push_back(*path);
    }
    connections_ = {form.caption.caption.changed.connect([this] { note_current(); }),
                    form.mnuFile.clicked.connect([this] { show(); }),
                    menu_.picked.connect([this](std::size_t number) { pick(number); })};
    show();
}

// Files with kept copies have a place of their own in Open's dialog.
bool RecentFiles::is_kept_copy(const std::string& path) const {
    return std::ranges::any_of(image_files_.places, [&](const std::string& place) {
        return path.starts_with(place + "/");
    });
}

void RecentFiles::note_current() {
    const std::string path = image_files_.current_path();
    // What is named from the current folder on is elsewhere next time.
    if (!path.starts_with('/') || is_kept_copy(path) || !files_.exists(path)) return;
    std::erase(paths_, path);
    paths_.insert(paths_.begin(), path);
    if (paths_.size() > kMost) paths_.pop_back();
    store();
    show();
}

void RecentFiles::show() {
    shown_.clear();
    std::ranges::copy_if(paths_, std::back_inserter(shown_),
                         [this](const std::string& path) { return files_.exists(path); });
    std::vector<std::string> items;
    for (const std::string& path : shown_) items.push_back(caption_of(items.size(), path));
    if (!items.empty()) items.emplace_back(kClear);
    menu_.enabled = !items.empty();
    menu_.items = std::move(items);
}

void RecentFiles::pick(std::size_t number) {
    if (number < shown_.size()) {
        const std::string path = shown_[number];
        events_.run("Open", [&] { image_files_.open_named(path); });
        return;
    }
    paths_.clear();
    store();
    show();
}

void RecentFiles::store() {
    for (std::size_t n = 0; n < kMost; ++n) {
        if (n < paths_.size()) {
            settings_.save(settings::kOwnApplication, kRecentSection, key_of(n), paths_[n]);
        } else {
            settings_.remove(settings::kOwnApplication, kRecentSection, key_of(n));
        }
    }
}

}  // namespace memwright
