// The dialogs that ask where rows are moved and how they are filled.

#include <QFormLayout>

#include "app/fill_series.h"
#include "app/move_to.h"
#include "qt/announcer.h"
#include "qt/binder.h"
#include "qt/core/text.h"
#include "qt/dialog_parts.h"
#include "qt/dialogs.h"
#include "qt/line_box.h"

namespace memwright::qt {
namespace {

constexpr int kCharacters = 40;  // in a line

// A row of a form whose label leads to its field.
void add_field(QFormLayout& fields, const QString& text, QWidget& field) {
    auto* const label = new QLabel(text);
    label->setBuddy(&field);
    fields.addRow(label, &field);
}

// The fields below what is to be done, and above what speaks against it.
void lay_out(QDialog& dialog, QLayout& fields) {
    auto* const rows = named<QLabel>("RowsLabel");
    // What is shown later makes the dialog higher, but not wider.
    rows->setMinimumWidth(kCharacters * rows->fontMetrics().averageCharWidth());
    auto* const problem = named<QLabel>("ProblemLabel");
    problem->setTextFormat(Qt::PlainText);
    problem->setWordWrap(true);
    auto* const all = new QVBoxLayout(&dialog);
    all->addWidget(rows);
    all->addLayout(&fields);
    all->addWidget(problem);
    all->addSpacing(dialog.fontMetrics().height());
    all->addLayout(button_row({"Command1", "Command2"}));
    all->setSizeConstraint(QLayout::SetFixedSize);
}

// A screen reader says what others see by themselves.
Connection say_problem(QDialog& dialog, Label& problem) {
    auto* const announcer = new Announcer(&dialog);
    return problem.caption.changed.connect([announcer, &problem] {
        if (!problem.caption.get().empty()) announcer->say(from_utf8(problem.caption));
    });
}

}  // namespace

void QtDialogViews::show_modal(MoveTo& form) {
    QDialog dialog(&owner_);
    dialog.setObjectName("MoveTo");
    dialog.setWindowTitle(QObject::tr("Move To"));
    auto* const banks = named<QComboBox>("BankList", QObject::tr("Bank"));
    auto* const fields = new QFormLayout;
    add_field(*fields, QObject::tr("&Bank:"), *banks);
    add_field(*fields, QObject::tr("&Memory:"),
              *named<QComboBox>("MemoryList", QObject::tr("Memory")));
    fields->addRow(named<QRadioButton>("SwapOption"));
    fields->addRow(named<QRadioButton>("OverwriteOption"));
    lay_out(dialog, *fields);
    Binder binder(dialog);
    binder.bind(form.RowsLabel);
    binder.bind(form.BankList);
    binder.bind(form.MemoryList);
    binder.bind(form.SwapOption);
    binder.bind(form.OverwriteOption);
    binder.bind(form.ProblemLabel);
    binder.bind(form.Command1);
    binder.bind(form.Command2);
    const Connection speaking = say_problem(dialog, form.ProblemLabel);
    const Connection back = form.BankList.focus_wanted.connect([banks] { banks->setFocus(); });
    run(dialog, form.closed);
}

void QtDialogViews::show_modal(FillSeries& form) {
    constexpr int kCharactersOfStep = 16;
    QDialog dialog(&owner_);
    dialog.setObjectName("FillSeries");
    dialog.setWindowTitle(QObject::tr("Fill Series"));
    auto* const step = named<LineBox>("StepBox", QObject::tr("Step in kHz"));
    step->setFixedWidth(kCharactersOfStep * step->fontMetrics().horizontalAdvance('0'));
    auto* const fields = new QFormLayout;
    add_field(*fields, QObject::tr("&Step in kHz:"), *step);
    fields->addRow(named<QCheckBox>("NumberTags"));
    lay_out(dialog, *fields);
    Binder binder(dialog);
    binder.bind(form.RowsLabel);
    binder.bind_line(form.StepBox);
    step->selectAll();  // to be typed over
    binder.bind(form.NumberTags);
    binder.bind(form.ProblemLabel);
    binder.bind(form.Command1);
    binder.bind(form.Command2);
    const Connection speaking = say_problem(dialog, form.ProblemLabel);
    const Connection back = form.StepBox.focus_wanted.connect([step] {
        step->setFocus();
        step->selectAll();
    });
    run(dialog, form.closed);
}

}  // namespace memwright::qt
