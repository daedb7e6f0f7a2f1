#include <QApplication>
#include <QIcon>
#include <QTimer>
#include <cstdio>
#include <initializer_list>

#include "qt/command_line.h"
#include "qt/windowed_program.h"

namespace {

void show_icon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        icon.addFile(QString(":/icons/memwright-%1.png").arg(size));
    }
    QApplication::setWindowIcon(icon);
}

}  // namespace

int main(int argc, char* argv[]) {
    using namespace memwright;
    const auto arguments = qt::parse_arguments({argv + 1, argv + argc});
    if (arguments.message) {
        std::fputs(arguments.message->c_str(), arguments.exit_status == 0 ? stdout : stderr);
        return arguments.exit_status;
    }
    // The arguments are the program's own; Qt takes none of them.
    int one = 1;
    QApplication application(one, argv);
    QApplication::setApplicationName("memwright");
    QGuiApplication::setDesktopFileName("org.memwright.Memwright");
    qt::WindowedProgram windowed(arguments.ports);
    // The pictures are read once the window is there to be looked at.
    QTimer::singleShot(0, &windowed.window, show_icon);
    windowed.start(arguments.file);
    return QApplication::exec();
}
