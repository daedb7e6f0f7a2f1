#pragma once

// A file system whose operations fail when a test wants them to, and which remembers what was
// written through it.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "base/error.h"
#include "platform/file_system.h"

namespace memwright::fakes {

class FaultyFileSystem final : public FileSystem {
  public:
    explicit FaultyFileSystem(FileSystem& real) : real_(real) {}

    bool reading_fails = false;
    std::size_t read_before_failure = 0;  // bytes that a failing read delivers all the same
    bool writing_fails = false;
    bool removing_fails = false;
    bool listing_fails = false;
    bool asking_fails = false;  // nothing seems to exist
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
    void replace(const std::string& path, std::span<const std::uint8_t> bytes) override {
        if (writing_fails) throw FileError("Cannot save " + path + ": the disk is full.");
        real_.replace(path, bytes);
        written.push_back(path);
    }
    void replace_private(const std::string& path, std::span<const std::uint8_t> bytes) override {
        if (writing_fails) throw FileError("Cannot save " + path + ": the disk is full.");
        real_.replace_private(path, bytes);
        written.push_back(path);
    }
    std::unique_ptr<InputFile> open_input(const std::string& path) override {
        auto file = real_.open_input(path);
        if (!reading_fails) return file;
        return std::make_unique<FailingFile>(path, read_before_failure, std::move(file));
    }
    bool exists(const std::string& path) noexcept override {
        return !asking_fails && real_.exists(path);
    }
    std::vector<std::string> files_in(const std::string& folder) override {
        if (listing_fails) throw FileError("Cannot list the files in " + folder + ".");
        return real_.files_in(folder);
    }
    void make_private_folder(const std::string& path) override {
        if (writing_fails) throw FileError("Cannot make the folder " + path + ".");
        real_.make_private_folder(path);
    }
    void rename(const std::string& from, const std::string& to) override { real_.rename(from, to); }
    void remove(const std::string& path) override {
        if (removing_fails) throw FileError("Cannot remove " + path + ".");
        real_.remove(path);
    }
    int age_in_days(const std::string& path) override { return real_.age_in_days(path); }
    std::string current_folder() override {
        if (asking_for_folder_fails) throw FileError("The current folder is gone.");
        return real_.current_folder();
    }
    void set_current_folder(const std::string& path) override {
        if (entering_fails) throw FileError("Cannot change to the folder " + path + ".");
        real_.set_current_folder(path);
    }

  private:
    // Gives what is asked for as long as there are enough good bytes, and fails then.
    class FailingFile final : public InputFile {
      public:
        FailingFile(std::string path, std::size_t good, std::unique_ptr<InputFile> file)
            : path_(std::move(path)), good_(good), file_(std::move(file)) {}

        std::uint64_t size() const override { return file_->size(); }
        std::size_t read(std::span<std::uint8_t> bytes) override {
            if (good_ < bytes.size())
                throw FileError("Cannot read " + path_ + ": the disk is gone.");
            good_ -= bytes.size();
            return file_->read(bytes);
        }

      private:
        std::string path_;
        std::size_t good_;
        std::unique_ptr<InputFile> file_;
    };

    FileSystem& real_;
};

}  // namespace memwright::fakes
