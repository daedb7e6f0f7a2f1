#include "radio/image_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "base/error.h"
#include "native/file.h"
#include "native/file_system.h"

namespace memwright::radio {
namespace {

namespace fs = std::filesystem;

bool write_and_close(const fs::path& path, const MemoryImage& image) {
    std::FILE* const file = native::open_file(path, "wb");
    if (file == nullptr) return false;
    const bool written = native::write_all(file, image.bytes()) && native::bring_to_disk(file);
    const int cause = errno;
    const bool closed = std::fclose(file) == 0;
    if (!written) errno = cause;
    return written && closed;
}

}  // namespace

MemoryImage load_image(const std::string& path) {
    NativeFileSystem files;
    // Reading a file that is missing would create it.
    if (!files.exists(path)) throw FileError("Cannot open " + path + ": there is no such file.");
    Bytes bytes;
    files.read(path, layout::kImageSize, bytes);
    if (bytes.size() < layout::kImageSize) {
        throw FileError(path + " is no image: it has " + std::to_string(bytes.size()) +
                        " bytes of " + std::to_string(layout::kImageSize) + ".");
    }
    return MemoryImage(bytes);
}

void save_image(const std::string& path, const MemoryImage& image) {
    const fs::path target = native::path_of(path);
    fs::path temporary = target;
    temporary += ".part";
    std::error_code error;
    if (write_and_close(temporary, image)) {
        fs::rename(temporary, target, error);
    } else {
        error = std::error_code(errno, std::generic_category());
    }
    if (!error) return;
    std::error_code ignored;
    fs::remove(temporary, ignored);
    throw FileError("Cannot save " + path + ": " + error.message() + ".");
}

}  // namespace memwright::radio
