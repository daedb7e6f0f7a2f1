#include <algorithm>

#include "app/dialogs.h"
#include "link/serial_link.h"

namespace memwright {
namespace {

std::string with_description(const std::string& path, const std::string& description) {
    return description.empty() ? path : path + ", " + description;
}

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

Form2::Form2(SettingsStore& settings, ComPorts& ports)
    : settings_(settings), ports_(ports), transfer_port_(transfer_port(settings)) {
    std::vector<std::string> items;
    for (int n = 1; n <= ComPorts::kPorts; ++n) items.push_back("COM " + std::to_string(n));
    Combo1.items = items;
    Combo1.text =
        "COM " + settings.get(settings::kApplication, settings::kSection, "CommPort", "1");
    Command1.caption = "&OK";
    click_ = Command1.clicked.connect([this] { Command1_Click(); });

    DeviceListLabel.caption = "&Device for COM " + std::to_string(transfer_port_) + ":";
    const ComPorts::Choice now = ports_.choice(transfer_port_);
    if (now.source == ComPorts::Source::stored) device_ = now.path;
    DeviceList.enabled = now.source != ComPorts::Source::command_line;
    refresh();
}

void Form2::refresh() {
    listed_ = ports_.devices();
    const bool present = std::ranges::any_of(
        listed_, [&](const SerialDevice& device) { return device.path == device_; });
    if (!device_.empty() && !present) listed_.push_back({device_, ports_.describe(device_), false});
    show_devices();
}

void Form2::show_devices() {
    const ComPorts::Choice by_itself = ports_.without_stored(transfer_port_);
    const std::string how =
        by_itself.source == ComPorts::Source::command_line ? "From the command line" : "Automatic";
    std::vector<std::string> items{
        how + (by_itself.path.empty() ? " (none found)" : " (" + by_itself.path + ")")};
    std::string chosen = items.front();
    std::string device = by_itself.path.empty()
                             ? "no device"
                             : with_description(by_itself.path, by_itself.description);
    for (const SerialDevice& listed : listed_) {
        items.push_back(with_description(listed.path, listed.description));
        if (listed.path == device_) device = chosen = items.back();
    }
    DeviceList.items = items;
    DeviceList.text = chosen;
    DeviceLabel.caption = "Transfers use COM " + std::to_string(transfer_port_) + ": " + device;
}

void Form2::choose_device(int index) {
    const auto entry = static_cast<std::size_t>(index);
    device_ = entry >= 1 && entry <= listed_.size() ? listed_[entry - 1].path : "";
    refresh();
}

void Form2::Command1_Click() {
    const std::string& text = Combo1.text;
    const std::string number = trimmed(text.size() > 2 ? text.substr(text.size() - 2) : text);
    // Deliberate: transfers read their port's number under another application's name.
    settings_.save(settings::kApplication, settings::kSection, "CommPort", number);
    if (DeviceList.enabled) ports_.store(transfer_port_, device_);
    closed();
}

}  // namespace memwright
