#include "platform/native_file_system.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <system_error>
#include <utility>

#include "platform/error.h"
#include "platform/native_file.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;

[[noreturn]] void fail(const std::string& task, const std::string& path, const std::string& cause,
                       const std::string& remedy) {
    throw FileError("Cannot " + task + " " + path + ": " + cause + ".\n" + remedy);
}

std::string last_cause() { return std::generic_category().message(errno); }

// What to do about a file that cannot be written.
std::string saving_remedy(int cause) {
    const std::string kept = "Nothing was changed there. ";
#ifdef EDQUOT
    const bool over_quota = cause == EDQUOT;
#else
    const bool over_quota = false;
#endif
    if (cause == ENOSPC || cause == EFBIG || over_quota) {
        return kept + "Free some space, or save to another place.";
    }
    if (cause == EACCES || cause == EPERM || cause == EROFS) {
        return kept + "Save to a folder that you may write to.";
    }
    return kept + "Check that its folder exists, or save to another place.";
}

std::string kind_of(fs::file_type type) {
    switch (type) {
        case fs::file_type::directory:
            return "it is a folder";
        case fs::file_type::fifo:
            return "it is a named pipe";
        case fs::file_type::socket:
            return "it is a socket";
        case fs::file_type::block:
        case fs::file_type::character:
            return "it is a device";
        default:
            return "it is no ordinary file";
    }
}

// The file that a path leads to in the end; it need not exist. A link that cannot be followed must
// not be taken for the file: it would be replaced.
fs::path behind_links(const std::string& shown_name) {
    fs::path path = native::path_of(shown_name);
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

constexpr const char* kUnfinished = ".memwright-";
constexpr const char* kUnfinishedEnd = ".tmp";

// Removes the new files of saves that were killed. Those that are being written are younger.
void clear_away_unfinished(const fs::path& folder) {
    constexpr std::chrono::hours kSurelyGivenUp{1};
    const auto now = fs::file_time_type::clock::now();
    std::error_code error;
    for (fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error), end;
         !error && entry != end; entry.increment(error)) {
        const std::string name = native::name_of(entry->path().filename());
        if (!name.starts_with(kUnfinished) || !name.ends_with(kUnfinishedEnd)) continue;
        std::error_code own;
        const auto written = entry->last_write_time(own);
        if (!own && now - written > kSurelyGivenUp) fs::remove(entry->path(), own);
    }
}

// A new file in the folder of another, which it is to replace; removed unless it did.
class Replacement {
  public:
    Replacement(const std::string& shown_name, const fs::path& target)
        : shown_name_(shown_name), target_(target) {
        std::random_device random;
        do {
            path_ =
                target.parent_path() / (kUnfinished + std::to_string(random()) + kUnfinishedEnd);
            file_ = native::open_file(path_, "wbx");
        } while (file_ == nullptr && errno == EEXIST);
        if (file_ == nullptr) give_up();
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        if (file_ != nullptr) std::fclose(file_);
        std::error_code ignored;
        if (!path_.empty()) fs::remove(path_, ignored);
    }

    void write(std::span<const std::uint8_t> bytes) {
        if (!native::write_all(file_, bytes)) give_up();
    }

    void finish(const fs::file_status& old) {
        if (fs::exists(old)) native::keep_owner_and_permissions(target_, path_);
        if (!native::bring_to_disk(file_)) give_up();
        if (!native::close_file(std::exchange(file_, nullptr))) give_up();
        std::error_code error;
        fs::rename(path_, target_, error);
        if (error) {
            // A server's answer may be lost when the deed is done.
            std::error_code ignored;
            if (fs::symlink_status(path_, ignored).type() == fs::file_type::not_found) doubt(error);
            errno = error.value();
            give_up();
        }
        path_.clear();
        if (!native::bring_folder_to_disk(target_)) doubt({errno, std::generic_category()});
    }

  private:
    [[noreturn]] void give_up() {
        const int cause = errno;
        fail("save", shown_name_, last_cause(), saving_remedy(cause));
    }

    // It is in place, but nobody can say for how long.
    [[noreturn]] void doubt(const std::error_code& error) {
        fail("save", shown_name_, error.message(),
             "The new content is there now, but the disk does not say that it keeps it. "
             "Save again, or to another place.");
    }

    std::string shown_name_;
    fs::path target_;
    fs::path path_;
    std::FILE* file_ = nullptr;
};

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

const char* const kReadingRemedy = "Check that the file can be read, or open another one.";

File opened(const std::string& path) {
    File file{native::open_file(native::path_of(path), "rb"), &std::fclose};
    if (file == nullptr) fail("open", path, last_cause(), kReadingRemedy);
    return file;
}

void check_reading(std::FILE& file, const std::string& path) {
    if (std::ferror(&file) != 0) fail("read", path, last_cause(), kReadingRemedy);
}

// Bytes from `first` on, at most `limit`; what was read before a failure is in `bytes`.
void read_from(const std::string& path, std::size_t first, std::size_t limit, Bytes& bytes) {
    const File file = opened(path);
    if (std::fseek(file.get(), static_cast<long>(first), SEEK_SET) != 0) {
        fail("read", path, last_cause(), kReadingRemedy);
    }
    bytes.resize(limit);
    bytes.resize(native::read_all(file.get(), bytes));
    check_reading(*file, path);
}

class NativeInputFile final : public InputFile {
  public:
    explicit NativeInputFile(const std::string& path) : path_(path), file_(opened(path)) {
        std::error_code error;
        size_ = fs::file_size(native::path_of(path), error);
        if (error) fail("read", path, error.message(), kReadingRemedy);
    }

    std::uint64_t size() const override { return size_; }
    std::size_t read(std::span<std::uint8_t> bytes) override {
        const std::size_t count = native::read_all(file_.get(), bytes);
        check_reading(*file_, path_);
        return count;
    }

  private:
    std::string path_;
    File file_;
    std::uint64_t size_ = 0;
};

void demand_regular(const std::string& path, const fs::file_status& status,
                    const std::string& remedy) {
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        fail("open", path, kind_of(status.type()), remedy);
    }
}

// Appending creates the file that a dangling link leads to as well, and harms none that has come
// into being meanwhile.
void create_empty(const std::string& path) {
    const File file{native::open_file(native::path_of(path), "ab"), &std::fclose};
    if (file == nullptr) {
        fail("create", path, last_cause(), "Check that its folder exists and may be written to.");
    }
}

// A file that may be replaced, because its folder allows that, may still be protected itself.
void demand_writable(const std::string& path, const fs::path& target) {
    const File file{native::open_file(target, "ab"), &std::fclose};
    if (file == nullptr) {
        const int cause = errno;
        fail("save", path, last_cause(), saving_remedy(cause));
    }
}

}  // namespace

void NativeFileSystem::read(const std::string& path, std::size_t limit, Bytes& bytes) {
    bytes.clear();
    std::error_code error;
    const auto status = fs::status(native::path_of(path), error);
    if (status.type() == fs::file_type::not_found) create_empty(path);
    demand_regular(path, status, "Choose an image file.");
    read_from(path, 0, limit, bytes);
}

std::unique_ptr<InputFile> NativeFileSystem::open_input(const std::string& path) {
    std::error_code error;
    demand_regular(path, fs::status(native::path_of(path), error), "Choose an ordinary file.");
    return std::make_unique<NativeInputFile>(path);
}

void NativeFileSystem::overwrite(const std::string& path, std::span<const std::uint8_t> bytes) {
    write(path, bytes, true);
}

void NativeFileSystem::replace(const std::string& path, std::span<const std::uint8_t> bytes) {
    write(path, bytes, false);
}

void NativeFileSystem::write(const std::string& path, std::span<const std::uint8_t> bytes,
                             bool keep_rest) {
    const fs::path target = behind_links(path);
    std::error_code error;
    const auto old = fs::status(target, error);
    Bytes rest;
    if (fs::exists(old)) {
        if (!fs::is_regular_file(old)) fail("save", path, kind_of(old.type()), saving_remedy(0));
        demand_writable(path, target);
        const auto old_size = fs::file_size(target, error);
        if (error) fail("save", path, error.message(), saving_remedy(error.value()));
        if (keep_rest && old_size > bytes.size()) {
            read_from(path, bytes.size(), old_size - bytes.size(), rest);
        }
    } else if (old.type() != fs::file_type::not_found) {
        fail("save", path, error.message(), saving_remedy(error.value()));
    }
    Replacement replacement(path, target);
    replacement.write(bytes);
    replacement.write(rest);
    replacement.finish(old);
    clear_away_unfinished(target.parent_path());
}

bool NativeFileSystem::exists(const std::string& path) noexcept {
    try {
        std::error_code error;
        return !path.empty() && fs::exists(native::path_of(path), error) && !error;
    } catch (const std::exception&) {
        return false;
    }
}

std::vector<std::string> NativeFileSystem::files_in(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    std::error_code ignored;
    fs::directory_iterator entry;
    do {
        entry = fs::directory_iterator(native::path_of(folder), error);
    } while (error == std::errc::interrupted);
    for (; entry != fs::directory_iterator(); entry.increment(error)) {
        if (entry->is_regular_file(ignored))
            names.push_back(native::name_of(entry->path().filename()));
    }
    if (error && error != std::errc::no_such_file_or_directory &&
        error != std::errc::not_a_directory) {
        fail("list the files in", folder, error.message(), "Check that the folder can be read.");
    }
    std::ranges::sort(names);
    return names;
}

void NativeFileSystem::make_folder(const std::string& path) {
    const fs::path folder = native::path_of(path);
    std::error_code error;
    if (fs::is_directory(folder, error)) return;
    fs::create_directories(folder, error);
    if (error) {
        fail("make the folder", path, error.message(),
             "Check that the folder above it may be written to.");
    }
    fs::permissions(folder, fs::perms::owner_all, error);
}

void NativeFileSystem::rename(const std::string& from, const std::string& to) {
    std::error_code error;
    fs::rename(native::path_of(from), native::path_of(to), error);
    if (error) fail("rename", from, error.message(), "It keeps its name.");
}

void NativeFileSystem::remove(const std::string& path) {
    std::error_code error;
    fs::remove(native::path_of(path), error);
    if (error) fail("remove", path, error.message(), "It stays where it is.");
}

int NativeFileSystem::age_in_days(const std::string& path) {
    std::error_code error;
    const auto written = fs::last_write_time(native::path_of(path), error);
    if (error) return 0;
    const auto age = fs::file_time_type::clock::now() - written;
    return static_cast<int>(std::chrono::duration_cast<std::chrono::hours>(age).count() / 24);
}

std::string NativeFileSystem::current_folder() {
    std::error_code error;
    const fs::path folder = fs::current_path(error);
    return error ? std::string{} : native::name_of(folder);
}

void NativeFileSystem::set_current_folder(const std::string& path) {
    std::error_code error;
    fs::current_path(native::path_of(path), error);
    if (error) {
        fail("change to the folder", path, error.message(), "Choose a folder that exists.");
    }
}

bool NativeFileSystem::lead_to_one_file(const std::string& a, const std::string& b) {
    std::error_code error;
    return fs::is_regular_file(native::path_of(a), error) &&
           fs::equivalent(native::path_of(a), native::path_of(b), error);
}

}  // namespace memwright
