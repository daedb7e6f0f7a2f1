#include "qt/printing/qt_printer.h"

#include <QDateTime>
#include <QDir>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>

#include "qt/core/text.h"
#include "qt/print/painted_document.h"
#include "qt/print/pdf_document.h"
#include "qt/printing/print_service.h"

namespace memwright::qt {
namespace {

// The members that the base paints on are made before it.
struct PrinterPages {
    explicit PrinterPages(const QPrinterInfo& info) : printer(info, QPrinter::HighResolution) {}

    QPrinter printer;
};

class PrinterDocument final : private PrinterPages, public PaintedDocument {
  public:
    PrinterDocument(const QPrinterInfo& info, const std::string& title,
                    PaperOrientation orientation)
        : PrinterPages(info), PaintedDocument(printer) {
        printer.setDocName(from_utf8(title));
        printer.setCreator("Memwright");
        set_up(orientation);
    }
    ~PrinterDocument() override { finish(); }

    void end() override {
        const bool sending = painting();
        PaintedDocument::end();
        if (printer.printerState() == QPrinter::Error) fail();
        if (const std::string why = sending ? print_service_error() : ""; !why.empty()) fail(why);
    }
    std::string device_name() const override { return to_utf8(printer.printerName()); }
};

QPrinterInfo default_printer() {
    const QPrinterInfo chosen = QPrinterInfo::defaultPrinter();
    if (!chosen.isNull()) return chosen;
    const auto all = QPrinterInfo::availablePrinters();
    return all.isEmpty() ? QPrinterInfo() : all.first();
}

// A file that does not exist yet, named after the title and the time.
std::string new_file(const std::string& title, FileSystem& files) {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QDir().mkpath(folder);
    const QString name = folder + "/" + from_utf8(title) + " " +
                         QDateTime::currentDateTime().toString("yyyy-MM-dd hh.mm.ss");
    QString path = name + ".pdf";
    for (int n = 2; files.exists(to_file_name(path)); ++n) {
        path = name + QString(" (%1).pdf").arg(n);
    }
    return to_file_name(path);
}

}  // namespace

std::unique_ptr<PrintedDocument> QtPrinter::begin(const std::string& title,
                                                  PaperOrientation orientation) {
    const QPrinterInfo info = default_printer();
    if (!info.isNull()) return std::make_unique<PrinterDocument>(info, title, orientation);
    return std::make_unique<PdfDocument>(new_file(title, files_), title, orientation, files_);
}

}  // namespace memwright::qt
