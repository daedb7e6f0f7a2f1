#include "qt/serial/port_lock.h"

#ifndef _WIN32
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <algorithm>
#include <cstring>
#include <filesystem>

#include "native/failures.h"
#endif

namespace memwright {

#ifdef _WIN32

std::vector<std::string> port_lock_files(const std::string& /*device*/) { return {}; }
bool is_lock_file(const std::string& /*path*/) { return false; }
std::string no_lock_file(const std::string& /*device*/) { return {}; }

#else

namespace {

namespace fs = std::filesystem;

std::string user_name(uid_t id) {
    const passwd* const entry = getpwuid(id);
    return entry != nullptr ? entry->pw_name : "user " + std::to_string(id);
}

std::string remedy(const std::string& path) {
    struct stat facts {};
    const bool anothers = lstat(path.c_str(), &facts) == 0 && facts.st_uid != geteuid();
    const std::string remove =
        (S_ISDIR(facts.st_mode) ? "rm -r " : "rm ") + path + "  and try again.";
    if (!anothers) return "Run  " + remove;
    return "It belongs to " + user_name(facts.st_uid) + ": ask what it is for, or run  sudo " +
           remove;
}

}  // namespace

std::vector<std::string> port_lock_files(const std::string& device) {
    std::string name = device.starts_with("/dev/") ? device.substr(std::strlen("/dev/")) : device;
    std::replace(name.begin(), name.end(), '/', '_');
    name.insert(0, "/LCK..");
    std::vector<std::string> files;
    // QSerialPort takes the first folder that it may use, and its list differs between versions.
    for (const std::string& folder :
         {std::string("/var/lock"), std::string("/etc/locks"), std::string("/var/spool/locks"),
          std::string("/var/spool/uucp"), std::string("/tmp"), std::string("/var/tmp"),
          std::string("/var/lock/lockdev"), std::string("/run/lock"),
          QDir::tempPath().toStdString()}) {
        files.push_back(folder + name);
    }
    return files;
}

bool is_lock_file(const std::string& path) {
    std::error_code error;
    return fs::symlink_status(path, error).type() == fs::file_type::regular;
}

std::string no_lock_file(const std::string& device) {
    const std::vector<std::string> files = port_lock_files(device);
    const auto type = [](const std::string& path) {
        std::error_code error;
        return fs::symlink_status(path, error).type();
    };
    const auto none = std::find_if(files.begin(), files.end(), [&](const std::string& path) {
        return fs::exists(fs::file_status(type(path))) && !is_lock_file(path);
    });
    if (none == files.end()) return {};
    return "what should be its lock file, " + *none + ", is none: " + native::kind_of(type(*none)) +
           ", and the program could wait for it for ever.\n" + remedy(*none);
}

#endif

}  // namespace memwright
