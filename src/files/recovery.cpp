#include "files/recovery.h"

#include <algorithm>
#include <cstring>

#include "base/error.h"

namespace memwright {
namespace {

using Names = std::vector<std::string>;

constexpr const char* kExtension = ".recovery";
constexpr const char* kLockExtension = ".lock";
constexpr const char* kAside = "declined ";

// Asking the system for one file does not tell whether it is missing or cannot be looked at; a list
// of all does.
bool is_among(const Names& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
}

// Of a run that was killed before it had anything to keep, or after.
bool is_lock_alone(const std::string& name, const Names& names) {
    if (!name.ends_with(kLockExtension)) return false;
    const std::string locked = name.substr(0, name.size() - std::strlen(kLockExtension));
    return locked.ends_with(kExtension) && !is_among(names, locked);
}

std::string question(const Snapshot& snapshot) {
    const std::string what =
        snapshot.path.empty() ? "a table that has no file yet" : "the table of " + snapshot.path;
    return "Memwright ended before " + what + " was saved. It was last changed on " +
           snapshot.when + ".\r\n\r\nDo you want to restore it?";
}

}  // namespace

void Recovery::begin() {
    changes_.emplace();
    connections_ = {work_.edits.changed.connect([this] { content_changed(); }),
                    work_.edits.edited.connect([this](const Edit& edit) {
                        if (changes_) changes_->add(edit);
                    }),
                    work_.files.in_a_file.connect([this] { content_is_in_a_file(); })};
}

void Recovery::content_changed() {
    if (timer_ || services_.folder.empty()) return;
    timer_ = services_.loop.every(kDelay, [this] { write(); });
}

bool Recovery::is_in_a_file() const {
    if (!changes_) return false;
    ChangesSince changes = *changes_;
    changes.add(work_.edits.so_far());
    return changes.none();
}

// In the middle of an edit, which is noted as a whole when it ends: what it has changed so far does
// not count.
void Recovery::content_is_in_a_file() {
    changes_.emplace();
    changes_->add(work_.edits.so_far().inverse());
    timer_.reset();
    remove_own();
}

// What cannot be written is tried again until it can.
void Recovery::write() {
    try {
        if (is_in_a_file()) {
            remove_own();
        } else {
            write_snapshot();
        }
    } catch (const std::exception& error) {
        if (!failed_)
            note_(std::string("Changes are not kept for the case of a crash. ") + error.what());
        failed_ = true;
        return;
    }
    // The timer that runs this ends with it.
    const Connection once = std::move(timer_);
    if (failed_) note_("Changes are kept again for the case of a crash.");
    failed_ = false;
}

void Recovery::write_snapshot() {
    services_.files.make_private_folder(services_.folder);
    if (own_lock_ == nullptr) choose_name();
    services_.files.replace_private(path(own_name_),
                                    bytes_of({work_.files.current_path(),
                                              services_.clock.date_and_time(),
                                              work_.store.MemoryImage,
                                              cells_of(work_.grid),
                                              {work_.history.steps(), work_.history.done()}}));
}

// A name that no other run has, nor what one of them left.
void Recovery::choose_name() {
    constexpr int kMostRuns = 100;
    const std::string stem = services_.clock.timestamp() + " ";
    const Names there = names();
    for (int n = 1; n <= kMostRuns; ++n) {
        own_name_ = stem + std::to_string(n) + kExtension;
        if (is_among(there, own_name_)) continue;
        own_lock_ = services_.locks.lock(path(own_name_ + kLockExtension));
        if (own_lock_ != nullptr) return;
    }
    throw FileError("Cannot make a file in " + services_.folder +
                    ".\nCheck that you may write to it and that there is space left.");
}

void Recovery::remove_own() {
    if (own_lock_ == nullptr) return;
    try {
        services_.files.remove(path(own_name_));
    } catch (const Error& error) {
        note_(error.what());
    }
    own_lock_.reset();
}

void Recovery::end() {
    connections_.clear();
    timer_.reset();
    remove_own();
}

bool Recovery::offer() {
    if (services_.folder.empty()) return false;
    forget_old_ones();
    const Names found = names();
    // The latest first.
    for (auto name = found.rbegin(); name != found.rend(); ++name) {
        if (!name->ends_with(kExtension) || name->starts_with(kAside)) continue;
        try {
            if (offer(*name)) return true;
        } catch (const Error& error) {
            // One that cannot be read stands in no other's way.
            note_(error.what());
        }
    }
    return false;
}

bool Recovery::offer(const std::string& name) {
    if (own_lock_ != nullptr && name == own_name_) return false;
    auto lock = services_.locks.lock(path(name + kLockExtension));
    if (lock == nullptr || !is_among(names(), name)) return false;  // of another run
    std::optional<Bytes> bytes;
    const auto snapshot = read(name, bytes);
    if (snapshot && services_.messages.show({.text = question(*snapshot),
                                             .title = "Memwright",
                                             .buttons = Buttons::yes_no,
                                             .icon = Icon::question}) == Answer::yes) {
        restore(*snapshot);
        // It stays on the disk, as this run's own: there is no moment without one.
        remove_own();
        own_name_ = name;
        own_lock_ = std::move(lock);
        return true;
    }
    set_aside(name, bytes);
    return false;
}

// None if it is no snapshot; then its `bytes`, if they are not too many.
std::optional<Snapshot> Recovery::read(const std::string& name, std::optional<Bytes>& bytes) {
    constexpr std::uint64_t kLargest = 64ULL * 1024 * 1024;
    try {
        const auto file = services_.files.open_input(path(name));
        if (file->size() > kLargest) throw InputError("It is too large.");
        bytes.emplace(file->size());
        bytes->resize(file->read(*bytes));
        return snapshot_from(*bytes);
    } catch (const InputError& error) {
        note_("What " + path(name) + " holds cannot be restored. " + error.what());
        return std::nullopt;
    }
}

void Recovery::restore(const Snapshot& snapshot) {
    work_.store.set_image(snapshot.image);
    work_.table.ParseVR120Data();
    fill_cells(work_.grid, snapshot.cells);
    work_.files.resume(snapshot.path);
    work_.table.count_as_changed();
    work_.window.EnableGui();
    changes_.reset();
    work_.history.resume(snapshot.history.steps, snapshot.history.done);
}

// Written anew, so that its days aside are counted from now.
void Recovery::set_aside(const std::string& name, const std::optional<Bytes>& bytes) {
    const Names there = names();
    std::string aside = kAside + name;
    for (int n = 2; is_among(there, aside); ++n) {
        aside = kAside + std::to_string(n) + " " + name;
    }
    bool copied = false;
    if (bytes) {
        try {
            services_.files.replace_private(path(aside), *bytes);
            copied = true;
        } catch (const FileError&) {
            // Its days have begun earlier then.
        }
    }
    if (copied) {
        services_.files.remove(path(name));
    } else {
        services_.files.rename(path(name), path(aside));
    }
}

void Recovery::forget_old_ones() {
    const Names there = names();
    for (const std::string& name : there) {
        try {
            if (is_lock_alone(name, there)) {
                services_.locks.lock(path(name));  // unlocking removes it
            } else if (name.starts_with(kAside) &&
                       services_.files.age_in_days(path(name)) > kDaysAside) {
                services_.files.remove(path(name));
            }
        } catch (const FileError& error) {
            note_(error.what());
        }
    }
}

}  // namespace memwright
