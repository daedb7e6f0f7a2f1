#include "image/blocked_ranges.h"

#include <algorithm>
#include <array>

#include "base/number_text.h"

namespace memwright {
namespace {

// Both bounds, in MHz, lie outside of the range.
struct BlockedRange {
    double lower;
    double upper;
    const char* result;
};

constexpr std::array<BlockedRange, 12> kBlockedRanges = {{
    {338.999, 340.0, "340.00000"},
    {350.999, 352.0, "352.00000"},
    {371.999, 373.0, "373.00000"},
    {383.383, 385.0, "385.00000"},  // Deliberate: wider than its neighbours, not from 383.999.
    {541.999, 549.0, "549.00000"},
    {557.999, 572.0, "572.00000"},
    {604.999, 615.0, "615.00000"},
    {619.999, 630.0, "630.00000"},
    {783.999, 798.0, "798.00000"},
    {806.999, 820.0, "820.00000"},
    {823.999, 849.0, "849.00000"},
    {868.999, 894.0, "894.00000"},
}};

}  // namespace

std::string CheckBlocked(const std::string& Freq) {
    const double frequency = leading_number(Freq);
    const auto range = std::ranges::find_if(kBlockedRanges, [&](const BlockedRange& r) {
        return frequency > r.lower && frequency < r.upper;
    });
    return range == kBlockedRanges.end() ? Freq : range->result;
}

}  // namespace memwright
