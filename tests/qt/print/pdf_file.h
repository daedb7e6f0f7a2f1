#pragma once

// A PDF file as others read it: by the tools of poppler (Debian package poppler-utils). Lengths are
// in twips from the upper left corner of the paper.
// Errors: std::runtime_error when a tool is not there or cannot read the file.

#include <QImage>
#include <QRectF>
#include <string>
#include <vector>

namespace memwright {

class PdfFile {
  public:
    struct Word {
        std::string text;
        QRectF box;
    };

    explicit PdfFile(std::string path) : path_(std::move(path)) {}

    int pages() const;
    QSizeF paper() const;
    std::string title() const;

    // The lines of a page as they stand beneath each other, columns apart.
    std::vector<std::string> lines(int page) const;
    std::vector<Word> words(int page) const;

    // Bitmaps within the file.
    int images() const;

    // All fonts lie in the file, with what turns their glyphs into text again.
    bool fonts_are_whole() const;

    // A page, or a part of it, as a picture.
    QImage picture(int page, int dots_per_inch, const QRectF& part = {}) const;

  private:
    std::string info(const std::string& field) const;

    std::string path_;
};

}  // namespace memwright
