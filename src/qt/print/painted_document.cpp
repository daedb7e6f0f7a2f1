#include "qt/print/painted_document.h"

#include <QFontMetricsF>
#include <algorithm>

#include "base/error.h"
#include "base/twips.h"

namespace memwright::qt {
namespace {

constexpr double kMarginPoints = 36;
constexpr double kRuleTwips = 8;

QColor colour_of(Colour colour) { return QColor::fromRgb(colour); }

QFont font_of(const QString& family, bool bold, double points) {
    QFont font(family);
    font.setBold(bold);
    font.setPointSizeF(points);
    // Spaced letters, by however little, make no ligatures: who looks for "Off" in a document finds
    // it, and names of files are copied as they are.
    constexpr double kHardlyAnything = 1.0 / 64;
    font.setLetterSpacing(QFont::AbsoluteSpacing, kHardlyAnything);
    return font;
}

}  // namespace

void PaintedDocument::set_up(PaperOrientation orientation) {
    device_.setPageOrientation(orientation == PaperOrientation::landscape ? QPageLayout::Landscape
                                                                          : QPageLayout::Portrait);
    const QPageLayout page = device_.pageLayout();
    const double points_per_unit = page.units() == QPageLayout::Point
                                       ? 1
                                       : page.fullRectPoints().width() / page.fullRect().width();
    const QMarginsF least = page.minimumMargins() * points_per_unit;
    const auto margin = [](double smallest) { return std::max(smallest, kMarginPoints); };
    device_.setPageMargins(
        {margin(least.left()), margin(least.top()), margin(least.right()), margin(least.bottom())},
        QPageLayout::Point);
}

double PaintedDocument::units(double twips) const {
    return twips * device_.logicalDpiX() / kTwipsPerInch;
}

// Paper begins when there is something to paint on it.
QPainter& PaintedDocument::painter() {
    if (!painter_.isActive()) {
        if (!painter_.begin(&device_)) fail();
    } else if (between_pages_ && !device_.newPage()) {
        fail();
    }
    between_pages_ = false;
    return painter_;
}

void PaintedDocument::fail(const std::string& why) const {
    throw PrinterError("Cannot print on " + device_name() + ": " + why +
                       ".\nThe table is as it was. Check that the printer is on, has paper and "
                       "accepts jobs, then print again.");
}

void PaintedDocument::set_font(const PrinterFont& font) {
    font_ = font_of(QString::fromStdString(font.name), font.bold, font.points);
}

void PaintedDocument::print_line(const std::string& text) {
    QPainter& paint = painter();
    const QFontMetricsF metrics(font_, &device_);
    paint.setFont(font_);
    paint.setPen(Qt::black);
    paint.drawText(QPointF(units(x_), units(y_) + metrics.ascent()), QString::fromStdString(text));
    x_ = 0;
    y_ += metrics.lineSpacing() * kTwipsPerInch / device_.logicalDpiY();
}

void PaintedDocument::draw(const Picture& picture, double left, double top,
                           std::optional<Size> size) {
    QPainter& paint = painter();
    paint.save();
    paint.translate(units(left), units(top));
    if (size) paint.scale(size->width / picture.width, size->height / picture.height);
    for (const auto& [area, colour] : picture.fills) {
        paint.fillRect(
            QRectF(units(area.left), units(area.top), units(area.width), units(area.height)),
            colour_of(colour));
    }
    for (const Picture::Line& line : picture.lines) {
        paint.setPen(QPen(colour_of(line.colour), units(kRuleTwips), Qt::SolidLine, Qt::SquareCap));
        paint.drawLine(QLineF(units(line.x1), units(line.y1), units(line.x2), units(line.y2)));
    }
    draw_texts(picture);
    paint.restore();
}

void PaintedDocument::draw_texts(const Picture& picture) {
    for (const Picture::Text& text : picture.texts) {
        const QFont font = font_of(QFont().family(), text.bold, text.points);
        painter_.setFont(font);
        painter_.setPen(colour_of(text.colour));
        const QRectF area(units(text.area.left), units(text.area.top), units(text.area.width),
                          units(text.area.height));
        // Clipped by what is drawn, which stays text in the document, not by the painter.
        const QString shown = QString::fromStdString(text.text);
        const QFontMetricsF metrics(font, &device_);
        const bool fits = metrics.horizontalAdvance(shown) <= area.width();
        painter_.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          fits ? shown : metrics.elidedText(shown, Qt::ElideRight, area.width()));
    }
}

bool PaintedDocument::finish() { return !painter_.isActive() || painter_.end(); }

void PaintedDocument::end() {
    if (!finish()) fail();
}

}  // namespace memwright::qt
