// The entries that libFuzzer calls, for the target MEMWRIGHT_FUZZ_TARGET.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "fuzz/target.h"

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
    // A failed expectation stops where it fails, so that the input is kept.
    testing::GTEST_FLAG(break_on_failure) = true;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    memwright::fuzz::MEMWRIGHT_FUZZ_TARGET({data, size});
    return 0;
}
