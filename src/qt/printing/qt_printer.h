#pragma once

// The default printer of the desktop. Where there is no printer, documents become PDF files in the
// user's documents folder.

#include "platform/file_system.h"
#include "platform/printer.h"

namespace memwright::qt {

class QtPrinter final : public Printer {
  public:
    explicit QtPrinter(FileSystem& files) : files_(files) {}

    std::unique_ptr<PrintedDocument> begin(const std::string& title,
                                           PaperOrientation orientation) override;

  private:
    FileSystem& files_;
};

}  // namespace memwright::qt
