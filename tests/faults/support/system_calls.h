#pragma once

// The calls to the system by which a process works with files, as a tracer sees them: what they are
// and which files they are made on.

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace memwright::faults {

enum class Kind {
    open,    // for reading
    create,  // or open for writing
    read,
    write,
    sync,
    close,
    rename,  // and link
    remove,
    attributes,  // owner, permissions, length, times
    folder,      // make one
    list,        // one
    look,        // at attributes
    lock,
};

struct SystemCall {
    Kind kind = Kind::look;
    std::string name;  // as the manual's
    std::filesystem::path path;
    std::filesystem::path to;  // of a rename
    std::int64_t result = 0;   // negative: the error

    bool succeeded() const { return result >= 0; }
};

// None if the call has nothing to do with files. To be asked when the process has entered the call.
std::optional<SystemCall> system_call(pid_t process, std::uint64_t number,
                                      std::span<const std::uint64_t> arguments);

// Can this error come of such a call?
bool is_sensible(int error, Kind kind);

const char* name_of(int error);

// One call a line.
std::string text_of(const std::vector<SystemCall>& calls);

// Does this record say that the content of `target` will be there after a power failure: written
// to a file beside it, brought to the disk, renamed over it, and the folder brought to the disk? If
// not, what is missing; else "".
std::string missing_for_the_disk(const std::vector<SystemCall>& calls,
                                 const std::filesystem::path& target);

}  // namespace memwright::faults
