#include "qt/overlays.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QWheelEvent>
#include <algorithm>

#include "qt/core/text.h"
#include "qt/grid_view.h"
#include "table/choice_lists.h"

namespace memwright::qt {
namespace {

constexpr int kNoLimit = 32767;

Key key_of(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return Key::tab;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return Key::enter;
        case Qt::Key_Up:
            return Key::up;
        case Qt::Key_Down:
            return Key::down;
        case Qt::Key_Left:
            return Key::left;
        case Qt::Key_Right:
            return Key::right;
        default:
            return Key::other;
    }
}

// Shift changes the meaning of Tab alone; with it, or with other modifiers, arrows act in the text.
bool may_move(const QKeyEvent& event) {
    const auto modifiers = event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
    return modifiers == Qt::NoModifier ||
           (modifiers == Qt::ShiftModifier && key_of(event) == Key::tab);
}

bool is_tab(const QEvent& event) {
    return event.type() == QEvent::KeyPress &&
           key_of(static_cast<const QKeyEvent&>(event)) == Key::tab;
}

// Escape closes the overlay and ends nothing else; undo and redo are the window's, whose steps the
// typing belongs to. True if the event has been dealt with.
bool keeps_keys(QEvent& event) {
    if (event.type() != QEvent::ShortcutOverride) return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    const bool undo = key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo);
    event.setAccepted(key.key() == Qt::Key_Escape);
    return undo || event.isAccepted();
}

// The wheel scrolls the table, over an overlay too: it changes no choice by the way.
void turn_over_grid(const QWidget& overlay, QWheelEvent& event) {
    auto* const grid = overlay.parentWidget()->findChild<GridView*>();
    if (grid != nullptr) QCoreApplication::sendEvent(grid->viewport(), &event);
}

// An overlay that loses the focus to its own list or its own context menu is still in use. The
// window's menus take the focus for the same reason (Qt::PopupFocusReason).
bool has_own_popup(const QWidget& overlay) {
    const auto parts = overlay.findChildren<QWidget*>();
    return std::ranges::any_of(parts, [](const QWidget* part) {
        return part->isVisible() && part->windowType() == Qt::Popup;
    });
}

template <class Box>
bool is_used(const Box& box, const QKeyEvent& event) {
    const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
    return box.key_down && may_move(event) && box.key_down(key_of(event), shift);
}

}  // namespace

CellTextBox::CellTextBox(QWidget* parent) : CellLine(parent) {
    setFrame(false);
    connect(this, &QLineEdit::textEdited, this, [this] { tell_text(); });
}

void CellTextBox::show_control(TextBox& box) {
    box_ = &box;
    pasted = [this](const std::string& text, const std::string& around) {
        return box_->pasted ? box_->pasted(text, around) : text;
    };
    connections_.push_back(box.text.changed.connect([this] { show_text(); }));
    connections_.push_back(box.focus_wanted.connect([this] {
        setFocus();
        selectAll();
    }));
    const auto limit = [this] {
        const auto length = static_cast<int>(box_->max_length.get());
        setMaxLength(length == 0 ? kNoLimit : length);
    };
    connections_.push_back(box.max_length.changed.connect(limit));
}

void CellTextBox::show_text() {
    const QString shown = from_radio(box_->text);
    if (text() == shown) return;
    setText(shown);
    setCursorPosition(static_cast<int>(box_->caret.get()));
}

void CellTextBox::tell_text() {
    box_->caret = static_cast<std::size_t>(cursorPosition());
    box_->text = to_radio(text());
    show_text();
}

bool CellTextBox::event(QEvent* event) {
    if (keeps_keys(*event)) return true;
    // Tab moves between cells: it must not move the focus.
    if (is_tab(*event)) {
        keyPressEvent(static_cast<QKeyEvent*>(event));
        return true;
    }
    return QLineEdit::event(event);
}

void CellTextBox::keyPressEvent(QKeyEvent* event) {
    event->accept();
    box_->caret = static_cast<std::size_t>(cursorPosition());
    const Key key = key_of(*event);
    // From a part of the text an arrow first takes the selection away. The whole of it is selected
    // because it was just opened.
    const bool part = hasSelectedText() && selectedText().size() < text().size();
    const bool in_text = part && (key == Key::left || key == Key::right);
    if (!in_text && is_used(*box_, *event)) return;
    if (key == Key::tab) return;
    if (event->key() == Qt::Key_Escape) {
        box_->escaped();
        box_->visible = false;
    } else if (!type(*event)) {
        CellLine::keyPressEvent(event);
    }
}

// True if the event was a typed character, which then went through the filter.
bool CellTextBox::type(QKeyEvent& event) {
    const QString typed = typed_text(event);
    const auto commands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    // AltGr is Ctrl and Alt at once on some systems, and types characters.
    const bool command = (event.modifiers() & commands) != 0 &&
                         (event.modifiers() & commands) != (Qt::ControlModifier | Qt::AltModifier);
    const bool text = !typed.isEmpty() && typed.front().category() != QChar::Other_Control;
    if (command || !text) return false;
    // What stands outside of Unicode's first plane comes in two parts, and the radio has none of
    // it.
    for (const QChar character : typed) {
        const QString taken = accepted(character);
        if (taken.isEmpty()) continue;
        QKeyEvent filtered(event.type(), event.key(), event.modifiers() & Qt::ShiftModifier, taken);
        QLineEdit::keyPressEvent(&filtered);
    }
    return true;
}

// What becomes of a typed character; "" if it is dropped.
QString CellTextBox::accepted(const QString& typed) const {
    const std::string bytes = to_radio(typed);
    char character = bytes.front();
    if (from_radio(bytes) != typed) return {};  // not in the radio's character set
    if (box_->key_press && !box_->key_press(character)) return {};
    return from_radio(std::string(1, character));
}

// What an input method commits (dead keys and Compose are one, too) is typed: each character meets
// the filter with those before it in the text. The first takes the place of what is replaced.
void CellTextBox::inputMethodEvent(QInputMethodEvent* event) {
    int start = event->replacementStart(), length = event->replacementLength();
    const QString committed = event->commitString().normalized(QString::NormalizationForm_C);
    for (const QChar character : committed) {
        const QString taken = accepted(character);
        if (taken.isEmpty()) continue;
        QInputMethodEvent one;
        one.setCommitString(taken, start, length);
        QLineEdit::inputMethodEvent(&one);
        start = length = 0;
    }
    QInputMethodEvent composed(event->preeditString(), event->attributes());
    if (committed.isEmpty()) composed.setCommitString({}, start, length);
    QLineEdit::inputMethodEvent(&composed);
}

void CellTextBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (!has_own_popup(*this)) box_->focus_lost();
}

void CellTextBox::wheelEvent(QWheelEvent* event) { turn_over_grid(*this, *event); }

CellComboBox::CellComboBox(QWidget* parent) : QComboBox(parent), line_(new CellLine) {
    setFrame(false);
    setLineEdit(line_);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
}

void CellComboBox::show_control(ComboBox& box) {
    box_ = &box;
    line_->pasted = [this](const std::string& text, const std::string& around) {
        return box_->pasted ? box_->pasted(text, around) : text;
    };
    connections_.push_back(box.items.changed.connect([this] { show_items(); }));
    connections_.push_back(box.text.changed.connect([this] { show_items(); }));
    connections_.push_back(box.focus_wanted.connect([this] {
        setFocus();
        line_->selectAll();
    }));
    connect(line_, &QLineEdit::textEdited, this, &CellComboBox::take_typed);
    connect(this, &QComboBox::activated, this, &CellComboBox::pick);
}

// What is typed at the end is completed in the list's own spelling, which a completer of Qt leaves
// as it was typed. What was completed is selected: the next character replaces it.
void CellComboBox::take_typed(const QString& typed) {
    const auto length = static_cast<int>(typed.size());
    std::string text = to_radio(typed);
    const bool completes = line_->inserting() && line_->cursorPosition() == length;
    const std::string choice = completes ? completed(box_->items, text) : "";
    box_->text = choice.empty() ? std::move(text) : choice;
    show_items();
    if (!choice.empty()) {
        const auto whole = static_cast<int>(choice.size());
        line_->setSelection(whole, length - whole);
    }
    box_->edited();
}

void CellComboBox::pick(int index) {
    box_->text = to_radio(itemText(index));
    box_->picked();
    line_->selectAll();
}

void CellComboBox::show_items() {
    const QSignalBlocker quiet(this);
    const auto& items = box_->items.get();
    const QString shown = from_radio(box_->text);
    if (count() != static_cast<int>(items.size()) ||
        (count() > 0 && itemText(0) != from_radio(items.front()))) {
        clear();
        for (const std::string& item : items) addItem(from_radio(item));
    }
    setCurrentIndex(findText(shown, Qt::MatchFixedString | Qt::MatchCaseSensitive));
    if (line_->text() != shown) setEditText(shown);
}

bool CellComboBox::event(QEvent* event) {
    if (keeps_keys(*event)) return true;
    if (is_tab(*event)) {
        keyPressEvent(static_cast<QKeyEvent*>(event));
        return true;
    }
    return QComboBox::event(event);
}

// The opened list shows itself in a window of its own, which gets the keys.
void CellComboBox::showPopup() {
    view()->installEventFilter(this);
    QComboBox::showPopup();
}

// Tab in the opened list takes the choice that is highlighted and goes on from there.
bool CellComboBox::eventFilter(QObject* watched, QEvent* event) {
    if (!is_tab(*event)) return QComboBox::eventFilter(watched, event);
    const QModelIndex highlighted = view()->currentIndex();
    hidePopup();
    // In a list without a choice the first one is where the keys are, and does not look so.
    if (view()->selectionModel()->isSelected(highlighted)) pick(highlighted.row());
    is_used(*box_, static_cast<const QKeyEvent&>(*event));
    return true;
}

// No choice is typed on with a blank where the text is one, nothing, or about to be replaced.
bool CellComboBox::opens_by_space() const {
    const QString text = line_->text();
    return text == line_->selectedText() || findText(text, Qt::MatchExactly) >= 0;
}

void CellComboBox::keyPressEvent(QKeyEvent* event) {
    event->accept();
    if (key_of(*event) == Key::tab) {
        is_used(*box_, *event);
    } else if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier &&
               opens_by_space()) {
        showPopup();
    } else if (event->key() == Qt::Key_Escape) {
        box_->escaped();
        box_->visible = false;
    } else {
        QComboBox::keyPressEvent(event);
    }
}

void CellComboBox::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (!has_own_popup(*this)) box_->focus_lost();
}

void CellComboBox::wheelEvent(QWheelEvent* event) { turn_over_grid(*this, *event); }

}  // namespace memwright::qt
