#include "files/line_reader.h"

#include <algorithm>

namespace memwright {

std::optional<LineReader::Line> LineReader::peek() {
    for (;;) {
        const auto feed = buffer_.find('\n', searched_);
        if (feed != std::string::npos) {
            searched_ = feed;
            return line_up_to(feed);
        }
        searched_ = buffer_.size();
        if (searched_ - start_ > kLongestLine) {
            throw BadLine{number_, buffer_.substr(start_, kLongestLine),
                          "it is longer than " + std::to_string(kLongestLine) + " characters"};
        }
        if (read_chunk()) continue;
        if (start_ == buffer_.size()) return std::nullopt;
        return line_up_to(buffer_.size());
    }
}

LineReader::Line LineReader::line_up_to(std::size_t end) const {
    std::string_view text(buffer_.data() + start_, end - start_);
    const bool feed_only = end < buffer_.size() && !text.ends_with('\r');
    if (text.ends_with('\r')) text.remove_suffix(1);
    return {text, number_, feed_only};
}

void LineReader::skip() {
    auto feed = buffer_.find('\n', searched_);
    while (feed == std::string::npos) {
        // What is skipped need not be kept, however long it is.
        start_ = searched_ = buffer_.size();
        if (!read_chunk()) return;
        feed = buffer_.find('\n', searched_);
    }
    start_ = searched_ = feed + 1;
    ++number_;
}

// False at the end of the file.
bool LineReader::read_chunk() {
    if (at_end_) return false;
    if (bytes_read_ > 0 && chunk_read) {
        const auto size = static_cast<double>(file_->size());
        chunk_read(std::min(1.0, static_cast<double>(bytes_read_) / std::max(size, 1.0)));
    }
    buffer_.erase(0, start_);
    searched_ -= start_;
    start_ = 0;
    const std::size_t kept = buffer_.size();
    buffer_.resize(kept + kChunk);
    auto* const free = reinterpret_cast<std::uint8_t*>(buffer_.data() + kept);
    const std::size_t count = file_->read({free, kChunk});
    buffer_.resize(kept + count);
    bytes_read_ += count;
    at_end_ = count < kChunk;
    return count > 0;
}

}  // namespace memwright
