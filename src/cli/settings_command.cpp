// settings: the dialog of the set-mode settings, worked from the command line.

#include <algorithm>
#include <memory>
#include <optional>

#include "app/frm_misc_setting.h"
#include "cli/commands.h"
#include "cli/json.h"
#include "cli/setting_names.h"
#include "cli/workbench.h"

namespace memwright::cli {
namespace {

std::string lower_case(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

// The controls of the dialog by name, and what is wanted of them.
class SettingsByName {
  public:
    explicit SettingsByName(frmMiscSetting& form) : form_(form) {}

    json::Members shown() const {
        json::Members all;
        for (const auto& setting : form_.settings()) {
            all.emplace_back(name_of_setting(setting.name()), setting.list.text);
        }
        all.emplace_back(kScanModeName, form_.Option1.selected ? "Bank" : "All");
        all.emplace_back(kLinkedBandsName, linked_bands());
        return all;
    }

    void change(const std::string& name, const std::string& value) {
        if (name == kScanModeName) {
            scan_mode_ = chosen(name, value, {"Bank", "All"});
        } else if (name == kLinkedBandsName) {
            link_bands(value);
        } else {
            const auto setting = std::ranges::find_if(form_.settings(), [&](const auto& known) {
                return name_of_setting(known.name()) == name;
            });
            if (setting == form_.settings().end()) throw WrongUsage(unknown(name));
            setting->list.text = chosen(name, value, setting->choices);
            if (&setting->list == &form_.Combo7) key_beep_ = setting->list.text;
        }
    }

    // Scan mode and key beep are one bit of the radio's.
    void agree() {
        const std::string beep_of_mode = scan_mode_ == "Bank" ? "OFF" : "ON";
        if (scan_mode_ && key_beep_ && *key_beep_ != beep_of_mode) {
            throw WrongUsage("scan-mode=" + *scan_mode_ + " and key-beep=" + *key_beep_ +
                             " exclude each other: the radio keeps both in one place, where Bank "
                             "goes with OFF and All with ON.");
        }
        if (scan_mode_) form_.Combo7.text = beep_of_mode;
        const bool bank = form_.Combo7.text.get() == "OFF";
        form_.Option1.selected = bank;
        form_.Option2.selected = !bank;
    }

  private:
    std::string unknown(const std::string& name) const {
        std::string names;
        for (const auto& [known, value] : shown()) names += (names.empty() ? "" : ", ") + known;
        return "There is no setting \"" + name + "\". Settings: " + names + ".";
    }

    static std::string chosen(const std::string& name, const std::string& value,
                              const std::vector<std::string>& choices) {
        const auto choice = std::ranges::find_if(choices, [&](const std::string& candidate) {
            return lower_case(candidate) == lower_case(value);
        });
        if (choice != choices.end()) return *choice;
        throw WrongUsage("\"" + value + "\" is no choice of " + name + ": it is " +
                         enumeration(choices) + ".");
    }

    std::string linked_bands() const {
        std::string list;
        for (std::size_t i = 0; i < form_.Check1.size(); ++i) {
            if (form_.Check1[i].checked) list += (list.empty() ? "" : ",") + std::to_string(i);
        }
        return list;
    }

    void link_bands(const std::string& list) {
        for (CheckBox& box : form_.Check1) box.checked = false;
        if (list.empty()) return;
        for (std::size_t i = 0; i < list.size(); i += 2) {
            const bool band = list[i] >= '0' && list[i] <= '9';
            const bool ends_well =
                i + 1 == list.size() || (list[i + 1] == ',' && i + 2 < list.size());
            if (!band || !ends_well) {
                throw WrongUsage("\"" + list + "\" is no list of bands such as 0,3,9.");
            }
            form_.Check1[static_cast<std::size_t>(list[i] - '0')].checked = true;
        }
    }

    frmMiscSetting& form_;
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
std::unique_ptr<frmMiscSetting> opened_dialog(modVR120& store, const std::string& path) {
    try {
        return std::make_unique<frmMiscSetting>(store);
    } catch (const InputError& error) {
        throw InputError(input_name(path) + ": " + error.what());
    }
}

}  // namespace

Status settings(const Arguments& arguments, Session& session) {
    const std::string format = arguments.choice("--format", {"text", "json"});
    const auto changes = arguments.from(1);
    const bool only_shows = changes.empty() && !arguments.has("--output");
    const std::string output = arguments.value("--output").value_or(arguments[0]);
    const auto lock = only_shows ? nullptr : session.files.lock(output, {arguments[0]});
    Workbench bench(session.console, session.files);
    bench.load(arguments[0]);
    const auto form = opened_dialog(bench.store, arguments[0]);
    SettingsByName by_name(*form);
    if (only_shows) {
        show(by_name.shown(), format, session.console);
        return kDone;
    }
    for (const std::string& change : changes) {
        const auto equals = change.find('=');
        if (equals == std::string::npos) throw WrongUsage("\"" + change + "\" is no NAME=VALUE.");
        by_name.change(change.substr(0, equals), change.substr(equals + 1));
    }
    by_name.agree();
    form->SaveAll();
    bench.save(output);
    return kDone;
}

}  // namespace memwright::cli
