#pragma once

// Waiting for a program that goes its own pace: conditions are asked again in short steps until
// they hold or the patience is used up. Nothing here sleeps longer than one step.
// Errors: NotThere is "not yet" while there is patience left, and reaches the test afterwards;
// every other exception ends the wait at once.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace memwright::systest {

using Milliseconds = std::chrono::milliseconds;

// Long enough for a sanitizer build on a busy machine; only a failing test ever uses it up.
inline constexpr Milliseconds kPatience{20000};

// What was looked for does not exist at this moment.
class NotThere : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Asks until the condition holds; false when the patience is used up.
bool wait_until(const std::function<bool()>& condition, Milliseconds patience = kPatience);

// Reads until the value matches, and fails the test, with the last value, when it never does.
template <class Read, class Matcher>
void expect_eventually(Read read, const Matcher& matcher, Milliseconds patience = kPatience,
                       const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    using Value = std::decay_t<decltype(read())>;
    const testing::Matcher<const Value&> wanted = testing::SafeMatcherCast<const Value&>(matcher);
    if (wait_until([&] { return wanted.Matches(read()); }, patience)) return;
    const Value last = read();
    testing::StringMatchResultListener why;
    if (wanted.MatchAndExplain(last, &why)) return;
    std::string description = testing::DescribeMatcher<const Value&>(wanted);
    ADD_FAILURE_AT(file, line) << "Waited " << patience.count() << " ms for a value that "
                               << description << "\n  Last: " << testing::PrintToString(last) << ' '
                               << why.str();
}

}  // namespace memwright::systest
