#pragma once

// A printer that keeps what is printed on it, page by page.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/error.h"
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
    };
    std::vector<Document> documents;
    std::string name = "Paper";
    bool fails = false;
    std::size_t fails_after = 0;  // pages

    // A line of text takes what 12 points to the line take.
    static constexpr double kLineHeight = 240;

    std::unique_ptr<PrintedDocument> begin(const std::string& title,
                                           PaperOrientation orientation) override {
        documents.push_back({title, orientation, {}, false});
        return std::make_unique<OnPaper>(*this);
    }

  private:
    class OnPaper final : public PrintedDocument {
      public:
        explicit OnPaper(Paper& paper) : paper_(paper) {}

        void set_font(const PrinterFont& font) override { font_ = font; }
        void set_x(double twips) override { x_ = twips; }
        void set_y(double twips) override { y_ = twips; }
        void print_line(const std::string& text) override {
            page().lines.push_back({x_, y_, text, font_});
            x_ = 0;
            y_ += kLineHeight;
        }
        void draw(const Picture& picture, double left, double top,
                  std::optional<Size> size) override {
            page().pictures.push_back({picture, left, top, size});
        }
        void new_page() override { between_pages_ = true; }
        void end() override { document().ended = true; }
        std::string device_name() const override { return paper_.name; }

      private:
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
