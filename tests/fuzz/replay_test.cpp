// Every seed, and every input that once found a fault, through its target: without a fuzzer, as
// each compiler builds it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/target.h"
#include "support/temporary_folder.h"

namespace memwright::fuzz {
namespace {

namespace fs = std::filesystem;

const fs::path kHere = MEMWRIGHT_FUZZ_FOLDER;

// Sorted, so that every run is the same.
std::vector<fs::path> files_in(const fs::path& folder) {
    std::vector<fs::path> files;
    if (!fs::exists(folder)) return files;
    for (const auto& entry : fs::directory_iterator(folder)) files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

std::vector<std::uint8_t> bytes_of_file(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in.is_open()) << path;
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class Replay : public testing::TestWithParam<Target> {
  protected:
    Replay() { fs::current_path(folder.path()); }
    ~Replay() override { fs::current_path(folder_before); }

    void replay(const std::vector<fs::path>& files) {
        for (const fs::path& file : files) {
            const testing::ScopedTrace trace(__FILE__, __LINE__, file.string());
            const auto bytes = bytes_of_file(file);
            EXPECT_NO_THROW(GetParam().run(bytes));
            EXPECT_EQ(fs::current_path(), fs::canonical(folder.path()));
        }
    }

    fs::path folder_before = fs::current_path();
    TemporaryFolder folder;
};

TEST_P(Replay, every_seed_and_every_finding_keeps_the_promises) {
    const auto seeds = files_in(kHere / "seeds" / GetParam().name);
    EXPECT_GE(seeds.size(), 3U);
    replay(seeds);
    replay(files_in(kHere / "findings" / GetParam().name));
}

TEST_P(Replay, nothing_at_all_keeps_the_promises) { EXPECT_NO_THROW(GetParam().run({})); }

INSTANTIATE_TEST_SUITE_P(Targets, Replay, testing::ValuesIn(targets()),
                         [](const auto& suite) { return std::string(suite.param.name); });

TEST(Inputs, belong_to_targets) {
    for (const char* kind : {"seeds", "findings"}) {
        for (const fs::path& folder : files_in(kHere / kind)) {
            if (!fs::is_directory(folder)) continue;
            EXPECT_TRUE(std::ranges::any_of(targets(), [&](const Target& t) {
                return folder.filename() == t.name;
            })) << folder;
        }
    }
}

}  // namespace
}  // namespace memwright::fuzz
