#include "faults/support/system_calls.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/uio.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace memwright::faults {
namespace {

namespace fs = std::filesystem;

constexpr int kNone = -1;

// Which argument is what.
struct Known {
    std::uint64_t number;
    const char* name;
    Kind kind;
    int folder;  // that a relative path starts from, or the file itself if there is no path
    int path = kNone;
    int flags = kNone;  // of open
    int to_folder = kNone;
    int to = kNone;
};

const Known kKnown[] = {
    {SYS_openat, "openat", Kind::open, 0, 1, 2},
    {SYS_read, "read", Kind::read, 0},
    {SYS_pread64, "pread64", Kind::read, 0},
    {SYS_readv, "readv", Kind::read, 0},
    {SYS_write, "write", Kind::write, 0},
    {SYS_pwrite64, "pwrite64", Kind::write, 0},
    {SYS_writev, "writev", Kind::write, 0},
    {SYS_fsync, "fsync", Kind::sync, 0},
    {SYS_fdatasync, "fdatasync", Kind::sync, 0},
    {SYS_syncfs, "syncfs", Kind::sync, 0},
    {SYS_close, "close", Kind::close, 0},
    {SYS_renameat2, "renameat2", Kind::rename, 0, 1, kNone, 2, 3},
    {SYS_linkat, "linkat", Kind::rename, 0, 1, kNone, 2, 3},
    {SYS_unlinkat, "unlinkat", Kind::remove, 0, 1},
    {SYS_ftruncate, "ftruncate", Kind::attributes, 0},
    {SYS_truncate, "truncate", Kind::attributes, kNone, 0},
    {SYS_fallocate, "fallocate", Kind::attributes, 0},
    {SYS_fchmod, "fchmod", Kind::attributes, 0},
    {SYS_fchmodat, "fchmodat", Kind::attributes, 0, 1},
    {SYS_fchown, "fchown", Kind::attributes, 0},
    {SYS_fchownat, "fchownat", Kind::attributes, 0, 1},
    {SYS_utimensat, "utimensat", Kind::attributes, 0, 1},
    {SYS_mkdirat, "mkdirat", Kind::folder, 0, 1},
    {SYS_getdents64, "getdents64", Kind::list, 0},
    {SYS_fstat, "fstat", Kind::look, 0},
#ifdef SYS_newfstatat
    {SYS_newfstatat, "newfstatat", Kind::look, 0, 1},
#endif
    {SYS_statx, "statx", Kind::look, 0, 1},
    {SYS_faccessat, "faccessat", Kind::look, 0, 1},
    {SYS_readlinkat, "readlinkat", Kind::look, 0, 1},
    {SYS_lseek, "lseek", Kind::look, 0},
    {SYS_flock, "flock", Kind::lock, 0},
#ifdef SYS_open  // younger systems have the ones above alone
    {SYS_open, "open", Kind::open, kNone, 0, 1},
    {SYS_rename, "rename", Kind::rename, kNone, 0, kNone, kNone, 1},
    {SYS_renameat, "renameat", Kind::rename, 0, 1, kNone, 2, 3},
    {SYS_link, "link", Kind::rename, kNone, 0, kNone, kNone, 1},
    {SYS_unlink, "unlink", Kind::remove, kNone, 0},
    {SYS_rmdir, "rmdir", Kind::remove, kNone, 0},
    {SYS_chmod, "chmod", Kind::attributes, kNone, 0},
    {SYS_chown, "chown", Kind::attributes, kNone, 0},
    {SYS_lchown, "lchown", Kind::attributes, kNone, 0},
    {SYS_mkdir, "mkdir", Kind::folder, kNone, 0},
    {SYS_stat, "stat", Kind::look, kNone, 0},
    {SYS_lstat, "lstat", Kind::look, kNone, 0},
    {SYS_access, "access", Kind::look, kNone, 0},
    {SYS_readlink, "readlink", Kind::look, kNone, 0},
#endif
};

struct NamedError {
    int error;
    const char* name;
    std::vector<Kind> kinds;
};

const NamedError kErrors[] = {
    {ENOSPC, "ENOSPC", {Kind::create, Kind::write, Kind::sync, Kind::rename, Kind::folder}},
    {EDQUOT, "EDQUOT", {Kind::create, Kind::write, Kind::sync, Kind::rename, Kind::folder}},
    {EIO,
     "EIO",
     {Kind::open, Kind::create, Kind::read, Kind::write, Kind::sync, Kind::close, Kind::rename,
      Kind::remove, Kind::attributes, Kind::folder, Kind::list, Kind::look}},
    {EACCES,
     "EACCES",
     {Kind::open, Kind::create, Kind::rename, Kind::remove, Kind::attributes, Kind::folder,
      Kind::look}},
    {EINTR,
     "EINTR",
     {Kind::open, Kind::create, Kind::read, Kind::write, Kind::sync, Kind::close, Kind::lock}},
    {ENOLCK, "ENOLCK", {Kind::lock}},
};

std::string text_in(pid_t process, std::uint64_t address) {
    std::string text(4096, '\0');
    // No further than to the end of the page: the next one may not be there.
    const std::size_t size = text.size() - address % text.size();
    iovec here{text.data(), size};
    iovec there{reinterpret_cast<void*>(address), size};  // NOLINT: of the other process
    const auto read = process_vm_readv(process, &here, 1, &there, 1, 0);
    std::size_t got = read < 0 ? 0 : static_cast<std::size_t>(read);
    if (got == size && text.find('\0') >= size) {
        iovec rest{text.data() + size, text.size() - size};
        iovec rest_there{reinterpret_cast<void*>(address + size), rest.iov_len};  // NOLINT
        const auto more = process_vm_readv(process, &rest, 1, &rest_there, 1, 0);
        if (more > 0) got += static_cast<std::size_t>(more);
    }
    text.resize(got);
    return text.substr(0, text.find('\0'));
}

fs::path file_of(pid_t process, int descriptor) {
    std::error_code none;
    const fs::path own = fs::path("/proc") / std::to_string(process);
    return fs::read_symlink(
        descriptor == AT_FDCWD ? own / "cwd" : own / "fd" / std::to_string(descriptor), none);
}

fs::path path_of(pid_t process, std::span<const std::uint64_t> arguments, int folder, int path) {
    const auto argument = [&](int place) { return arguments[static_cast<std::size_t>(place)]; };
    const int from = folder == kNone ? AT_FDCWD : static_cast<int>(argument(folder));
    if (path == kNone) return file_of(process, from);
    const fs::path name = text_in(process, argument(path));
    const fs::path start = name.is_absolute() ? fs::path() : file_of(process, from);
    if (name.empty()) return start;
    const fs::path whole = (start / name).lexically_normal();
    return whole.has_filename() ? whole : whole.parent_path();  // that of "." has none
}

}  // namespace

std::optional<SystemCall> system_call(pid_t process, std::uint64_t number,
                                      std::span<const std::uint64_t> arguments) {
    const auto known =
        std::ranges::find_if(kKnown, [&](const Known& each) { return each.number == number; });
    if (known == std::end(kKnown)) return std::nullopt;
    SystemCall call{.kind = known->kind, .name = known->name, .path = {}, .to = {}};
    call.path = path_of(process, arguments, known->folder, known->path);
    if (known->to != kNone) {
        call.to = path_of(process, arguments, known->to_folder, known->to);
    }
    if (known->flags != kNone) {
        const std::uint64_t flags = arguments[static_cast<std::size_t>(known->flags)];
        if ((flags & (O_ACCMODE | O_CREAT)) != O_RDONLY) call.kind = Kind::create;
    }
    return call;
}

bool is_sensible(int error, Kind kind) {
    return std::ranges::any_of(kErrors, [&](const NamedError& each) {
        return each.error == error && std::ranges::find(each.kinds, kind) != each.kinds.end();
    });
}

const char* name_of(int error) {
    for (const NamedError& each : kErrors) {
        if (each.error == error) return each.name;
    }
    return "no error";
}

std::string text_of(const std::vector<SystemCall>& calls) {
    std::string text;
    for (const SystemCall& call : calls) {
        text += "  " + call.name + " " + call.path.string() +
                (call.to.empty() ? "" : " to " + call.to.string()) + " = " +
                std::to_string(call.result) + "\n";
    }
    return text;
}

std::string missing_for_the_disk(const std::vector<SystemCall>& calls, const fs::path& target) {
    const auto last = std::ranges::find_if(calls.rbegin(), calls.rend(), [&](const auto& call) {
        return call.kind == Kind::rename && call.to == target && call.succeeded();
    });
    if (last == calls.rend()) return "nothing was renamed to it";
    const fs::path source = last->path;
    bool on_disk = false;
    for (auto call = calls.begin(); call != last.base() - 1; ++call) {
        if (call->path != source || !call->succeeded()) continue;
        if (call->kind == Kind::write) on_disk = false;
        if (call->kind == Kind::sync) on_disk = true;
    }
    if (!on_disk) return "its bytes were not brought to the disk before it got its name";
    for (auto call = last.base(); call != calls.end(); ++call) {
        if (call->path != target.parent_path()) continue;
        if (call->kind == Kind::sync && call->succeeded()) return "";
        // A folder that may be written to but not read cannot be brought to the disk.
        if (call->kind == Kind::open && call->result == -EACCES) return "";
    }
    return "its folder was not brought to the disk";
}

}  // namespace memwright::faults
