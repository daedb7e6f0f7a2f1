#include "qt/dialogs.h"

#include <QAbstractItemView>
#include <QFormLayout>
#include <QTimer>

#include "app/dialogs.h"
#include "qt/binder.h"
#include "qt/dialog_parts.h"

namespace memwright::qt {
namespace {

constexpr int kLookForDevices = 1000;  // milliseconds
constexpr int kCharactersOfDevice = 48;
constexpr int kCharactersOfAbout = 34;

}  // namespace

void QtDialogViews::show_modal(Form2& form) {
    QDialog dialog(&owner_);
    dialog.setObjectName("Form2");
    dialog.setWindowTitle("Comm Port");

    auto* const ports = named<QComboBox>("Combo1", QObject::tr("Port"));
    auto* const list_label = named<QLabel>("DeviceListLabel");
    auto* const list = named<QComboBox>("DeviceList", QObject::tr("Device"));
    auto* const device = named<QLabel>("DeviceLabel");
    device->setTextFormat(Qt::PlainText);
    device->setWordWrap(true);
    device->setMinimumWidth(kCharactersOfDevice * device->fontMetrics().averageCharWidth());
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    list_label->setBuddy(list);

    auto* const rows = new QFormLayout;
    auto* const port_label = new QLabel(QObject::tr("&Port:"));
    port_label->setBuddy(ports);
    rows->addRow(port_label, ports);
    rows->addRow(device);
    rows->addRow(list_label, list);
    auto* const all = new QVBoxLayout(&dialog);
    all->addLayout(rows);
    all->addStretch();
    all->addLayout(button_row());

    Binder binder(dialog);
    binder.bind(form.Combo1);
    binder.bind(form.DeviceList);
    binder.bind(form.DeviceLabel);
    binder.bind(form.DeviceListLabel);
    binder.bind(form.Command1);
    QObject::connect(list, &QComboBox::activated, &dialog,
                     [&](int index) { form.choose_device(index); });
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, &dialog, [&] {
        if (!list->view()->isVisible()) form.refresh();
    });
    looks.start(kLookForDevices);
    run(dialog, form.closed);
}

void QtDialogViews::show_modal(Form5& form) {
    QDialog dialog(&owner_);
    dialog.setObjectName("Form5");
    dialog.setWindowTitle(QObject::tr("About Memwright"));

    auto* const name = named<QLabel>("NameLabel");
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    large.setBold(true);
    name->setFont(large);
    auto* const all = new QVBoxLayout(&dialog);
    all->addWidget(name);
    all->addWidget(named<QLabel>("VersionLabel"));
    auto* const credit = named<QLabel>("CreditLabel");
    credit->setMinimumWidth(kCharactersOfAbout * credit->fontMetrics().averageCharWidth());
    all->addWidget(credit);
    all->addSpacing(large.pointSize());
    all->addLayout(button_row());
    all->setSizeConstraint(QLayout::SetFixedSize);

    Binder binder(dialog);
    binder.bind(form.NameLabel);
    binder.bind(form.VersionLabel);
    binder.bind(form.CreditLabel);
    binder.bind(form.Command1);
    run(dialog, form.closed);
}

}  // namespace memwright::qt
