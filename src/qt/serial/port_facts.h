#pragma once

// What the host knows about a serial device that does not open: gathered from the file system, the
// user database and /proc; nothing of it is an error. Where the host has none of these the cause
// stays Cause::other.

#include <string>
#include <vector>

namespace memwright {

struct PortFacts {
    enum class Cause {
        missing,
        folder_closed,  // the folder that the device lies in may not be entered
        permission,
        busy,
        not_serial,
        other
    };

    struct Holder {
        long process = 0;
        std::string program;
        bool self = false;
    };

    Cause cause = Cause::other;
    std::string system_text;  // the system's own words for it, "" if it had none

    std::string kind;  // of a file that is no serial device: "a folder"

    // Of a device that may not be used.
    std::string user, owner, group;
    bool group_may_use = false;     // joining the group would help
    bool user_in_group = false;     // by the user database
    bool session_in_group = false;  // and since this session began

    // Of a busy device.
    std::vector<Holder> holders;
    std::string stale_lock;  // a lock file whose program no longer runs
};

PortFacts port_facts(const std::string& path);

}  // namespace memwright
