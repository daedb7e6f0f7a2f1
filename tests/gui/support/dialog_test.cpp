#include "gui/support/dialog_test.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QStyleOptionFrame>
#include <QWindow>
#include <algorithm>

#include "gui/support/appearance.h"

namespace memwright::gui {
namespace {

constexpr double kEnough = 4.5;  // contrast

// What a box can show of a text.
int room(const QLineEdit& line) {
    constexpr int kMargins = 4;  // left and right, as the widget draws its text
    QStyleOptionFrame option;
    option.initFrom(&line);
    option.rect = line.rect();
    option.lineWidth = line.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &line);
    return line.style()->subElementRect(QStyle::SE_LineEditContents, &option, &line).width() -
           kMargins;
}

}  // namespace

void key(QDialog& dialog, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(dialog.windowHandle(), key, modifiers);
}

void alt(QDialog& dialog, char letter) {
    QTest::keyClick(dialog.windowHandle(), letter, Qt::AltModifier);
}

void type(QDialog& dialog, const QString& text) {
    for (const QChar character : text) {
        QTest::keyClick(dialog.windowHandle(), character.toLatin1());
    }
}

void click(QDialog& dialog, const std::string& name) {
    constexpr int kInside = 8;  // boxes and option buttons are not as wide as their place
    const auto& widget = part(dialog, name);
    const QPoint at = widget.mapTo(&dialog, QPoint(kInside, widget.height() / 2));
    QTest::mouseClick(dialog.windowHandle(), Qt::LeftButton, {}, at);
}

void pick_with_mouse(QDialog& dialog, const std::string& list, int entry) {
    click(dialog, list);
    QAbstractItemView& entries = *part<QComboBox>(dialog, list).view();
    EXPECT_TRUE(wait_until([&] { return entries.isVisible(); }));
    // The entries take their places after the opening, and a click that comes too soon after it
    // still belongs to that.
    EXPECT_TRUE(wait_until([&] {
        if (!entries.isVisible()) return true;
        const QPoint place = entries.visualRect(entries.model()->index(entry, 0)).center();
        QTest::mouseMove(entries.viewport(), place);
        QTest::mouseClick(entries.viewport(), Qt::LeftButton, {}, place);
        return !entries.isVisible();
    }));
    // Off the screen, a list that closes leaves no window active.
    QApplication::setActiveWindow(&dialog);
}

std::string focused() {
    QWidget* const widget = QApplication::focusWidget();
    return widget == nullptr ? "(none)" : qt::to_utf8(widget->objectName());
}

std::vector<std::string> tab_tour(QDialog& dialog, Qt::Key direction) {
    constexpr int kMany = 100;
    std::vector<std::string> visited{focused()};
    for (int i = 0; i < kMany; ++i) {
        key(dialog, direction);
        if (focused() == visited.front()) break;
        visited.push_back(focused());
    }
    return visited;
}

std::multimap<char, std::string> mnemonics(const QDialog& dialog) {
    std::multimap<char, std::string> found;
    const auto add = [&](const QString& text, const QWidget* widget) {
        const QKeySequence keys = QKeySequence::mnemonic(text);
        if (keys.isEmpty()) return;
        found.emplace(static_cast<char>(keys[0].key()),
                      widget == nullptr ? "(none)" : qt::to_utf8(widget->objectName()));
    };
    for (const auto* label : dialog.findChildren<QLabel*>()) add(label->text(), label->buddy());
    for (const auto* button : dialog.findChildren<QAbstractButton*>()) add(button->text(), button);
    return found;
}

std::string spoken_name(QObject& object) {
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&object);
    if (accessible == nullptr) return "";
    const bool is_list = accessible->role() == QAccessible::ComboBox;
    for (const auto& [other, relation] : accessible->relations(QAccessible::Label)) {
        if (is_list && other->role() == QAccessible::StaticText) {
            return qt::to_utf8(other->text(QAccessible::Name));
        }
    }
    return qt::to_utf8(accessible->text(QAccessible::Name));
}

std::vector<std::string> clipped_fields(const QDialog& dialog, const QString& widest_text) {
    std::vector<std::string> clipped;
    for (const auto* list : dialog.findChildren<QComboBox*>()) {
        if (list->width() < list->sizeHint().width()) {
            clipped.push_back(list->objectName().toStdString());
        }
    }
    for (const auto* line : dialog.findChildren<QLineEdit*>()) {
        if (room(*line) < line->fontMetrics().horizontalAdvance(widest_text) ||
            line->height() < line->sizeHint().height()) {
            clipped.push_back(line->objectName().toStdString());
        }
    }
    return clipped;
}

void expect_good_looks(QDialog& dialog, const QString& widest_text) {
    using ::testing::IsEmpty;
    EXPECT_THAT(clipped_texts(dialog), IsEmpty());
    EXPECT_THAT(clipped_fields(dialog, widest_text), IsEmpty());
    QSize needed = dialog.layout()->sizeHint();
    if (dialog.layout()->hasHeightForWidth()) {
        needed.setHeight(dialog.layout()->totalHeightForWidth(needed.width()));
    }
    EXPECT_EQ(dialog.size(), needed);
    EXPECT_TRUE(dialog.screen()->availableGeometry().contains(dialog.frameGeometry()));
    QApplication::focusWidget()->clearFocus();
    for (auto* const widget : dialog.findChildren<QWidget*>()) {
        const auto* const label = qobject_cast<QLabel*>(widget);
        const bool has_text = (label != nullptr && !label->text().isEmpty()) ||
                              qobject_cast<QAbstractButton*>(widget) != nullptr ||
                              qobject_cast<QComboBox*>(widget) != nullptr;
        if (!has_text || !widget->isVisible()) continue;
        const QImage picture = picture_of(*widget, widget->rect());
        EXPECT_GE(contrast(ink_of(picture), background_of(picture)), kEnough)
            << widget->objectName().toStdString();
    }
}

}  // namespace memwright::gui
