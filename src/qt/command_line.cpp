#include "qt/command_line.h"

#include <charconv>
#include <system_error>

#include "app/version.h"
#include "base/printable.h"
#include "native/file.h"

namespace memwright::qt {
namespace {

constexpr int kPorts = 12;

constexpr const char* kHelp =
    "Usage: memwright [--com N=DEVICE]... [FILE]\n"
    "Programs the channel memories of the VR-120 receiver.\n"
    "\n"
    "  FILE             image file to open (*.120, *.tk1)\n"
    "  --com N=DEVICE   open DEVICE as COM N (1 to 12), for this run;\n"
    "                   may be given once for each N\n"
    "  --help           show this help and end\n"
    "  --version        show the version and end\n"
    "\n"
    "Examples:\n"
    "  memwright myradio.120\n"
    "  memwright --com 1=/dev/ttyUSB0\n";

Arguments wrong(const std::string& what) {
    Arguments arguments;
    arguments.message =
        "memwright: " + printable(what) + "\nTry 'memwright --help' for what can be given.\n";
    arguments.exit_status = kWrongUsage;
    return arguments;
}

Arguments only_say(const std::string& text) {
    Arguments arguments;
    arguments.message = text;
    return arguments;
}

// Reads "N=DEVICE" into the map. False if it is none.
bool read_port(const std::string& text, std::map<int, std::string>& ports) {
    const auto equals = text.find('=');
    if (equals == std::string::npos || equals + 1 == text.size()) return false;
    int number = 0;
    const char* const end = text.data() + equals;
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || stop != end || number < 1 || number > kPorts) return false;
    ports[number] = text.substr(equals + 1);
    return true;
}

// As it is if there is no current folder any more: opening it then tells the user.
std::string from_the_root_on(const std::string& file) {
    std::error_code error;
    const auto path = std::filesystem::absolute(native::path_of(file), error);
    return error ? file : native::name_of(path);
}

}  // namespace

Arguments parse_arguments(const std::vector<std::string>& given) {
    Arguments arguments;
    bool options_ended = false;
    for (std::size_t i = 0; i < given.size(); ++i) {
        const std::string& argument = given[i];
        const bool option = !options_ended && argument.size() > 1 && argument.front() == '-';
        if (!option) {
            if (argument.empty()) return wrong("the name of the file is empty.");
            if (!arguments.file.empty()) return wrong("only one FILE can be opened at a time.");
            arguments.file = from_the_root_on(argument);
        } else if (argument == "--") {
            options_ended = true;
        } else if (argument == "--help") {
            return only_say(kHelp);
        } else if (argument == "--version") {
            return only_say("memwright " + std::to_string(kVersionMajor) + "." +
                            std::to_string(kVersionMinor) + "\n");
        } else if (argument == "--com" || argument.starts_with("--com=")) {
            if (argument == "--com" && ++i == given.size()) return wrong("--com needs N=DEVICE.");
            const std::string& value = argument == "--com" ? given[i] : argument.substr(6);
            if (!read_port(value, arguments.ports)) {
                return wrong("'" + value +
                             "' is no N=DEVICE with N from 1 to 12, such as 1=/dev/ttyUSB0.");
            }
        } else {
            return wrong("there is no option '" + argument + "'.");
        }
    }
    return arguments;
}

}  // namespace memwright::qt
