#pragma once

// The whole program, wired: every control of the main window to the procedure that it runs.

#include <functional>
#include <string>
#include <vector>

#include "app/closing.h"
#include "app/dialog_views.h"
#include "app/error_report.h"
#include "app/form1.h"
#include "app/import_progress.h"
#include "app/kept_images.h"
#include "app/print_grid.h"
#include "app/shell.h"
#include "files/csv_files.h"
#include "files/image_files.h"
#include "files/recovery.h"
#include "image/mod_vr120.h"
#include "link/clone_read.h"
#include "link/clone_write.h"
#include "link/com_ports.h"
#include "link/serial_link.h"
#include "link/stall_watch.h"
#include "link/status_window.h"
#include "link/transfer_control.h"
#include "platform/run_lock.h"
#include "platform/user_folders.h"
#include "table/cell_editor.h"
#include "table/row_operations.h"

namespace memwright {

// What a desktop offers.
struct Platform {
    MessageBox& messages;
    FileDialogs& file_dialogs;
    FileSystem& files;
    SettingsStore& settings;
    MSComm& port;
    Clock& clock;
    EventLoop& loop;
    FormWindow& window;
    DialogViews& dialogs;
    CellPlaces& cells;
    Printer& printer;
    RunLocks& locks;
    UserFolders folders;
};

class Program {
  public:
    Program(Platform platform, ComPorts& ports);

    Form1 form;

    // Opens the main window: to be called once the window shows the form's controls.
    void start();

    // The window's events that are no click on a control.
    void resized();
    bool close_allowed();
    void escape_pressed();
    void open_named(const std::string& path);

    // Offers what a run that crashed left behind: to be called once the window is seen.
    void offer_recovery();

  private:
    void pop_up_edit_menu();
    template <class Form, class... Arguments>
    void show_dialog(Arguments&&... arguments);
    void mnuPrint_Click();
    void transfer_button_clicked();
    void guard(const std::function<void()>& procedure);
    void connect(Signal<>& signal, std::function<void()> procedure);
    void connect_menus();
    void connect_buttons();
    void connect_grid();
    void connect_overlays();
    void connect_transfers();

    Platform platform_;
    ComPorts& ports_;

    // The commands of the window, and what they work on.
    modVR120 store_;
    ChannelTable table_;
    CellEditor editor_;
    RowOperations rows_;
    ImageFiles image_files_;
    Shell shell_;
    StatusWindow status_window_;
    ErrorReport errors_;
    StallWatch stall_watch_;
    TransferControl control_;
    SerialLink link_;
    CloneRead clone_read_;
    CloneWrite clone_write_;
    ImportProgress import_progress_;
    CsvFiles csv_files_;
    GridPrinting printing_;

    // What stands around them. An addition is a class with a file pair of its own that wires
    // itself, and a line here.
    Closing closing_;
    KeptImages kept_images_;
    Recovery recovery_;

    std::vector<Connection> connections_;
};

}  // namespace memwright
