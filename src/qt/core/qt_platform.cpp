#include "qt/core/qt_platform.h"

#include <QDateTime>
#include <QEventLoop>
#include <QLocale>
#include <QSettings>
#include <QTimer>
#include <chrono>
#include <memory>
#include <thread>

#include "qt/core/text.h"

namespace memwright::qt {
namespace {

using namespace std::chrono_literals;

QSettings store_of(const std::string& application) {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, "Memwright",
                     from_utf8(application));
}

QString path_of(const std::string& section, const std::string& key) {
    return from_utf8(section + "/" + key);
}

}  // namespace

std::optional<std::string> QtSettingsStore::find(const std::string& application,
                                                 const std::string& section,
                                                 const std::string& key) {
    const QVariant value = store_of(application).value(path_of(section, key));
    if (!value.isValid()) return std::nullopt;
    // A text with commas that was written by hand reads as a list.
    if (value.typeId() == QMetaType::QStringList) return to_utf8(value.toStringList().join(", "));
    return to_utf8(value.toString());
}

void QtSettingsStore::save(const std::string& application, const std::string& section,
                           const std::string& key, const std::string& value) {
    store_of(application).setValue(path_of(section, key), from_utf8(value));
}

void QtSettingsStore::remove(const std::string& application, const std::string& section,
                             const std::string& key) {
    store_of(application).remove(path_of(section, key));
}

double QtClock::seconds_since_midnight() {
    // Qt's own times end at milliseconds, which would lengthen each of a transfer's 240 pauses.
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto whole = std::chrono::floor<std::chrono::milliseconds>(now);
    const QTime time = QDateTime::fromMSecsSinceEpoch(whole.count()).time();
    return (time.msecsSinceStartOfDay() + Milliseconds(now - whole).count()) / 1000;
}

std::string QtClock::date_and_time() {
    return to_utf8(QLocale::system().toString(QDateTime::currentDateTime(), QLocale::ShortFormat));
}

std::string QtClock::timestamp() {
    return to_utf8(QDateTime::currentDateTime().toString("yyyy-MM-dd hh.mm.ss"));
}

void QtEventLoop::wait(std::chrono::microseconds at_most) {
    // Qt's timers are up to a millisecond late. The rest is less than anybody notices.
    const auto whole = std::chrono::floor<std::chrono::milliseconds>(at_most) - 1ms;
    if (whole.count() <= 0) {
        std::this_thread::sleep_for(at_most);
        QEventLoop().processEvents();
        return;
    }
    QTimer alarm;
    alarm.setTimerType(Qt::PreciseTimer);
    alarm.start(whole);
    QEventLoop().processEvents(QEventLoop::WaitForMoreEvents);
}

Connection QtEventLoop::every(std::chrono::milliseconds interval, std::function<void()> tick) {
    auto timer = std::make_shared<QTimer>();
    timer->setTimerType(Qt::CoarseTimer);
    QObject::connect(timer.get(), &QTimer::timeout, std::move(tick));
    timer->start(interval);
    return timer;
}

}  // namespace memwright::qt
