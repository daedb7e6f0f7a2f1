#pragma once

// The window with the notices of this run, the latest first, and the whole text of the one that is
// selected. It follows what comes while it is open.

#include <QDialog>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <functional>

#include "app/notices.h"

namespace memwright::qt {

class NoticeList final : public QDialog {
  public:
    // `act` does what a notice offers, by its number.
    NoticeList(Notices& notices, std::function<void(std::size_t)> act, QWidget& owner);

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void create_widgets();
    void restore_size();
    void show_notices();
    void show_selected();
    std::optional<std::size_t> selected() const;

    Notices& notices_;
    std::function<void(std::size_t)> act_;
    QTreeWidget* list_;
    QPlainTextEdit* text_;
    QPushButton* action_;
    Connection connection_;
};

}  // namespace memwright::qt
