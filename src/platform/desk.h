#pragma once

// What the programs borrow from the desktop when they need it: serial ports, the user's settings,
// time, and pages in a PDF file or on a printer.

#include <functional>
#include <memory>
#include <string>

#include "platform/file_system.h"
#include "platform/ms_comm.h"
#include "platform/printer.h"
#include "platform/serial_devices.h"
#include "platform/settings_store.h"
#include "platform/time.h"

namespace memwright {

class Desk {
  public:
    virtual ~Desk() = default;

    virtual SerialDevices& devices() = 0;
    virtual SettingsStore& settings() = 0;
    virtual Clock& clock() = 0;
    virtual EventLoop& loop() = 0;

    // A serial port; `device_of` gives the device of a COM number, or throws a PortError.
    virtual std::unique_ptr<MSComm> port(std::function<std::string(int)> device_of) = 0;

    // Prints into a file, which each document replaces.
    virtual std::unique_ptr<Printer> pdf_printer(const std::string& path, FileSystem& files) = 0;
};

// What the desk is wanted for: pages need fonts.
enum class DeskWork { ports, pages };

// The function that the module with the desk offers under the name kOpenDesk. There is one desk in
// a program; whoever opens it deletes it.
using OpenDesk = Desk* (*)(DeskWork work);
inline constexpr const char* kOpenDesk = "memwright_open_desk";

// The same for the module with the desktop's printers.
using OpenPrinter = Printer* (*)(FileSystem& files);
inline constexpr const char* kOpenPrinter = "memwright_open_printer";

}  // namespace memwright
