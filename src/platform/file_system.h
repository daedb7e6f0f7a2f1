#pragma once

// Files as the program uses them. File names are bytes in the file system's own encoding (UTF-8
// wherever it has none), so that every name that exists can be used. Failures are FileErrors that
// name the file, the cause and the remedy.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "base/bytes.h"

namespace memwright {

// A regular file that is read from its start to its end.
class InputFile {
  public:
    virtual ~InputFile() = default;

    // Bytes in the file when it was opened.
    virtual std::uint64_t size() const = 0;

    // The next bytes into `bytes`; how many. Fewer than fit in at the end of the file only.
    virtual std::size_t read(std::span<std::uint8_t> bytes) = 0;
};

class FileSystem {
  public:
    virtual ~FileSystem() = default;

    // The first `limit` bytes of a regular file; fewer if it is shorter. Bytes read before a
    // failure are in `bytes` all the same. A missing file is created empty.
    virtual void read(const std::string& path, std::size_t limit, Bytes& bytes) = 0;

    // Overwrites the start of a file with `bytes`, creating it if it is missing. Bytes of the old
    // file past their end stay. The file is the complete old one or the complete new one at every
    // moment; it keeps its permissions, and a symbolic link stays a link to it.
    virtual void overwrite(const std::string& path, std::span<const std::uint8_t> bytes) = 0;

    // Replaces a file by one that holds `bytes` and nothing else; otherwise as overwrite.
    virtual void replace(const std::string& path, std::span<const std::uint8_t> bytes) = 0;

    // As replace, and nobody but the user may read or write the file, whatever was so before and
    // whatever rights new files usually get.
    virtual void replace_private(const std::string& path, std::span<const std::uint8_t> bytes) = 0;

    // Opens a regular file that exists.
    virtual std::unique_ptr<InputFile> open_input(const std::string& path) = 0;

    // True if the attributes of `path` can be read: files and folders alike. Never fails.
    virtual bool exists(const std::string& path) noexcept = 0;

    // The names of the files in a folder, sorted; none if there is no such folder. Of one that
    // cannot be listed to its end, it is a failure.
    virtual std::vector<std::string> files_in(const std::string& folder) = 0;

    // Makes a folder that nobody but the user may enter, with those above it that are missing. One
    // of the user's own that is there already is closed to all others.
    virtual void make_private_folder(const std::string& path) = 0;

    virtual void rename(const std::string& from, const std::string& to) = 0;

    // Nothing happens if there is no such file.
    virtual void remove(const std::string& path) = 0;

    // Whole days since a file was last written; 0 if that cannot be told.
    virtual int age_in_days(const std::string& path) = 0;

    virtual std::string current_folder() = 0;
    virtual void set_current_folder(const std::string& path) = 0;
};

}  // namespace memwright
