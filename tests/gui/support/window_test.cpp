#include "gui/support/window_test.h"

#include <QApplication>
#include <QMenuBar>
#include <QSettings>

#include "radio/demonstration.h"

namespace memwright::gui {

// As the table itself encodes it: two of the demonstration's memories are no longer the same then.
MemoryImage some_image() {
    NativeFileSystem files;
    modVR120 store(files);
    MSFlexGrid grid("MSFlexGrid1");
    const MenuEntry enabled("mnuSaveOnly", "");
    ChannelTable table(store, grid, enabled);
    store.set_image(radio::demonstration_memory());
    table.ParseVR120Data();
    table.SaveVR120Data();
    return store.MemoryImage;
}

WindowTest::WindowTest() {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       qt::from_file_name(folder_.file("settings")));
    qputenv("XDG_STATE_HOME", folder_.file("state").c_str());
    qputenv("XDG_DATA_HOME", folder_.file("data").c_str());
    // Not the first start of all, which says how to begin.
    store_setting("FirstSteps", "dismissed", "Memwright", "Notices");
}

WindowTest::~WindowTest() {
    windowed_.reset();
    std::filesystem::current_path(old_folder_);
}

void WindowTest::start(const std::string& file) {
    windowed_ = std::make_unique<qt::WindowedProgram>(ports_);
    windowed_->start(file);
    if (!QTest::qWaitForWindowActive(&window(), kPatience)) {
        throw std::runtime_error("the window does not open");
    }
    // Once it is painted, the window makes room for its frame.
    constexpr int kRounds = 3;
    for (int round = 0; round < kRounds; ++round) QCoreApplication::processEvents();
}

void WindowTest::restart() {
    windowed_.reset();
    start();
}

void WindowTest::choose(const char* menu_name, const char* entry_name) {
    auto& menu = widget<QMenu>(menu_name);
    auto& entry = widget<QAction>(entry_name);
    if (!menu.isEnabled() || !entry.isEnabled()) {
        throw std::runtime_error(std::string(entry_name) + " is disabled");
    }
    QMenuBar& bar = *window().menuBar();
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(menu.menuAction()).center());
    if (!wait_until([&] { return menu.isVisible(); })) {
        throw std::runtime_error(std::string(menu_name) + " does not open");
    }
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(&entry).center());
    // Off the screen, a menu that closes leaves no window active.
    if (window().isVisible()) window().activateWindow();
}

std::string WindowTest::open_some_image(const std::string& name) {
    const MemoryImage image = some_image();
    const std::string path = folder_.put(name, {image.bytes().begin(), image.bytes().end()});
    program().open_named(path);
    return path;
}

void WindowTest::change_table(const std::string& frequency) {
    form().MSFlexGrid1.set_text(1, 2, frequency);
}

std::string WindowTest::setting(const char* key, const char* application, const char* section) {
    qt::QtSettingsStore store;
    return store.get(application, section, key, "(none)");
}

void WindowTest::store_setting(const char* key, const char* value, const char* application,
                               const char* section) {
    qt::QtSettingsStore store;
    store.save(application, section, key, value);
}

}  // namespace memwright::gui
