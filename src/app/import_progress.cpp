#include "app/import_progress.h"

#include <string>

namespace memwright {

void ImportProgress::begin() {
    running_ = true;
    cancelled_ = false;
    form_.DisableGui();
    form_.TransferProgress.busy = false;
    form_.TransferProgress.visible = true;
    form_.TransferButton.caption = "Cancel";
    form_.TransferButton.visible = true;
}

bool ImportProgress::go_on(double share) {
    if (!running_) begin();
    const int percent = static_cast<int>(share * 100);
    form_.TransferProgress.percent = percent;
    form_.Label1.caption = "Importing: " + std::to_string(percent) + "% read...";
    // Without waiting: what the user did meanwhile, and a look at the window.
    loop_.wait(std::chrono::milliseconds(0));
    return !cancelled_;
}

void ImportProgress::end() {
    if (!running_) return;
    running_ = false;
    form_.TransferProgress.visible = false;
    form_.TransferButton.visible = false;
    form_.unlock_gui();
    form_.Label1.caption = cancelled_ ? "Import cancelled. Nothing was taken over." : "";
}

}  // namespace memwright
