#pragma once

// The file system of the machine. Replacing a file writes a new one beside it, brings it to the
// disk and renames it over the old one (native/replacement.h).

#include "platform/file_system.h"

namespace memwright {

class NativeFileSystem final : public FileSystem {
  public:
    void read(const std::string& path, std::size_t limit, Bytes& bytes) override;
    void overwrite(const std::string& path, std::span<const std::uint8_t> bytes) override;
    void replace(const std::string& path, std::span<const std::uint8_t> bytes) override;
    void replace_private(const std::string& path, std::span<const std::uint8_t> bytes) override;
    std::unique_ptr<InputFile> open_input(const std::string& path) override;
    bool exists(const std::string& path) noexcept override;
    std::vector<std::string> files_in(const std::string& folder) override;
    void make_private_folder(const std::string& path) override;
    void rename(const std::string& from, const std::string& to) override;
    void remove(const std::string& path) override;
    int age_in_days(const std::string& path) override;
    std::string current_folder() override;
    void set_current_folder(const std::string& path) override;

    // Do both names lead to one ordinary file: over links, as hard links, in another spelling? A
    // name that leads to none is the same as no other.
    bool lead_to_one_file(const std::string& a, const std::string& b);
};

}  // namespace memwright
