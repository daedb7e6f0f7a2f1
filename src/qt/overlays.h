#pragma once

// The two controls that are laid over a cell to edit it. What is typed goes through the core's
// filters, and every change is told at once. Their texts are in the radio's character set.

#include <QComboBox>
#include <vector>

#include "controls/controls.h"
#include "qt/cell_line.h"

namespace memwright::qt {

class CellTextBox final : public CellLine {
  public:
    explicit CellTextBox(QWidget* parent);

    void show_control(TextBox& box);

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void show_text();
    void tell_text();
    bool type(QKeyEvent& event);
    QString accepted(const QString& typed) const;

    TextBox* box_ = nullptr;
    std::vector<Connection> connections_;
};

class CellComboBox final : public QComboBox {
  public:
    explicit CellComboBox(QWidget* parent);

    void show_control(ComboBox& box);
    void showPopup() override;

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void show_items();
    void take_typed(const QString& typed);
    void pick(int index);
    bool opens_by_space() const;

    CellLine* line_;
    ComboBox* box_ = nullptr;
    std::vector<Connection> connections_;
};

}  // namespace memwright::qt
