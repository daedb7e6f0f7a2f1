#pragma once

// What modules of the programs give that are loaded when they are needed: serial ports, the user's
// settings, time, and pages in a PDF file or on a printer.

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

class PortsAndPages {
  public:
    virtual ~PortsAndPages() = default;

    virtual SerialDevices& devices() = 0;
    virtual SettingsStore& settings() = 0;
    virtual Clock& clock() = 0;
    virtual EventLoop& loop() = 0;

    // A serial port; `device_of` gives the device of a COM number, or throws a PortError.
    virtual std::unique_ptr<MSComm> port(std::function<std::string(int)> device_of) = 0;

    // Prints into a file, which each document replaces.
    virtual std::unique_ptr<Printer> pdf_printer(const std::string& path, FileSystem& files) = 0;
};

// What the module is wanted for: pages need fonts.
enum class ModuleUse { ports, pages };

// The function that the module offers under the name kOpenPortsAndPages. A program opens it once;
// whoever opens it deletes it.
using OpenPortsAndPages = PortsAndPages* (*)(ModuleUse use);
inline constexpr const char* kOpenPortsAndPages = "memwright_open_ports_and_pages";

// The same for the module with the desktop's printers.
using OpenPrinter = Printer* (*)(FileSystem& files);
inline constexpr const char* kOpenPrinter = "memwright_open_printer";

}  // namespace memwright
