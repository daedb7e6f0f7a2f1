#include "qt/announcer.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace memwright::qt {
namespace {

// Screen readers say by themselves what comes with this role.
QAccessibleInterface* accessible_announcer(const QString& /*class_name*/, QObject* object) {
    auto* const announcer = dynamic_cast<Announcer*>(object);
    return announcer == nullptr ? nullptr
                                : new QAccessibleWidget(announcer, QAccessible::Notification);
}

}  // namespace

Announcer::Announcer(QWidget* parent) : QWidget(parent) {
    setObjectName("Announcer");
    setFixedSize(1, 1);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    QAccessible::installFactory(accessible_announcer);
}

void Announcer::say(const QString& text) {
    setAccessibleName(text);
    announce(*this);
}

void announce(QWidget& widget) {
    if (!widget.isVisible()) return;
    for (const auto type : {QAccessible::ObjectShow, QAccessible::Alert}) {
        QAccessibleEvent event(&widget, type);
        QAccessible::updateAccessibility(&event);
    }
}

}  // namespace memwright::qt
