#include "native/failures.h"

#include <cerrno>
#include <system_error>

#include "base/error.h"

namespace memwright::native {

namespace fs = std::filesystem;

void fail(const std::string& task, const std::string& path, const std::string& cause,
          const std::string& remedy) {
    throw FileError("Cannot " + task + " " + path + ": " + cause + ".\n" + remedy);
}

std::string words_for(int cause) { return std::generic_category().message(cause); }

std::string last_cause() { return words_for(errno); }

std::string saving_remedy(int cause) {
    const std::string kept = "Nothing was changed there. ";
#ifdef EDQUOT
    const bool over_quota = cause == EDQUOT;
#else
    const bool over_quota = false;
#endif
    if (cause == ENOSPC || cause == EFBIG || over_quota) {
        return kept + "Free some space, or save to another place.";
    }
    if (cause == EACCES || cause == EPERM || cause == EROFS) {
        return kept + "Save to a folder that you may write to.";
    }
    return kept + "Check that its folder exists, or save to another place.";
}

std::string kind_of(fs::file_type type) {
    switch (type) {
        case fs::file_type::directory:
            return "it is a folder";
        case fs::file_type::symlink:
            return "it is a symbolic link";
        case fs::file_type::fifo:
            return "it is a named pipe";
        case fs::file_type::socket:
            return "it is a socket";
        case fs::file_type::block:
        case fs::file_type::character:
            return "it is a device";
        default:
            return "it is no ordinary file";
    }
}

}  // namespace memwright::native
