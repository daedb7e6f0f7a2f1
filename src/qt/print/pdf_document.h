#pragma once

// A printed document as a PDF file, which is written at its end, whole or not at all. FileError if
// it cannot be written.

#include <QBuffer>
#include <QPdfWriter>

#include "platform/file_system.h"
#include "qt/print/painted_document.h"

namespace memwright::qt {

// The members that the base paints on are made before it.
struct PdfPages {
    PdfPages() { buffer.open(QIODevice::WriteOnly); }

    QBuffer buffer;
    QPdfWriter writer{&buffer};
};

class PdfDocument final : private PdfPages, public PaintedDocument {
  public:
    // On the paper that is usual where the user lives.
    PdfDocument(std::string path, const std::string& title, PaperOrientation orientation,
                FileSystem& files);

    void end() override;
    std::string device_name() const override { return path_; }

  private:
    std::string path_;
    FileSystem& files_;
};

}  // namespace memwright::qt
