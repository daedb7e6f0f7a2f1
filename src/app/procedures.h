#pragma once

// The procedures behind the main window's controls, and what they work on. Which control runs which
// of them is in commands.h.

#include "app/error_report.h"
#include "app/form1.h"
#include "app/import_progress.h"
#include "app/notices.h"
#include "app/platform.h"
#include "app/print_grid.h"
#include "app/shell.h"
#include "files/csv_files.h"
#include "files/image_files.h"
#include "image/mod_vr120.h"
#include "link/clone_read.h"
#include "link/clone_write.h"
#include "link/com_ports.h"
#include "link/serial_link.h"
#include "link/stall_watch.h"
#include "link/status_window.h"
#include "link/transfer_control.h"
#include "table/cell_editor.h"
#include "table/row_operations.h"

namespace memwright {

struct Procedures {
    Procedures(Form1& form, Platform platform, ComPorts& ports, Notices& notices);
    Procedures(const Procedures&) = delete;
    Procedures& operator=(const Procedures&) = delete;

    Form1& form;
    Platform platform;
    ComPorts& ports;

    modVR120 store;
    ChannelTable table;
    CellEditor editor;
    RowOperations rows;
    ImageFiles image_files;
    Shell shell;
    StatusWindow status_window;
    StallWatch stall_watch;
    TransferControl control;
    SerialLink link;
    CloneRead clone_read;
    CloneWrite clone_write;
    ImportProgress import_progress;
    CsvFiles csv_files;
    GridPrinting printing;

    void pop_up_edit_menu();
    void mnuPrint_Click();
    void TransferButton_Click();
};

}  // namespace memwright
