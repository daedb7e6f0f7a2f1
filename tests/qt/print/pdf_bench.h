#pragma once

// A printer whose documents are PDF files in a folder of their own.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "fakes/faulty_file_system.h"
#include "native/file_system.h"
#include "qt/print/pdf_document.h"
#include "qt/print/pdf_file.h"
#include "support/temporary_folder.h"

namespace memwright {

inline bool on_letter() {
    const char* const locale = std::getenv("MEMWRIGHT_TEST_LOCALE");
    return locale != nullptr && std::string(locale).starts_with("en_US");
}

// Of the paper upright, in twips.
inline QSizeF paper_size() { return on_letter() ? QSizeF(12240, 15840) : QSizeF(11900, 16840); }

// Where twips count from: the corner of what is printable, on the paper.
inline constexpr double kOrigin = 720;

class PdfBench : public ::testing::Test {
  protected:
    std::unique_ptr<qt::PdfDocument> begin(
        PaperOrientation orientation = PaperOrientation::landscape) {
        return std::make_unique<qt::PdfDocument>(path(), "Memwright", orientation, files_);
    }
    std::string path() const { return folder_.file("printed.pdf"); }
    PdfFile pdf() const { return PdfFile(path()); }

    TemporaryFolder folder_;
    NativeFileSystem native_;
    fakes::FaultyFileSystem files_{native_};
};

}  // namespace memwright
