// check: what looks wrong in an image.

#include <map>

#include "base/charset.h"
#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/workbench.h"
#include "image/blocked_ranges.h"
#include "image/search_limits.h"
#include "image/set_mode_settings.h"
#include "table/columns.h"

namespace memwright::cli {
namespace {

constexpr double kHighestMegahertz = 1300;  // the radio receives below

class Findings {
  public:
    explicit Findings(Console& console) : console_(console) {}

    void add(const std::string& where, const std::string& what) {
        console_.print(where + ": " + what + "\n");
        ++count_;
    }
    int count() const { return count_; }

  private:
    Console& console_;
    int count_ = 0;
};

// A record of the image with a frequency in it.
void check_frequency(const std::string& where, const std::string& digits,
                     const std::string& frequency, Findings& findings) {
    if (digits.find_first_not_of("0123456789", 1) != std::string::npos) {
        findings.add(where, "the frequency's digits are " + digits +
                                ", and some are no decimal digits: the radio and this program may "
                                "read different frequencies");
        return;
    }
    const double megahertz = leading_number(frequency);
    if (megahertz >= kHighestMegahertz) {
        findings.add(where, frequency + " MHz is past the radio's range, which ends at " +
                                "1299.99999 MHz: it cannot be received");
    } else if (const std::string edge = CheckBlocked(frequency); edge != frequency) {
        findings.add(where, frequency +
                                " MHz lies in a range that the radio cannot receive, which "
                                "ends at " +
                                edge + " MHz: typed again it would move there");
    }
}

void check_memories(const Workbench& bench, Findings& findings) {
    using namespace columns;
    const MSFlexGrid& grid = bench.form.MSFlexGrid1;
    std::map<std::string, std::string> first_with;  // where a frequency stands first
    for (int row = 1; row < grid.Rows(); ++row) {
        const std::string where = grid.TextMatrix(row, kLabel);
        const int record = layout::kRecords + layout::kRecordSize * (row - 1);
        const std::string digits = bench.store.frequency_digits(record);
        if (digits == "FFFFFF") continue;
        const std::string& frequency = grid.TextMatrix(row, kFreq);
        check_frequency(where, digits, frequency, findings);
        if (frequency.empty()) continue;
        if (grid.TextMatrix(row, kMode).empty()) {
            findings.add(where, "the mode is missing: the radio has none to receive with");
        }
        const auto [first, is_first] = first_with.emplace(frequency, where);
        if (!is_first) {
            findings.add(where, frequency + " MHz is also in " + first->second +
                                    ": a scan stops at it twice");
        }
    }
}

void check_settings(const Workbench& bench, Findings& findings) {
    for (const SetModeSetting& setting : set_mode_settings()) {
        const int position = setting.stored(bench.store);
        if (position < static_cast<int>(setting.choices.size())) continue;
        findings.add(setting.name(), "byte " + std::to_string(setting.offset) + " is " +
                                         std::to_string(position) + ", and its choices are 0 to " +
                                         std::to_string(setting.choices.size() - 1) +
                                         ": the settings cannot be shown or changed");
    }
}

void check_limits(Workbench& bench, Findings& findings) {
    for (int limit = 0; limit < layout::kSearchLimitCount; ++limit) {
        const int record = layout::search_limit(limit);
        const std::string digits = bench.store.frequency_digits(record);
        if (digits == "FFFFFF") continue;
        check_frequency("limit " + std::to_string(limit), digits, Mem2Freq(bench.store, record),
                        findings);
    }
}

}  // namespace

Status check(const Arguments& arguments, Session& session) {
    Findings findings(session.console);
    const std::size_t size = session.files.whole(arguments[0]).size();
    if (size != layout::kImageSize) {
        findings.add("length", "the file has " + std::to_string(size) + " bytes instead of " +
                                   std::to_string(layout::kImageSize) +
                                   (size < layout::kImageSize
                                        ? ": what is missing would be taken for zeros"
                                        : ": those behind the image mean nothing to the radio"));
    }
    if (size < layout::kImageSize) return kFound;
    Workbench bench(session.console, session.files);
    bench.open(arguments[0]);
    check_memories(bench, findings);
    check_settings(bench, findings);
    check_limits(bench, findings);
    return findings.count() == 0 ? kDone : kFound;
}

}  // namespace memwright::cli
