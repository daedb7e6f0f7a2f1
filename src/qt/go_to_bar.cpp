#include "qt/go_to_bar.h"

namespace memwright::qt {

GoToBar::GoToBar(GoToLine& line, QWidget& home) : LineBar("GoToBar", home), line_(line) {
    constexpr int kCharacters = 14;
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(2 * gap(), gap(), gap(), gap());
    row->setSpacing(gap());
    LineBox* const box = add_box(line.memory, tr("Go to memory: bank and number, as 3-17"));
    box->setFixedWidth(kCharacters * fontMetrics().averageCharWidth());
    box->setPlaceholderText(tr("3-17"));
    row->addWidget(add_caption(tr("Go to memor&y:"), *box));
    row->addWidget(box);
    row->addWidget(add_button(line.go));
    row->addWidget(add_line(line.message), 1);
    row->addWidget(add_close_button(line.close));
    follow(line.shown);
}

}  // namespace memwright::qt
