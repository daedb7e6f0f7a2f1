#pragma once

// The dialogs of forms over an empty window, worked with keys and clicks that go through the window
// system, so that they meet what has the focus, mnemonics included.

#include <gtest/gtest.h>

#include <QDialog>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "gui/support/robot.h"
#include "qt/core/text.h"
#include "qt/dialogs.h"

namespace memwright::gui {

class DialogTest : public ::testing::Test {
  protected:
    DialogTest() { owner_.show(); }

    // Shows the dialog of a form and does the work, which has to close it.
    template <class Form>
    void show(Form& form, const Reply& work) {
        answering({work}, [&] { views_.show_modal(form); });
    }

    QWidget owner_;
    qt::QtDialogViews views_{owner_};
};

template <class Widget = QWidget>
Widget& part(const QDialog& dialog, const std::string& name) {
    const auto found = dialog.findChildren<Widget*>(qt::from_utf8(name));
    if (found.size() != 1) throw std::runtime_error("not one widget " + name);
    return *found.front();
}

void key(QDialog& dialog, Qt::Key key, Qt::KeyboardModifiers modifiers = {});
void alt(QDialog& dialog, char letter);
void type(QDialog& dialog, const QString& text);
void click(QDialog& dialog, const std::string& name);
// Opens a list and clicks one of its entries.
void pick_with_mouse(QDialog& dialog, const std::string& list, int entry);

// The name of the widget that has the keys.
std::string focused();

// Whom Tab visits, from the one that has the focus back to it.
std::vector<std::string> tab_tour(QDialog& dialog, Qt::Key key = Qt::Key_Tab);

// What the keys with Alt lead to: the widget with the mnemonic, for labels their buddy.
std::multimap<char, std::string> mnemonics(const QDialog& dialog);

// What a screen reader calls a control: a list, whose own name is its chosen entry, by its label.
std::string spoken_name(QObject& object);

// The texts of lists and one-line boxes that do not fit in, of each list the widest of its entries.
std::vector<std::string> clipped_fields(const QDialog& dialog, const QString& widest_text);

// Expects that the dialog has the size that its contents need, that nothing in it is clipped, and
// that its texts stand out.
void expect_good_looks(QDialog& dialog, const QString& widest_text = {});

}  // namespace memwright::gui
