#pragma once

// The real window with the real core behind it, its settings and all else that it keeps for its
// user in a folder of their own.

#include <gtest/gtest.h>

#include <QAction>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

#include "gui/support/robot.h"
#include "image/memory_image.h"
#include "qt/core/text.h"
#include "qt/windowed_program.h"
#include "support/temporary_folder.h"

namespace memwright::gui {

// A memory image with channels in every bank, and empty memories between them.
MemoryImage some_image();

class WindowTest : public ::testing::Test {
  protected:
    WindowTest();
    ~WindowTest() override;

    // Opens the window; `file` as on the command line.
    void start(const std::string& file = "");

    // Ends the program and starts it anew with the settings that it left.
    void restart();

    qt::MainWindow& window() { return windowed_->window; }
    Program& program() { return windowed_->program; }
    Form1& form() { return windowed_->program.form; }

    template <class Widget>
    Widget& widget(const char* name) {
        auto* const found = window().findChild<Widget*>(name);
        if (found == nullptr) throw std::runtime_error(std::string("no widget ") + name);
        return *found;
    }
    qt::GridView& grid() { return widget<qt::GridView>("MSFlexGrid1"); }

    // Chooses a menu entry with the mouse.
    void choose(const char* menu, const char* entry);

    // Writes a file and opens it as one that is named outside of the program.
    std::string open_some_image(const std::string& name = "radio.120");

    // Types a frequency into the table's first row, as far as the core is concerned.
    void change_table(const std::string& frequency = "145.50000");

    std::string caption() { return qt::to_utf8(window().windowTitle()); }
    std::string status() { return form().Label1.caption; }

    // A value of the settings store; "(none)" if it is not there.
    std::string setting(const char* key, const char* application = "VR120",
                        const char* section = "Settings");
    void store_setting(const char* key, const char* value, const char* application = "VR120",
                       const char* section = "Settings");

    TemporaryFolder folder_;
    std::map<int, std::string> ports_;
    std::unique_ptr<qt::WindowedProgram> windowed_;

  private:
    std::filesystem::path old_folder_ = std::filesystem::current_path();
};

// The window as it is after its start.
class StartedWindowTest : public WindowTest {
  protected:
    void SetUp() override { start(); }
};

}  // namespace memwright::gui
