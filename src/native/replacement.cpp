#include "native/replacement.h"

#include <chrono>
#include <random>
#include <system_error>

#include "native/failures.h"
#include "native/file.h"

namespace memwright::native {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;
constexpr const char* kUnfinished = ".memwright-";
constexpr const char* kUnfinishedEnd = ".tmp";

// The file that a path leads to in the end; it need not exist. A link that cannot be followed must
// not be taken for the file: it would be replaced.
fs::path behind_links(const std::string& shown_name) {
    fs::path path = path_of(shown_name);
    std::error_code error;
    for (int i = 0; i < kMostLinks; ++i) {
        const auto status = fs::symlink_status(path, error);
        if (fs::is_symlink(status)) {
            path = path.parent_path() / fs::read_symlink(path, error);
        } else if (fs::exists(status) || status.type() == fs::file_type::not_found) {
            return path;
        }
        if (error) fail("save", shown_name, error.message(), saving_remedy(error.value()));
    }
    return path;
}

// Removes the new files of saves that were killed. Those that are being written are younger.
void clear_away_unfinished(const fs::path& folder) {
    constexpr std::chrono::hours kSurelyGivenUp{1};
    const auto now = fs::file_time_type::clock::now();
    std::error_code error;
    for (fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error), end;
         !error && entry != end; entry.increment(error)) {
        const std::string name = name_of(entry->path().filename());
        if (!name.starts_with(kUnfinished) || !name.ends_with(kUnfinishedEnd)) continue;
        std::error_code own;
        const auto written = entry->last_write_time(own);
        if (!own && now - written > kSurelyGivenUp) fs::remove(entry->path(), own);
    }
}

}  // namespace

std::string unfinished_name() {
    return kUnfinished + std::to_string(std::random_device()()) + kUnfinishedEnd;
}

void replace_file(const std::string& path, std::span<const std::uint8_t> bytes,
                  NewContent content) {
    const fs::path target = behind_links(path);
    replace_target(path, target, bytes, content);
    clear_away_unfinished(target.parent_path());
}

}  // namespace memwright::native
