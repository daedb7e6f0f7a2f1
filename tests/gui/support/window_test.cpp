#include "gui/support/window_test.h"

#include <QApplication>
#include <QMenuBar>
#include <QSettings>

#include "radio/demonstration.h"

namespace memwright::gui {

MemoryImage some_image() { return radio::demonstration_memory(); }

WindowTest::WindowTest() {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       qt::from_file_name(folder_.file("settings")));
}

WindowTest::~WindowTest() {
    desktop_.reset();
    std::filesystem::current_path(old_folder_);
}

void WindowTest::start(const std::string& file) {
    desktop_ = std::make_unique<qt::Desktop>(ports_);
    desktop_->start(file);
    if (!QTest::qWaitForWindowActive(&window(), kPatience)) {
        throw std::runtime_error("the window does not open");
    }
}

void WindowTest::restart() {
    desktop_.reset();
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
