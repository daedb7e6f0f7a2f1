#include "qt/windowed_program.h"

namespace memwright::qt {

// The window outlives the program that it shows, and must not look at it any more.
WindowedProgram::~WindowedProgram() {
    window.hide();
    window.forget_program();
}

void WindowedProgram::start(const std::string& file) {
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
