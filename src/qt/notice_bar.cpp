#include "qt/notice_bar.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <utility>

#include "qt/announcer.h"
#include "qt/core/text.h"

namespace memwright::qt {
namespace {

// Screen readers say by themselves what comes with this role.
QAccessibleInterface* accessible_bar(const QString& /*class_name*/, QObject* object) {
    auto* const bar = dynamic_cast<NoticeBar*>(object);
    return bar == nullptr ? nullptr : new QAccessibleWidget(bar, QAccessible::Notification);
}

QString spoken(const Notice& notice) {
    return NoticeBar::tr("Notice: %1").arg(from_utf8(one_line(notice.text)));
}

}  // namespace

void OneLineLabel::set_whole_text(const QString& text) {
    setText(text);
    // As markup, so that a long text is wrapped.
    setToolTip("<qt>" + text.toHtmlEscaped() + "</qt>");
}

QSize OneLineLabel::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth(), QLabel::minimumSizeHint().height()};
}

void OneLineLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    // The words of a text stand in its own direction, whatever the window's.
    painter.setLayoutDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const QString line = fontMetrics().elidedText(text(), Qt::ElideRight, width());
    style()->drawItemText(&painter, rect(),
                          static_cast<int>(QStyle::visualAlignment(
                              layoutDirection(), Qt::AlignLeading | Qt::AlignVCenter)),
                          palette(), isEnabled(), line, QPalette::WindowText);
}

NoticeBar::NoticeBar(Notices& notices, QWidget& home, std::function<void(std::size_t)> act,
                     std::function<void()> show_list)
    : notices_(notices),
      home_(home),
      act_(std::move(act)),
      text_(new OneLineLabel(this)),
      count_(new QLabel(this)) {
    setObjectName("NoticeBar");
    text_->setObjectName("NoticeText");
    text_->setTextFormat(Qt::PlainText);
    count_->setObjectName("NoticeCount");
    auto* const row = new QHBoxLayout(this);
    const int gap = fontMetrics().height() / 3;
    row->setContentsMargins(2 * gap, gap, gap, gap);
    row->setSpacing(gap);
    row->addWidget(text_, 1);
    row->addWidget(count_);
    action_ = add_button("NoticeAction", QString());
    list_ = add_button("NoticeListButton", tr("&List..."));
    dismiss_ = add_button("NoticeDismiss", tr("&Dismiss"));
    connect(action_, &QPushButton::clicked, this, [this] { act_on_current(); });
    connect(list_, &QPushButton::clicked, this, std::move(show_list));
    connect(dismiss_, &QPushButton::clicked, this, [this] { notices_.dismiss(); });
    connect(qApp, &QApplication::focusChanged, this, &NoticeBar::remember);
    QAccessible::installFactory(accessible_bar);
    connections_ = {notices_.changed.connect([this] { show_notices(); }),
                    notices_.came.connect([this](const Notice& notice) { announce(notice); })};
}

// The mouse leaves the keys where they are.
QPushButton* NoticeBar::add_button(const char* name, const QString& caption) {
    auto* const button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    button->setFocusPolicy(Qt::TabFocus);
    layout()->addWidget(button);
    return button;
}

void NoticeBar::show_notices() {
    const auto number = notices_.current();
    const bool had_keys = has_keys();
    if (!number) {
        shown_.reset();
        if (had_keys) give_keys_back();
        hide();
        return;
    }
    const Notice& notice = notices_.of_this_run()[*number].notice;
    const QString text = from_utf8(one_line(notice.text));
    text_->set_whole_text(text);
    count_->setText(tr("%1 of %2").arg(1).arg(notices_.waiting()));
    count_->setVisible(notices_.waiting() > 1);
    action_->setText(from_utf8(notice.action));
    action_->setVisible(notices_.can_act(*number));
    const bool another = shown_ != number;
    shown_ = number;
    if (another && isVisible() && accessibleName() != spoken(notice)) announce(notice);
    show();
    if (had_keys && !has_keys()) take_keys();
}

// The bar's name carries what came last, also while an earlier notice is shown. That it is shown
// again is what assistive programs hear of.
void NoticeBar::announce(const Notice& notice) {
    setAccessibleName(spoken(notice));
    qt::announce(*this);
}

void NoticeBar::act_on_current() {
    if (const auto number = notices_.current()) act_(*number);
}

bool NoticeBar::has_keys() const {
    const QWidget* const focus = window()->focusWidget();
    return focus != nullptr && isAncestorOf(focus);
}

void NoticeBar::take_keys() {
    (action_->isHidden() ? dismiss_ : action_)->setFocus(Qt::ShortcutFocusReason);
}

void NoticeBar::give_keys_back() {
    const bool usable = before_ != nullptr && before_->isVisible() && before_->isEnabled();
    (usable ? before_.data() : &home_)->setFocus(Qt::OtherFocusReason);
}

void NoticeBar::switch_focus() {
    if (!isVisible()) return;
    if (has_keys()) {
        give_keys_back();
    } else {
        take_keys();
    }
}

void NoticeBar::remember(QWidget* before, QWidget* now) {
    if (now == nullptr || before == nullptr || !isAncestorOf(now) || isAncestorOf(before)) return;
    if (before->window() == window()) before_ = before;
}

// Escape means the notice here, and not a transfer that is under way.
bool NoticeBar::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void NoticeBar::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape:
            // One press, one notice.
            if (!event->isAutoRepeat()) notices_.dismiss();
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (auto* const button = qobject_cast<QPushButton*>(window()->focusWidget())) {
                button->click();
            }
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

}  // namespace memwright::qt
