// The program: which command is meant, its help, and how failures end it.

#include <algorithm>

#include "cli/commands.h"

namespace memwright::cli {
namespace {

constexpr const char* kName = "memwright-cli";

std::string help_of_program() {
    std::string text =
        "Usage: memwright-cli COMMAND [ARGUMENT]...\n"
        "Works with memory images of the VR-120 receiver: files, CSV, settings, the radio itself.\n"
        "\n";
    for (const Command& command : commands()) {
        std::string name = command.name;
        name.resize(10, ' ');
        text += "  " + name + command.summary + "\n";
    }
    return text +
           "\n"
           "memwright-cli COMMAND --help tells more, memwright-cli --version which version this "
           "is.\n"
           "\"-\" is standard input or output where a file is expected.\n"
           "\n"
           "Ends with 0 if all went well, 1 for differences or findings (diff, check), 2 for "
           "wrong\n"
           "usage, 3 for bad input, 4 if a file or port failed, 5 if the radio did.\n"
           "\n"
           "Example: memwright-cli channels radio.120\n";
}

std::string usage_of(const Command& command) {
    const std::string usage = command.usage;
    return std::string("Usage: ") + kName + " " + command.name + (usage.empty() ? "" : " ") + usage;
}

std::string help_of(const Command& command) { return usage_of(command) + "\n" + command.help; }

bool asks_for_help(const std::vector<std::string>& given) {
    const auto end = std::ranges::find(given, "--");
    return std::find(given.begin(), end, "--help") != end;
}

Status run_command(const std::vector<std::string>& given, Session& session) {
    if (given.empty()) throw WrongUsage("A command is missing.");
    const std::string& name = given.front();
    if (name == "--help" || name == "--version") {
        session.console.print(name == "--help" ? help_of_program()
                                               : std::string(kName) + " " MEMWRIGHT_VERSION "\n");
        return kDone;
    }
    const auto command =
        std::ranges::find_if(commands(), [&](const Command& known) { return known.name == name; });
    if (command == commands().end()) throw WrongUsage("There is no command \"" + name + "\".");
    const std::vector<std::string> rest(given.begin() + 1, given.end());
    if (asks_for_help(rest)) {
        session.console.print(help_of(*command));
        return kDone;
    }
    try {
        return command->run(Arguments(rest, command->syntax), session);
    } catch (const WrongUsage& error) {
        session.console.say(std::string(kName) + ": " + error.what() + "\n" + usage_of(*command));
        return kWrongUsage;
    }
}

}  // namespace

int run(const std::vector<std::string>& given) {
    Session session;
    const auto failed = [&](Status status, const std::string& text) {
        session.console.say(std::string(kName) + ": " + text);
        return status;
    };
    try {
        const Status status = run_command(given, session);
        session.console.flush();
        return status;
    } catch (const WrongUsage& error) {
        return failed(kWrongUsage,
                      error.what() + std::string("\nmemwright-cli --help tells more."));
    } catch (const RadioError& error) {
        return failed(kRadioFailed, error.what_is_wrong() +
                                        "\nCheck the plugs of the clone cable, and "
                                        "begin again.");
    } catch (const InputError& error) {
        return failed(kBadInput, error.what());
    } catch (const ConversionError& error) {
        return failed(kBadInput, error.what());
    } catch (const std::exception& error) {
        return failed(kNoFileOrPort, error.what());
    }
}

}  // namespace memwright::cli
