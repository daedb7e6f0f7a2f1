#pragma once

// Reads a text file line by line, however long it is. A line ends with a line feed, which a
// carriage return may precede; the last one need not end. Texts are bytes, as they stand in the
// file.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace memwright {

// Thrown for a line that cannot be used: what is wrong with it.
struct BadLine {
    std::size_t number = 0;  // counted from 1
    std::string text;
    std::string cause;  // "it is empty"
};

class LineReader {
  public:
    struct Line {
        std::string_view text;   // until the next call of skip or peek
        std::size_t number = 0;  // counted from 1
        bool feed_only = false;  // it ends with a line feed and no carriage return
    };

    // Bytes that are read at a time.
    static constexpr std::size_t kChunk = 64 * 1024;
    // A longer line is a BadLine, unless it is skipped unseen: the file is no text.
    static constexpr std::size_t kLongestLine = 1024 * 1024;

    explicit LineReader(std::unique_ptr<InputFile> file) : file_(std::move(file)) {}

    // Called before each chunk but the first, with the share of the file that is read, 0 to 1.
    std::function<void(double share)> chunk_read;

    // The next line; none at the end of the file. Throws FileError and BadLine.
    std::optional<Line> peek();

    // Goes on behind the line that peek gives.
    void skip();

  private:
    Line line_up_to(std::size_t end) const;
    bool read_chunk();

    std::unique_ptr<InputFile> file_;
    std::string buffer_;
    std::size_t start_ = 0;     // of the next line, in the buffer
    std::size_t searched_ = 0;  // no line feed stands between there and here
    std::size_t number_ = 1;
    std::uint64_t bytes_read_ = 0;
    bool at_end_ = false;
};

}  // namespace memwright
