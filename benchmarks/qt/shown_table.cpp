// An image of 640 channels shown in the window: from the call to the painted pixels. Prints the
// milliseconds of each of some runs. Fails if the table tells of its changes more than once.

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <chrono>
#include <cstdio>

#include "occupied_memory.h"
#include "qt/windowed_program.h"

namespace {

using namespace memwright;

// Paints what waits to be painted.
void settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

}  // namespace

int main(int argc, char* argv[]) {
    constexpr int kRuns = 15;
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
    qputenv("XDG_DATA_HOME", folder.filePath("data").toLocal8Bit());
    qputenv("XDG_STATE_HOME", folder.filePath("state").toLocal8Bit());
    qt::WindowedProgram windowed({});
    windowed.start("");
    if (!QTest::qWaitForWindowExposed(&windowed.window)) return 1;
    settle();

    benchmarks::OccupiedTable occupied;
    MSFlexGrid& grid = windowed.program.form.MSFlexGrid1;
    ChannelTable table(occupied.store, grid, occupied.mnuSaveOnly);
    int signals_seen = 0;
    const Connection watch = grid.changed.connect([&](const GridChange&) { ++signals_seen; });
    for (int run = 0; run < kRuns; ++run) {
        // From an empty table on, each time.
        table.initgrid();
        settle();
        signals_seen = 0;
        const auto start = std::chrono::steady_clock::now();
        table.ParseVR120Data();
        settle();
        const std::chrono::duration<double, std::milli> taken =
            std::chrono::steady_clock::now() - start;
        if (signals_seen != 1) {
            std::fprintf(stderr, "shown_table: %d signals instead of one.\n", signals_seen);
            return 1;
        }
        std::printf("%.3f\n", taken.count());
    }
}
