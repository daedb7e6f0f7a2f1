#pragma once

// The files of the machine, among which "-" is standard input and standard output.

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>

#include "cli/console.h"
#include "native/change_locks.h"
#include "native/file_system.h"

namespace memwright::cli {

inline constexpr const char* kStandardStream = "-";

// How messages name a file that is read.
inline std::string input_name(const std::string& path) {
    return path == kStandardStream ? "standard input" : path;
}

class StreamFiles final : public FileSystem {
  public:
    explicit StreamFiles(Console& console) : console_(console) {}

    void read(const std::string& path, std::size_t limit, Bytes& bytes) override;
    void overwrite(const std::string& path, std::span<const std::uint8_t> bytes) override;
    void replace(const std::string& path, std::span<const std::uint8_t> bytes) override;
    void replace_private(const std::string& path, std::span<const std::uint8_t> bytes) override {
        files_.replace_private(path, bytes);
    }
    std::unique_ptr<InputFile> open_input(const std::string& path) override;
    bool exists(const std::string& path) noexcept override;
    std::vector<std::string> files_in(const std::string& folder) override {
        return files_.files_in(folder);
    }
    void make_private_folder(const std::string& path) override { files_.make_private_folder(path); }
    void rename(const std::string& from, const std::string& to) override {
        files_.rename(from, to);
    }
    void remove(const std::string& path) override { files_.remove(path); }
    int age_in_days(const std::string& path) override { return files_.age_in_days(path); }
    std::string current_folder() override { return files_.current_folder(); }
    void set_current_folder(const std::string& path) override { files_.set_current_folder(path); }

    // Would a file that is written to `output` replace the one that `input` is read from?
    bool replaces(const std::string& output, const std::string& input);

    // Locks an output that exists while it is changed. `inputs` that are standard input are read
    // before: nobody is to wait for what is still being typed.
    std::unique_ptr<ChangeLock> lock(const std::string& output,
                                     std::initializer_list<std::string> inputs);

    // The whole of a file that exists.
    Bytes whole(const std::string& path);

  private:
    const Bytes& standard_input();

    Console& console_;
    NativeFileSystem files_;
    NativeChangeLocks locks_;
    std::optional<Bytes> standard_input_;  // once it has been read
};

}  // namespace memwright::cli
