#pragma once

// A new folder of its own for a test, removed with all that is in it at the end. Every user of the
// machine may enter and write to it, unless it is the test's alone.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <system_error>
#include <vector>

namespace memwright {

class TemporaryFolder {
  public:
    enum class For { everybody, the_test };

    explicit TemporaryFolder(
        For whom = For::everybody,
        const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
        std::random_device random;
        do {
            path_ = parent / ("memwright-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
        using std::filesystem::perms;
        std::filesystem::permissions(path_, whom == For::everybody ? perms::all : perms::owner_all);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::all, ignored);
        std::filesystem::remove_all(path_, ignored);
        // Once more, where a process that was just ending was still writing.
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }
    std::string file(const std::string& name) const { return (path_ / name).string(); }

    // Writes a file; gives its whole name.
    std::string put(const std::string& name, const std::vector<std::uint8_t>& bytes) const {
        std::ofstream out(path_ / name, std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
        out.close();
        EXPECT_TRUE(out.good()) << "cannot write " << name;
        return file(name);
    }

    std::vector<std::uint8_t> get(const std::string& name) const {
        std::ifstream in(path_ / name, std::ios::binary | std::ios::ate);
        EXPECT_TRUE(in.is_open()) << "cannot read " << name;
        std::vector<std::uint8_t> bytes(in.is_open() ? static_cast<std::size_t>(in.tellg()) : 0);
        in.seekg(0);
        in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        EXPECT_TRUE(in.good()) << "cannot read " << name;
        return bytes;
    }

    // The names of all that lies in it, sorted.
    std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            found.push_back(entry.path().filename().string());
        }
        std::ranges::sort(found);
        return found;
    }

  private:
    std::filesystem::path path_;
};

}  // namespace memwright
