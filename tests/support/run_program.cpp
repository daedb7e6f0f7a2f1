#include "support/run_program.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace memwright::systest {
namespace {

// A file without a name, so nothing is left behind however the test ends.
class MemoryFile {
  public:
    MemoryFile() : descriptor_(memfd_create("output", MFD_CLOEXEC)) {
        if (descriptor_ < 0) {
            throw std::runtime_error(std::string("Cannot make a file in memory: ") +
                                     std::strerror(errno));
        }
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { close(descriptor_); }

    // Names it in this process and, until it starts its program, in a child.
    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

    void fill(const std::string& text) const {
        if (write(descriptor_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
            throw std::runtime_error(std::string("Cannot write to memory: ") +
                                     std::strerror(errno));
        }
    }

    std::string content() const {
        std::string all;
        std::array<char, 4096> part{};
        for (ssize_t size = 0; (size = pread(descriptor_, part.data(), part.size(),
                                             static_cast<off_t>(all.size()))) > 0;) {
            all.append(part.data(), static_cast<std::size_t>(size));
        }
        return all;
    }

  private:
    int descriptor_;
};

void wait_for_end(Process& process, const Command& command, const MemoryFile& errors,
                  Milliseconds patience = kPatience) {
    if (wait_until([&] { return process.exit_status().has_value(); }, patience)) return;
    throw std::runtime_error("'" + command.program.string() +
                             "' does not end: " + errors.content());
}

}  // namespace

Outcome run_program(const std::filesystem::path& program, std::vector<std::string> arguments,
                    Environment environment, Milliseconds patience) {
    environment.try_emplace("PATH", "/usr/sbin:/usr/bin:/sbin:/bin");
    const MemoryFile output;
    const Command command = {.program = program,
                             .arguments = std::move(arguments),
                             .environment = std::move(environment),
                             .output = output.path(),
                             .errors = output.path()};
    Process process(command);
    wait_for_end(process, command, output, patience);
    return {*process.exit_status(), output.content()};
}

SeparateOutcome run_apart(Command command, const std::string& input) {
    const MemoryFile given;
    const MemoryFile output;
    const MemoryFile errors;
    given.fill(input);
    if (command.input.empty()) command.input = given.path();
    if (command.output.empty()) command.output = output.path();
    if (command.errors.empty()) command.errors = errors.path();
    Process process(command);
    wait_for_end(process, command, errors);
    return {*process.exit_status(), output.content(), errors.content()};
}

std::string output_of(const std::filesystem::path& program, std::vector<std::string> arguments,
                      Environment environment, Milliseconds patience) {
    Outcome outcome = run_program(program, std::move(arguments), std::move(environment), patience);
    if (outcome.status.success()) return std::move(outcome.output);
    std::ostringstream why;
    why << "'" << program.string() << "' failed, " << outcome.status << ": " << outcome.output;
    throw std::runtime_error(why.str());
}

}  // namespace memwright::systest
