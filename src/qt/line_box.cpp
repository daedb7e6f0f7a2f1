#include "qt/line_box.h"

#include <QFocusEvent>
#include <QValidator>
#include <algorithm>

#include "qt/core/text.h"

namespace memwright::qt {
namespace {

// Accepts the texts whose every character could have been typed.
class TypedTexts final : public QValidator {
  public:
    TypedTexts(QObject* parent, const TextBox& box) : QValidator(parent), box_(box) {}

    State validate(QString& text, int& /*caret*/) const override {
        const std::string typed = to_radio(text);
        const bool accepted = std::ranges::all_of(
            typed, [this](char character) { return box_.key_press(character); });
        return accepted ? Acceptable : Invalid;
    }

  private:
    const TextBox& box_;
};

}  // namespace

void LineBox::show_control(TextBox& box) {
    box_ = &box;
    if (box.key_press) setValidator(new TypedTexts(this, box));
    const auto show = [this] {
        if (const QString shown = from_radio(box_->text); text() != shown) setText(shown);
    };
    show();
    connections_.push_back(box.text.changed.connect(show));
    connect(this, &QLineEdit::textEdited, this, [this](const QString& typed) {
        box_->text = to_radio(typed);
        box_->edited();
    });
}

// A menu of its own, or another window, does not leave the box.
void LineBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    const bool left =
        event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason;
    if (left && box_ != nullptr) box_->focus_lost();
}

}  // namespace memwright::qt
