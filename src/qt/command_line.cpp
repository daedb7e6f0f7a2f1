#include "qt/command_line.h"

#include <filesystem>
#include <system_error>

#include "app/version.h"
#include "base/argument_reader.h"
#include "base/printable.h"
#include "link/com_ports.h"
#include "native/file.h"

namespace memwright::qt {
namespace {

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

// As it is if there is no current folder any more: opening it then tells the user.
std::string from_the_root_on(const std::string& file) {
    std::error_code error;
    const auto path = std::filesystem::absolute(native::path_of(file), error);
    return error ? file : native::name_of(path);
}

}  // namespace

Arguments parse_arguments(const std::vector<std::string>& given) {
    Arguments arguments;
    ArgumentReader reader(given);
    while (reader.next()) {
        const std::string& argument = reader.text();
        if (reader.ends_options()) continue;
        if (!reader.is_option()) {
            if (argument.empty()) return wrong("the name of the file is empty.");
            if (!arguments.file.empty()) return wrong("only one FILE can be opened at a time.");
            arguments.file = from_the_root_on(argument);
        } else if (argument == "--help") {
            return only_say(kHelp);
        } else if (argument == "--version") {
            return only_say("memwright " + std::to_string(kVersionMajor) + "." +
                            std::to_string(kVersionMinor) + "\n");
        } else if (reader.name() == "--com") {
            const auto value = reader.take_value();
            if (!value) return wrong("--com needs N=DEVICE.");
            const auto port = ComPorts::named_port(*value);
            if (!port) {
                return wrong("'" + *value +
                             "' is no N=DEVICE with N from 1 to 12, such as 1=/dev/ttyUSB0.");
            }
            arguments.ports[port->first] = port->second;
        } else {
            return wrong("there is no option '" + argument + "'.");
        }
    }
    return arguments;
}

}  // namespace memwright::qt
