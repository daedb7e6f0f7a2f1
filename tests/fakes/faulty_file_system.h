#pragma once

// A file system whose operations fail when a test wants them to, and which remembers what was
// written through it.

#include <string>
#include <vector>

#include "platform/error.h"
#include "platform/file_system.h"

namespace memwright::fakes {

class FaultyFileSystem final : public FileSystem {
  public:
    explicit FaultyFileSystem(FileSystem& real) : real_(real) {}

    bool reading_fails = false;
    std::size_t read_before_failure = 0;  // bytes that a failing read delivers all the same
    bool writing_fails = false;
    bool entering_fails = false;
    bool asking_for_folder_fails = false;

    std::vector<std::string> written;  // the paths

    void read(const std::string& path, std::size_t limit, Bytes& bytes) override {
        real_.read(path, reading_fails ? read_before_failure : limit, bytes);
        if (reading_fails) throw FileError("Cannot read " + path + ": the disk is gone.");
    }
    void overwrite(const std::string& path, std::span<const std::uint8_t> bytes) override {
        if (writing_fails) throw FileError("Cannot save " + path + ": the disk is full.");
        real_.overwrite(path, bytes);
        written.push_back(path);
    }
    bool exists(const std::string& path) noexcept override { return real_.exists(path); }
    std::string current_folder() override {
        if (asking_for_folder_fails) throw FileError("The current folder is gone.");
        return real_.current_folder();
    }
    void set_current_folder(const std::string& path) override {
        if (entering_fails) throw FileError("Cannot change to the folder " + path + ".");
        real_.set_current_folder(path);
    }

  private:
    FileSystem& real_;
};

}  // namespace memwright::fakes
