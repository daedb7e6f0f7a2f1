#pragma once

// The import of a long file in the main window: the progress bar beside the status line, and the
// button that cancels. The window is locked as in a transfer.

#include "app/form1.h"
#include "files/csv_files.h"
#include "link/status_window.h"
#include "platform/time.h"

namespace memwright {

class ImportProgress final : public ImportDisplay {
  public:
    ImportProgress(Form1& form, StatusWindow& status_window, EventLoop& loop)
        : form_(form), status_window_(status_window), loop_(loop) {}

    bool go_on(double share) override;
    void end() override;
    void note(const std::string& lines) override { status_window_.add_line(lines); }

    bool running() const { return running_; }
    void cancel() { cancelled_ = running_; }

  private:
    void begin();

    Form1& form_;
    StatusWindow& status_window_;
    EventLoop& loop_;
    bool running_ = false;
    bool cancelled_ = false;
};

}  // namespace memwright
