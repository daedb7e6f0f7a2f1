#include "cli/difference.h"

#include <algorithm>
#include <array>

#include "app/frm_limit_search.h"
#include "app/set_mode_settings.h"
#include "cli/setting_names.h"
#include "image/number_text.h"
#include "platform/charset.h"
#include "table/columns.h"

namespace memwright::cli {
namespace {

using Kind = Difference::Kind;

class Comparison {
  public:
    Comparison(Workbench& a, Workbench& b) : a_(a), b_(b) {}

    std::vector<Difference> run() {
        for (int row = 1; row < columns::kRows; ++row) compare_memory(row);
        for (const SetModeSetting& setting : set_mode_settings()) compare_setting(setting);
        compare_scan_mode();
        compare_linked_bands();
        compare_limits();
        compare_rest();
        return std::move(found_);
    }

  private:
    static constexpr std::uint8_t kWhole = 0xFF;

    void explain(int offset, int count, std::uint8_t bits = kWhole) {
        for (int i = 0; i < count; ++i) told_[static_cast<std::size_t>(offset + i)] |= bits;
    }

    void explain_bit(const layout::BitPlace& place) {
        explain(place.offset, 1, static_cast<std::uint8_t>(1U << place.bit));
    }

    void compare_memory(int row) {
        using namespace columns;
        const MSFlexGrid& a = a_.form.MSFlexGrid1;
        const MSFlexGrid& b = b_.form.MSFlexGrid1;
        Difference difference{Kind::memory, row, a.TextMatrix(row, kLabel), {}};
        const std::pair<const char*, int> fields[] = {
            {"tag", kTag}, {"freq", kFreq}, {"mode", kMode}, {"pref", kPref}};
        for (const auto& [name, col] : fields) {
            add_field(difference, name, utf8_from_radio(a.TextMatrix(row, col)),
                      utf8_from_radio(b.TextMatrix(row, col)));
        }
        if (difference.fields.empty()) return;
        explain_record(layout::kRecords + layout::kRecordSize * (row - 1), difference);
        if (difference.has("tag") || difference.is_of_existence()) {
            explain(layout::kLabels + layout::kLabelSize * (row - 1), layout::kLabelSize);
        }
        found_.push_back(difference);
    }

    // The bits of the fields that differ; all of a record that only one image has a frequency in.
    void explain_record(int record, const Difference& difference) {
        using namespace layout;
        const auto flags = [](std::initializer_list<int> bits) {
            unsigned mask = 0;
            for (const int bit : bits) mask |= 1U << bit;
            return static_cast<std::uint8_t>(mask);
        };
        if (difference.is_of_existence()) explain(record, kRecordSize);
        if (difference.has("freq")) {
            explain(record, kFrequencySize);
            explain(record + kFlags, 1, flags({kFraction75Bit, kFraction50Bit, kFraction25Bit}));
        }
        if (difference.has("mode")) {
            explain(record + kFlags, 1, flags({kModeHighBit, kModeLowBit}));
        }
        if (difference.has("pref")) explain(record + kFlags, 1, flags({kPreferenceBit}));
    }

    void compare_setting(const SetModeSetting& setting) {
        const auto shown = [&](const Workbench& bench) {
            const int position = setting.stored(bench.store);
            return position < static_cast<int>(setting.choices.size())
                       ? setting.choices[static_cast<std::size_t>(position)]
                       : std::to_string(position) + " (no choice)";
        };
        add_setting(name_of_setting(setting.name()), shown(a_), shown(b_));
        explain(setting.offset, 1,
                setting.bit ? static_cast<std::uint8_t>(1U << *setting.bit) : kWhole);
    }

    void compare_scan_mode() {
        const auto shown = [](const Workbench& bench) {
            return bench.store.GetBit(layout::kScanMode.offset, layout::kScanMode.bit) == 1 ? "Bank"
                                                                                            : "All";
        };
        add_setting(kScanModeName, shown(a_), shown(b_));
    }

    void compare_linked_bands() {
        const auto shown = [](const Workbench& bench) {
            std::string list;
            for (int bank = 0; bank < layout::kBanks; ++bank) {
                const auto [offset, bit] = layout::linked_bank(bank);
                if (bench.store.GetBit(offset, bit) == 0) continue;
                list += (list.empty() ? "" : ",") + std::to_string(bank);
            }
            return list;
        };
        add_setting(kLinkedBandsName, shown(a_), shown(b_));
        for (int bank = 0; bank < layout::kBanks; ++bank) explain_bit(layout::linked_bank(bank));
    }

    void compare_limits() {
        const frmLimitSearch a(a_.store);
        const frmLimitSearch b(b_.store);
        for (int limit = 0; limit < layout::kSearchLimitCount; ++limit) {
            const auto i = static_cast<std::size_t>(limit);
            Difference difference{Kind::limit, limit, "limit " + std::to_string(limit), {}};
            add_field(difference, "freq", a.Text1[i].text, b.Text1[i].text);
            add_field(difference, "mode", a.Combo1[i].text, b.Combo1[i].text);
            if (difference.fields.empty()) continue;
            explain_record(layout::search_limit(limit), difference);
            found_.push_back(difference);
        }
    }

    // Bits that nothing above speaks of, and what the files hold behind the image.
    void compare_rest() {
        const Bytes a = a_.file_bytes();
        const Bytes b = b_.file_bytes();
        for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
            const std::uint8_t told = i < told_.size() ? told_[i] : std::uint8_t{0};
            const bool both = i < a.size() && i < b.size();
            if (both && ((a[i] ^ b[i]) & ~told) == 0) continue;
            const auto shown = [i](const Bytes& bytes) {
                return i < bytes.size() ? lHex(bytes[i]) : std::string("none");
            };
            Difference difference{Kind::byte, static_cast<int>(i), "byte " + std::to_string(i), {}};
            add_field(difference, "", shown(a), shown(b));
            found_.push_back(difference);
        }
    }

    void add_setting(const std::string& name, const std::string& a, const std::string& b) {
        Difference difference{Kind::setting, 0, name, {}};
        add_field(difference, "", a, b);
        if (!difference.fields.empty()) found_.push_back(difference);
    }

    static void add_field(Difference& difference, const char* name, const std::string& a,
                          const std::string& b) {
        if (a != b) difference.fields.push_back({name, a, b});
    }

    Workbench& a_;
    Workbench& b_;
    std::vector<Difference> found_;
    std::array<std::uint8_t, layout::kImageSize> told_{};  // bits that were compared by their texts
};

}  // namespace

bool Difference::has(const std::string& field) const {
    return std::ranges::any_of(fields, [&](const Field& known) { return known.name == field; });
}

bool Difference::is_of_existence() const {
    return std::ranges::any_of(fields, [](const Field& field) {
        return field.name == "freq" && (field.a.empty() || field.b.empty());
    });
}

std::vector<Difference> differences(Workbench& a, Workbench& b) { return Comparison(a, b).run(); }

}  // namespace memwright::cli
