#include "image/difference.h"

#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "image/image_codec.h"
#include "image/search_limits.h"
#include "image/set_mode_settings.h"

namespace memwright {
namespace {

using Kind = Difference::Kind;

class Comparison {
  public:
    using View = std::span<const std::uint8_t>;

    Comparison(View a, View b)
        : all_of_a_(a), all_of_b_(b), a_(MemoryImage(a)), b_(MemoryImage(b)) {}

    std::vector<Difference> run() {
        for (int index = 0; index < layout::kMemories; ++index) compare_memory(index);
        for (const SetModeSetting& setting : set_mode_settings()) compare_setting(setting);
        compare_scan_mode();
        compare_linked_banks();
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

    // The texts that the table shows of a memory: none of one without a frequency.
    struct Shown {
        std::string tag, freq, mode, pref;
    };

    static Shown shown(const ImageCodec& image, int bank, int number) {
        std::string freq = image.GetMemFreq(bank, number);
        if (!is_occupied(freq)) return {};
        return {image.GetMemTag(bank, number), std::move(freq), image.GetMode(bank, number),
                image.GetPref(bank, number)};
    }

    void compare_memory(int index) {
        const int bank = index / layout::kMemoriesPerBank;
        const int number = index % layout::kMemoriesPerBank;
        const Shown a = shown(a_, bank, number), b = shown(b_, bank, number);
        Difference difference{Kind::memory, index + 1, memory_name(bank, number), {}};
        add_field(difference, "tag", a.tag, b.tag);
        add_field(difference, "freq", a.freq, b.freq);
        add_field(difference, "mode", a.mode, b.mode);
        add_field(difference, "pref", a.pref, b.pref);
        if (difference.fields.empty()) return;
        explain_record(layout::kRecords + layout::kRecordSize * index, difference);
        if (difference.has("tag") || difference.is_of_existence()) {
            explain(layout::kLabels + layout::kLabelSize * index, layout::kLabelSize);
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
        const auto text = [&](const ImageCodec& image) {
            const int position = setting.stored(image);
            return position < static_cast<int>(setting.choices.size())
                       ? setting.choices[static_cast<std::size_t>(position)]
                       : std::to_string(position) + " (no choice)";
        };
        add_setting(setting.id, text(a_), text(b_));
        explain(setting.offset, 1,
                setting.bit ? static_cast<std::uint8_t>(1U << *setting.bit) : kWhole);
    }

    void compare_scan_mode() {
        const auto text = [](const ImageCodec& image) {
            return scans_bank(image) ? "Bank" : "All";
        };
        add_setting(kScanModeId, text(a_), text(b_));
    }

    void compare_linked_banks() {
        const auto text = [](const ImageCodec& image) {
            const LinkedBanks linked = linked_banks(image);
            std::string list;
            for (std::size_t bank = 0; bank < linked.size(); ++bank) {
                if (linked[bank]) list += (list.empty() ? "" : ",") + std::to_string(bank);
            }
            return list;
        };
        add_setting(kLinkedBanksId, text(a_), text(b_));
        for (int bank = 0; bank < layout::kBanks; ++bank) explain_bit(layout::linked_bank(bank));
    }

    void compare_limits() {
        for (int limit = 0; limit < layout::kSearchLimitCount; ++limit) {
            const int record = layout::search_limit(limit);
            Difference difference{Kind::limit, limit, "limit " + std::to_string(limit), {}};
            add_field(difference, "freq", Mem2Freq(a_, record), Mem2Freq(b_, record));
            add_field(difference, "mode", RMode(a_, record), RMode(b_, record));
            if (difference.fields.empty()) continue;
            explain_record(record, difference);
            found_.push_back(difference);
        }
    }

    // Bits that nothing above speaks of, and what the files hold behind the image.
    void compare_rest() {
        const View a = all_of_a_, b = all_of_b_;
        for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
            const std::uint8_t told = i < told_.size() ? told_[i] : std::uint8_t{0};
            const bool both = i < a.size() && i < b.size();
            if (both && ((a[i] ^ b[i]) & ~told) == 0) continue;
            const auto text = [i](View bytes) {
                return i < bytes.size() ? lHex(bytes[i]) : std::string("none");
            };
            Difference difference{Kind::byte, static_cast<int>(i), "byte " + std::to_string(i), {}};
            add_field(difference, "", text(a), text(b));
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

    View all_of_a_, all_of_b_;  // with what follows the image
    ImageCodec a_, b_;
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

std::vector<Difference> differences(std::span<const std::uint8_t> a,
                                    std::span<const std::uint8_t> b) {
    return Comparison(a, b).run();
}

}  // namespace memwright
