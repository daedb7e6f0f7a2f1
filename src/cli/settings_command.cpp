// settings: shows and changes the set-mode settings.

#include <algorithm>
#include <map>
#include <optional>

#include "base/enumeration.h"
#include "base/error.h"
#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/json.h"
#include "cli/show_or_change.h"
#include "image/set_mode_settings.h"

namespace memwright::cli {
namespace {

// The settings of an image by their ids, and what is wanted of them.
class SettingsById {
  public:
    // InputError if the image holds what is no choice.
    explicit SettingsById(const ImageCodec& image)
        : scans_bank_(memwright::scans_bank(image)), linked_(linked_banks(image)) {
        for (const SetModeSetting& setting : set_mode_settings()) {
            choices_[setting.id] = setting.choice(image);
        }
    }

    json::Members shown() const {
        json::Members all;
        for (const SetModeSetting& setting : set_mode_settings()) {
            all.emplace_back(setting.id, choices_.at(setting.id));
        }
        all.emplace_back(kScanModeId, scans_bank_ ? "Bank" : "All");
        all.emplace_back(kLinkedBanksId, linked_list());
        return all;
    }

    void change(const std::string& id, const std::string& value) {
        if (id == kScanModeId) {
            scan_mode_ = chosen(id, value, {"Bank", "All"});
        } else if (id == kLinkedBanksId) {
            link_banks(value);
        } else {
            const auto& all = set_mode_settings();
            const auto setting = std::ranges::find(all, id, &SetModeSetting::id);
            if (setting == all.end()) throw WrongUsage(unknown(id));
            choices_[id] = chosen(id, value, setting->choices);
            if (id == kKeyBeepId) key_beep_ = choices_[id];
        }
    }

    // Scan mode and key beep are one bit of the radio's.
    void store(ImageCodec& image) {
        const std::string beep_of_mode = scan_mode_ == "Bank" ? "OFF" : "ON";
        if (scan_mode_ && key_beep_ && *key_beep_ != beep_of_mode) {
            throw WrongUsage("scan-mode=" + *scan_mode_ + " and key-beep=" + *key_beep_ +
                             " exclude each other: the radio keeps both in one place, where Bank "
                             "goes with OFF and All with ON.");
        }
        if (scan_mode_) choices_[kKeyBeepId] = beep_of_mode;
        for (const SetModeSetting& setting : set_mode_settings()) {
            const auto choice = std::ranges::find(setting.choices, choices_[setting.id]);
            setting.store_position(image, static_cast<int>(choice - setting.choices.begin()));
        }
        set_linked_banks(image, linked_);
    }

  private:
    static constexpr const char* kKeyBeepId = "key-beep";

    std::string unknown(const std::string& id) const {
        std::string ids;
        for (const auto& [known, value] : shown()) ids += (ids.empty() ? "" : ", ") + known;
        return "There is no setting \"" + id + "\". Settings: " + ids + ".";
    }

    static std::string chosen(const std::string& id, const std::string& value,
                              const std::vector<std::string>& choices) {
        const auto choice = std::ranges::find_if(choices, [&](const std::string& candidate) {
            return lower_case(candidate) == lower_case(value);
        });
        if (choice != choices.end()) return *choice;
        throw WrongUsage("\"" + value + "\" is no choice of " + id + ": it is " +
                         enumeration(choices, "or") + ".");
    }

    std::string linked_list() const {
        std::string list;
        for (std::size_t i = 0; i < linked_.size(); ++i) {
            if (linked_[i]) list += (list.empty() ? "" : ",") + std::to_string(i);
        }
        return list;
    }

    void link_banks(const std::string& list) {
        linked_ = {};
        if (list.empty()) return;
        for (std::size_t i = 0; i < list.size(); i += 2) {
            const bool bank = is_digit(list[i]);
            const bool ends_well =
                i + 1 == list.size() || (list[i + 1] == ',' && i + 2 < list.size());
            if (!bank || !ends_well) {
                throw WrongUsage("\"" + list + "\" is no list of bands such as 0,3,9.");
            }
            linked_[static_cast<std::size_t>(list[i] - '0')] = true;
        }
    }

    std::map<std::string, std::string> choices_;  // by id
    bool scans_bank_;
    LinkedBanks linked_;
    std::optional<std::string> scan_mode_;  // if they are given
    std::optional<std::string> key_beep_;
};

void show(const json::Members& settings, const std::string& format, Console& console) {
    if (format == "json") {
        json::Members quoted;
        for (const auto& [name, value] : settings) quoted.emplace_back(name, json::string(value));
        console.print_exactly(json::object(quoted) + "\n");
        return;
    }
    for (const auto& [name, value] : settings) console.print(name + "=" + value + "\n");
}

// An error that says what is wrong with an image names its file.
SettingsById settings_of(const ImageCodec& image, const std::string& path) {
    try {
        return SettingsById(image);
    } catch (const InputError& error) {
        throw InputError(input_name(path) + ": " + error.what());
    }
}

}  // namespace

Status settings(const Arguments& arguments, Session& session) {
    ShowOrChange work(arguments, session);
    Workbench& bench = work.bench;
    SettingsById by_id = settings_of(bench.store, arguments[0]);
    if (work.only_shows) {
        show(by_id.shown(), work.format, session.console);
        return kDone;
    }
    for (const std::string& change : work.changes) {
        const auto equals = change.find('=');
        if (equals == std::string::npos) throw WrongUsage("\"" + change + "\" is no NAME=VALUE.");
        by_id.change(change.substr(0, equals), change.substr(equals + 1));
    }
    by_id.store(bench.store);
    bench.save(work.output);
    return kDone;
}

}  // namespace memwright::cli
