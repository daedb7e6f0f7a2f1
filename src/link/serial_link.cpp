#include "link/serial_link.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <optional>

#include "base/error.h"
#include "base/number_text.h"

namespace memwright {
namespace {

using std::chrono::microseconds;

constexpr int kBufferSize = 30000;
constexpr int kReceiveThreshold = 8;
constexpr int kBinary = 1;
// How often a wait looks at the port: some three times in a byte's 1.1 ms where bytes are coming,
// since the port need not tell of each; and more and more seldom where none come, to leave the
// machine alone.
constexpr microseconds kFirstLook{300};
constexpr microseconds kLookInterval{10'000};
constexpr microseconds kLongestRound{100'000};
constexpr double kHalfDay = 12.0 * 60 * 60;

}  // namespace

// Deliberate: the port dialog stores its choice under another application, so it never gets here.
int transfer_port(SettingsStore& settings) {
    const std::string text =
        settings.get(settings::kCloneApplication, settings::kSection, "CommPort", "1");
    try {
        return integer_from_text(text);
    } catch (const ConversionError&) {
        throw PortError(
            "Cannot set the serial port up: the stored port number is \"" + text +
            "\".\nStore a number from 1 to 12 as CommPort of VR120Clone, or remove it.");
    }
}

void SerialLink::InitPort() {
    MSComm1_.set_properties({.CommPort = transfer_port(settings_),
                             .Settings = "9600,E,8,1",
                             .DTREnable = true,
                             .EOFEnable = false,
                             .Handshaking = 0,
                             .InBufferSize = kBufferSize,
                             .InputLen = 0,
                             .InputMode = kBinary,
                             .NullDiscard = false,
                             .OutBufferSize = kBufferSize,
                             .ParityReplace = "",
                             .RThreshold = kReceiveThreshold,
                             .RTSEnable = true,
                             .SThreshold = 0});
}

void SerialLink::pause(double sec) {
    const double start = clock_.seconds_since_midnight();
    double last = start;
    bool midnight_passed = false;
    while (true) {
        control_.check();
        const double now = clock_.seconds_since_midnight();
        // A clock that is merely put back a little has not passed midnight.
        midnight_passed = midnight_passed || last - now > kHalfDay;
        last = now;
        const double left = sec - (now - start);
        // Deliberate: a wait across midnight ends when the same time of day comes round again.
        if (left <= 0 || (midnight_passed && now >= start)) return;
        const auto round = microseconds(static_cast<std::int64_t>(std::ceil(left * 1e6)));
        loop_.wait(std::min(round, kLongestRound));
    }
}

void SerialLink::wait_for_bytes(const std::function<bool(int)>& enough,
                                const std::function<void(int)>& look) {
    microseconds round = kFirstLook;
    std::optional<int> before;
    while (true) {
        control_.check();
        const int count = MSComm1_.InBufferCount();
        if (look) look(count);
        if (enough(count)) return;
        if (before != count) round = kFirstLook;
        before = count;
        loop_.wait(round);
        round = std::min(2 * round, kLookInterval);
    }
}

void SerialLink::open() {
    MSComm1_.PortOpen(true);
    output_.begin();
}

void SerialLink::send(std::span<const std::uint8_t> bytes) {
    output_.all_have_left();
    MSComm1_.Output(bytes);
    output_.add(bytes.size());
}

void SerialLink::finish_sending() {
    constexpr microseconds kByte{1'000};
    for (;;) {
        control_.check();
        if (output_.all_have_left()) return;
        loop_.wait(kByte);
    }
}

void SerialLink::clear_status() {
    status_.Text1.text = "";
    status_.Text1.caret = 0;
    status_.Label1.caption = "";
}

}  // namespace memwright
