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
#include "platform/desk.h"

namespace memwright::qt {

class LoadedDesk {
  public:
    Desk& get() {
        if (!desk_) desk_ = open_desk(DeskWork::ports);
        return *desk_;
    }

  private:
    std::unique_ptr<Desk> desk_;
};

class LoadedDevices final : public SerialDevices {
  public:
    explicit LoadedDevices(LoadedDesk& desk) : desk_(desk) {}

    std::vector<SerialDevice> list() override { return devices().list(); }
    std::string describe(const std::string& path) override { return devices().describe(path); }
    bool numbers_name_devices() const override { return devices().numbers_name_devices(); }

  private:
    SerialDevices& devices() const { return desk_.get().devices(); }

    LoadedDesk& desk_;
};

class LoadedPort final : public MSComm {
  public:
    LoadedPort(LoadedDesk& desk, std::function<std::string(int)> device_of)
        : desk_(desk), device_of_(std::move(device_of)) {}

    void CommPort(int number) override { port().CommPort(number); }
    void Settings(const std::string& text) override { port().Settings(text); }
    void DTREnable(bool on) override { port().DTREnable(on); }
    void EOFEnable(bool on) override { port().EOFEnable(on); }
    void Handshaking(int kind) override { port().Handshaking(kind); }
    void InBufferSize(int bytes) override { port().InBufferSize(bytes); }
    void InputLen(int bytes) override { port().InputLen(bytes); }
    void InputMode(int mode) override { port().InputMode(mode); }
    void NullDiscard(bool on) override { port().NullDiscard(on); }
    void OutBufferSize(int bytes) override { port().OutBufferSize(bytes); }
    void ParityReplace(const std::string& text) override { port().ParityReplace(text); }
    void RThreshold(int bytes) override { port().RThreshold(bytes); }
    void RTSEnable(bool on) override { port().RTSEnable(on); }
    void SThreshold(int bytes) override { port().SThreshold(bytes); }

    void PortOpen(bool open) override {
        if (open || port_) port().PortOpen(open);
    }
    bool PortOpen() const override { return port_ && port_->PortOpen(); }

    void Output(std::span<const std::uint8_t> bytes) override { port().Output(bytes); }
    int unsent_bytes() override { return port().unsent_bytes(); }
    int InBufferCount() override { return port().InBufferCount(); }
    std::vector<std::uint8_t> Input() override { return port().Input(); }

  private:
    MSComm& port() {
        if (!port_) port_ = desk_.get().port(device_of_);
        return *port_;
    }

    LoadedDesk& desk_;
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
