#pragma once

// A disk with little room, which only the calling process and its children see. Linux alone; where
// the system allows it.

#include <unistd.h>
#ifdef __linux__
#include <sched.h>
#include <sys/mount.h>
#endif

#include <fstream>
#include <string>

namespace memwright {

#ifdef __linux__

// Makes the calling process the administrator of a name space of its own, if it is none.
inline bool may_mount() {
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (user == 0) return unshare(CLONE_NEWNS) == 0;
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
    std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
    return geteuid() == 0;
}

// Puts an empty disk of so many kilobytes, in steps of 4, in the place of a folder.
inline bool mount_small_disk(const std::string& folder, int kilobytes = 12) {
    const std::string options = "size=" + std::to_string(kilobytes) + "k,mode=777";
    return may_mount() && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("small", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

#else

inline bool mount_small_disk(const std::string& /*folder*/, int /*kilobytes*/ = 12) {
    return false;
}

#endif

}  // namespace memwright
