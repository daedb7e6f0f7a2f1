#include "gui/support/appearance.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QStyle>
#include <cmath>
#include <cstdlib>
#include <map>

namespace memwright::gui {
namespace {

double luminance(const QColor& colour) {
    const auto linear = [](double channel) {
        return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

int distance(const QColor& a, const QColor& b) {
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
           std::abs(a.blue() - b.blue());
}

bool fits(const QLabel& label) {
    if (label.text().isEmpty()) return true;
    const QSize needed = label.wordWrap() ? QSize(label.minimumSizeHint().width(),
                                                  label.heightForWidth(label.width()))
                                          : label.sizeHint();
    return needed.width() <= label.width() && needed.height() <= label.height();
}

}  // namespace

QPalette dark_palette() {
    QPalette palette(QColor(0x35, 0x35, 0x35), QColor(0x2B, 0x2B, 0x2B));
    palette.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
    palette.setColor(QPalette::AlternateBase, QColor(0x2D, 0x2D, 0x2D));
    palette.setColor(QPalette::Highlight, QColor(0x2A, 0x82, 0xDA));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(0x35, 0x35, 0x35));
    palette.setColor(QPalette::ToolTipText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, QColor(0xF0, 0xF0, 0xF0));
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
    }
    palette.setColor(QPalette::PlaceholderText, QColor(0xF0, 0xF0, 0xF0, 0x80));
    return palette;
}

WithPalette::WithPalette(const QPalette& palette) : old_(QApplication::palette()) {
    QApplication::setPalette(palette);
}

WithPalette::~WithPalette() { QApplication::setPalette(old_); }

std::vector<std::string> clipped_texts(const QWidget& root) {
    std::vector<std::string> clipped;
    for (const QWidget* const widget : root.findChildren<QWidget*>()) {
        if (!widget->isVisible()) continue;
        bool good = true;
        if (const auto* const label = qobject_cast<const QLabel*>(widget)) good = fits(*label);
        const auto* const button = qobject_cast<const QAbstractButton*>(widget);
        if ((button != nullptr && !button->text().isEmpty()) ||
            qobject_cast<const QComboBox*>(widget) != nullptr) {
            const QSize needed = widget->minimumSizeHint();
            good = needed.width() <= widget->width() && needed.height() <= widget->height();
        }
        const QRect place(widget->mapTo(&root, QPoint()), widget->size());
        if (!root.rect().contains(place)) good = false;
        if (!good) clipped.push_back(widget->objectName().toStdString());
    }
    return clipped;
}

QImage picture_of(QWidget& widget, const QRect& part) { return widget.grab(part).toImage(); }

double contrast(const QColor& a, const QColor& b) {
    const double x = luminance(a), y = luminance(b);
    return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

QColor background_of(const QImage& image) {
    std::map<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y)];
    }
    const auto most = std::ranges::max_element(
        counts, [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == counts.end() ? QColor() : QColor(most->first);
}

QColor ink_of(const QImage& image) {
    const QColor background = background_of(image);
    QColor ink = background;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor here = image.pixelColor(x, y);
            if (distance(here, background) > distance(ink, background)) ink = here;
        }
    }
    return ink;
}

}  // namespace memwright::gui
