#include "link/status_window.h"

namespace memwright {

void StatusWindow::DebugOut(const std::string& txt) {
    Text1_.text = Text1_.text.get() + txt + "\r\n";
    Text1_.caret = Text1_.text.get().size();
    if (Text1_.visible) Text1_.focus_wanted();
}

void StatusWindow::mnuShwDbg_Click() {
    const bool show = !mnuShwDbg_.checked;
    mnuShwDbg_.checked = show;
    Text1_.visible = show;
    settings_.save(settings::kApplication, settings::kSection, "DebugWin", show ? "True" : "False");
    lay_out_();
}

}  // namespace memwright
