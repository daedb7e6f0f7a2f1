#pragma once

// A file system in memory. Folders are not kept: every name that is asked for can be there.

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/error.h"
#include "platform/file_system.h"

namespace memwright::fakes {

class MemoryFiles final : public FileSystem {
  public:
    std::map<std::string, Bytes> files;

    void read(const std::string& path, std::size_t limit, Bytes& bytes) override {
        bytes = files[path];
        bytes.resize(std::min(bytes.size(), limit));
    }
    void overwrite(const std::string& path, std::span<const std::uint8_t> bytes) override {
        Bytes& file = files[path];
        file.resize(std::max(file.size(), bytes.size()));
        std::ranges::copy(bytes, file.begin());
    }
    void replace(const std::string& path, std::span<const std::uint8_t> bytes) override {
        files[path].assign(bytes.begin(), bytes.end());
    }
    void replace_private(const std::string& path, std::span<const std::uint8_t> bytes) override {
        replace(path, bytes);
    }
    std::unique_ptr<InputFile> open_input(const std::string& path) override {
        const auto file = files.find(path);
        if (file == files.end()) throw FileError("Cannot open " + path + ": there is none.");
        return std::make_unique<OpenFile>(file->second);
    }
    bool exists(const std::string& path) noexcept override { return files.contains(path); }
    std::vector<std::string> files_in(const std::string& folder) override {
        std::vector<std::string> names;
        const std::string start = folder + "/";
        for (const auto& [path, bytes] : files) {
            if (path.starts_with(start) && path.find('/', start.size()) == std::string::npos) {
                names.push_back(path.substr(start.size()));
            }
        }
        return names;
    }
    void make_private_folder(const std::string& /*path*/) override {}
    void rename(const std::string& from, const std::string& to) override {
        files[to] = std::move(files[from]);
        files.erase(from);
    }
    void remove(const std::string& path) override { files.erase(path); }
    int age_in_days(const std::string& /*path*/) override { return 0; }
    std::string current_folder() override { return folder_; }
    void set_current_folder(const std::string& path) override { folder_ = path; }

  private:
    class OpenFile final : public InputFile {
      public:
        explicit OpenFile(Bytes bytes) : bytes_(std::move(bytes)) {}

        std::uint64_t size() const override { return bytes_.size(); }
        std::size_t read(std::span<std::uint8_t> bytes) override {
            const auto rest = std::span(bytes_).subspan(read_);
            const std::size_t count = std::min(bytes.size(), rest.size());
            std::ranges::copy(rest.first(count), bytes.begin());
            read_ += count;
            return count;
        }

      private:
        Bytes bytes_;
        std::size_t read_ = 0;
    };

    std::string folder_ = "/";
};

}  // namespace memwright::fakes
