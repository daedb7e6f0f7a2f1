#include "qt/notice_list.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "base/number_text.h"
#include "qt/core/qt_platform.h"
#include "qt/core/text.h"
#include "qt/dialog_parts.h"
#include "qt/twips.h"

namespace memwright::qt {
namespace {

constexpr const char* kWidth = "ListWidth";
constexpr const char* kHeight = "ListHeight";
constexpr int kCharacters = 100;
constexpr int kLines = 28;

}  // namespace

NoticeList::NoticeList(Notices& notices, std::function<void(std::size_t)> act, QWidget& owner)
    : QDialog(&owner), notices_(notices), act_(std::move(act)) {
    setObjectName("NoticeList");
    setWindowTitle(tr("Notices"));
    create_widgets();
    restore_size();
    connect(list_, &QTreeWidget::currentItemChanged, this, [this] { show_selected(); });
    connect(action_, &QPushButton::clicked, this, [this] {
        if (const auto number = selected()) act_(*number);
    });
    connection_ = notices_.changed.connect([this] {
        if (isVisible()) show_notices();
    });
}

void NoticeList::create_widgets() {
    auto* const all = new QVBoxLayout(this);
    list_ = named<QTreeWidget>("NoticesOfThisRun", tr("Notices of this run"));
    list_->setHeaderLabels({tr("When"), tr("Notice")});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    auto* const list_label = new QLabel(tr("&Notices of this run:"));
    list_label->setBuddy(list_);
    all->addWidget(list_label);
    all->addWidget(list_, 2);

    text_ = named<QPlainTextEdit>("NoticeWholeText", tr("Whole text"));
    text_->setReadOnly(true);
    text_->setTabChangesFocus(true);
    auto* const text_label = new QLabel(tr("&Whole text:"));
    text_label->setBuddy(text_);
    all->addWidget(text_label);
    all->addWidget(text_, 1);

    auto* const buttons = new QHBoxLayout;
    action_ = named<QPushButton>("NoticeListAction");
    auto* const close = named<QPushButton>("NoticeListClose");
    close->setText(tr("&Close"));
    buttons->addWidget(action_);
    buttons->addStretch();
    buttons->addWidget(close);
    all->addLayout(buttons);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    close->setDefault(true);
}

// What is stored may be of another screen, or no number at all.
void NoticeList::restore_size() {
    QSize size(kCharacters * fontMetrics().averageCharWidth(),
               kLines * fontMetrics().lineSpacing());
    QtSettingsStore store;
    const auto stored = [&](const char* key, int otherwise) {
        const auto text = store.find(settings::kOwnApplication, settings::kNoticesSection, key);
        try {
            return text ? pixels(*this, std::clamp(number_from_text(*text), 0.0, kLargestLength))
                        : otherwise;
        } catch (const std::exception&) {
            return otherwise;
        }
    };
    size = QSize(stored(kWidth, size.width()), stored(kHeight, size.height()));
    resize(size.boundedTo(screen()->availableSize()).expandedTo(minimumSizeHint()));
}

void NoticeList::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    show_notices();
    list_->setFocus();
}

void NoticeList::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    QtSettingsStore store;
    const auto save = [&](const char* key, int pixels) {
        store.save(settings::kOwnApplication, settings::kNoticesSection, key,
                   shortest_text(twips(*this, pixels)));
    };
    save(kWidth, width());
    save(kHeight, height());
}

void NoticeList::show_notices() {
    const auto& entries = notices_.of_this_run();
    const int known = list_->topLevelItemCount();
    for (auto number = static_cast<std::size_t>(known); number < entries.size(); ++number) {
        auto* const item = new QTreeWidgetItem(
            {from_utf8(entries[number].when), from_utf8(one_line(entries[number].notice.text))});
        item->setData(0, Qt::UserRole, static_cast<qulonglong>(number));
        list_->insertTopLevelItem(0, item);
    }
    list_->resizeColumnToContents(0);
    if (list_->currentItem() == nullptr) list_->setCurrentItem(list_->topLevelItem(0));
    show_selected();
}

std::optional<std::size_t> NoticeList::selected() const {
    const QTreeWidgetItem* const item = list_->currentItem();
    if (item == nullptr) return std::nullopt;
    return static_cast<std::size_t>(item->data(0, Qt::UserRole).toULongLong());
}

void NoticeList::show_selected() {
    const auto number = selected();
    QString text;
    if (number) {
        const Notice& notice = notices_.of_this_run()[*number].notice;
        text = from_utf8(notice.text);
        if (!notice.details.empty()) text += "\n\n" + from_utf8(notice.details);
        action_->setText(from_utf8(notice.action));
    } else {
        text = tr("There has been no notice in this run.");
    }
    if (text_->toPlainText() != text) text_->setPlainText(text);
    action_->setVisible(number && notices_.can_act(*number));
}

}  // namespace memwright::qt
