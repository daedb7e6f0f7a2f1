#include "files/recovery.h"

#include "platform/error.h"

namespace memwright {
namespace {

constexpr const char* kExtension = ".recovery";
constexpr const char* kLockExtension = ".lock";
constexpr const char* kAside = "declined ";

std::string question(const Snapshot& snapshot) {
    const std::string what =
        snapshot.path.empty() ? "a table that has no file yet" : "the table of " + snapshot.path;
    return "Memwright ended before " + what + " was saved. It was last changed on " +
           snapshot.when + ".\r\n\r\nDo you want to restore it?";
}

}  // namespace

void Recovery::begin() {
    connections_.push_back(
        work_.grid.changed.connect([this](const GridChange&) { note_change(); }));
    connections_.push_back(work_.table.unchanged.connect([this] { table_unchanged(); }));
}

void Recovery::note_change() {
    if (timer_ || desktop_.folder.empty()) return;
    timer_ = desktop_.loop.every(kDelay, [this] { write(); });
}

void Recovery::table_unchanged() {
    timer_.reset();
    remove_own();
}

void Recovery::write() {
    // The timer that runs this ends with it.
    const Connection once = std::move(timer_);
    try {
        write_snapshot();
        failed_ = false;
    } catch (const Error& error) {
        if (!failed_)
            note_(std::string("Changes are not kept for the case of a crash. ") + error.what());
        failed_ = true;
    }
}

void Recovery::write_snapshot() {
    desktop_.files.make_folder(desktop_.folder);
    for (int n = 1; own_lock_ == nullptr; ++n) {
        own_name_ = desktop_.clock.timestamp() + " " + std::to_string(n) + kExtension;
        own_lock_ = desktop_.locks.lock(path(own_name_ + kLockExtension));
        constexpr int kMostRuns = 1000;
        if (own_lock_ == nullptr && n == kMostRuns) {
            throw FileError("Cannot lock " + path(own_name_) + ".");
        }
    }
    desktop_.files.replace(path(own_name_),
                           bytes_of({work_.files.current_path(), desktop_.clock.date_and_time(),
                                     work_.store.MemoryImage, cells_of(work_.grid)}));
}

void Recovery::remove_own() {
    if (own_lock_ == nullptr) return;
    try {
        desktop_.files.remove(path(own_name_));
    } catch (const Error& error) {
        note_(error.what());
    }
    own_lock_.reset();
}

void Recovery::end() {
    connections_.clear();
    table_unchanged();
}

bool Recovery::offer() {
    if (desktop_.folder.empty()) return false;
    forget_old_ones();
    auto names = desktop_.files.files_in(desktop_.folder);
    // The latest first.
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        if (name->ends_with(kExtension) && !name->starts_with(kAside) && offer(*name)) return true;
    }
    return false;
}

bool Recovery::offer(const std::string& name) {
    if (own_lock_ != nullptr && name == own_name_) return false;
    const auto lock = desktop_.locks.lock(path(name + kLockExtension));
    if (lock == nullptr || !desktop_.files.exists(path(name))) return false;  // of another run
    try {
        Bytes bytes;
        constexpr std::size_t kLargest = 64 * 1024 * 1024;
        const auto file = desktop_.files.open_input(path(name));
        bytes.resize(std::min<std::uint64_t>(file->size(), kLargest));
        bytes.resize(file->read(bytes));
        const Snapshot snapshot = snapshot_from(bytes);
        const Answer answer = desktop_.messages.show({.text = question(snapshot),
                                                      .title = "Memwright",
                                                      .buttons = Buttons::yes_no,
                                                      .icon = Icon::question});
        if (answer == Answer::yes) {
            restore(snapshot);
            desktop_.files.remove(path(name));
            return true;
        }
    } catch (const InputError&) {
        // Half a snapshot is none; it is kept like a declined one.
    }
    desktop_.files.rename(path(name), path(kAside + name));
    return false;
}

void Recovery::restore(const Snapshot& snapshot) {
    work_.store.MemoryImage = snapshot.image;
    work_.table.ParseVR120Data();
    fill_cells(work_.grid, snapshot.cells);
    work_.files.resume(snapshot.path);
    work_.table.count_as_changed();
    work_.window.EnableGui();
    // On the disk under this run's name before the old one goes.
    write();
}

void Recovery::forget_old_ones() {
    for (const std::string& name : desktop_.files.files_in(desktop_.folder)) {
        if (!name.starts_with(kAside)) continue;
        if (desktop_.files.age_in_days(path(name)) > kDaysAside) desktop_.files.remove(path(name));
    }
}

}  // namespace memwright
