// Linked into every test program of the mutated copy. MUTANT is the number of the active mutant.
// REACH_LOG names a file that gets a line for each test case: its name, its milliseconds and the
// mutants that it reached, with tabs between them; a line without a name has those that were reached
// outside of the cases, and "end" is the last one.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "mutants.h"

namespace {
constexpr int kMost = 1 << 17;
}

int memwright_active_mutant = -1;
unsigned char memwright_reached_mutants[kMost];

namespace {

// Before the initialisation of any other static object.
[[gnu::constructor(101)]] void choose_mutant() {
    if (const char* number = std::getenv("MUTANT")) memwright_active_mutant = std::atoi(number);
}

class ReachLog : public testing::EmptyTestEventListener {
  public:
    explicit ReachLog(const char* path) : file_(std::fopen(path, "w")) {}

    void OnTestStart(const testing::TestInfo&) override { write("", 0); }

    void OnTestEnd(const testing::TestInfo& test) override {
        const auto& result = *test.result();
        const std::string name = std::string(test.test_suite_name()) + "." + test.name();
        write(result.Passed() ? name : "failed " + name, static_cast<long>(result.elapsed_time()));
    }

    void OnTestProgramEnd(const testing::UnitTest&) override {
        write("", 0);
        std::fputs("end\n", file_);
        std::fflush(file_);
    }

  private:
    void write(const std::string& name, long milliseconds) {
        std::string line = name + '\t' + std::to_string(milliseconds) + '\t';
        const std::size_t nothing = line.size();
        for (int mutant = 0; mutant < kMost; ++mutant) {
            if (memwright_reached_mutants[mutant]) line += std::to_string(mutant) + ' ';
        }
        std::memset(memwright_reached_mutants, 0, kMost);
        if (name.empty() && line.size() == nothing) return;
        std::fprintf(file_, "%s\n", line.c_str());
        std::fflush(file_);
    }

    std::FILE* file_;
};

const bool kLogging = [] {
    const char* path = std::getenv("REACH_LOG");
    if (path) testing::UnitTest::GetInstance()->listeners().Append(new ReachLog(path));
    return path != nullptr;
}();

}  // namespace
