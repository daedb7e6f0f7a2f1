// The entries that libFuzzer calls, for the target MEMWRIGHT_FUZZ_TARGET.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "fuzz/target.h"

namespace {

// A failed expectation ends the run where it fails, in a way that the fuzzer sees, so that it keeps
// the input: GoogleTest's own break_on_failure traps, which it does not see.
class EndAtFailure final : public testing::EmptyTestEventListener {
    void OnTestPartResult(const testing::TestPartResult& result) override {
        if (result.failed()) std::abort();
    }
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
    auto& listeners = testing::UnitTest::GetInstance()->listeners();
    listeners.Append(new EndAtFailure);  // GoogleTest deletes it
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    memwright::fuzz::MEMWRIGHT_FUZZ_TARGET({data, size});
    return 0;
}
