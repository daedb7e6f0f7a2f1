#include "qt/cell_line.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QScopedValueRollback>

#include "qt/core/text.h"

namespace memwright::qt {
namespace {

// Where Ctrl+Shift+Insert pastes what is selected elsewhere, it is one of the keys for pasting.
QClipboard::Mode pasted_by(const QKeyEvent& event) {
    const bool selection = event.key() == Qt::Key_Insert &&
                           event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    return selection ? QClipboard::Selection : QClipboard::Clipboard;
}

}  // namespace

QString typed_text(const QKeyEvent& event) {
    const bool comma = event.text() == "," && event.modifiers().testFlag(Qt::KeypadModifier);
    return comma ? QString(".") : event.text();
}

QString CellLine::taken(const QString& given, const QString& around) const {
    return pasted ? from_radio(pasted(to_radio(given), to_radio(around))) : given;
}

// If nothing of it is taken, what is selected stays.
void CellLine::paste_from(QClipboard::Mode place) {
    const QString around = text().remove(selectionStart(), selectedText().size());
    const QString pasting = taken(QGuiApplication::clipboard()->text(place), around);
    const QScopedValueRollback inserts(inserting_, true);
    if (!pasting.isEmpty()) insert(pasting);
}

void CellLine::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste)) {
        event->accept();
        paste_from(pasted_by(*event));
        return;
    }
    const QString typed = typed_text(*event);
    const QScopedValueRollback inserts(inserting_, !typed.isEmpty() && typed.front().isPrint());
    if (typed == event->text()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    QKeyEvent changed(event->type(), event->key(), event->modifiers(), typed);
    QLineEdit::keyPressEvent(&changed);
}

void CellLine::inputMethodEvent(QInputMethodEvent* event) {
    const QScopedValueRollback inserts(inserting_, !event->commitString().isEmpty());
    QLineEdit::inputMethodEvent(event);
}

void CellLine::mouseReleaseEvent(QMouseEvent* event) {
    const bool pastes =
        event->button() == Qt::MiddleButton && QGuiApplication::clipboard()->supportsSelection();
    if (!pastes) {
        QLineEdit::mouseReleaseEvent(event);
        return;
    }
    deselect();
    paste_from(QClipboard::Selection);
}

void CellLine::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* const menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // Its entries have no other names than their texts, which end with their keys.
    for (QAction* const action : menu->actions()) {
        if (!action->text().startsWith(QLineEdit::tr("&Paste"))) continue;
        disconnect(action, nullptr, this, nullptr);
        connect(action, &QAction::triggered, this, [this] { paste_from(QClipboard::Clipboard); });
    }
    menu->popup(event->globalPos());
}

void CellLine::dropEvent(QDropEvent* event) {
    QMimeData kept;
    kept.setText(taken(event->mimeData()->text(), text()));
    QDropEvent drop(event->position(), event->possibleActions(), &kept, event->buttons(),
                    event->modifiers());
    const QScopedValueRollback inserts(inserting_, true);
    QLineEdit::dropEvent(&drop);
    event->setDropAction(drop.dropAction());
    event->setAccepted(drop.isAccepted());
}

}  // namespace memwright::qt
