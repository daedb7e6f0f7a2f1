// Ports and pages on Qt. For a program without windows it brings the application, too, one that
// needs no display.

#include <QGuiApplication>
#include <string>

#include "platform/modules.h"
#include "qt/core/qt_platform.h"
#include "qt/print/pdf_document.h"
#include "qt/serial/qt_serial_devices.h"
#include "qt/serial/qt_serial_port.h"

namespace memwright::qt {
namespace {

class PdfPrinter final : public Printer {
  public:
    PdfPrinter(std::string path, FileSystem& files) : path_(std::move(path)), files_(files) {}

    std::unique_ptr<PrintedDocument> begin(const std::string& title,
                                           PaperOrientation orientation) override {
        return std::make_unique<PdfDocument>(path_, title, orientation, files_);
    }

  private:
    std::string path_;
    FileSystem& files_;
};

// Qt wants the arguments for as long as it lives; it is to take none of ours.
struct NoArguments {
    std::string name = "memwright-cli";
    char* first = name.data();
    char** list = &first;
    int count = 1;
};

std::unique_ptr<QCoreApplication> application(ModuleUse use, NoArguments& arguments) {
    if (QCoreApplication::instance() != nullptr) return nullptr;
    if (use == ModuleUse::ports) {
        return std::make_unique<QCoreApplication>(arguments.count, arguments.list);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // What it has to say of sessions and displays is nobody's concern here.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return std::make_unique<QGuiApplication>(arguments.count, arguments.list);
}

class QtPortsAndPages final : public PortsAndPages {
  public:
    explicit QtPortsAndPages(ModuleUse use) : application_(application(use, arguments_)) {}

    SerialDevices& devices() override { return devices_; }
    SettingsStore& settings() override { return settings_; }
    Clock& clock() override { return clock_; }
    EventLoop& loop() override { return loop_; }
    std::unique_ptr<MSComm> port(std::function<std::string(int)> device_of) override {
        return std::make_unique<QtSerialPort>(std::move(device_of));
    }
    std::unique_ptr<Printer> pdf_printer(const std::string& path, FileSystem& files) override {
        return std::make_unique<PdfPrinter>(path, files);
    }

  private:
    NoArguments arguments_;
    std::unique_ptr<QCoreApplication> application_;
    QtSerialDevices devices_;
    QtSettingsStore settings_;
    QtClock clock_;
    QtEventLoop loop_;
};

}  // namespace
}  // namespace memwright::qt

extern "C" Q_DECL_EXPORT memwright::PortsAndPages* memwright_open_ports_and_pages(
    memwright::ModuleUse use) {
    return new memwright::qt::QtPortsAndPages(use);
}
