// The dialog of the search limits.

#include <QFontDatabase>
#include <QGridLayout>

#include "app/frm_limit_search.h"
#include "qt/binder.h"
#include "qt/core/text.h"
#include "qt/dialog_parts.h"
#include "qt/dialogs.h"
#include "qt/line_box.h"

namespace memwright::qt {
namespace {

constexpr int kLimitsInRow = 2;
constexpr int kColumnsOfLimit = 3;  // box, list and a gap

QString plain(QString caption) { return caption.remove('&'); }

// On Linux, a screen reader takes the chosen entry for the name of a list, and asks a label what it
// is a list of.
void add_unseen_label(QDialog& dialog, QComboBox& list) {
    auto* const label = new QLabel(list.accessibleName(), &dialog);
    label->setBuddy(&list);
    label->hide();
}

// The box and the list of a limit, side by side.
void add_limit(QDialog& dialog, QGridLayout& cells, const frmLimitSearch& form, std::size_t limit,
               const QString& name) {
    constexpr int kAround = 24;  // pixels: the frame and room for the caret
    const int row = static_cast<int>(limit) / kLimitsInRow + 1;
    const int column = 1 + static_cast<int>(limit) % kLimitsInRow * kColumnsOfLimit;
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    auto* const box = named<LineBox>(form.Text1[limit].name.c_str(), name);
    box->setFont(fixed);
    box->setMinimumWidth(QFontMetrics(fixed).horizontalAdvance("1299.00000") + kAround);
    box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // as wide as its heading
    box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);  // the points stand below each other
    auto* const list =
        named<QComboBox>(form.Combo1[limit].name.c_str(), QObject::tr("%1, mode").arg(name));
    list->setFont(fixed);
    add_unseen_label(dialog, *list);
    cells.addWidget(box, row, column);
    cells.addWidget(list, row, column + 1);
}

void add_headings(QGridLayout& cells) {
    const auto add = [&](int limit, const QString& heading) {
        const int column = 1 + limit * kColumnsOfLimit;
        cells.addWidget(new QLabel(heading), 0, column);
        cells.addWidget(new QLabel(QObject::tr("Mode")), 0, column + 1);
    };
    add(0, QObject::tr("Lower limit, MHz"));
    add(1, QObject::tr("Upper limit, MHz"));
}

void lay_out(QDialog& dialog, frmLimitSearch& form) {
    auto* const cells = new QGridLayout;
    const int gap = dialog.fontMetrics().averageCharWidth();
    cells->setHorizontalSpacing(gap);
    cells->setColumnMinimumWidth(kColumnsOfLimit, gap);
    add_headings(*cells);
    int row = 0;
    for (const Label* caption : form.row_labels()) {
        auto* const label = named<QLabel>(caption->name.c_str());
        label->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
        cells->addWidget(label, row + 1, 0);
        const QString name = plain(from_utf8(caption->caption));
        const auto lower = static_cast<std::size_t>(row * kLimitsInRow);
        add_limit(dialog, *cells, form, lower, QObject::tr("%1, lower limit").arg(name));
        add_limit(dialog, *cells, form, lower + 1, QObject::tr("%1, upper limit").arg(name));
        label->setBuddy(cells->itemAtPosition(row + 1, 1)->widget());
        ++row;
    }
    auto* const all = new QVBoxLayout(&dialog);
    all->addLayout(cells);
    all->addSpacing(dialog.fontMetrics().height() / 2);
    all->addLayout(button_row({"Command1", "Command2"}));
    all->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace

void QtDialogViews::show_modal(frmLimitSearch& form) {
    QDialog dialog(&owner_);
    dialog.setObjectName("frmLimitSearch");
    dialog.setWindowTitle(QObject::tr("Search Band Memories"));
    lay_out(dialog, form);
    Binder binder(dialog);
    for (Label* label : form.row_labels()) binder.bind(*label);
    for (TextBox& box : form.Text1) binder.bind_line(box);
    for (ComboBox& list : form.Combo1) binder.bind(list);
    binder.bind(form.Command1);
    binder.bind(form.Command2);
    // As Tab finds it: what is typed replaces it.
    dialog.findChild<LineBox*>(from_utf8(form.Text1.front().name))->selectAll();
    run(dialog, form.closed);
}

}  // namespace memwright::qt
