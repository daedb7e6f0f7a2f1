#include "qt/line_bar.h"

#include <QKeyEvent>
#include <QStyle>
#include <QValidator>

#include "qt/core/text.h"

namespace memwright::qt {
namespace {

// Accepts the texts that the radio's character set has.
class RadioTexts final : public QValidator {
  public:
    using QValidator::QValidator;

    State validate(QString& text, int& /*caret*/) const override {
        return from_radio(to_radio(text)) == text ? Acceptable : Invalid;
    }
};

}  // namespace

LineBar::LineBar(const char* name, QWidget& home) : home_(home) { setObjectName(name); }

void LineBar::follow(Property<bool>& shown) {
    connections_.push_back(shown.changed.connect([this, &shown] {
        if (!shown && has_keys()) home_.setFocus(Qt::OtherFocusReason);
        setVisible(shown);
    }));
}

QLabel* LineBar::add_caption(const QString& caption, QWidget& of) {
    auto* const label = new QLabel(caption, this);
    label->setBuddy(&of);
    return label;
}

LineBox* LineBar::add_box(TextBox& box, const QString& accessible_name) {
    auto* const line = new LineBox(this);
    line->setObjectName(from_utf8(box.name));
    line->setAccessibleName(accessible_name);
    if (!box.key_press) line->setValidator(new RadioTexts(line));
    binder_.bind_line(box);
    connections_.push_back(box.focus_wanted.connect([line] {
        line->setFocus(Qt::ShortcutFocusReason);
        line->selectAll();
    }));
    return line;
}

OneLineLabel* LineBar::add_line(Label& label) {
    auto* const line = new OneLineLabel(this);
    line->setObjectName(from_utf8(label.name));
    line->setTextFormat(Qt::PlainText);
    connections_.push_back(label.caption.changed.connect(
        [line, &label] { line->set_whole_text(from_utf8(label.caption)); }));
    return line;
}

QPushButton* LineBar::add_button(CommandButton& button) {
    auto* const shown = new QPushButton(this);
    shown->setObjectName(from_utf8(button.name));
    shown->setAutoDefault(false);
    shown->setFocusPolicy(Qt::TabFocus);
    binder_.bind(button);
    return shown;
}

QPushButton* LineBar::add_close_button(CommandButton& button) {
    QPushButton* const shown = add_button(button);
    shown->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton, nullptr, shown));
    shown->setFlat(true);
    shown->setAccessibleName(tr("Close"));
    shown->setToolTip(tr("Close (Esc)"));
    return shown;
}

bool LineBar::has_keys() const {
    const QWidget* const focus = window()->focusWidget();
    return focus != nullptr && isAncestorOf(focus);
}

// Escape means the bar here, and nothing else that is under way.
bool LineBar::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void LineBar::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape:
            if (!event->isAutoRepeat()) close_control().clicked();
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (auto* const button = qobject_cast<QPushButton*>(window()->focusWidget())) {
                button->click();
            } else {
                enter_pressed(event->modifiers().testFlag(Qt::ShiftModifier));
            }
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

}  // namespace memwright::qt
