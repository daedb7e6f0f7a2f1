#include "qt/serial/port_facts.h"

#ifndef _WIN32
#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "qt/serial/port_lock.h"
#endif

namespace memwright {

#ifdef _WIN32

PortFacts port_facts(const std::string& /*path*/) { return {}; }

#else

namespace {

namespace fs = std::filesystem;

using Cause = PortFacts::Cause;
using Holder = PortFacts::Holder;

std::string first_line(const fs::path& file) {
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    return line;
}

std::optional<long> number_in(std::string text) {
    text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
    long number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || stop != text.data() + text.size()) return std::nullopt;
    return number;
}

const char* kind_of(mode_t mode) {
    if (S_ISREG(mode)) return "a regular file";
    if (S_ISDIR(mode)) return "a folder";
    if (S_ISBLK(mode)) return "a disk or another block device";
    if (S_ISFIFO(mode)) return "a pipe";
    if (S_ISSOCK(mode)) return "a socket";
    return "another kind of device";
}

std::string user_name(uid_t id) {
    const passwd* const entry = getpwuid(id);
    return entry != nullptr ? entry->pw_name : std::to_string(id);
}

std::string group_name(gid_t id) {
    const group* const entry = getgrgid(id);
    return entry != nullptr ? entry->gr_name : std::to_string(id);
}

bool session_has(gid_t wanted) {
    if (getegid() == wanted) return true;
    const int count = getgroups(0, nullptr);
    if (count <= 0) return false;
    std::vector<gid_t> groups(static_cast<std::size_t>(count));
    if (getgroups(count, groups.data()) < 0) return false;
    return std::find(groups.begin(), groups.end(), wanted) != groups.end();
}

bool database_has(gid_t wanted) {
    const passwd* const user = getpwuid(geteuid());
    if (user == nullptr) return false;
    if (user->pw_gid == wanted) return true;
    const std::string name = user->pw_name;
    const group* const entry = getgrgid(wanted);
    if (entry == nullptr) return false;
    for (char** member = entry->gr_mem; *member != nullptr; ++member) {
        if (name == *member) return true;
    }
    return false;
}

void add_permissions(PortFacts& facts, const struct stat& node) {
    constexpr mode_t kGroupMayUse = S_IRGRP | S_IWGRP;
    facts.user = user_name(geteuid());
    facts.owner = user_name(node.st_uid);
    facts.group = group_name(node.st_gid);
    // Nobody should join root's own group for a serial port.
    facts.group_may_use = (node.st_mode & kGroupMayUse) == kGroupMayUse && node.st_gid != 0;
    facts.session_in_group = session_has(node.st_gid);
    facts.user_in_group = facts.session_in_group || database_has(node.st_gid);
}

void add_holder(PortFacts& facts, long process) {
    const auto same = [process](const Holder& known) { return known.process == process; };
    if (std::any_of(facts.holders.begin(), facts.holders.end(), same)) return;
    const std::string program = first_line("/proc/" + std::to_string(process) + "/comm");
    facts.holders.push_back({process, program, process == static_cast<long>(getpid())});
}

bool holds(const fs::path& process, const fs::path& device, const struct stat& node) {
    std::error_code unreadable;
    for (const auto& entry : fs::directory_iterator(process / "fd", unreadable)) {
        // The name first: asking for the state of any file may wait on a slow disk or network.
        if (fs::read_symlink(entry.path(), unreadable) != device) continue;
        struct stat open_file {};
        if (stat(entry.path().c_str(), &open_file) != 0) continue;
        if (open_file.st_dev == node.st_dev && open_file.st_ino == node.st_ino) return true;
    }
    return false;
}

void add_programs_that_hold(PortFacts& facts, const fs::path& device, const struct stat& node) {
    std::error_code unreadable;
    for (const auto& entry : fs::directory_iterator("/proc", unreadable)) {
        const auto process = number_in(entry.path().filename().string());
        if (process && holds(entry.path(), device, node)) add_holder(facts, *process);
    }
}

// Programs that share serial ports politely leave a file with their process number.
void add_lock(PortFacts& facts, const fs::path& device) {
    for (const std::string& lock : port_lock_files(device.string())) {
        if (!is_lock_file(lock)) continue;
        const auto process = number_in(first_line(lock));
        if (!process) continue;
        if (fs::exists("/proc/" + std::to_string(*process))) {
            add_holder(facts, *process);
        } else {
            facts.stale_lock = lock;
        }
        return;
    }
}

Cause cause_of(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ELOOP:
        case ENXIO:
        case ENODEV:
            return Cause::missing;
        case EACCES:
            return Cause::permission;
        case EBUSY:
            return Cause::busy;
        default:
            return Cause::other;
    }
}

// Opens the device once more, to hear from the system itself: 0, or an error number.
int error_of_opening(const std::string& device) {
    const int handle = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0) return errno;
    termios ignored{};
    const int error = tcgetattr(handle, &ignored) == 0 ? 0 : errno;
    ::close(handle);
    return error;
}

void look_at_device(PortFacts& facts, const std::string& device, const struct stat& node) {
    const int error = error_of_opening(device);
    if (error == ENOTTY) {
        facts.cause = Cause::not_serial;
        facts.kind = kind_of(node.st_mode);
        return;
    }
    if (error != 0) {
        facts.cause = cause_of(error);
        facts.system_text = std::strerror(error);
    }
    if (facts.cause == Cause::permission) add_permissions(facts, node);
    if (facts.cause != Cause::busy && error != 0) return;
    add_programs_that_hold(facts, device, node);
    add_lock(facts, device);
    if (!facts.holders.empty() || !facts.stale_lock.empty()) facts.cause = Cause::busy;
}

}  // namespace

PortFacts port_facts(const std::string& path) {
    const std::string named = path.find('/') == std::string::npos ? "/dev/" + path : path;
    PortFacts facts;
    struct stat node {};
    if (stat(named.c_str(), &node) != 0) {
        const int error = errno;
        facts.cause = error == EACCES ? Cause::folder_closed : cause_of(error);
        facts.system_text = std::strerror(error);
        return facts;
    }
    if (!S_ISCHR(node.st_mode)) {
        facts.cause = Cause::not_serial;
        facts.kind = kind_of(node.st_mode);
        return facts;
    }
    std::error_code none;
    const fs::path device = fs::canonical(named, none);
    look_at_device(facts, none ? named : device.string(), node);
    return facts;
}

#endif

}  // namespace memwright
