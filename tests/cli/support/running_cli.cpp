#include "cli/support/running_cli.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>

#include "support/eventually.h"
#include "support/read_file.h"

namespace memwright::cli_tests {
namespace {

// A transfer takes half a minute, more on a machine that does much else.
constexpr systest::Milliseconds kWholeTransfer{150'000};

systest::Command with_files(systest::Command command, const TemporaryFolder& folder) {
    if (command.output.empty()) command.output = folder.file("output");
    if (command.errors.empty()) command.errors = folder.file("errors");
    return command;
}

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

RunningCli::RunningCli(systest::Command command)
    : command_(with_files(std::move(command), folder_)), process_(command_) {}

void RunningCli::wait_for_error(const std::string& text) {
    const auto errors = [&] { return systest::read_file(command_.errors); };
    if (!systest::wait_until([&] { return has(errors(), text) || !runs(); }) ||
        !has(errors(), text)) {
        throw std::runtime_error("memwright-cli does not say '" + text + "' but: " + errors());
    }
}

Ended RunningCli::end() {
    if (!systest::wait_until([&] { return !runs(); }, kWholeTransfer)) {
        throw std::runtime_error("memwright-cli does not end");
    }
    const systest::ExitStatus status = *process_.exit_status();
    const auto written = [&](const std::filesystem::path& file) {
        return file.parent_path() == folder_.path() ? systest::read_file(file) : std::string();
    };
    return {status.signal != 0 ? kBySignal : status.code, written(command_.output),
            written(command_.errors)};
}

Terminal::Terminal() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) {
        throw std::runtime_error("no pseudo-terminal to be had");
    }
    path_ = ptsname(master_);
    slave_ = open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
}

Terminal::~Terminal() {
    if (slave_ >= 0) close(slave_);
    if (master_ >= 0) close(master_);
}

void Terminal::type(const std::string& keys) const {
    if (write(master_, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size())) {
        throw std::runtime_error("the terminal takes no keys");
    }
}

std::string Terminal::shown() {
    std::array<char, 4096> part{};
    for (ssize_t size = 0; (size = read(master_, part.data(), part.size())) > 0;) {
        shown_.append(part.data(), static_cast<std::size_t>(size));
    }
    return shown_;
}

void Terminal::wait_for(const std::string& text) {
    if (!systest::wait_until([&] { return has(shown(), text); })) {
        throw std::runtime_error("the terminal does not show '" + text + "' but: " + shown_);
    }
}

}  // namespace memwright::cli_tests
