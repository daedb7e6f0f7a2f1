#include "app/go_to_line.h"

#include "table/columns.h"
#include "table/finding.h"

namespace memwright {

GoToLine::GoToLine(Form1& form, CellPlaces& cells, Events& events, Notices& notices)
    : form_(form), cells_(cells), notices_(notices) {
    go.caption = "G&o";
    events.connect(form.added.go_to.clicked, "Go To Memory", [this] { open(); });
    events.connect(memory.edited, "Go To Memory", [this] { message.caption = ""; });
    events.connect(go.clicked, "Go To Memory", [this] { go_there(); });
    events.connect(close.clicked, "Close Go To Memory", [this] { shown = false; });
    const auto follow_state = [this] {
        for (Control* control :
             std::initializer_list<Control*>{&memory, &message, &go, &close, &form_.added.go_to}) {
            control->enabled = form_.MSFlexGrid1.enabled.get();
        }
    };
    follow_state();
    connections_ = {form.MSFlexGrid1.enabled.changed.connect(follow_state)};
}

void GoToLine::open() {
    form_.TxtGrid.visible = false;
    form_.CboGrid.visible = false;
    message.caption = "";
    shown = true;
    memory.focus_wanted();
}

void GoToLine::go_there() {
    const auto row = finding::row_of_memory(memory.text.get());
    if (!row) {
        message.caption = "Bank 0 to 9 and number 0 to 63 wanted, as 3-17.";
        memory.focus_wanted();
        notices_.say(message.caption);
        return;
    }
    shown = false;
    form_.MSFlexGrid1.set_row(*row);
    form_.MSFlexGrid1.set_col(columns::kTag);
    cells_.show_cell();
    form_.MSFlexGrid1.focus_wanted();
}

}  // namespace memwright
