#pragma once

// What dialogs are put together from.

#include <QBoxLayout>
#include <QDialog>
#include <QPushButton>
#include <initializer_list>

#include "base/signal.h"

namespace memwright::qt {

template <class Widget>
Widget* named(const char* name, const QString& accessible = {}) {
    auto* const widget = new Widget;
    widget->setObjectName(name);
    widget->setAccessibleName(accessible);
    return widget;
}

// A row with the dialog's buttons at its end; Enter presses the first.
QHBoxLayout* button_row(std::initializer_list<const char*> names = {"Command1"});

// Runs the dialog until the form wants it closed, or the user closes it.
void run(QDialog& dialog, Signal<>& closed);

}  // namespace memwright::qt
