#include "faults/support/every_fault.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <iostream>

namespace memwright::faults {
namespace {

namespace fs = std::filesystem;

constexpr int kMostCalls = 5000;

// With the sanitizers a child process takes long to make. There each kind of fault comes to pass at
// every such-th call, beginning with another one.
#if defined(__SANITIZE_ADDRESS__)
constexpr int kStep = 6;
#else
constexpr int kStep = 1;
#endif

// One kind of fault that moves through an operation.
struct Series {
    Deed deed;
    int error;
    int times;
    bool harmless;  // the operation has to go on as if nothing had happened
};

std::vector<Series> all_series(bool every_error, bool rides_out_signals) {
    constexpr int kFewTimes = 3;
    std::vector<Series> all;
    std::vector<int> errors = {ENOSPC, EIO};
    if (every_error) errors.insert(errors.end(), {EDQUOT, EACCES, ENOLCK});
    for (const int error : errors) {
        all.push_back({Deed::fail, error, 1, false});
        all.push_back({Deed::fail, error, Fault::kEver, false});
        all.push_back({Deed::half_then_fail, error, Fault::kEver, false});
    }
    all.push_back({Deed::done_but_fail, EIO, 1, false});
    all.push_back({Deed::fail, EINTR, 1, rides_out_signals});
    if (every_error) all.push_back({Deed::fail, EINTR, kFewTimes, rides_out_signals});
    all.push_back({Deed::one_byte, 0, 1, true});
    if (every_error) all.push_back({Deed::half, 0, 1, true});
    all.push_back({Deed::half, 0, Fault::kEver, true});
    all.push_back({Deed::kill_before, 0, 1, false});
    all.push_back({Deed::kill_after, 0, 1, false});
    return all;
}

int failures() {
    const auto& result = *testing::UnitTest::GetInstance()->current_test_info()->result();
    int count = 0;
    for (int i = 0; i < result.total_part_count(); ++i) {
        count += result.GetTestPartResult(i).failed() ? 1 : 0;
    }
    return count;
}

bool strikes(const Series& series, const SystemCall& call) {
    switch (series.deed) {
        case Deed::fail:
            return is_sensible(series.error, call.kind);
        case Deed::half_then_fail:
            return call.kind == Kind::write && is_sensible(series.error, call.kind);
        case Deed::done_but_fail:
            return call.kind == Kind::rename || call.kind == Kind::remove ||
                   call.kind == Kind::folder;
        case Deed::one_byte:
        case Deed::half:
            return call.kind == Kind::write || call.kind == Kind::read;
        default:
            return true;
    }
}

bool is_unfinished(const fs::path& file) {
    return file.filename().string().starts_with(".memwright-");
}

// Runs the operation once; true if the fault came to pass.
bool run_once(const Operation& operation, const Fault& fault, bool harmless, Figures& figures) {
    operation.prepare();
    const Outcome outcome = run_traced(operation.work, operation.folder, fault);
    (outcome.killed ? figures.kills : figures.faults) += outcome.struck ? 1 : 0;
    Ending ending{.words = outcome.report, .outcome = outcome};
    if (!outcome.killed) {
        const bool well = outcome.exit_status == 0 && outcome.report.empty();
        ending.said = well ? Said::success : Said::failure;
        if (!well && operation.words) ending.words += operation.words();
    }
    SCOPED_TRACE(fault.text() + "; it said: " + ending.words + "\n" + text_of(outcome.calls));
    EXPECT_TRUE(outcome.killed || outcome.exit_status >= 0) << "it crashed";
    EXPECT_TRUE(ending.said == Said::success || (outcome.struck && !harmless)) << "it failed";
    operation.check(ending);
    return outcome.struck;
}

// From call to call until it comes to pass no more.
void move_through(const Operation& operation, const Series& series,
                  const std::vector<SystemCall>& calls, int begin, Figures& figures) {
    Fault fault{series.deed, series.error, 1, series.times, {}};
    fault.strikes = [&](const SystemCall& call) {
        return strikes(series, call) && (!operation.strikes || operation.strikes(call));
    };
    const auto count = std::ranges::count_if(calls, fault.strikes);
    const int step = count > kStep ? kStep : 1;
    fault.first += begin % step;
    const int before = failures();
    while (run_once(operation, fault, series.harmless, figures)) {
        if (failures() != before) return;  // one is enough to see what is wrong
        fault.first += step;
        if (fault.first > kMostCalls) {
            ADD_FAILURE() << "it never ends: " << fault.text();
            return;
        }
    }
    EXPECT_GT(fault.first, count) << "not reached: " << fault.text();
    EXPECT_LE(fault.first, count + step) << "calls that it does not make when left alone";
}

}  // namespace

Figures strike_everywhere(const Operation& operation) {
    Figures figures;
    const std::vector<SystemCall> calls = calls_of(operation);
    int begin = 0;
    for (const Series& series : all_series(operation.every_error, operation.rides_out_signals)) {
        move_through(operation, series, calls, begin++, figures);
    }
    std::cout << calls.size() << " calls, " << figures.faults << " faults, " << figures.kills
              << " kills\n";
    EXPECT_GT(figures.faults, 0);
    EXPECT_GT(figures.kills, 0);
    return figures;
}

std::vector<SystemCall> calls_of(const Operation& operation) {
    operation.prepare();
    return run_traced(operation.work, operation.folder, {}).calls;
}

std::optional<Bytes> content_of(const fs::path& path) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    if (!in.is_open()) return std::nullopt;
    Bytes bytes(static_cast<std::size_t>(in.tellg()));
    in.seekg(0);
    in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(in.good()) << "cannot read " << path;
    return bytes;
}

void ReplacedFile::put_back() const {
    if (content_of(path) == before) return;
    fs::remove(path);
    if (!before) return;
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(before->data()),
              static_cast<std::streamsize>(before->size()));
}

bool ReplacedFile::is_old() const { return content_of(path) == before; }
bool ReplacedFile::is_new() const { return content_of(path) == after; }

void ReplacedFile::check(const Ending& ending) const {
    const bool old_one = is_old();
    const bool new_one = is_new();
    EXPECT_TRUE(old_one || new_one) << path << " is neither the old file nor the new one";
    if (ending.said == Said::success) {
        EXPECT_TRUE(new_one) << "success was reported falsely";
        EXPECT_EQ(missing_for_the_disk(ending.outcome.calls, path), "");
    }
    if (ending.said == Said::failure) {
        EXPECT_NE(ending.words, "");
        const bool says_unchanged = ending.words.find("Nothing was changed") != std::string::npos;
        EXPECT_TRUE(old_one || !says_unchanged) << "it was changed";
    }
}

int count_unfinished(const fs::path& folder) {
    int count = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        count += is_unfinished(entry) ? 1 : 0;
    }
    return count;
}

void check_unfinished(const fs::path& folder, const Ending& ending) {
    bool excused = ending.said == Said::nothing;
    for (const SystemCall& call : ending.outcome.calls) {
        if (call.kind == Kind::remove && !call.succeeded()) excused = true;
    }
    EXPECT_LE(count_unfinished(folder), excused ? 1 : 0) << "unfinished files are left";
}

void remove_unfinished(const fs::path& folder) {
    std::vector<fs::path> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (is_unfinished(entry)) found.push_back(entry);
    }
    for (const fs::path& file : found) fs::remove(file);
}

void make_unfinished_old(const fs::path& folder) {
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (!is_unfinished(entry)) continue;
        fs::last_write_time(entry, fs::file_time_type::clock::now() - std::chrono::hours(25));
    }
}

bool changes_something(const SystemCall& call) {
    switch (call.kind) {
        case Kind::create:
        case Kind::write:
        case Kind::sync:
        case Kind::rename:
        case Kind::remove:
        case Kind::attributes:
        case Kind::folder:
        case Kind::lock:
            return true;
        default:
            return false;
    }
}

}  // namespace memwright::faults
