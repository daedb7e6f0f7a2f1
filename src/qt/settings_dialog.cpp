// The dialog of the set-mode settings.

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <algorithm>
#include <initializer_list>

#include "app/frm_misc_setting.h"
#include "qt/binder.h"
#include "qt/core/text.h"
#include "qt/dialog_parts.h"
#include "qt/dialogs.h"

namespace memwright::qt {
namespace {

// Lists with their labels, in a group.
class SettingGroup {
  public:
    SettingGroup(const QString& title, const frmMiscSetting& form,
                 std::initializer_list<const ComboBox*> lists)
        : box_(new QGroupBox(title)), rows_(new QFormLayout(box_)) {
        rows_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        for (const ComboBox* list : lists) {
            const auto setting = std::ranges::find(form.settings(), list, [](const auto& known) {
                return static_cast<const ComboBox*>(&known.list);
            });
            add(*setting);
        }
    }

    QGroupBox* box() const { return box_; }
    const std::vector<QLabel*>& labels() const { return labels_; }

  private:
    void add(const frmMiscSetting::Setting& setting) {
        auto* const list = named<QComboBox>(setting.list.name.c_str(), from_utf8(setting.name()));
        auto* const label = new QLabel(from_utf8(setting.caption));
        label->setBuddy(list);
        rows_->addRow(label, list);
        labels_.push_back(label);
    }

    QGroupBox* box_;
    QFormLayout* rows_;
    std::vector<QLabel*> labels_;
};

// The lists of groups that stand below each other begin at one line.
void align(std::initializer_list<const SettingGroup*> groups) {
    int widest = 0;
    for (const SettingGroup* group : groups) {
        for (const QLabel* label : group->labels()) {
            widest = std::max(widest, label->sizeHint().width());
        }
    }
    for (const SettingGroup* group : groups) {
        for (QLabel* label : group->labels()) label->setMinimumWidth(widest);
    }
}

QGroupBox* scan_mode() {
    auto* const box = new QGroupBox(QObject::tr("Scan Mode"));
    const QString note = QObject::tr(
        "The radio keeps Scan Mode and Key Beep in one place: Key Beep OFF is the scan mode Bank, "
        "ON is All. Where they differ here, Key Beep is stored.");
    box->setToolTip(note);
    auto* const row = new QHBoxLayout(box);
    for (const char* name : {"Option1", "Option2"}) {
        auto* const button = named<QRadioButton>(name);
        button->setAccessibleDescription(note);
        row->addWidget(button);
    }
    row->addStretch();
    return box;
}

QGroupBox* linked_bands(const frmMiscSetting& form) {
    constexpr int kColumns = 5;
    auto* const box = new QGroupBox(QObject::tr("Linked Scan Bands"));
    auto* const cells = new QGridLayout(box);
    int i = 0;
    for (const CheckBox& band : form.Check1) {
        cells->addWidget(named<QCheckBox>(band.name.c_str(), QObject::tr("Band %1").arg(i)),
                         i / kColumns, i % kColumns);
        ++i;
    }
    return box;
}

void lay_out(QDialog& dialog, const frmMiscSetting& form) {
    const SettingGroup search(
        QObject::tr("Scan and Search"), form,
        {&form.Combo1, &form.Combo14, &form.Combo3, &form.Combo11, &form.Combo13});
    const SettingGroup reception(QObject::tr("Reception"), form,
                                 {&form.Combo4, &form.Combo5, &form.Combo6, &form.Combo9});
    const SettingGroup operation(
        QObject::tr("Operation"), form,
        {&form.Combo7, &form.Combo8, &form.Combo12, &form.Combo10, &form.Combo2});
    align({&search});
    align({&reception, &operation});
    // The last group of each column takes the rest, so that both end at one line.
    auto* const left = new QVBoxLayout;
    left->addWidget(search.box());
    left->addWidget(scan_mode());
    left->addWidget(linked_bands(form), 1);
    auto* const right = new QVBoxLayout;
    right->addWidget(reception.box());
    right->addWidget(operation.box(), 1);
    auto* const columns = new QHBoxLayout;
    columns->addLayout(left);
    columns->addLayout(right);
    auto* const all = new QVBoxLayout(&dialog);
    all->addLayout(columns);
    all->addLayout(button_row({"Command1", "Command2"}));
    all->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace

void QtDialogViews::show_modal(frmMiscSetting& form) {
    QDialog dialog(&owner_);
    dialog.setObjectName("frmMiscSetting");
    dialog.setWindowTitle(QObject::tr("Settings"));
    lay_out(dialog, form);
    Binder binder(dialog);
    for (const auto& setting : form.settings()) binder.bind(setting.list);
    binder.bind(form.Option1);
    binder.bind(form.Option2);
    for (CheckBox& box : form.Check1) binder.bind(box);
    binder.bind(form.Command1);
    binder.bind(form.Command2);
    // Tab goes to the selected button, from the first time on.
    const OptionButton& other = form.Option1.selected ? form.Option2 : form.Option1;
    dialog.findChild<QRadioButton*>(from_utf8(other.name))->setFocusPolicy(Qt::ClickFocus);
    run(dialog, form.closed);
}

}  // namespace memwright::qt
