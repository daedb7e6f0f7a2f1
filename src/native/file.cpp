#include "native/file.h"

#include <cerrno>

#ifdef _WIN32
#include <io.h>
#include <sys/stat.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "native/descriptor.h"
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

std::FILE* open_for_reading(const fs::path& path) { return open_file(path, "rb"); }

std::optional<Facts> facts_of(std::FILE* file) {
    struct _stat64 facts {};
    if (_fstat64(_fileno(file), &facts) != 0) return std::nullopt;
    const bool regular = (facts.st_mode & _S_IFMT) == _S_IFREG;
    return Facts{regular ? fs::file_type::regular : fs::file_type::unknown,
                 static_cast<std::uint64_t>(facts.st_size)};
}

bool make_file(const fs::path& path) {
    std::FILE* const file = open_file(path, "ab");
    return file != nullptr && std::fclose(file) == 0;
}

#else

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

std::FILE* open_for_reading(const fs::path& path) {
    const int descriptor =
        retried([&] { return open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); });
    if (descriptor < 0) return nullptr;
    std::FILE* const file = fdopen(descriptor, "rb");
    if (file == nullptr) {
        const int cause = errno;
        close(descriptor);
        errno = cause;
        return nullptr;
    }
    std::setvbuf(file, nullptr, _IONBF, 0);
    return file;
}

std::optional<Facts> facts_of(std::FILE* file) {
    struct stat facts {};
    if (fstat(fileno(file), &facts) != 0) return std::nullopt;
    return Facts{type_of(facts), static_cast<std::uint64_t>(facts.st_size)};
}

bool make_file(const fs::path& path) {
    constexpr int kNew = O_WRONLY | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    constexpr mode_t kEverybody = 0666;  // less what the user gives nobody (umask)
    return Descriptor(retried([&] { return open(path.c_str(), kNew, kEverybody); })).is_open();
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

}  // namespace memwright::native
