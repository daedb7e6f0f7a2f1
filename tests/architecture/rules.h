#pragma once

// The rules that can be read off the project's files: which folder may include which, and how long
// files may be. Each gives what is wrong, "" if nothing is.

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>
#include <vector>

namespace memwright::architecture {

// Lower folders first. A folder may include its own headers and those of the folders before it.
inline constexpr std::array<std::string_view, 9> kOrder = {
    "base", "controls", "platform", "native", "image", "table", "files", "link", "app"};
// These may include the folders named above, and nobody includes them.
inline constexpr std::array<std::string_view, 3> kTop = {"qt", "cli", "radio"};

inline constexpr std::size_t kHeaderLines = 200;
inline constexpr std::size_t kSourceLines = 400;

// The folders whose files may include Qt's headers.
inline constexpr std::array<std::string_view, 6> kQtFolders = {
    "src/qt/", "benchmarks/qt/", "tools/tour/", "tests/qt/", "tests/gui/", "tests/system/"};

bool is_known_folder(std::string_view folder);

// May a file of the folder `from` under src include the header `header`, as written in quotes?
std::string wrong_include(std::string_view from, std::string_view header);

// Is `header`, as written between its brackets or quotes, one of Qt's?
bool is_qt_header(std::string_view header);

// What a line includes, without its brackets or quotes; "" for any other line.
struct Include {
    std::string header;
    bool quoted = false;
};
Include include_of(std::string_view line);

// Is the beginning of a header, and its length, as it should be?
std::string wrong_shape(std::string_view path, const std::vector<std::string>& lines);

}  // namespace memwright::architecture
