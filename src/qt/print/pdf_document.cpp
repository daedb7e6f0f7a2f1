#include "qt/print/pdf_document.h"

#include <QLocale>

namespace memwright::qt {
namespace {

QPageSize usual_paper() {
    const bool letter = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    return QPageSize(letter ? QPageSize::Letter : QPageSize::A4);
}

}  // namespace

PdfDocument::PdfDocument(std::string path, const std::string& title, PaperOrientation orientation,
                         FileSystem& files)
    : PaintedDocument(writer), path_(std::move(path)), files_(files) {
    writer.setTitle(QString::fromStdString(title));
    writer.setCreator("Memwright");
    writer.setPageSize(usual_paper());
    set_up(orientation);
}

void PdfDocument::end() {
    PaintedDocument::end();
    const QByteArray& bytes = buffer.data();
    if (bytes.isEmpty()) return;  // no page, no file
    files_.replace(path_, {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size())});
}

}  // namespace memwright::qt
