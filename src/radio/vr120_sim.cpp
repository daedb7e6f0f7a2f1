// vr120-sim: the simulated radio at the end of a pseudo-terminal.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "base/error.h"
#include "base/printable.h"
#include "radio/command_line.h"
#include "radio/demonstration.h"
#include "radio/event_lines.h"
#include "radio/image_file.h"
#include "radio/pseudo_terminal.h"
#include "radio/simulated_radio.h"

namespace memwright::radio {
namespace {

// Bytes that arrive one shortly after the other are handed over together, as serial adapters do.
constexpr Time kHandOver = std::chrono::microseconds(500);
// A computer that has opened its port drops what arrives before it has set it up.
constexpr Time kSetUp = std::chrono::milliseconds(20);

constexpr int kFailed = 1;
constexpr int kWrongArguments = 2;

// Whoever listens reads it now, not when a buffer is full.
void say(const std::string& line) {
    std::printf("%s\n", printable(line).c_str());
    std::fflush(stdout);
}

void complain(const std::string& what) {
    std::fprintf(stderr, "vr120-sim: %s\n", printable(what).c_str());
}

std::string saved(const std::string& path, const MemoryImage& image) {
    if (path.empty()) return "";
    try {
        save_image(path, image);
        return ", saved to " + path;
    } catch (const FileError& error) {
        return std::string(", not saved: ") + error.what();
    }
}

void pass_on(const PseudoTerminal::Activity& activity, SimulatedRadio& radio) {
    const Time now = PseudoTerminal::now();
    if (!activity.bytes_before.empty()) radio.receive(activity.bytes_before, now);
    if (activity.closed) radio.line_closed(now);
    if (!activity.opened) return;
    std::this_thread::sleep_for(kSetUp);
    radio.line_opened(PseudoTerminal::now());
    if (!activity.bytes_after.empty()) radio.receive(activity.bytes_after, PseudoTerminal::now());
}

std::optional<Time> next_hand_over(const SimulatedRadio& radio) {
    const auto next = radio.next_event();
    if (!next) return next;
    return std::max(*next, PseudoTerminal::now() + kHandOver);
}

void run(SimulatedRadio& radio, PseudoTerminal& line, const std::string& save) {
    EventLines events;
    while (!stop_requested()) {
        const std::size_t lost = line.send(radio.transmit(PseudoTerminal::now()));
        if (lost > 0) say("overrun: " + std::to_string(lost) + " bytes lost, nobody reads them");
        const Report& report = radio.report();
        const std::string where =
            events.image_received(report) ? saved(save, radio.memory()) : std::string{};
        for (const std::string& text : events.take(report, where)) say(text);
        if (radio.hung_up()) {
            line.hang_up();
            say("hung up");
            return;
        }
        pass_on(line.wait(next_hand_over(radio)), radio);
    }
}

int start(const std::vector<std::string>& arguments) {
    CommandLine command;
    MemoryImage memory;
    try {
        command = parse_command_line(arguments);
        if (command.help || command.version) {
            say(command.help ? help_text() : "vr120-sim " MEMWRIGHT_VERSION);
            return 0;
        }
        memory = command.image.empty() ? demonstration_memory() : load_image(command.image);
    } catch (const Error& error) {
        complain(std::string(error.what()) + "\nvr120-sim --help tells more.");
        return kWrongArguments;
    }
    stop_on_signals();
    be_punctual();
    SimulatedRadio radio(memory, command.options);
    PseudoTerminal line;
    say(line.path());
    run(radio, line, command.save);
    return 0;
}

}  // namespace
}  // namespace memwright::radio

int main(int count, char** arguments) {
    try {
        return memwright::radio::start({arguments + 1, arguments + count});
    } catch (const std::exception& error) {
        memwright::radio::complain(error.what());
        return memwright::radio::kFailed;
    }
}
