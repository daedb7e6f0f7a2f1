#include "qt/desktop.h"

namespace memwright::qt {

// The window outlives the program that it shows, and must not look at it any more.
Desktop::~Desktop() {
    window.hide();
    window.forget_program();
}

void Desktop::start(const std::string& file) {
    window.show_program(program);
    program.start();
    window.show();
    QMetaObject::invokeMethod(
        &window,
        [this, file] {
            program.offer_recovery();
            if (!file.empty()) program.open_named(file);
            program.say_first_steps();
        },
        Qt::QueuedConnection);
}

}  // namespace memwright::qt
