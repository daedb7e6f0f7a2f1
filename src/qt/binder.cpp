#include "qt/binder.h"

#include <QKeyEvent>
#include <QShortcut>

#include "qt/core/text.h"
#include "qt/line_box.h"
#include "qt/overlays.h"
#include "qt/twips.h"

namespace memwright::qt {
namespace {

// The mnemonic of a dialog's button acts at once. By itself, a button stays down for a tenth of a
// second first, and keys that come sooner act on what was before.
class AtOnce final : public QObject {
  public:
    explicit AtOnce(QAbstractButton& button) : QObject(&button), button_(button) {}

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() != QEvent::Shortcut ||
            static_cast<const QShortcutEvent*>(event)->isAmbiguous()) {
            return false;
        }
        button_.setFocus(Qt::ShortcutFocusReason);
        button_.click();
        return true;
    }

  private:
    QAbstractButton& button_;
};

void act_at_once(QAbstractButton& button) { button.installEventFilter(new AtOnce(button)); }

}  // namespace

template <class Widget>
Widget* Binder::find(const Control& control) {
    bound_.push_back(control.name);
    auto* const widget = form_.findChild<Widget*>(from_utf8(control.name));
    if (widget == nullptr) missing_.push_back(control.name);
    return widget;
}

void Binder::bind_state(Control& control, QWidget& widget) {
    follow(control.enabled, [&] { widget.setEnabled(control.enabled); });
    follow(control.visible, [&] { widget.setVisible(control.visible); });
}

void Binder::bind_place(PlacedControl& control, QWidget& widget) {
    const auto place = [&] {
        widget.setGeometry(pixels(widget, control.left), pixels(widget, control.top),
                           pixels(widget, control.width), pixels(widget, control.height));
    };
    follow(control.left, place);
    follow(control.top, place);
    follow(control.width, place);
    follow(control.height, place);
}

void Binder::bind(MSFlexGrid& grid) {
    auto* const view = find<GridView>(grid);
    if (view == nullptr) return;
    bind_state(grid, *view);
    bind_place(grid, *view);
    view->show_grid(grid);
}

void Binder::bind(TextBox& box) {
    auto* const edit = find<QPlainTextEdit>(box);
    if (edit == nullptr) return;
    bind_state(box, *edit);
    bind_place(box, *edit);
    follow(box.read_only, [&box, edit] { edit->setReadOnly(box.read_only); });
    follow(box.text, [&box, edit] { edit->setPlainText(from_utf8(box.text)); });
    follow(box.caret, [&box, edit] {
        if (box.caret.get() >= box.text.get().size()) edit->moveCursor(QTextCursor::End);
    });
    connections_.push_back(box.focus_wanted.connect([edit] { edit->setFocus(); }));
}

// An overlay that is hidden while it has the focus gives it back to the grid, or would have it when
// its window becomes the active one again. Whoever gives the focus back to it later, such as a menu
// bar that was opened from it by keys, gives it to the grid, too.
void Binder::bind_overlay_state(PlacedControl& control, QWidget& widget) {
    bind_place(control, widget);
    follow(control.visible, [&] {
        auto* const grid = form_.findChild<GridView*>();
        widget.setFocusProxy(control.visible ? nullptr : grid);
        if (!control.visible && form_.focusWidget() == &widget) grid->setFocus();
        grid->set_editing(control.visible);
        widget.setVisible(control.visible);
        if (control.visible) widget.raise();
    });
}

void Binder::bind_overlay(TextBox& box) {
    auto* const edit = find<CellTextBox>(box);
    if (edit == nullptr) return;
    bind_overlay_state(box, *edit);
    edit->show_control(box);
}

void Binder::bind_overlay(ComboBox& box) {
    auto* const list = find<CellComboBox>(box);
    if (list == nullptr) return;
    bind_overlay_state(box, *list);
    list->show_control(box);
}

void Binder::bind(Label& label) {
    auto* const shown = find<QLabel>(label);
    if (shown == nullptr) return;
    bind_state(label, *shown);
    follow(label.caption, [&label, shown] { shown->setText(from_utf8(label.caption)); });
    if (label.height > 0) bind_place(label, *shown);
}

void Binder::bind(CommandButton& button) {
    auto* const shown = find<QPushButton>(button);
    if (shown == nullptr) return;
    bind_state(button, *shown);
    follow(button.caption, [&button, shown] { shown->setText(from_utf8(button.caption)); });
    follow(button.tip, [&button, shown] {
        if (!button.tip.get().empty()) shown->setToolTip(from_utf8(button.tip));
    });
    if (button.height > 0) bind_place(button, *shown);
    if (shown->autoDefault()) act_at_once(*shown);
    QObject::connect(shown, &QPushButton::clicked, &form_, [&button, shown] {
        // Pressed by a key, a dialog's button takes the focus as it does from the mouse: what is
        // typed in a box is finished first.
        if (shown->autoDefault()) shown->setFocus();
        button.clicked();
    });
}

void Binder::bind(CheckBox& box) {
    auto* const shown = find<QCheckBox>(box);
    if (shown == nullptr) return;
    bind_state(box, *shown);
    follow(box.caption, [&box, shown] { shown->setText(from_utf8(box.caption)); });
    follow(box.checked, [&box, shown] { shown->setChecked(box.checked); });
    act_at_once(*shown);
    QObject::connect(shown, &QCheckBox::toggled, &form_, [&box](bool on) { box.checked = on; });
}

void Binder::bind(OptionButton& button) {
    auto* const shown = find<QRadioButton>(button);
    if (shown == nullptr) return;
    bind_state(button, *shown);
    follow(button.caption, [&button, shown] { shown->setText(from_utf8(button.caption)); });
    follow(button.selected, [&button, shown] { shown->setChecked(button.selected); });
    act_at_once(*shown);
    QObject::connect(shown, &QRadioButton::toggled, &form_,
                     [&button](bool on) { button.selected = on; });
}

void Binder::bind_line(TextBox& box) {
    auto* const line = find<LineBox>(box);
    if (line == nullptr) return;
    bind_state(box, *line);
    line->show_control(box);
}

void Binder::bind(ComboBox& box) {
    auto* const list = find<QComboBox>(box);
    if (list == nullptr) return;
    bind_state(box, *list);
    const auto show = [&box, list] {
        const QSignalBlocker quiet(list);
        QStringList items;
        for (const std::string& item : box.items.get()) items << from_utf8(item);
        list->clear();
        list->addItems(items);
        // A text that is no item is shown all the same.
        list->setPlaceholderText(from_utf8(box.text));
        list->setCurrentIndex(static_cast<int>(items.indexOf(from_utf8(box.text))));
    };
    follow(box.items, show);
    follow(box.text, show);
    QObject::connect(list, &QComboBox::activated, &form_,
                     [&box, list] { box.text = to_utf8(list->currentText()); });
}

void Binder::bind(ProgressBar& bar) {
    auto* const shown = find<QProgressBar>(bar);
    if (shown == nullptr) return;
    bind_state(bar, *shown);
    bind_place(bar, *shown);
    const auto show = [&bar, shown] {
        shown->setRange(0, bar.busy ? 0 : 100);
        shown->setValue(bar.percent);
    };
    follow(bar.busy, show);
    follow(bar.percent, show);
}

void Binder::bind(MenuEntry& menu, QMenu& shown) {
    bound_.push_back(menu.name);
    shown.setObjectName(from_utf8(menu.name));
    follow(menu.caption, [&] { shown.setTitle(from_utf8(menu.caption)); });
    follow(menu.enabled, [&] { shown.menuAction()->setEnabled(menu.enabled); });
    follow(menu.visible, [&] { shown.menuAction()->setVisible(menu.visible); });
    QObject::connect(&shown, &QMenu::aboutToShow, &form_, [&menu] { menu.clicked(); });
}

void Binder::bind(MenuEntry& entry, QAction& shown) {
    bound_.push_back(entry.name);
    shown.setObjectName(from_utf8(entry.name));
    follow(entry.caption, [&] { shown.setText(from_utf8(entry.caption)); });
    follow(entry.enabled, [&] { shown.setEnabled(entry.enabled); });
    follow(entry.visible, [&] { shown.setVisible(entry.visible); });
    follow(entry.checked, [&] { shown.setChecked(entry.checked); });
    follow(entry.tip, [&] {
        if (entry.tip.get().empty()) return;
        shown.setToolTip(from_utf8(entry.tip));
        shown.setStatusTip(shown.toolTip());
    });
    QObject::connect(&shown, &QAction::triggered, &form_, [&entry, &shown] {
        // Whether the entry is checked is the procedure's business, not the click's.
        shown.setChecked(entry.checked);
        entry.clicked();
    });
}

void Binder::bind(MenuChoice& choice, QMenu& shown) {
    bound_.push_back(choice.name);
    shown.setObjectName(from_utf8(choice.name));
    follow(choice.caption, [&] { shown.setTitle(from_utf8(choice.caption)); });
    follow(choice.enabled, [&] { shown.menuAction()->setEnabled(choice.enabled); });
    follow(choice.visible, [&] { shown.menuAction()->setVisible(choice.visible); });
    follow(choice.items, [&] {
        shown.clear();
        for (std::size_t number = 0; number < choice.items.get().size(); ++number) {
            QAction* const item = shown.addAction(from_utf8(choice.items.get()[number]));
            // Once the menu is closed: what is picked may change the items.
            QObject::connect(
                item, &QAction::triggered, &form_, [&choice, number] { choice.picked(number); },
                Qt::QueuedConnection);
        }
    });
}

// The action only shows the keys, so that they need not wait for its state, which is brought up to
// date when the menu opens.
void Binder::bind_shortcuts(MenuEntry& menu, MenuEntry& entry, QAction& shown) {
    if (entry.shortcuts.empty()) return;
    shown.setShortcut(QKeySequence(from_utf8(entry.shortcuts.front())));
    shown.setShortcutContext(Qt::WidgetShortcut);
    for (const std::string& keys : entry.shortcuts) {
        auto* const shortcut = new QShortcut(QKeySequence(from_utf8(keys)), &form_);
        shortcut->setAutoRepeat(false);
        QObject::connect(shortcut, &QShortcut::activated, &form_, [&menu, &entry] {
            if (!menu.enabled) return;
            menu.clicked();
            if (entry.enabled && entry.visible) entry.clicked();
        });
    }
}

}  // namespace memwright::qt
