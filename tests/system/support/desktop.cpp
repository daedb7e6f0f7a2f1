#include "system/support/desktop.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "system/support/message_bus.h"
#include "system/support/x_display.h"

namespace memwright::systest {
namespace {

constexpr int kStartAttempts = 5;

// No service folders: nothing is ever activated that the test did not start itself.
constexpr const char* kBusConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:path=%</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

// One desktop and no key or button of the window manager's own, but for closing: all others are
// the tested program's.
constexpr const char* kManagerConfiguration = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse><focusLast>yes</focusLast></focus>
  <placement><policy>Smart</policy><center>yes</center></placement>
  <desktops><number>1</number><popupTime>0</popupTime></desktops>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
  <mouse>
    <context name="Client Titlebar">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
    <context name="Titlebar">
      <mousebind button="Left" action="Drag"><action name="Move"/></mousebind>
    </context>
    <context name="Close">
      <mousebind button="Left" action="Click"><action name="Close"/></mousebind>
    </context>
  </mouse>
</openbox_config>
)";

void write_file(const std::filesystem::path& file, const std::string& text) {
    std::ofstream out(file);
    out << text;
    if (!out.flush()) throw std::runtime_error("Cannot write " + file.string());
}

// The first line that arrives on a descriptor; empty when its writer ends or takes too long.
std::string read_line(int descriptor) {
    std::string line;
    pollfd waiting{descriptor, POLLIN, 0};
    char letter = 0;
    while (poll(&waiting, 1, static_cast<int>(kPatience.count())) > 0 &&
           read(descriptor, &letter, 1) == 1) {
        if (letter == '\n') return line;
        line += letter;
    }
    return {};
}

class Pipe {
  public:
    Pipe() {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0) throw std::runtime_error("Cannot make a pipe");
    }
    ~Pipe() {
        close(ends_[0]);
        close_writing();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    int reading() const { return ends_[0]; }
    int writing() const { return ends_[1]; }
    void close_writing() {
        if (ends_[1] >= 0) close(ends_[1]);
        ends_[1] = -1;
    }

  private:
    std::array<int, 2> ends_{-1, -1};
};

}  // namespace

Desktop::Desktop() {
    make_environment();
    start_server_and_bus();
    start_manager_and_registry();
    keyboard_ = std::make_unique<Keyboard>(*display_);
    screen_ = std::make_unique<Screen>(*display_);
}

Desktop::~Desktop() = default;

void Desktop::make_environment() {
    for (const char* name : {"PATH", "LD_LIBRARY_PATH", "TZ"}) {
        if (const char* value = std::getenv(name)) environment_[name] = value;
    }
    const auto private_folder = [this](const char* variable, const std::filesystem::path& path) {
        std::filesystem::create_directories(path);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        environment_[variable] = path;
    };
    private_folder("HOME", home());
    private_folder("XDG_CONFIG_HOME", settings());
    private_folder("XDG_CACHE_HOME", home() / ".cache");
    private_folder("XDG_DATA_HOME", home() / ".local/share");
    private_folder("XDG_RUNTIME_DIR", folder() / "runtime");
    private_folder("TMPDIR", folder() / "tmp");
    environment_["LC_ALL"] = "C.UTF-8";
    environment_["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + (folder() / "bus").string();
    environment_["QT_QPA_PLATFORM"] = "xcb";
    environment_["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1";
}

Command Desktop::service(const char* program, std::vector<std::string> arguments) const {
    const auto log = folder() / (std::string(program) + ".log");
    return {.program = program,
            .arguments = std::move(arguments),
            .environment = environment_,
            .output = log,
            .errors = log};
}

void Desktop::start_server_and_bus() {
    std::string configuration = kBusConfiguration;
    configuration.replace(configuration.find('%'), 1, (folder() / "bus").string());
    write_file(folder() / "bus.conf", configuration);
    Pipe bus_ready;
    const auto file = "--config-file=" + (folder() / "bus.conf").string();
    Command bus =
        service("dbus-daemon", {file, "--nofork", "--nopidfile",
                                "--print-address=" + std::to_string(bus_ready.writing())});
    bus.inherited_descriptor = bus_ready.writing();
    daemon_ = std::make_unique<Process>(bus);
    bus_ready.close_writing();

    std::string number;
    // Servers that start at the same moment may take each other's display; the loser ends.
    for (int attempt = 0; attempt < kStartAttempts && number.empty(); ++attempt) {
        Pipe ready;
        Command server =
            service("Xvfb", {"-displayfd", std::to_string(ready.writing()), "-screen", "0",
                             "1280x1024x24", "-dpi", "96", "-noreset", "-nolisten", "tcp"});
        server.inherited_descriptor = ready.writing();
        server.death_signal = SIGTERM;  // so that it takes its lock file and socket along
        server_ = std::make_unique<Process>(server);
        ready.close_writing();
        number = read_line(ready.reading());
    }
    if (number.empty()) throw std::runtime_error("Xvfb does not start");
    environment_["DISPLAY"] = ":" + number;
    display_ = std::make_unique<XDisplay>(environment_["DISPLAY"]);
    if (read_line(bus_ready.reading()).empty()) {
        throw std::runtime_error("dbus-daemon does not start");
    }
    bus_ = std::make_unique<MessageBus>(environment_["DBUS_SESSION_BUS_ADDRESS"]);
}

void Desktop::start_manager_and_registry() {
    write_file(folder() / "openbox.xml", kManagerConfiguration);
    manager_ = std::make_unique<Process>(
        service("openbox", {"--sm-disable", "--config-file", folder() / "openbox.xml"}));
    Command registry = service("at-spi2-registryd", {});
    registry.environment["AT_SPI_BUS_ADDRESS"] = environment_["DBUS_SESSION_BUS_ADDRESS"];
    registry_ = std::make_unique<Process>(registry);
    // Both before any program: its windows want managing, and it looks for the registry only once.
    if (!wait_until([this] { return bus_->has_owner("org.a11y.atspi.Registry"); })) {
        throw std::runtime_error("at-spi2-registryd does not start");
    }
    const auto managed = [this] {
        return !display_->numbers(display_->root(), "_NET_SUPPORTING_WM_CHECK").empty() &&
               display_->manager_is_done(Milliseconds{20});
    };
    if (!wait_until(managed)) throw std::runtime_error("openbox does not start");
}

std::vector<TopWindow> Desktop::windows() const {
    std::vector<TopWindow> result;
    for (const auto id : display_->numbers(display_->root(), "_NET_CLIENT_LIST")) {
        result.emplace_back(*display_, id);
    }
    return result;
}

TopWindow Desktop::window(std::string_view title, Milliseconds patience) const {
    std::optional<TopWindow> found;
    const auto look = [&] {
        for (const TopWindow& window : windows()) {
            if (window.title() == title) found = window;
        }
        return found.has_value();
    };
    if (wait_until(look, patience)) return *found;
    std::string titles;
    for (const TopWindow& window : windows()) titles += "\n  '" + window.title() + "'";
    throw NotThere("No window has the title '" + std::string(title) + "'. There are:" + titles);
}

std::string Desktop::active_title() const {
    for (const TopWindow& window : windows()) {
        if (window.active()) return window.title();
    }
    return {};
}

}  // namespace memwright::systest
