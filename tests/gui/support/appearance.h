#pragma once

// How things look: palettes, texts that do not fit, colours.

#include <QColor>
#include <QImage>
#include <QPalette>
#include <QWidget>
#include <string>
#include <vector>

namespace memwright::gui {

QPalette dark_palette();

// The application's palette is another one as long as this lives.
class WithPalette {
  public:
    explicit WithPalette(const QPalette& palette);
    ~WithPalette();
    WithPalette(const WithPalette&) = delete;
    WithPalette& operator=(const WithPalette&) = delete;

  private:
    QPalette old_;
};

// The visible buttons, lists, labels and headings below `root` whose texts do not fit in.
std::vector<std::string> clipped_texts(const QWidget& root);

// Of a part of a widget, in the widget's coordinates, whatever the scale.
QImage picture_of(QWidget& widget, const QRect& part);

// The contrast of two colours as accessibility guidelines count it, 1 to 21.
double contrast(const QColor& a, const QColor& b);

// The colour that is most frequent, and the one that is farthest from it.
QColor background_of(const QImage& image);
QColor ink_of(const QImage& image);

}  // namespace memwright::gui
