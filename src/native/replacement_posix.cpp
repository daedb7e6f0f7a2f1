#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "base/bytes.h"
#include "native/descriptor.h"
#include "native/failures.h"
#include "native/replacement.h"
#include "native/rights.h"

namespace memwright::native {
namespace {

namespace fs = std::filesystem;

// All is done by descriptors: others who may write to the folder can give the names in it to
// something else at any time.
class Replacement {
  public:
    Replacement(const std::string& shown_name, const fs::path& target)
        : shown_name_(shown_name),
          // Without a last name, it is the folder itself.
          name_(target.has_filename() || target.empty() ? target.filename() : fs::path(".")),
          folder_(open_folder(target.parent_path())) {
        if (!folder_.is_open()) give_up();
        open_old();
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        if (!unfinished_.empty()) unlinkat(folder_.number(), unfinished_.c_str(), 0);
    }

    // The bytes of the old file from there on.
    Bytes rest_of_old(std::uint64_t first) const;

    void begin();
    void write(std::span<const std::uint8_t> bytes) {
        if (!write_all(new_, bytes)) give_up();
    }
    void finish(NewContent content);

  private:
    void open_old();
    void demand_regular(const struct stat& facts) const;
    bool is_new(const std::string& name) const;
    void demand_own_name();
    void rename_new();

    [[noreturn]] void give_up() const {
        const int cause = errno;
        fail("save", shown_name_, words_for(cause), saving_remedy(cause));
    }

    // It is in place, but nobody can say for how long.
    [[noreturn]] void doubt(int cause) const {
        fail("save", shown_name_, words_for(cause),
             "The new content is there now, but the disk does not say that it keeps it. "
             "Save again, or to another place.");
    }

    std::string shown_name_;
    std::string name_;
    Descriptor folder_;
    Descriptor old_;  // open unless there is none
    bool old_is_readable_ = false;
    struct stat old_facts_ {};
    std::string unfinished_;  // the name of the new file until it has its own
    Descriptor new_;
};

void Replacement::demand_regular(const struct stat& facts) const {
    if (!S_ISREG(facts.st_mode))
        fail("save", shown_name_, kind_of(type_of(facts)), saving_remedy(0));
}

// A file that may be replaced, because its folder allows that, may still be protected itself: it
// has to let itself be written to. Devices are not even opened.
void Replacement::open_old() {
    if (fstatat(folder_.number(), name_.c_str(), &old_facts_, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno != ENOENT) give_up();
        return;
    }
    demand_regular(old_facts_);
    old_ = open_in(folder_, name_, O_RDWR | O_NOFOLLOW);
    old_is_readable_ = old_.is_open();
    if (!old_.is_open() && errno == EACCES) old_ = open_in(folder_, name_, O_WRONLY | O_NOFOLLOW);
    if (!old_.is_open() || fstat(old_.number(), &old_facts_) != 0) give_up();
    demand_regular(old_facts_);
}

Bytes Replacement::rest_of_old(std::uint64_t first) const {
    const auto size = static_cast<std::uint64_t>(old_facts_.st_size);
    if (!old_.is_open() || size <= first) return {};
    if (!old_is_readable_) fail("open", shown_name_, words_for(EACCES), kReadingRemedy);
    Bytes rest(size - first);
    const std::int64_t count = read_from(old_, first, rest);
    if (count < 0) fail("read", shown_name_, last_cause(), kReadingRemedy);
    rest.resize(static_cast<std::size_t>(count));
    return rest;
}

void Replacement::begin() {
    constexpr int kNew = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW;
    std::string name;
    do {
        name = unfinished_name();
        new_ = open_in(folder_, name, kNew, kForTheUserAlone);
    } while (!new_.is_open() && errno == EEXIST);
    if (!new_.is_open()) give_up();
    unfinished_ = name;
}

// Others may read it when it is complete, and not before. The rights are on the disk with the
// bytes.
void Replacement::finish(NewContent content) {
    if (content == NewContent::private_whole) {
        take_private_rights(new_);
    } else if (!old_.is_open()) {
        take_usual_rights(new_);
    } else if (!take_over_rights(new_, old_facts_)) {
        give_up();
    }
    if (!bring_to_disk(new_) || !has_arrived(new_)) give_up();
    demand_own_name();
    rename_new();
    unfinished_.clear();
    if (!bring_folder_to_disk(folder_)) doubt(errno);
}

// Does this name lead to the new file? 0 in errno if it leads to another.
bool Replacement::is_new(const std::string& name) const {
    struct stat own {
    }, there{};
    if (fstat(new_.number(), &own) != 0 ||
        fstatat(folder_.number(), name.c_str(), &there, AT_SYMLINK_NOFOLLOW) != 0) {
        return false;
    }
    errno = 0;
    return is_same_file(own, there);
}

// What others have put in the place of the new file must not become the saved one.
void Replacement::demand_own_name() {
    if (is_new(unfinished_)) return;
    if (errno != 0 && errno != ENOENT) give_up();
    unfinished_.clear();  // the name is theirs now
    fail("save", shown_name_, "another program has moved the new file or put one in its place",
         "Nothing was changed there. Save to a folder that only you may write to.");
}

void Replacement::rename_new() {
    const auto rename = [&] {
        return renameat(folder_.number(), unfinished_.c_str(), folder_.number(), name_.c_str());
    };
    if (rename() == 0) return;
    const int cause = errno;
    // A server's answer may be lost when the deed is done.
    if (is_new(name_)) doubt(cause);
    errno = cause;
    give_up();
}

}  // namespace

void replace_target(const std::string& shown_name, const fs::path& target,
                    std::span<const std::uint8_t> bytes, NewContent content) {
    Replacement replacement(shown_name, target);
    Bytes rest;
    if (content == NewContent::start) rest = replacement.rest_of_old(bytes.size());
    replacement.begin();
    replacement.write(bytes);
    replacement.write(rest);
    replacement.finish(content);
}

}  // namespace memwright::native
