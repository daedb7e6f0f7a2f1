#pragma once

// A file system in memory.

#include <algorithm>
#include <map>
#include <string>

#include "platform/error.h"
#include "platform/file_system.h"

namespace memwright::link_tests {

class MemoryFiles final : public FileSystem {
  public:
    std::map<std::string, Bytes> files;

    void read(const std::string& path, std::size_t limit, Bytes& bytes) override {
        bytes = files[path];
        bytes.resize(std::min(bytes.size(), limit));
    }
    void overwrite(const std::string& path, std::span<const std::uint8_t> bytes) override {
        files[path].assign(bytes.begin(), bytes.end());
    }
    void replace(const std::string& path, std::span<const std::uint8_t> bytes) override {
        overwrite(path, bytes);
    }
    std::unique_ptr<InputFile> open_input(const std::string& path) override {
        throw FileError("Cannot open " + path + ": nothing is read here but images.");
    }
    bool exists(const std::string& path) noexcept override { return files.contains(path); }
    std::vector<std::string> files_in(const std::string& /*folder*/) override { return {}; }
    void make_folder(const std::string& /*path*/) override {}
    void rename(const std::string& from, const std::string& to) override {
        files[to] = std::move(files[from]);
        files.erase(from);
    }
    void remove(const std::string& path) override { files.erase(path); }
    int age_in_days(const std::string& /*path*/) override { return 0; }
    std::string current_folder() override { return folder_; }
    void set_current_folder(const std::string& path) override { folder_ = path; }

  private:
    std::string folder_ = "/";
};

}  // namespace memwright::link_tests
