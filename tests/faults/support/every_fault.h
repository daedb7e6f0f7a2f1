#pragma once

// Strikes an operation on files with every fault at every call that it makes, one at a time, and
// has a test look at what is left each time.

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "faults/support/traced_child.h"
#include "platform/file_system.h"
#include "support/temporary_folder.h"

namespace memwright::faults {

// What an operation says of itself, or that it could say no more.
enum class Said { success, failure, nothing };

struct Ending {
    Said said = Said::nothing;
    std::string words;  // of a failure
    const Outcome& outcome;
};

struct Operation {
    std::filesystem::path folder;       // whose files count
    std::function<void()> prepare;      // makes the files what they are before
    std::function<std::string()> work;  // in the child: "" or the words of its failure
    std::function<void(const Ending&)> check;
    std::function<std::string()> words = {};  // of a program that ended with another status than 0
    std::function<bool(const SystemCall&)> strikes = {};  // unless empty, only such calls
    bool every_error = true;        // or those alone that stand for the others
    bool rides_out_signals = true;  // or may say that one made it fail
};

struct Figures {
    int faults = 0;
    int kills = 0;
};

// Skips the test if nothing can be traced here.
#define MEMWRIGHT_NEEDS_TRACING()                                                             \
    if (const std::string reason = memwright::faults::reason_against_tracing(); reason != "") \
    GTEST_SKIP() << reason

// Every error at the N-th call that it can come of, once and from then on, for every N until the
// operation is through before; short reads and writes; interrupted calls; and its end before and
// after every call. Each fault has to come to pass at as many calls as the operation makes of that
// kind when it is left alone. Prints how many there were. With the sanitizers some of them have to
// stand for all.
Figures strike_everywhere(const Operation& operation);

// Has the work run without a fault; the calls that it makes.
std::vector<SystemCall> calls_of(const Operation& operation);

// A file that an operation replaces or makes.
struct ReplacedFile {
    std::filesystem::path path;
    std::optional<Bytes> before;  // none if there is no such file
    Bytes after;

    void put_back() const;

    // It is what it was or what it has to become, nothing else; it is the new one, on the disk, if
    // that was said, and the old one if a failure said that nothing was changed.
    void check(const Ending& ending) const;
    bool is_old() const;
    bool is_new() const;
};

// Nothing but what is expected lies in the folder: at most one unfinished file after a kill, or
// where removing it failed.
void check_unfinished(const std::filesystem::path& folder, const Ending& ending);

// Removes the unfinished files in a folder and those in it.
void remove_unfinished(const std::filesystem::path& folder);

// Unfinished files of a run that was killed hours ago.
void make_unfinished_old(const std::filesystem::path& folder);
int count_unfinished(const std::filesystem::path& folder);

std::optional<Bytes> content_of(const std::filesystem::path& path);

// Calls that change something, without those that only look.
bool changes_something(const SystemCall& call);

}  // namespace memwright::faults
