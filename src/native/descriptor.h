#pragma once

// Files by their descriptors, on systems that have them (POSIX). What is done to a descriptor is
// done to the file that was opened, whatever has its name by then. Failures return false or nothing
// with the cause in errno.

#include <sys/stat.h>
#include <sys/types.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace memwright::native {

// A signal may come in between.
template <class Call>
int retried(const Call& call) {
    int result = 0;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

// Closes what it holds.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor();

    int number() const { return number_; }
    bool is_open() const { return number_ >= 0; }

  private:
    int number_ = -1;
};

// A folder, to reach the files in it. It need not let itself be read.
Descriptor open_folder(const std::filesystem::path& path);

// A file in a folder. Nothing is waited for, whatever it turns out to be: the other end of a pipe,
// a device. No other program that is started gets it.
Descriptor open_in(const Descriptor& folder, const std::string& name, int flags, mode_t mode = 0);

std::filesystem::file_type type_of(const struct stat& facts);

// The same file, and not one that has got the number of one that is gone, if either is open.
bool is_same_file(const struct stat& one, const struct stat& other);

// However many calls it takes.
bool write_all(const Descriptor& file, std::span<const std::uint8_t> bytes);

// The bytes from `first` on, however many calls it takes; how many there were until the end of the
// file, or -1.
std::int64_t read_from(const Descriptor& file, std::uint64_t first, std::span<std::uint8_t> bytes);

// Returns once the bytes of the file are on the disk.
bool bring_to_disk(const Descriptor& file);

// And once the names in a folder are, where the system can do that.
bool bring_folder_to_disk(const Descriptor& folder);

// Some file systems tell only of a file that is closed that its bytes did not arrive. It stays
// open.
bool has_arrived(const Descriptor& file);

}  // namespace memwright::native
