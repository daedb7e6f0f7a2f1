#pragma once

// A desktop of the test's own: an X server, a window manager, a message bus with the accessibility
// registry, and empty home folders. Every test case makes one, so cases can run side by side and
// share nothing. All of it ends with the test, even with one that crashes.
// Errors: std::runtime_error when a part of it cannot be started.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/eventually.h"
#include "support/process.h"
#include "support/temporary_folder.h"
#include "system/support/keyboard.h"
#include "system/support/screen.h"
#include "system/support/top_window.h"

namespace memwright::systest {

class MessageBus;
class XDisplay;

class Desktop {
  public:
    Desktop();
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    const std::filesystem::path& folder() const { return folder_.path(); }  // for the test's files
    std::filesystem::path home() const { return folder() / "home"; }
    std::filesystem::path settings() const { return home() / ".config"; }  // XDG_CONFIG_HOME

    // What a program started on this desktop finds in its environment.
    const Environment& environment() const { return environment_; }

    Keyboard& keyboard() { return *keyboard_; }
    const Screen& screen() const { return *screen_; }
    MessageBus& bus() const { return *bus_; }
    const XDisplay& display() const { return *display_; }

    std::vector<TopWindow> windows() const;
    TopWindow window(std::string_view title, Milliseconds patience = kPatience) const;
    std::string active_title() const;  // of the window that holds the keyboard; empty without

    // A number for the files of the next program.
    int next_program() { return ++programs_; }

  private:
    void make_environment();
    void start_server_and_bus();
    void start_manager_and_registry();
    Command service(const char* program, std::vector<std::string> arguments) const;

    TemporaryFolder folder_{TemporaryFolder::For::the_test};
    Environment environment_;
    int programs_ = 0;
    // In the order of starting; they end in the reverse order.
    std::unique_ptr<Process> server_;
    std::unique_ptr<Process> daemon_;
    std::unique_ptr<XDisplay> display_;
    std::unique_ptr<MessageBus> bus_;
    std::unique_ptr<Process> registry_;
    std::unique_ptr<Process> manager_;
    std::unique_ptr<Keyboard> keyboard_;
    std::unique_ptr<Screen> screen_;
};

}  // namespace memwright::systest
