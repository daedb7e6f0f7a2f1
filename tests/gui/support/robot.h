#pragma once

// A user at work: steps that are taken one after the other while the program runs, however deep in
// dialogs and transfers it is. Nothing sleeps: each step waits for what it needs. If that does not
// come, the test fails, open dialogs are closed and a running transfer is ended.

#include <QDialog>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>
#include <QtTest/QTest>
#include <chrono>
#include <deque>
#include <functional>
#include <vector>

namespace memwright::gui {

inline constexpr int kPatience = 15'000;  // milliseconds

// Runs the event loop until the condition holds; false if it does not come to that.
inline bool wait_until(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, kPatience);
}

// What is done with a dialog. It has to close it.
using Reply = std::function<void(QDialog&)>;

Reply press(QMessageBox::StandardButton button);  // with the mouse
Reply press_key(Qt::Key key);
Reply type_name(const QString& name);  // into a file dialog, and Return

// Looks at a dialog first.
Reply look(std::function<void(QDialog&)> at, Reply then);

// A dialog as it was when it was answered.
struct Seen {
    QString title;
    QString text;  // of a message box
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
};

class Robot {
  public:
    Robot();

    // The next dialog that opens is answered so.
    Robot& answer(Reply reply);

    // As soon as the condition holds, this is done.
    Robot& when(std::function<bool()> condition, std::function<void()> act);

    // Runs the action; returns when it has returned and all steps are taken. A dialog that is still
    // open then fails the test.
    void during(const std::function<void()>& action);

    const std::vector<Seen>& seen() const { return seen_; }

  private:
    struct Step {
        Reply reply;  // if it answers a dialog
        std::function<bool()> condition;
        std::function<void()> act;
    };

    void work();
    void take_step(Step step);
    QDialog* new_dialog();
    void give_up(const char* why);

    std::deque<Step> steps_;
    std::vector<Seen> seen_;
    std::vector<QPointer<QDialog>> answered_;
    std::chrono::steady_clock::time_point last_progress_;
    QTimer timer_;
};

// An action with nothing but dialogs to be answered.
std::vector<Seen> answering(const std::vector<Reply>& replies, const std::function<void()>& action);

}  // namespace memwright::gui
