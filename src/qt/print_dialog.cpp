// The dialog that asks which rows are printed.

#include <QGridLayout>

#include "app/frm_print.h"
#include "qt/binder.h"
#include "qt/dialog_parts.h"
#include "qt/dialogs.h"
#include "qt/line_box.h"

namespace memwright::qt {
namespace {

LineBox* row_box(const char* name, const QString& accessible) {
    constexpr int kCharacters = 6;
    auto* const box = named<LineBox>(name, accessible);
    box->setFixedWidth(kCharacters * box->fontMetrics().horizontalAdvance('0'));
    return box;
}

void lay_out(QDialog& dialog) {
    auto* const everything = named<QRadioButton>("Option1");
    everything->setToolTip(QObject::tr("Rows 1 to 240 of the table"));
    auto* const range = new QHBoxLayout;
    range->addWidget(named<QRadioButton>("Option2"));
    range->addWidget(row_box("Text1", QObject::tr("First row")));
    range->addWidget(named<QLabel>("Label1"));
    range->addWidget(row_box("Text2", QObject::tr("Last row")));
    range->addStretch();
    auto* const all = new QVBoxLayout(&dialog);
    all->addWidget(everything);
    all->addLayout(range);
    all->addSpacing(dialog.fontMetrics().height());
    all->addLayout(button_row({"Command1", "Command2"}));
    all->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace

void QtDialogViews::show_modal(frmPrint& form) {
    QDialog dialog(&owner_);
    dialog.setObjectName("frmPrint");
    dialog.setWindowTitle(QObject::tr("Print to Default Printer..."));
    lay_out(dialog);
    Binder binder(dialog);
    binder.bind(form.Option1);
    binder.bind(form.Option2);
    binder.bind_line(form.Text1);
    binder.bind(form.Label1);
    binder.bind_line(form.Text2);
    binder.bind(form.Command1);
    binder.bind(form.Command2);
    run(dialog, form.closed);
}

}  // namespace memwright::qt
