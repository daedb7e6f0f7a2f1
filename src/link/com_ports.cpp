#include "link/com_ports.h"

#include <algorithm>
#include <cctype>
#include <compare>
#include <string_view>

#include "base/enumeration.h"
#include "base/error.h"
#include "base/number_text.h"

namespace memwright {
namespace {

// The run of digits at `at`, without the zeros in front.
std::string number_at(const std::string& text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && is_digit(text[end])) ++end;
    while (at + 1 < end && text[at] == '0') ++at;
    return text.substr(at, end - at);
}

// As people order names: ttyUSB2 before ttyUSB10.
bool before(const std::string& a, const std::string& b) {
    std::size_t i = 0;
    while (i < a.size() && i < b.size()) {
        if (is_digit(a[i]) && is_digit(b[i])) {
            const std::string number_a = number_at(a, i);
            const std::string number_b = number_at(b, i);
            if (number_a.size() != number_b.size()) return number_a.size() < number_b.size();
            if (number_a != number_b) return number_a < number_b;
        }
        if (a[i] != b[i]) return a[i] < b[i];
        ++i;
    }
    return a.size() < b.size();
}

std::string paths_of(const std::vector<SerialDevice>& devices) {
    std::vector<std::string> paths;
    for (const SerialDevice& device : devices) paths.push_back(device.path);
    return enumeration(paths, "and");
}

std::string key_of(int number) { return "COM" + std::to_string(number); }

}  // namespace

std::optional<std::pair<int, std::string>> ComPorts::named_port(const std::string& text) {
    const auto equals = text.find('=');
    if (equals == std::string::npos || equals + 1 == text.size()) return std::nullopt;
    const auto number = whole_number(std::string_view(text).substr(0, equals));
    if (!number || *number < 1 || *number > kPorts) return std::nullopt;
    return std::pair(*number, text.substr(equals + 1));
}

ComPorts::Choice ComPorts::choice(int number) const {
    if (!named_.contains(number)) {
        const std::string stored =
            settings_.get(settings::kOwnApplication, settings::kPortsSection, key_of(number), "");
        if (!stored.empty()) return {stored, devices_.describe(stored), Source::stored};
    }
    return without_stored(number);
}

ComPorts::Choice ComPorts::without_stored(int number) const {
    if (const auto named = named_.find(number); named != named_.end()) {
        return {named->second, devices_.describe(named->second), Source::command_line};
    }
    if (devices_.numbers_name_devices()) {
        return {key_of(number), devices_.describe(key_of(number)), Source::system};
    }
    const auto present = devices();
    if (number < 1 || static_cast<std::size_t>(number) > present.size()) return {};
    const SerialDevice& device = present[static_cast<std::size_t>(number) - 1];
    return {device.path, device.description, Source::system};
}

std::string ComPorts::device_of(int number) const {
    std::string path = choice(number).path;
    if (path.empty()) {
        const auto present = devices();
        std::string there = "no serial device is connected";
        if (present.size() == 1) there = "only one serial device is connected, ";
        if (present.size() > 1) {
            there = "only " + std::to_string(present.size()) + " serial devices are connected, ";
        }
        there += paths_of(present);
        throw PortError("Cannot open COM " + std::to_string(number) + ": " + there +
                        ".\nPlug the clone cable in, or choose a device in Settings, Port.");
    }
    return path;
}

void ComPorts::store(int number, const std::string& path) {
    if (path.empty()) {
        settings_.remove(settings::kOwnApplication, settings::kPortsSection, key_of(number));
    } else {
        settings_.save(settings::kOwnApplication, settings::kPortsSection, key_of(number), path);
    }
}

std::vector<SerialDevice> ComPorts::devices() const {
    auto present = devices_.list();
    std::ranges::sort(present, [](const SerialDevice& a, const SerialDevice& b) {
        if (a.usb != b.usb) return a.usb;
        return before(a.path, b.path);
    });
    return present;
}

}  // namespace memwright
