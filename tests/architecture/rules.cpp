#include "architecture/rules.h"

namespace memwright::architecture {
namespace {

template <class List>
std::size_t place_in(const List& list, std::string_view name) {
    return static_cast<std::size_t>(std::ranges::find(list, name) - list.begin());
}

bool is_top(std::string_view folder) { return place_in(kTop, folder) < kTop.size(); }

}  // namespace

bool is_known_folder(std::string_view folder) {
    return place_in(kOrder, folder) < kOrder.size() || is_top(folder);
}

std::string wrong_include(std::string_view from, std::string_view header) {
    const std::string what = std::string(from) + " includes " + std::string(header);
    if (header.find("..") != std::string_view::npos) return what + ": name it from src/ on";
    const auto slash = header.find('/');
    if (slash == std::string_view::npos) return "";  // made by a tool, beside the file itself
    const std::string_view to = header.substr(0, slash);
    if (to == from) return "";
    if (!is_known_folder(to)) return what + ": there is no such folder";
    if (is_top(to)) return what + ": nobody includes " + std::string(to);
    const std::size_t height = place_in(kOrder, to);
    if (from == "radio") {
        return height <= place_in(kOrder, "image") ? "" : what + ": it knows the image alone";
    }
    return is_top(from) || height < place_in(kOrder, from) ? "" : what + ", which lies above it";
}

bool is_qt_header(std::string_view header) {
    if (header.starts_with('Q')) return true;
    return header.starts_with('q') && header.ends_with(".h") &&
           header.find('/') == std::string_view::npos;
}

Include include_of(std::string_view line) {
    const auto skip_blanks = [&] {
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    };
    skip_blanks();
    if (!line.starts_with('#')) return {};
    line.remove_prefix(1);
    skip_blanks();
    constexpr std::string_view kInclude = "include";
    if (!line.starts_with(kInclude)) return {};
    line.remove_prefix(kInclude.size());
    skip_blanks();
    if (line.empty() || (line.front() != '"' && line.front() != '<')) return {};
    const bool quoted = line.front() == '"';
    line.remove_prefix(1);
    return {std::string(line.substr(0, line.find(quoted ? '"' : '>'))), quoted};
}

std::string wrong_shape(std::string_view path, const std::vector<std::string>& lines) {
    const bool header = path.ends_with(".h");
    if (!header && !path.ends_with(".cpp")) return "";
    const std::size_t limit = header ? kHeaderLines : kSourceLines;
    if (lines.size() >= limit) {
        return std::string(path) + " has " + std::to_string(lines.size()) + " lines: stay under " +
               std::to_string(limit);
    }
    if (header && (lines.empty() || lines.front() != "#pragma once")) {
        return std::string(path) + " does not begin with #pragma once";
    }
    return "";
}

}  // namespace memwright::architecture
