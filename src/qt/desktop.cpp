#include "qt/desktop.h"

namespace memwright::qt {

void Desktop::start(const std::string& file) {
    window.show_program(program);
    program.start();
    window.show();
    if (!file.empty()) {
        QMetaObject::invokeMethod(
            &window, [this, file] { program.open_named(file); }, Qt::QueuedConnection);
    }
}

}  // namespace memwright::qt
