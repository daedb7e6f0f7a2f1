#include "qt/main_window.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QShortcut>
#include <QWindow>
#include <algorithm>

#include "base/error.h"
#include "qt/announcer.h"
#include "qt/arrow_icon.h"
#include "qt/core/text.h"
#include "qt/find_bar.h"
#include "qt/go_to_bar.h"
#include "qt/notice_bar.h"
#include "qt/overlays.h"
#include "qt/twips.h"

namespace memwright::qt {
namespace {

// The least that shows a few rows, every button and the whole status line; in twips.
constexpr double kMinimumWidth = 8700;
constexpr double kMinimumHeight = 5100;

void check_length(double twips) {
    if (twips < 0 || twips > kLargestLength) throw Error("No window is of this size.");
}

void check_position(double twips) {
    if (twips < -kLargestLength || twips > kLargestLength)
        throw Error("No window is that far off.");
}

// What is dropped, if it is one file.
QString dropped_file(const QMimeData& data) {
    const auto urls = data.urls();
    return urls.size() == 1 ? urls.constFirst().toLocalFile() : QString();
}

}  // namespace

MainWindow::MainWindow() : canvas_(new QWidget), bars_(new BarArea(nullptr)) {
    setObjectName("Form1");
    setAcceptDrops(true);
    auto* const whole = new QWidget;
    auto* const rows = new QVBoxLayout(whole);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(canvas_, 1);
    rows->addWidget(bars_);
    setCentralWidget(whole);
    canvas_->setObjectName("Canvas");
    canvas_->installEventFilter(this);
    setMinimumSize(pixels(*this, kMinimumWidth), pixels(*this, kMinimumHeight));
    resize(pixels(*this, Form1::kDesignWidth), pixels(*this, Form1::kDesignHeight));
    create_widgets();
    create_buttons();
}

// In the order in which Tab visits them.
void MainWindow::create_widgets() {
    const auto name = [](QWidget* widget, const char* object_name, const QString& accessible) {
        widget->setObjectName(object_name);
        widget->setAccessibleName(accessible);
    };
    name(new GridView(canvas_), "MSFlexGrid1", tr("Channel memories"));
    name(new CellTextBox(canvas_), "TxtGrid", tr("Text of the cell"));
    name(new CellComboBox(canvas_), "CboGrid", tr("Choice for the cell"));
    auto* const log = new QPlainTextEdit(canvas_);
    name(log, "Text1", tr("Status window"));
    log->setTabChangesFocus(true);
    auto* const status = new QLabel(canvas_);
    name(status, "Label1", tr("Status line"));
    status->setTextFormat(Qt::PlainText);
    name(new QLabel(canvas_), "ReceivedLabel", QString());
    name(new QProgressBar(canvas_), "TransferProgress", tr("Progress of the transfer"));
}

void MainWindow::create_buttons() {
    struct Description {
        const char* name;
        QString accessible;
        QIcon icon;
    };
    const Description descriptions[] = {
        {"TransferButton", QString(), {}},
        {"Command2", tr("Move up"), arrow_icon(Qt::UpArrow)},
        {"Command1", tr("Move down"), arrow_icon(Qt::DownArrow)},
        {"Command3", tr("Delete"), {}},
        {"Command4", tr("Save"), {}},
        {"Command5", tr("Load"), {}},
    };
    for (const Description& description : descriptions) {
        auto* const button = new QPushButton(canvas_);
        button->setObjectName(description.name);
        button->setAccessibleName(description.accessible);
        button->setIcon(description.icon);
        button->setAutoDefault(false);
        // What can only be read comes last.
        setTabOrder(button, findChild<QPlainTextEdit*>("Text1"));
    }
}

void MainWindow::show_program(Program& program) {
    program_ = &program;
    bind_controls(program.form);
    create_menus(program.form);
    Property<std::string>& caption = program.form.caption.caption;
    connections_.push_back(
        caption.changed.connect([this, &caption] { setWindowTitle(from_utf8(caption)); }));
    show_accessibly(program.form);
    show_additions(program);
    auto* const escape = new QShortcut(Qt::Key_Escape, this);
    // Held down to dismiss a notice, it does not go on to end a transfer.
    escape->setAutoRepeat(false);
    connect(escape, &QShortcut::activated, this, [this] {
        if (program_ != nullptr) program_->escape_pressed();
    });
}

void MainWindow::forget_program() {
    program_ = nullptr;
    delete notice_list_;
    for (const char* added : {"NoticeBar", "FindBar", "GoToBar", "Announcer"}) {
        delete findChild<QWidget*>(added);
    }
    connections_.clear();
}

void MainWindow::show_additions(Program& program) {
    const auto act = [this](std::size_t number) {
        if (program_ != nullptr) program_->act_on_notice(number);
    };
    auto* const notices = new NoticeBar(program.notices, *findChild<GridView*>(), act,
                                        [this] { show_notice_list(); });
    auto* const announcer = new Announcer(canvas_);
    connections_.push_back(program.notices.said.connect(
        [announcer](const std::string& text) { announcer->say(from_utf8(text)); }));
    bars_->height_changed = [this] { make_room_for_bars(); };
    // What is typed into stays where it is when a notice comes.
    bars_->add_row(*new FindBar(program.find_line(), *findChild<GridView*>()));
    bars_->add_row(*new GoToBar(program.go_to_line(), *findChild<GridView*>()));
    bars_->add_row(*notices);
    connect(new QShortcut(Qt::Key_F6, this), &QShortcut::activated, notices,
            [notices] { notices->switch_focus(); });
    connections_.push_back(
        program.form.added.notices.clicked.connect([this] { show_notice_list(); }));
}

void MainWindow::show_notice_list() {
    if (notice_list_ == nullptr) {
        notice_list_ = new NoticeList(
            program_->notices, [this](std::size_t number) { program_->act_on_notice(number); },
            *this);
    }
    notice_list_->show();
    notice_list_->raise();
    notice_list_->activateWindow();
}

// A window that fills the screen, or would reach beyond it, stays as it is: the form gets lower.
void MainWindow::make_room_for_bars() {
    if (!fills_screen()) {
        const int below = screen()->availableGeometry().bottom() - frameGeometry().bottom();
        const int grown = std::min(bars_->wanted_height(), std::max(0, below + grown_));
        const int by = grown - grown_;
        grown_ = grown;
        setMinimumHeight(pixels(*this, kMinimumHeight));
        if (asked_size_.isValid()) asked_size_.rheight() += by;
        resize(geometry().width(), geometry().height() + by);
        setMinimumHeight(pixels(*this, kMinimumHeight) + grown_);
    }
    if (program_ != nullptr) program_->resized();
}

// A screen reader says the name of a label, so the name of the status line carries its text. When
// the table can be used again, it is what the keys go to.
void MainWindow::show_accessibly(Form1& form) {
    const auto name_status = [this, &form] {
        const QString text = from_utf8(form.Label1.caption);
        findChild<QLabel*>("Label1")->setAccessibleName(
            text.isEmpty() ? tr("Status line") : tr("Status line: %1").arg(text));
    };
    name_status();
    connections_.push_back(form.Label1.caption.changed.connect(name_status));
    connections_.push_back(form.MSFlexGrid1.enabled.changed.connect([this, &form] {
        if (form.MSFlexGrid1.enabled) findChild<GridView*>()->setFocus();
    }));
}

void MainWindow::bind_controls(Form1& form) {
    binder_.bind(form.MSFlexGrid1);
    binder_.bind_overlay(form.TxtGrid);
    binder_.bind_overlay(form.CboGrid);
    binder_.bind(form.Text1);
    binder_.bind(form.Label1);
    binder_.bind(form.ReceivedLabel);
    binder_.bind(form.TransferProgress);
    for (CommandButton* button : {&form.Command1, &form.Command2, &form.Command3, &form.Command4,
                                  &form.Command5, &form.TransferButton}) {
        binder_.bind(*button);
    }
}

void MainWindow::create_menus(Form1& form) {
    for (const Form1::Menu& menu : form.menus()) {
        QMenu* const shown = menuBar()->addMenu(QString());
        shown->setToolTipsVisible(true);
        binder_.bind(menu.entry, *shown);
        for (MenuEntry* item : menu.items) {
            if (item->caption.get() == kSeparatorCaption) {
                shown->addSeparator()->setObjectName(from_utf8(item->name));
                continue;
            }
            if (auto* const choice = dynamic_cast<MenuChoice*>(item)) {
                binder_.bind(*choice, *shown->addMenu(QString()));
                continue;
            }
            QAction* const action = shown->addAction(QString());
            action->setCheckable(item == &form.mnuShwDbg);
            binder_.bind(*item, *action);
            binder_.bind_shortcuts(menu.entry, *item, *action);
        }
    }
}

double MainWindow::twips(int pixels) const { return qt::twips(*this, pixels); }

WindowState MainWindow::state() const {
    if (isMinimized()) return WindowState::minimised;
    return isMaximized() ? WindowState::maximised : WindowState::normal;
}

void MainWindow::set_state(WindowState state) {
    setWindowState(state == WindowState::minimised   ? Qt::WindowMinimized
                   : state == WindowState::maximised ? Qt::WindowMaximized
                                                     : Qt::WindowNoState);
}

void MainWindow::set_left(double twips) {
    check_position(twips);
    move(pixels(*this, twips), pos().y());
}

void MainWindow::set_top(double twips) {
    check_position(twips);
    move(pos().x(), pixels(*this, twips));
}

void MainWindow::set_width(double twips) {
    check_length(twips);
    const int frame = frameGeometry().width() - geometry().width();
    resize(pixels(*this, twips) - frame, geometry().height());
    asked_size_.setWidth(pixels(*this, twips));
}

void MainWindow::set_height(double twips) {
    check_length(twips);
    const int frame = frameGeometry().height() - geometry().height();
    const int whole = pixels(*this, twips) + grown();
    resize(geometry().width(), whole - frame);
    asked_size_.setHeight(whole);
}

void MainWindow::bring_into_sight() {
    constexpr int kTitleHeight = 24, kGrip = 120;  // what the mouse needs to take hold of it
    const QRect frame(pos(), asked_size_.isValid() ? asked_size_ : frameGeometry().size());
    const QRect title(frame.topLeft(), QSize(frame.width(), kTitleHeight));
    const auto screens = QGuiApplication::screens();
    for (const QScreen* screen : screens) {
        const QRect available = screen->availableGeometry();
        const QRect seen = available & title;
        const bool fits =
            frame.width() <= available.width() && frame.height() <= available.height();
        if (fits && seen.width() >= kGrip && seen.height() == kTitleHeight) return;
    }
    const QScreen* const nearest = QGuiApplication::screenAt(frame.center());
    const QRect room =
        (nearest != nullptr ? nearest : QGuiApplication::primaryScreen())->availableGeometry();
    const QSize size = frame.size().boundedTo(room.size());
    set_width(twips(size.width()));
    set_height(twips(size.height() - grown()));
    move(std::clamp(frame.left(), room.left(), room.right() + 1 - size.width()),
         std::clamp(frame.top(), room.top(), room.bottom() + 1 - size.height()));
}

void MainWindow::pop_up_menu(const std::string& name) {
    if (auto* const menu = findChild<QMenu*>(from_utf8(name))) menu->exec(QCursor::pos());
}

double MainWindow::frame_height() const {
    return twips(frameGeometry().height() - grown() - canvas_->height());
}

double MainWindow::screen_width() const { return twips(screen()->geometry().width()); }

double MainWindow::screen_height() const { return twips(screen()->geometry().height()); }

void MainWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(program_ == nullptr || program_->close_allowed());
    if (event->isAccepted()) delete notice_list_;
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    const bool open = program_ != nullptr && program_->form.mnuFile.enabled;
    if (open && !dropped_file(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QString file = dropped_file(*event->mimeData());
    if (file.isEmpty()) return;
    event->acceptProposedAction();
    // Once the drop has ended: questions may follow, and the other program waits for its end.
    QMetaObject::invokeMethod(
        this,
        [this, file] {
            if (program_ != nullptr) program_->open_named(to_file_name(file));
        },
        Qt::QueuedConnection);
}

bool MainWindow::event(QEvent* event) {
    const bool handled = QMainWindow::event(event);
    switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::WindowActivate:
            allow_for_frame();
            break;
        case QEvent::Paint:
            // The first sign of being on the screen that comes everywhere. Not to be resized in it.
            if (asked_size_.isValid()) {
                QMetaObject::invokeMethod(
                    this, [this] { allow_for_frame(); }, Qt::QueuedConnection);
            }
            break;
        default:
            break;
    }
    return handled;
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    // Not in the middle of it: the window has its new size only later.
    if (event->type() == QEvent::WindowStateChange) {
        QMetaObject::invokeMethod(
            this, [this] { make_room_for_bars(); }, Qt::QueuedConnection);
    }
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == canvas_ && event->type() == QEvent::Resize && program_ != nullptr) {
        program_->resized();
    }
    return QMainWindow::eventFilter(watched, event);
}

// The window manager adds the frame only when the window is on the screen: the window shrinks by
// as much, once, to be as large as it was asked to be.
void MainWindow::allow_for_frame() {
    if (!asked_size_.isValid() || windowHandle() == nullptr || !windowHandle()->isExposed()) return;
    if (state() != WindowState::normal || geometry().size() != asked_size_) {
        asked_size_ = QSize();
        return;
    }
    const QMargins frame = windowHandle()->frameMargins();
    if (frame.isNull()) return;
    resize(asked_size_.shrunkBy(frame));
    asked_size_ = QSize();
}

}  // namespace memwright::qt
