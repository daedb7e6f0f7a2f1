#include "cli/stream_files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include "base/error.h"

namespace memwright::cli {
namespace {

constexpr std::size_t kChunk = 64 * 1024;

class BytesInMemory final : public InputFile {
  public:
    explicit BytesInMemory(const Bytes& bytes) : bytes_(bytes) {}

    std::uint64_t size() const override { return bytes_.size(); }
    std::size_t read(std::span<std::uint8_t> bytes) override {
        const std::size_t count = std::min(bytes.size(), bytes_.size() - read_);
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(read_), count, bytes.begin());
        read_ += count;
        return count;
    }

  private:
    const Bytes& bytes_;
    std::size_t read_ = 0;
};

}  // namespace

void StreamFiles::read(const std::string& path, std::size_t limit, Bytes& bytes) {
    if (path != kStandardStream) {
        files_.read(path, limit, bytes);
        return;
    }
    bytes = standard_input();
    bytes.resize(std::min(bytes.size(), limit));
}

void StreamFiles::overwrite(const std::string& path, std::span<const std::uint8_t> bytes) {
    if (path == kStandardStream) {
        console_.print_exactly({bytes.begin(), bytes.end()});
    } else {
        files_.overwrite(path, bytes);
    }
}

void StreamFiles::replace(const std::string& path, std::span<const std::uint8_t> bytes) {
    if (path == kStandardStream) {
        console_.print_exactly({bytes.begin(), bytes.end()});
    } else {
        files_.replace(path, bytes);
    }
}

std::unique_ptr<InputFile> StreamFiles::open_input(const std::string& path) {
    if (path != kStandardStream) return files_.open_input(path);
    return std::make_unique<BytesInMemory>(standard_input());
}

bool StreamFiles::exists(const std::string& path) noexcept {
    return path == kStandardStream || files_.exists(path);
}

bool StreamFiles::replaces(const std::string& output, const std::string& input) {
    if (output == kStandardStream) return false;
    return files_.lead_to_one_file(input == kStandardStream ? "/dev/stdin" : input, output);
}

std::unique_ptr<ChangeLock> StreamFiles::lock(const std::string& output,
                                              std::initializer_list<std::string> inputs) {
    if (output == kStandardStream) return nullptr;
    if (std::ranges::find(inputs, kStandardStream) != inputs.end()) standard_input();
    return locks_.lock(output);
}

Bytes StreamFiles::whole(const std::string& path) {
    const auto file = open_input(path);
    Bytes bytes;
    std::size_t count = 0;
    do {
        const std::size_t kept = bytes.size();
        bytes.resize(kept + kChunk);
        count = file->read(std::span(bytes).subspan(kept));
        bytes.resize(kept + count);
    } while (count == kChunk);
    return bytes;
}

const Bytes& StreamFiles::standard_input() {
    if (standard_input_) return *standard_input_;
    Bytes bytes;
    std::size_t count = 0;
    do {
        const std::size_t kept = bytes.size();
        bytes.resize(kept + kChunk);
        count = std::fread(bytes.data() + kept, 1, kChunk, stdin);
        bytes.resize(kept + count);
    } while (count == kChunk);
    if (std::ferror(stdin) != 0) {
        throw FileError("Cannot read standard input: " + std::generic_category().message(errno) +
                        ".\nName a file instead of \"-\", or check where it comes from.");
    }
    standard_input_ = std::move(bytes);
    return *standard_input_;
}

}  // namespace memwright::cli
