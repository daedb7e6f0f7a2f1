#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

#include "native/failures.h"
#include "native/file.h"
#include "native/replacement.h"

namespace memwright::native {
namespace {

namespace fs = std::filesystem;

// A new file in the folder of another, which it is to replace; removed unless it did. Folders give
// the files in them their rights here.
class Replacement {
  public:
    Replacement(const std::string& shown_name, const fs::path& target)
        : shown_name_(shown_name), target_(target) {
        do {
            path_ = target.parent_path() / unfinished_name();
            file_ = open_file(path_, "wbx");
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
        if (!write_all(file_, bytes)) give_up();
    }

    void finish(const fs::file_status& old) {
        std::error_code error;
        if (fs::exists(old)) fs::permissions(path_, old.permissions(), error);
        if (!bring_to_disk(file_)) give_up();
        if (std::fclose(std::exchange(file_, nullptr)) != 0) give_up();
        fs::rename(path_, target_, error);
        if (error) {
            errno = error.value();
            give_up();
        }
        path_.clear();
    }

  private:
    [[noreturn]] void give_up() {
        const int cause = errno;
        fail("save", shown_name_, words_for(cause), saving_remedy(cause));
    }

    std::string shown_name_;
    fs::path target_;
    fs::path path_;
    std::FILE* file_ = nullptr;
};

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

// A file that may be replaced, because its folder allows that, may still be protected itself.
void demand_writable(const std::string& shown_name, const fs::path& target) {
    const File file{open_file(target, "ab"), &std::fclose};
    if (file != nullptr) return;
    const int cause = errno;
    fail("save", shown_name, words_for(cause), saving_remedy(cause));
}

std::vector<std::uint8_t> rest_of(const std::string& shown_name, const fs::path& target,
                                  std::uint64_t first) {
    std::error_code error;
    const auto size = fs::file_size(target, error);
    if (error) fail("save", shown_name, error.message(), saving_remedy(error.value()));
    if (size <= first) return {};
    const File file{open_for_reading(target), &std::fclose};
    if (file == nullptr) fail("open", shown_name, last_cause(), kReadingRemedy);
    std::vector<std::uint8_t> rest(size - first);
    const bool found = std::fseek(file.get(), static_cast<long>(first), SEEK_SET) == 0;
    if (found) rest.resize(read_all(file.get(), rest));
    if (!found || std::ferror(file.get()) != 0) {
        fail("read", shown_name, last_cause(), kReadingRemedy);
    }
    return rest;
}

}  // namespace

void replace_target(const std::string& shown_name, const fs::path& target,
                    std::span<const std::uint8_t> bytes, NewContent content) {
    std::error_code error;
    const auto old = fs::status(target, error);
    std::vector<std::uint8_t> rest;
    if (fs::exists(old)) {
        if (!fs::is_regular_file(old)) {
            fail("save", shown_name, kind_of(old.type()), saving_remedy(0));
        }
        demand_writable(shown_name, target);
        if (content == NewContent::start) rest = rest_of(shown_name, target, bytes.size());
    } else if (old.type() != fs::file_type::not_found) {
        fail("save", shown_name, error.message(), saving_remedy(error.value()));
    }
    Replacement replacement(shown_name, target);
    replacement.write(bytes);
    replacement.write(rest);
    replacement.finish(old);
}

}  // namespace memwright::native
