#pragma once

// The import of a long file in the main window: the progress bar beside the status line, and the
// button that cancels. The window is locked as in a transfer. The status line
// stays as it is; what was skipped is a notice.

#include "app/form1.h"
#include "app/notices.h"
#include "files/csv_files.h"
#include "platform/time.h"

namespace memwright {

class ImportProgress final : public ImportDisplay {
  public:
    ImportProgress(Form1& form, Notices& notices, EventLoop& loop)
        : form_(form), notices_(notices), loop_(loop) {}

    bool go_on(double share) override;
    void end() override;
    void note_skipped(const std::string& path, const std::string& lines) override;

    bool running() const { return running_; }
    void cancel() { cancelled_ = running_; }

  private:
    void begin();

    Form1& form_;
    Notices& notices_;
    EventLoop& loop_;
    bool running_ = false;
    bool cancelled_ = false;
};

}  // namespace memwright
