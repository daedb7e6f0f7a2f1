// The rules, held against the files of the project.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "architecture/rules.h"

namespace memwright::architecture {
namespace {

namespace fs = std::filesystem;
using Findings = std::vector<std::string>;

const fs::path kRoot = MEMWRIGHT_SOURCE_FOLDER;

struct SourceFile {
    std::string path;  // from the root on, with "/"
    std::string text;

    bool is_code() const { return path.ends_with(".h") || path.ends_with(".cpp"); }
    std::vector<std::string> lines() const {
        std::vector<std::string> found;
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);) found.push_back(line);
        return found;
    }
};

// What version control and the build keep for themselves.
bool is_left_out(const fs::path& name) {
    return name == ".git" || name == ".cache" || name.string().starts_with("build");
}

std::vector<SourceFile> files_under(const fs::path& folder) {
    std::vector<SourceFile> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (folder == kRoot && is_left_out(entry.path().filename())) continue;
        if (entry.is_directory() && !entry.is_symlink()) {
            auto more = files_under(entry.path());
            std::ranges::move(more, std::back_inserter(files));
        } else if (entry.is_regular_file()) {
            std::ifstream in(entry.path(), std::ios::binary);
            files.push_back({entry.path().lexically_relative(kRoot).generic_string(),
                             {std::istreambuf_iterator<char>(in), {}}});
        }
    }
    return files;
}

const std::vector<SourceFile>& all_files() {
    static const std::vector<SourceFile> files = files_under(kRoot);
    return files;
}

// The folder under src that a file lies in; "" outside of src.
std::string folder_of(const SourceFile& file) {
    constexpr std::string_view kSources = "src/";
    if (!file.path.starts_with(kSources)) return "";
    const auto slash = file.path.find('/', kSources.size());
    return slash == std::string::npos ? ""
                                      : file.path.substr(kSources.size(), slash - kSources.size());
}

TEST(SourceTree, is_found) {
    const auto has_file = [](std::string_view path) {
        return std::ranges::any_of(all_files(), [&](const auto& f) { return f.path == path; });
    };
    EXPECT_TRUE(has_file("CMakeLists.txt"));
    EXPECT_TRUE(has_file("src/image/layout.h"));
    EXPECT_TRUE(has_file("src/image/mod_vr120.cpp"));
    EXPECT_TRUE(has_file("tests/architecture/source_tree_test.cpp"));
}

TEST(SourceTree, every_folder_has_its_place_in_the_order) {
    Findings findings;
    for (const SourceFile& file : all_files()) {
        const std::string folder = folder_of(file);
        if (file.is_code() && file.path.starts_with("src/") && !is_known_folder(folder)) {
            findings.push_back(file.path);
        }
    }
    EXPECT_THAT(findings, testing::IsEmpty());
}

TEST(SourceTree, no_folder_includes_a_header_of_one_above_it) {
    Findings findings;
    for (const SourceFile& file : all_files()) {
        const std::string folder = folder_of(file);
        if (folder.empty() || !file.is_code()) continue;
        for (const std::string& line : file.lines()) {
            const Include include = include_of(line);
            const bool bracketed_folder =
                is_known_folder(include.header.substr(0, include.header.find('/')));
            if (!include.quoted && !bracketed_folder) continue;
            const std::string wrong = wrong_include(folder, include.header);
            if (!wrong.empty()) findings.push_back(file.path + ": " + wrong);
        }
    }
    EXPECT_THAT(findings, testing::IsEmpty());
}

TEST(SourceTree, only_the_windows_include_Qt) {
    Findings findings;
    for (const SourceFile& file : all_files()) {
        const bool may = std::ranges::any_of(
            kQtFolders, [&](std::string_view folder) { return file.path.starts_with(folder); });
        if (may || !file.is_code()) continue;
        for (const std::string& line : file.lines()) {
            if (is_qt_header(include_of(line).header)) findings.push_back(file.path + ": " + line);
        }
    }
    EXPECT_THAT(findings, testing::IsEmpty());
}

TEST(SourceTree, headers_begin_as_they_should_and_files_stay_short) {
    Findings findings;
    for (const SourceFile& file : all_files()) {
        if (!file.path.starts_with("src/") && !file.path.starts_with("tests/")) continue;
        const std::string wrong = wrong_shape(file.path, file.lines());
        if (!wrong.empty()) findings.push_back(wrong);
    }
    EXPECT_THAT(findings, testing::IsEmpty());
}

}  // namespace
}  // namespace memwright::architecture
