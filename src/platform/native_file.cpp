#include "platform/native_file.h"

#include <cerrno>
#include <system_error>
#include <tuple>

#ifdef _WIN32
#include <io.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace memwright::native {

namespace fs = std::filesystem;

#ifdef _WIN32

fs::path path_of(const std::string& name) { return std::u8string(name.begin(), name.end()); }

std::string name_of(const fs::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

std::FILE* open_file(const fs::path& path, const char* mode) {
    const std::string narrow = mode;
    std::FILE* const file =
        _wfopen(path.c_str(), std::wstring(narrow.begin(), narrow.end()).c_str());
    if (file != nullptr) std::setvbuf(file, nullptr, _IONBF, 0);
    return file;
}

bool bring_to_disk(std::FILE* file) {
    return std::fflush(file) == 0 && _commit(_fileno(file)) == 0;
}

bool bring_folder_to_disk(const fs::path& /*path*/) { return true; }

void keep_owner_and_permissions(const fs::path& from, const fs::path& to) {
    std::error_code ignored;
    fs::permissions(to, fs::status(from, ignored).permissions(), ignored);
}

#else

namespace {

// A signal may come in between.
template <class Call>
int retried(const Call& call) {
    int result = 0;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

}  // namespace

fs::path path_of(const std::string& name) { return name; }

std::string name_of(const fs::path& path) { return path.native(); }

std::FILE* open_file(const fs::path& path, const char* mode) {
    std::FILE* file = nullptr;
    do {
        file = std::fopen(path.c_str(), mode);
    } while (file == nullptr && errno == EINTR);
    if (file != nullptr) std::setvbuf(file, nullptr, _IONBF, 0);
    return file;
}

bool bring_to_disk(std::FILE* file) {
    if (std::fflush(file) != 0) return false;
    // Some file systems have nothing to sync to.
    return retried([&] { return fsync(fileno(file)); }) == 0 || errno == EINVAL;
}

bool bring_folder_to_disk(const fs::path& path) {
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    const int descriptor =
        retried([&] { return open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    // A folder that may be written to need not let itself be read; then there is no way to do it.
    if (descriptor < 0) return errno == EACCES;
    const int result = retried([&] { return fsync(descriptor); });
    const int cause = errno;
    close(descriptor);
    errno = cause;
    // Some file systems do this for files alone.
    return result == 0 || cause == EINVAL || cause == EBADF || cause == ENOTSUP;
}

void keep_owner_and_permissions(const fs::path& from, const fs::path& to) {
    struct stat old {};
    if (stat(from.c_str(), &old) != 0) return;
    // The owner first: changing it drops bits of the mode.
    const bool same_owner = chown(to.c_str(), old.st_uid, old.st_gid) == 0;
    // A member of the file's group who does not own it can still hand it to the group.
    constexpr uid_t kUnchanged = static_cast<uid_t>(-1);
    if (!same_owner) std::ignore = chown(to.c_str(), kUnchanged, old.st_gid);
    constexpr mode_t kAllBits = 07777, kNoSetIds = 0777;
    chmod(to.c_str(), old.st_mode & (same_owner ? kAllBits : kNoSetIds));
}

#endif

bool write_all(std::FILE* file, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), file);
        bytes = bytes.subspan(written);
        if (bytes.empty()) break;
        if (errno != EINTR) return false;
        std::clearerr(file);
    }
    return true;
}

std::size_t read_all(std::FILE* file, std::span<std::uint8_t> bytes) {
    std::size_t count = 0;
    for (;;) {
        count += std::fread(bytes.data() + count, 1, bytes.size() - count, file);
        if (count == bytes.size() || std::ferror(file) == 0 || errno != EINTR) return count;
        std::clearerr(file);
    }
}

bool close_file(std::FILE* file) { return std::fclose(file) == 0 || errno == EINTR; }

}  // namespace memwright::native
