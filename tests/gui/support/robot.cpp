#include "gui/support/robot.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

namespace memwright::gui {

Reply press(QMessageBox::StandardButton button) {
    return [button](QDialog& dialog) {
        auto* const box = qobject_cast<QMessageBox*>(&dialog);
        QAbstractButton* const shown = box == nullptr ? nullptr : box->button(button);
        if (shown == nullptr) {
            ADD_FAILURE() << dialog.windowTitle().toStdString() << " has no such button";
            dialog.reject();
            return;
        }
        QTest::mouseClick(shown, Qt::LeftButton);
    };
}

Reply press_key(Qt::Key key) {
    return [key](QDialog& dialog) {
        QWidget* const focused = dialog.focusWidget();
        QTest::keyClick(focused == nullptr ? &dialog : focused, key);
    };
}

Reply type_name(const QString& name) {
    return [name](QDialog& dialog) {
        auto* const line = dialog.findChild<QLineEdit*>("fileNameEdit");
        if (line == nullptr) {
            ADD_FAILURE() << dialog.windowTitle().toStdString() << " asks for no file name";
            dialog.reject();
            return;
        }
        // At one stroke, as if pasted: off the screen, the list of suggestions that opens while
        // somebody types takes the focus away.
        line->clear();
        line->insert(name);
        QTest::keyClick(line, Qt::Key_Return);
    };
}

Reply look(std::function<void(QDialog&)> at, Reply then) {
    return [at = std::move(at), then = std::move(then)](QDialog& dialog) {
        at(dialog);
        then(dialog);
    };
}

Robot::Robot() {
    constexpr int kLookInterval = 5;
    timer_.setInterval(kLookInterval);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { work(); });
}

Robot& Robot::answer(Reply reply) {
    steps_.push_back({std::move(reply), {}, {}});
    return *this;
}

Robot& Robot::when(std::function<bool()> condition, std::function<void()> act) {
    steps_.push_back({{}, std::move(condition), std::move(act)});
    return *this;
}

void Robot::during(const std::function<void()>& action) {
    last_progress_ = std::chrono::steady_clock::now();
    timer_.start();
    action();
    // What the action left to the event loop.
    QCoreApplication::processEvents();
    wait_until([this] { return steps_.empty() && QApplication::activeModalWidget() == nullptr; });
    timer_.stop();
}

void Robot::work() {
    std::erase_if(answered_, [](const auto& dialog) { return dialog.isNull(); });
    QDialog* const dialog = new_dialog();
    if (!steps_.empty()) {
        const Step& next = steps_.front();
        if (next.reply ? dialog != nullptr : next.condition()) {
            Step step = next;
            steps_.pop_front();
            take_step(std::move(step));
            return;
        }
    } else if (dialog != nullptr) {
        give_up("unexpected");
        return;
    }
    const auto waited = std::chrono::steady_clock::now() - last_progress_;
    if (waited < std::chrono::milliseconds(kPatience)) return;
    if (!steps_.empty() || QApplication::activeModalWidget() != nullptr) give_up("stuck");
}

void Robot::take_step(Step step) {
    last_progress_ = std::chrono::steady_clock::now();
    // Outside of the timer, which would not fire again before the step has ended.
    if (!step.reply) {
        QTimer::singleShot(0, &timer_, std::move(step.act));
        return;
    }
    QDialog* const dialog = new_dialog();
    answered_.emplace_back(dialog);
    Seen seen{dialog->windowTitle(), {}, QMessageBox::NoIcon, {}};
    if (const auto* const box = qobject_cast<QMessageBox*>(dialog)) {
        seen.text = box->text();
        seen.icon = box->icon();
        seen.buttons = box->standardButtons();
    }
    seen_.push_back(seen);
    QTimer::singleShot(0, dialog, [dialog, reply = std::move(step.reply)] { reply(*dialog); });
}

QDialog* Robot::new_dialog() {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    const bool known = std::ranges::any_of(
        answered_, [dialog](const auto& answered) { return answered == dialog; });
    if (dialog == nullptr || known || !dialog->isVisible()) return nullptr;
    // Off the screen, a menu that closes leaves no window active, and keys need one.
    if (!dialog->isActiveWindow()) dialog->activateWindow();
    return dialog->isActiveWindow() ? dialog : nullptr;
}

void Robot::give_up(const char* why) {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    const auto* const box = qobject_cast<QMessageBox*>(dialog);
    ADD_FAILURE() << why << ": " << steps_.size() << " steps left, dialog "
                  << (dialog == nullptr ? "none" : dialog->windowTitle().toStdString()) << ": "
                  << (box == nullptr ? "" : box->text().toStdString());
    steps_.clear();
    last_progress_ = std::chrono::steady_clock::now();
    if (box != nullptr && box->button(QMessageBox::No) != nullptr) {
        box->button(QMessageBox::No)->click();
    } else if (dialog != nullptr) {
        dialog->reject();
    } else {
        // Which ends a transfer.
        QApplication::closeAllWindows();
    }
}

std::vector<Seen> answering(const std::vector<Reply>& replies,
                            const std::function<void()>& action) {
    Robot robot;
    for (const Reply& reply : replies) robot.answer(reply);
    robot.during(action);
    return robot.seen();
}

}  // namespace memwright::gui
