#include "qt/dialog_parts.h"

namespace memwright::qt {

QHBoxLayout* button_row(std::initializer_list<const char*> names) {
    auto* const row = new QHBoxLayout;
    row->addStretch();
    for (const char* name : names) {
        auto* const button = named<QPushButton>(name);
        button->setDefault(name == *names.begin());
        row->addWidget(button);
    }
    return row;
}

void run(QDialog& dialog, Signal<>& closed) {
    const Connection close = closed.connect([&] { dialog.accept(); });
    dialog.exec();
}

}  // namespace memwright::qt
