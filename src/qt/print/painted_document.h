#pragma once

// A document that is painted with vectors on whatever has pages: a printer or a PDF file.

#include <QFont>
#include <QPagedPaintDevice>
#include <QPainter>

#include "platform/printer.h"

namespace memwright::qt {

class PaintedDocument : public PrintedDocument {
  public:
    void set_font(const PrinterFont& font) override;
    void set_x(double twips) override { x_ = twips; }
    void set_y(double twips) override { y_ = twips; }
    void print_line(const std::string& text) override;
    void draw(const Picture& picture, double left, double top, std::optional<Size> size) override;
    void new_page() override { between_pages_ = true; }
    void end() override;

  protected:
    explicit PaintedDocument(QPagedPaintDevice& device) : device_(device) {}

    // Orientation, and margins that every printer can keep to.
    void set_up(PaperOrientation orientation);

    // Ends the painting, if it had begun. False if that failed.
    bool finish();

    // Whether something was painted that has not ended.
    bool painting() const { return painter_.isActive(); }

    // PrinterError: the device does not print, for a reason like "it is out of paper".
    [[noreturn]] void fail(const std::string& why = "it takes no pages") const;

  private:
    QPainter& painter();
    double units(double twips) const;
    void draw_texts(const Picture& picture);

    QPagedPaintDevice& device_;
    QPainter painter_;
    QFont font_;
    double x_ = 0;
    double y_ = 0;
    bool between_pages_ = false;
};

}  // namespace memwright::qt
