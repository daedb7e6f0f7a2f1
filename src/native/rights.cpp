#include "native/rights.h"

#include <unistd.h>

#include <charconv>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace memwright::native {
namespace {

// What the old file gives, less what it would give to others than before.
mode_t rights_after(const struct stat& old, const struct stat& now) {
    constexpr mode_t kRights = S_IRWXU | S_IRWXG | S_IRWXO;
    constexpr unsigned kGroupsPlace = 3;
    if (now.st_gid == old.st_gid) {
        return old.st_mode & (now.st_uid == old.st_uid ? mode_t{07777} : kRights);
    }
    // Members of the old group are among the others now, and some of those in the new group: each
    // of them gets what they had in common.
    const mode_t all = (old.st_mode >> kGroupsPlace) & old.st_mode & S_IRWXO;
    return (old.st_mode & S_IRWXU) | (all << kGroupsPlace) | all;
}

// Linux tells it. Elsewhere it can be asked for only by setting another one, which counts for the
// whole process for a moment.
std::optional<mode_t> told_umask() {
    constexpr std::string_view kLabel = "Umask:\t";
    constexpr int kOctal = 8;
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (!line.starts_with(kLabel)) continue;
        mode_t mask = 0;
        const char* const end = line.data() + line.size();
        const auto [stop, error] = std::from_chars(line.data() + kLabel.size(), end, mask, kOctal);
        if (error == std::errc{} && stop == end) return mask;
    }
    return std::nullopt;
}

mode_t current_umask() {
    if (const auto told = told_umask()) return *told;
    // What another thread makes in this moment becomes the user's alone, not anybody's.
    constexpr mode_t kForTheUserAloneMask = 0077;
    const mode_t mask = umask(kForTheUserAloneMask);
    umask(mask);
    return mask;
}

}  // namespace

bool take_over_rights(const Descriptor& file, const struct stat& old) {
    struct stat now {};
    if (fstat(file.number(), &now) != 0) return false;
    if (now.st_uid != old.st_uid || now.st_gid != old.st_gid) {
        // The owner before the rights: changing it drops some. A member of the file's group who
        // does not own it can still hand it to the group.
        constexpr uid_t kUnchanged = static_cast<uid_t>(-1);
        if (fchown(file.number(), old.st_uid, old.st_gid) != 0) {
            std::ignore = fchown(file.number(), kUnchanged, old.st_gid);
        }
        if (fstat(file.number(), &now) != 0) return false;
    }
    // Where that fails, because the file system has no rights, it stays the user's alone.
    std::ignore = fchmod(file.number(), rights_after(old, now));
    return true;
}

void take_usual_rights(const Descriptor& file) {
    constexpr mode_t kEverybody = 0666;
    std::ignore = fchmod(file.number(), kEverybody & ~current_umask());
}

void take_private_rights(const Descriptor& file) {
    std::ignore = fchmod(file.number(), kForTheUserAlone);
}

}  // namespace memwright::native
