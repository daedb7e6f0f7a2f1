#include "link/status_window.h"

namespace memwright {

void StatusWindow::DebugOut(const std::string& txt) {
    add_line(txt);
    if (Text1_.visible) Text1_.focus_wanted();
}

void StatusWindow::add_line(const std::string& text) {
    Text1_.text = Text1_.text.get() + text + "\r\n";
    Text1_.caret = Text1_.text.get().size();
}

void StatusWindow::mnuShwDbg_Click() {
    const bool show = !mnuShwDbg_.checked;
    mnuShwDbg_.checked = show;
    Text1_.visible = show;
    settings_.save(settings::kApplication, settings::kSection, "DebugWin", show ? "True" : "False");
    lay_out_();
}

}  // namespace memwright
