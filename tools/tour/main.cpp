// Shows the program at work without a display: the real window, driven by key and mouse events,
// reads the simulated radio, saves, opens and writes back; each step is printed, and pictures are
// taken. Ends with 0 only if the radio holds in the end what was saved.
//
// Usage: memwright-tour VR120-SIM FOLDER-FOR-PICTURES

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <stdexcept>

#include "qt/windowed_program.h"

namespace {

using memwright::qt::WindowedProgram;

constexpr int kPatience = 10'000;           // milliseconds for the program to do something
constexpr int kTransferPatience = 120'000;  // and for a transfer to end
constexpr int kLongestTour = 300'000;

void say(const QString& text) {
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

void require(bool condition, const QString& what) {
    if (!condition) throw std::runtime_error(what.toStdString());
}

void wait_until(const std::function<bool()>& condition, const QString& what, int patience) {
    require(QTest::qWaitFor(condition, patience), "This did not happen: " + what);
}

QByteArray contents(const QString& path) {
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "Cannot read " + path);
    return file.readAll();
}

class Tour {
  public:
    Tour(WindowedProgram& windowed, QString pictures)
        : windowed_(windowed), pictures_(std::move(pictures)) {}

    void picture(const QString& name, QWidget* of = nullptr) {
        QWidget* const shown = of == nullptr ? &windowed_.window : of;
        const QString path = pictures_ + "/" + name + ".png";
        require(shown->grab().save(path), "Cannot write " + path);
    }

    // Runs `answer` with the dialog that `open` brings up.
    template <class Dialog>
    void with_dialog(const std::function<void()>& open,
                     const std::function<void(Dialog&)>& answer) {
        bool answered = false;
        std::exception_ptr failure;  // must not pass through the event loop
        QPointer<QWidget> first;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            if (answered) {
                // Whatever comes after the dialog is an error report.
                auto* const report = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                if (report == nullptr || report == first) return;
                failure = std::make_exception_ptr(std::runtime_error(report->text().toStdString()));
                report->reject();
                return;
            }
            auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) return;
            first = dialog;
            answered = true;
            try {
                answer(*dialog);
            } catch (...) {
                failure = std::current_exception();
                dialog->reject();
            }
        });
        look.start(50);
        open();
        if (failure) std::rethrow_exception(failure);
        wait_until([&] { return answered; }, "a dialog opens", kPatience);
    }

    void choose(const char* menu_name, const char* entry_name) {
        auto* const menu = windowed_.window.findChild<QMenu*>(menu_name);
        auto* const entry = windowed_.window.findChild<QAction*>(entry_name);
        require(menu != nullptr && entry != nullptr, "There is no " + QString(entry_name));
        require(entry->isEnabled(), QString(entry_name) + " is disabled");
        QMenuBar* const bar = windowed_.window.menuBar();
        QTest::mouseClick(bar, Qt::LeftButton, {},
                          bar->actionGeometry(menu->menuAction()).center());
        wait_until([&] { return menu->isVisible(); }, "the menu opens", kPatience);
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
    }

    void transfer(const char* entry, const QString& done, const QString& name) {
        bool half_way = false;
        const auto connection =
            QObject::connect(windowed_.window.findChild<QProgressBar*>("TransferProgress"),
                             &QProgressBar::valueChanged, [&](int percent) {
                                 if (percent < 50 || half_way) return;
                                 half_way = true;
                                 picture(name + "-half-way");
                             });
        with_dialog<QMessageBox>([&] { choose("mnuTransfer", entry); },
                                 [&](QMessageBox& box) {
                                     picture(name + "-instructions", &box);
                                     QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
                                 });
        const auto* const status = windowed_.window.findChild<QLabel*>("Label1");
        wait_until([&] { return status->text() == done; }, done, kTransferPatience);
        QObject::disconnect(connection);
        picture(name + "-complete");
    }

    void name_file(const char* entry, const QString& path, const QString& name) {
        with_dialog<QFileDialog>([&] { choose("mnuFile", entry); },
                                 [&](QFileDialog& dialog) {
                                     auto* const line = dialog.findChild<QLineEdit*>();
                                     line->clear();
                                     QTest::keyClicks(line, path);
                                     picture(name, &dialog);
                                     // The first Enter may only close the list of suggestions.
                                     for (int i = 0; i < 2 && dialog.isVisible(); ++i) {
                                         QTest::keyClick(line, Qt::Key_Return);
                                     }
                                 });
        wait_until([&] { return windowed_.window.windowTitle().endsWith(path); },
                   "the caption shows " + path, kPatience);
    }

  private:
    WindowedProgram& windowed_;
    QString pictures_;
};

void run(const QString& simulator, const QString& pictures) {
    const QTemporaryDir folder;
    // What the tour does is nothing to keep among the user's own.
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
    qputenv("XDG_DATA_HOME", folder.filePath("data").toLocal8Bit());
    qputenv("XDG_STATE_HOME", folder.filePath("state").toLocal8Bit());
    const QString radio_file = folder.filePath("radio.120");
    const QString saved_file = folder.filePath("saved.120");

    QProcess radio;
    radio.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    radio.start(simulator, {"--save", radio_file});
    require(radio.waitForReadyRead(kPatience), "The simulated radio does not start");
    const QString device = QString::fromLocal8Bit(radio.readLine()).trimmed();
    say("1. A simulated VR-120 is at " + device + ".");

    WindowedProgram windowed({{1, device.toStdString()}});
    windowed.start("");
    Tour tour(windowed, pictures);
    require(QTest::qWaitForWindowExposed(&windowed.window), "The window does not open");
    tour.picture("1-start");

    say("2. Reading 640 memories from it, at the pace of the line ...");
    tour.transfer("mnuRead", "Read from VR-120 complete.", "2-read");
    tour.name_file("mnuSave", saved_file, "3-save-as");
    say(QString("3. Saved them: %1 bytes.").arg(contents(saved_file).size()));
    tour.name_file("mnuOpen", saved_file, "4-open");
    say("4. Opened the file again.");
    tour.picture("4-opened");
    say("5. Writing it back to the radio ...");
    tour.transfer("mnuWrite", "Write To VR-120 complete.", "5-write");

    wait_until([&] { return QFile::exists(radio_file); }, "the radio keeps what it got", kPatience);
    require(contents(radio_file) == contents(saved_file),
            "The radio holds something else than what was saved");
    say("6. The radio holds, byte for byte, what was saved. Pictures: " + pictures + "/*.png");
    windowed.window.QMainWindow::close();
    radio.terminate();
    radio.waitForFinished(kPatience);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::fprintf(stderr, "Usage: memwright-tour VR120-SIM FOLDER-FOR-PICTURES\n");
        return 2;
    }
    const QString simulator = QString::fromLocal8Bit(argv[1]);
    // Choosing files changes the current folder.
    const QString pictures = QDir(QString::fromLocal8Bit(argv[2])).absolutePath();
    int one = 1;
    const QApplication application(one, argv);
    QTimer::singleShot(kLongestTour, [] {
        std::fprintf(stderr, "The tour failed: the window did not go on.\n");
        std::_Exit(1);
    });
    try {
        run(simulator, pictures);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "The tour failed: %s.\n", error.what());
        return 1;
    }
    return 0;
}
