#pragma once

// The bar that shows the notice that the user has not seen yet, in one line. F6 takes the keys to
// it and back; in it, Enter does what the notice offers and Escape dismisses it. It decides
// nothing.

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <functional>
#include <optional>
#include <vector>

#include "app/notices.h"

namespace memwright::qt {

// A label of one line that ends in "..." where it is too long, and then has a tip.
class OneLineLabel final : public QLabel {
  public:
    using QLabel::QLabel;

    void set_whole_text(const QString& text);

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

class NoticeBar final : public QWidget {
  public:
    // `home` is where the keys go when the widget that had them before cannot take them. `act` does
    // what a notice offers, by its number.
    NoticeBar(Notices& notices, QWidget& home, std::function<void(std::size_t)> act,
              std::function<void()> show_list);

    // To the bar, or back from it. Nothing without a notice.
    void switch_focus();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QPushButton* add_button(const char* name, const QString& caption);
    void show_notices();
    void announce(const Notice& notice);
    void act_on_current();
    bool has_keys() const;
    void take_keys();
    void give_keys_back();
    void remember(QWidget* before, QWidget* now);

    Notices& notices_;
    QWidget& home_;
    std::function<void(std::size_t)> act_;
    OneLineLabel* text_;
    QLabel* count_;
    QPushButton* action_;
    QPushButton* list_;
    QPushButton* dismiss_;
    std::optional<std::size_t> shown_;  // the notice's number
    QPointer<QWidget> before_;          // what had the keys before the bar
    std::vector<Connection> connections_;
};

}  // namespace memwright::qt
