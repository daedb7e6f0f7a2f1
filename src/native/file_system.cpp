#include "native/file_system.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "native/failures.h"
#include "native/file.h"
#include "native/private_folder.h"
#include "native/replacement.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;

using native::fail;
using native::kReadingRemedy;
using native::NewContent;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

struct OpenFile {
    File file;
    std::uint64_t size = 0;
};

// Asked by its name first, because opening a device does something to it.
void demand_regular(const std::string& path, fs::file_type type, const std::string& remedy) {
    const bool exists = type != fs::file_type::none && type != fs::file_type::not_found;
    if (exists && type != fs::file_type::regular) {
        fail("open", path, native::kind_of(type), remedy);
    }
}

OpenFile opened(const std::string& path, const std::string& remedy) {
    File file{native::open_for_reading(native::path_of(path)), &std::fclose};
    if (file == nullptr) fail("open", path, native::last_cause(), kReadingRemedy);
    const auto facts = native::facts_of(file.get());
    if (!facts) fail("read", path, native::last_cause(), kReadingRemedy);
    // Something else may have come there since it was asked by its name.
    demand_regular(path, facts->type, remedy);
    return {std::move(file), facts->size};
}

void check_reading(const File& file, const std::string& path) {
    if (std::ferror(file.get()) != 0) fail("read", path, native::last_cause(), kReadingRemedy);
}

class NativeInputFile final : public InputFile {
  public:
    NativeInputFile(std::string path, OpenFile open)
        : path_(std::move(path)), open_(std::move(open)) {}

    std::uint64_t size() const override { return open_.size; }
    std::size_t read(std::span<std::uint8_t> bytes) override {
        const std::size_t count = native::read_all(open_.file.get(), bytes);
        check_reading(open_.file, path_);
        return count;
    }

  private:
    std::string path_;
    OpenFile open_;
};

}  // namespace

void NativeFileSystem::read(const std::string& path, std::size_t limit, Bytes& bytes) {
    const std::string remedy = "Choose an image file.";
    bytes.clear();
    std::error_code error;
    const auto status = fs::status(native::path_of(path), error);
    if (status.type() == fs::file_type::not_found && !native::make_file(native::path_of(path))) {
        fail("create", path, native::last_cause(),
             "Check that its folder exists and may be written to.");
    }
    demand_regular(path, status.type(), remedy);
    const OpenFile open = opened(path, remedy);
    bytes.resize(limit);
    bytes.resize(native::read_all(open.file.get(), bytes));
    check_reading(open.file, path);
}

std::unique_ptr<InputFile> NativeFileSystem::open_input(const std::string& path) {
    const std::string remedy = "Choose an ordinary file.";
    std::error_code error;
    demand_regular(path, fs::status(native::path_of(path), error).type(), remedy);
    return std::make_unique<NativeInputFile>(path, opened(path, remedy));
}

void NativeFileSystem::overwrite(const std::string& path, std::span<const std::uint8_t> bytes) {
    native::replace_file(path, bytes, NewContent::start);
}

void NativeFileSystem::replace(const std::string& path, std::span<const std::uint8_t> bytes) {
    native::replace_file(path, bytes, NewContent::whole);
}

void NativeFileSystem::replace_private(const std::string& path,
                                       std::span<const std::uint8_t> bytes) {
    native::replace_file(path, bytes, NewContent::private_whole);
}

bool NativeFileSystem::exists(const std::string& path) noexcept {
    try {
        std::error_code error;
        return !path.empty() && fs::exists(native::path_of(path), error) && !error;
    } catch (const std::exception&) {
        return false;
    }
}

std::vector<std::string> NativeFileSystem::files_in(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    std::error_code ignored;
    fs::directory_iterator entry;
    do {
        entry = fs::directory_iterator(native::path_of(folder), error);
    } while (error == std::errc::interrupted);
    for (; entry != fs::directory_iterator(); entry.increment(error)) {
        if (entry->is_regular_file(ignored))
            names.push_back(native::name_of(entry->path().filename()));
    }
    if (error && error != std::errc::no_such_file_or_directory &&
        error != std::errc::not_a_directory) {
        fail("list the files in", folder, error.message(), "Check that the folder can be read.");
    }
    std::ranges::sort(names);
    return names;
}

void NativeFileSystem::make_private_folder(const std::string& path) {
    std::error_code error;
    native::make_private_folder(native::path_of(path), error);
    if (error) {
        fail("make the folder", path, error.message(),
             "Check that the folder above it may be written to.");
    }
}

void NativeFileSystem::rename(const std::string& from, const std::string& to) {
    std::error_code error;
    fs::rename(native::path_of(from), native::path_of(to), error);
    if (error) fail("rename", from, error.message(), "It keeps its name.");
}

void NativeFileSystem::remove(const std::string& path) {
    std::error_code error;
    fs::remove(native::path_of(path), error);
    if (error) fail("remove", path, error.message(), "It stays where it is.");
}

int NativeFileSystem::age_in_days(const std::string& path) {
    std::error_code error;
    const auto written = fs::last_write_time(native::path_of(path), error);
    if (error) return 0;
    const auto age = fs::file_time_type::clock::now() - written;
    return static_cast<int>(std::chrono::duration_cast<std::chrono::hours>(age).count() / 24);
}

std::string NativeFileSystem::current_folder() {
    std::error_code error;
    const fs::path folder = fs::current_path(error);
    return error ? std::string{} : native::name_of(folder);
}

void NativeFileSystem::set_current_folder(const std::string& path) {
    std::error_code error;
    fs::current_path(native::path_of(path), error);
    if (error) {
        fail("change to the folder", path, error.message(), "Choose a folder that exists.");
    }
}

bool NativeFileSystem::lead_to_one_file(const std::string& a, const std::string& b) {
    std::error_code error;
    return fs::is_regular_file(native::path_of(a), error) &&
           fs::equivalent(native::path_of(a), native::path_of(b), error);
}

}  // namespace memwright
