#pragma once

// The program in its window: the window, what stands behind the platform's interfaces, and the
// core, put together.

#include <map>
#include <string>

#include "app/program.h"
#include "link/com_ports.h"
#include "native/file_system.h"
#include "native/run_locks.h"
#include "qt/core/qt_platform.h"
#include "qt/dialogs.h"
#include "qt/loaded_parts.h"
#include "qt/main_window.h"
#include "qt/message_boxes.h"

namespace memwright::qt {

class WindowedProgram {
  public:
    // `ports`: devices named on the command line, by COM number.
    explicit WindowedProgram(std::map<int, std::string> ports)
        : com_ports_(devices_, settings_, std::move(ports)) {}
    ~WindowedProgram();
    WindowedProgram(const WindowedProgram&) = delete;
    WindowedProgram& operator=(const WindowedProgram&) = delete;

    // Shows the window; opens `file` unless it is empty.
    void start(const std::string& file);

    MainWindow window;

  private:
    QtMessageBox messages_{window};
    QtFileDialogs file_dialogs_{window};
    QtDialogViews dialogs_{window};
    NativeFileSystem files_;
    QtSettingsStore settings_;
    LoadedPrinter printer_{files_};
    NativeRunLocks locks_;
    QtClock clock_;
    QtEventLoop loop_;
    LoadedPortsAndPages ports_and_pages_;
    LoadedDevices devices_{ports_and_pages_};
    ComPorts com_ports_;
    LoadedPort port_{ports_and_pages_, [this](int number) { return com_ports_.device_of(number); }};

  public:
    Program program{{messages_, file_dialogs_, files_, settings_, port_, clock_, loop_, window,
                     dialogs_, window.cell_places(), printer_, locks_, native_user_folders()},
                    com_ports_};
};

}  // namespace memwright::qt
