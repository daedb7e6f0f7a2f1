#pragma once

// The line of text in a control that is laid over a cell. What is put into it as a whole (pasted,
// also with the middle button and from its menu, or dropped) is what the column takes of it. Texts
// are in the radio's character set.

#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <functional>
#include <string>

namespace memwright::qt {

// What a key types: the number pad's decimal key a point, whatever the keyboard's layout has on it.
QString typed_text(const QKeyEvent& event);

class CellLine : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;

    // What of a text goes in, beside the text around it.
    std::function<std::string(const std::string& text, const std::string& around)> pasted;

    // Whether the change that is told just now puts something in; it may replace something.
    bool inserting() const { return inserting_; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    QString taken(const QString& given, const QString& around) const;
    void paste_from(QClipboard::Mode place);

    bool inserting_ = false;
};

}  // namespace memwright::qt
