#pragma once

// The default printer and the documents that are printed on it. Lengths are in twips, 1440 to the
// inch, from the upper left corner of the printable area. Texts are UTF-8. Failures are
// PrinterErrors.

#include <memory>
#include <optional>
#include <string>

#include "platform/picture.h"

namespace memwright {

enum class PaperOrientation { portrait = 1, landscape = 2 };

// A printer that has no font of the name takes its nearest.
struct PrinterFont {
    std::string name;
    bool bold = false;
    double points = 10;
};

// A document on its way to paper. A page begins when something is drawn on it. A document that is
// dropped before its end is printed as far as it came; one that becomes a file is not written.
class PrintedDocument {
  public:
    struct Size {
        double width;
        double height;
    };

    virtual ~PrintedDocument() = default;

    virtual void set_font(const PrinterFont& font) = 0;

    // Where the next line of text begins.
    virtual void set_x(double twips) = 0;
    virtual void set_y(double twips) = 0;

    // Prints a line of text. The next one begins below it, at the left edge.
    virtual void print_line(const std::string& text) = 0;

    // Draws a picture with its upper left corner at a place, scaled to a size if one is given.
    virtual void draw(const Picture& picture, double left, double top,
                      std::optional<Size> size = std::nullopt) = 0;

    virtual void new_page() = 0;

    // Everything is drawn.
    virtual void end() = 0;

    // What the user knows the printer by.
    virtual std::string device_name() const = 0;
};

class Printer {
  public:
    virtual ~Printer() = default;

    virtual std::unique_ptr<PrintedDocument> begin(const std::string& title,
                                                   PaperOrientation orientation) = 0;
};

}  // namespace memwright
