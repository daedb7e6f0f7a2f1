#pragma once

// A printer that keeps what is printed on it, page by page.

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/error.h"
#include "platform/printer.h"

namespace memwright::fakes {

struct PrintedLine {
    double x;
    double y;
    std::string text;
    PrinterFont font;
};

struct PrintedPicture {
    Picture picture;
    double left;
    double top;
    std::optional<PrintedDocument::Size> size;
};

struct PrintedPage {
    std::vector<PrintedLine> lines;
    std::vector<PrintedPicture> pictures;
};

class Paper final : public Printer {
  public:
    struct Document {
        std::string title;
        PaperOrientation orientation;
        std::vector<PrintedPage> pages;
        bool ended = false;
        std::vector<std::string> steps;  // all that was asked of it, in order
    };
    std::vector<Document> documents;
    std::string name = "Paper";
    bool fails = false;
    std::size_t fails_after = 0;  // pages

    // A line of text takes what 12 points to the line take.
    static constexpr double kLineHeight = 240;

    std::unique_ptr<PrintedDocument> begin(const std::string& title,
                                           PaperOrientation orientation) override {
        documents.push_back({title, orientation, {}, false, {}});
        return std::make_unique<OnPaper>(*this);
    }

  private:
    class OnPaper final : public PrintedDocument {
      public:
        explicit OnPaper(Paper& paper) : paper_(paper) {}

        void set_font(const PrinterFont& font) override {
            note("font " + font.name + (font.bold ? " bold " : " ") + number(font.points));
            font_ = font;
        }
        void set_x(double twips) override {
            note("x " + number(twips));
            x_ = twips;
        }
        void set_y(double twips) override {
            note("y " + number(twips));
            y_ = twips;
        }
        void print_line(const std::string& text) override {
            note("print \"" + text + "\"");
            page().lines.push_back({x_, y_, text, font_});
            x_ = 0;
            y_ += kLineHeight;
        }
        void draw(const Picture& picture, double left, double top,
                  std::optional<Size> size) override {
            note("draw at " + number(left) + ", " + number(top) +
                 (size ? " sized " + number(size->width) + " x " + number(size->height) : ""));
            page().pictures.push_back({picture, left, top, size});
        }
        void new_page() override {
            note("new page");
            between_pages_ = true;
        }
        void end() override {
            note("end");
            document().ended = true;
        }
        std::string device_name() const override { return paper_.name; }

      private:
        static std::string number(double value) { return std::to_string(std::lround(value)); }
        void note(std::string step) { document().steps.push_back(std::move(step)); }

        Document& document() { return paper_.documents.back(); }
        PrintedPage& page() {
            if (between_pages_) {
                if (paper_.fails && document().pages.size() == paper_.fails_after) {
                    throw PrinterError("Cannot print on " + paper_.name + ": it is out of paper.");
                }
                document().pages.emplace_back();
            }
            between_pages_ = false;
            return document().pages.back();
        }

        Paper& paper_;
        PrinterFont font_;
        double x_ = 0;
        double y_ = 0;
        bool between_pages_ = true;
    };
};

}  // namespace memwright::fakes
