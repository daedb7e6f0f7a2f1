#include "qt/message_boxes.h"

#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QScreen>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QUrl>
#include <algorithm>
#include <memory>
#include <utility>

#include "qt/core/text.h"

namespace memwright::qt {
namespace {

QMessageBox::StandardButtons qt_buttons(Buttons buttons) {
    switch (buttons) {
        case Buttons::ok:
            return QMessageBox::Ok;
        case Buttons::ok_cancel:
            return QMessageBox::Ok | QMessageBox::Cancel;
        case Buttons::yes_no:
            return QMessageBox::Yes | QMessageBox::No;
        case Buttons::yes_no_cancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon qt_icon(Icon icon) {
    switch (icon) {
        case Icon::none:
            return QMessageBox::NoIcon;
        case Icon::information:
            return QMessageBox::Information;
        case Icon::question:
            return QMessageBox::Question;
        case Icon::exclamation:
            return QMessageBox::Warning;
        case Icon::critical:
            return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

Answer answer_of(int button, Buttons buttons) {
    switch (button) {
        case QMessageBox::Yes:
            return Answer::yes;
        case QMessageBox::No:
            return Answer::no;
        case QMessageBox::Ok:
            return Answer::ok;
        case QMessageBox::Cancel:
            return Answer::cancel;
        default:
            break;
    }
    // Closed by the window manager.
    if (buttons == Buttons::ok) return Answer::ok;
    return buttons == Buttons::yes_no ? Answer::no : Answer::cancel;
}

// A line can be broken anywhere in words that are longer than one, such as the names of files.
QString breakable(const QString& text, const QFontMetrics& metrics, int widest) {
    constexpr QChar kZeroWidthSpace(0x200B);
    QString result;
    int width = 0;  // since the line could last be broken
    for (const QChar character : text) {
        width = character.isSpace() ? 0 : width + metrics.horizontalAdvance(character);
        if (width > widest && !character.isLowSurrogate()) {
            result += kZeroWidthSpace;
            width = metrics.horizontalAdvance(character);
        }
        result += character;
    }
    return result;
}

// Lines of a usual length are broken where the text has it, and nowhere else.
void show_text(QMessageBox& box, const QString& text) {
    constexpr int kCharacters = 90, kAround = 16;
    const QFontMetrics metrics = box.fontMetrics();
    const int widest = std::min(kCharacters * metrics.averageCharWidth(),
                                box.screen()->availableGeometry().width() / 2);
    box.setText(breakable(text, metrics, widest - kAround));
    if (auto* const label = box.findChild<QLabel*>("qt_msgbox_label")) {
        label->setMinimumWidth(std::min(metrics.size(0, text).width() + kAround, widest));
    }
}

void set_up(QMessageBox& box, const Message& message) {
    box.setObjectName("MessageBox");
    box.setIcon(qt_icon(message.icon));
    box.setWindowTitle(from_utf8(message.title));
    box.setStandardButtons(qt_buttons(message.buttons));
    box.setTextFormat(Qt::PlainText);
    show_text(box, from_utf8(message.text).replace("\r\n", "\n"));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (message.buttons == Buttons::yes_no) box.setEscapeButton(QMessageBox::No);
}

// Where the desktop has no file dialog, Qt's own is shown: its places and the files' dates are to
// be read whole, and a place in a hidden folder is not to look as if it could not be had.
void make_readable(QFileDialog& dialog) {
    constexpr int kCharacters = 110, kAround = 24, kNames = 0, kDates = 3;
    auto* const splitter = dialog.findChild<QSplitter*>("splitter");
    auto* const places = dialog.findChild<QListView*>("sidebar");
    auto* const files = dialog.findChild<QTreeView*>("treeView");
    if (splitter == nullptr || places == nullptr || files == nullptr) return;
    const int width = std::min(kCharacters * dialog.fontMetrics().averageCharWidth(),
                               dialog.screen()->availableGeometry().width());
    const int for_places = std::min(places->sizeHintForColumn(0) + kAround, width / 3);
    dialog.resize(width, dialog.sizeHint().height());
    splitter->setSizes({for_places, width - for_places});
    places->setItemDelegate(new QStyledItemDelegate(places));
    files->header()->setSectionResizeMode(kNames, QHeaderView::Stretch);
    files->header()->setSectionResizeMode(kDates, QHeaderView::ResizeToContents);
}

}  // namespace

Answer QtMessageBox::show(const Message& message) {
    QMessageBox box(&owner_);
    set_up(box, message);
    return answer_of(box.exec(), message.buttons);
}

Connection QtMessageBox::ask(const Message& message, std::function<void(Answer)> answered) {
    // It may go while it tells its answer.
    const std::shared_ptr<QMessageBox> box(new QMessageBox(&owner_), [](QMessageBox* gone) {
        gone->disconnect();
        gone->hide();
        gone->deleteLater();
    });
    set_up(*box, message);
    QObject::connect(box.get(), &QDialog::finished, box.get(),
                     [answered = std::move(answered), buttons = message.buttons](int button) {
                         answered(answer_of(button, buttons));
                     });
    box->open();
    return box;
}

std::optional<std::string> QtFileDialogs::open(const FileRequest& request) {
    return ask(request, false);
}

std::optional<std::string> QtFileDialogs::save(const FileRequest& request) {
    return ask(request, true);
}

std::optional<std::string> QtFileDialogs::ask(const FileRequest& request, bool saving) {
    QFileDialog dialog(&owner_, from_utf8(request.title));
    dialog.setObjectName("FileDialog");
    dialog.setAcceptMode(saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    // A file that is opened need not exist, and whether to replace one is asked by the caller.
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOptions(QFileDialog::DontConfirmOverwrite | QFileDialog::HideNameFilterDetails);
    QStringList filters;
    for (const FileFilter& filter : request.filters) {
        QString patterns = from_utf8(filter.patterns).replace(';', ' ');
        if (patterns == "*.*") patterns = "*";  // files without an extension, too
        filters << from_utf8(filter.caption) + " (" + patterns + ")";
    }
    dialog.setNameFilters(filters);
    QList<QUrl> places = dialog.sidebarUrls();
    for (const std::string& place : request.places) {
        const QString folder = from_file_name(place);
        if (QDir(folder).exists()) places << QUrl::fromLocalFile(folder);
    }
    dialog.setSidebarUrls(places);
    if (!request.folder.empty()) dialog.setDirectory(from_file_name(request.folder));
    make_readable(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return to_file_name(dialog.selectedFiles().constFirst());
}

}  // namespace memwright::qt
