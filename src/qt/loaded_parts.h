#pragma once

// Serial ports and the printer, which are loaded when they are first used: most of what is done in
// the window needs neither. FileError, from whatever is called first, if they cannot be loaded.

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "native/modules.h"
#include "platform/modules.h"

namespace memwright::qt {

class LoadedPortsAndPages {
  public:
    PortsAndPages& get() {
        if (!loaded_) loaded_ = open_ports_and_pages(ModuleUse::ports);
        return *loaded_;
    }

  private:
    std::unique_ptr<PortsAndPages> loaded_;
};

class LoadedDevices final : public SerialDevices {
  public:
    explicit LoadedDevices(LoadedPortsAndPages& loaded) : loaded_(loaded) {}

    std::vector<SerialDevice> list() override { return devices().list(); }
    std::string describe(const std::string& path) override { return devices().describe(path); }
    bool numbers_name_devices() const override { return devices().numbers_name_devices(); }

  private:
    SerialDevices& devices() const { return loaded_.get().devices(); }

    LoadedPortsAndPages& loaded_;
};

class LoadedPort final : public MSComm {
  public:
    LoadedPort(LoadedPortsAndPages& loaded, std::function<std::string(int)> device_of)
        : loaded_(loaded), device_of_(std::move(device_of)) {}

    void set_properties(const PortProperties& properties) override {
        port().set_properties(properties);
    }

    void PortOpen(bool open) override {
        if (open || port_) port().PortOpen(open);
    }
    bool PortOpen() const override { return port_ && port_->PortOpen(); }

    void Output(std::span<const std::uint8_t> bytes) override { port().Output(bytes); }
    int unsent_bytes() override { return port().unsent_bytes(); }
    int InBufferCount() override { return port().InBufferCount(); }
    Bytes Input() override { return port().Input(); }

  private:
    MSComm& port() {
        if (!port_) port_ = loaded_.get().port(device_of_);
        return *port_;
    }

    LoadedPortsAndPages& loaded_;
    std::function<std::string(int)> device_of_;
    std::unique_ptr<MSComm> port_;
};

class LoadedPrinter final : public Printer {
  public:
    explicit LoadedPrinter(FileSystem& files) : files_(files) {}

    std::unique_ptr<PrintedDocument> begin(const std::string& title,
                                           PaperOrientation orientation) override {
        if (!printer_) printer_ = open_printer(files_);
        return printer_->begin(title, orientation);
    }

  private:
    FileSystem& files_;
    std::unique_ptr<Printer> printer_;
};

}  // namespace memwright::qt
