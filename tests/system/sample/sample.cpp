// A window with one of everything that the system tests reach for, so that the tests of their
// support library need no real program. What happens shows in the label, and on standard output.

#include <QAbstractTableModel>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

class Grid : public QAbstractTableModel {
  public:
    using QAbstractTableModel::QAbstractTableModel;
    int rowCount(const QModelIndex&) const override { return 640; }
    int columnCount(const QModelIndex&) const override { return 5; }
    QVariant data(const QModelIndex& at, int role) const override {
        if (role != Qt::DisplayRole) return {};
        return QString("R%1C%2").arg(at.row()).arg(at.column());
    }
    QVariant headerData(int section, Qt::Orientation way, int role) const override {
        if (role != Qt::DisplayRole) return {};
        return QString(way == Qt::Horizontal ? "Column %1" : "Row %1").arg(section);
    }
};

class Sample : public QMainWindow {
  public:
    Sample() {
        setWindowTitle("Sample");
        resize(700, 500);
        auto* centre = new QWidget;
        centre->setLayout(layout_);
        status_->setAccessibleDescription("Status");
        edit_->setAccessibleName("Entry");
        table_->setAccessibleName("Grid");
        table_->setModel(new Grid(table_));
        progress_->setAccessibleName("Progress");
        progress_->setValue(40);
        choice_->setAccessibleName("Choice");
        choice_->addItems({"First", "Second", "Third"});
        button_->setContextMenuPolicy(Qt::CustomContextMenu);
        for (QWidget* widget : std::initializer_list<QWidget*>{status_, edit_, choice_, check_,
                                                               progress_, button_, table_}) {
            layout_->addWidget(widget);
        }
        setCentralWidget(centre);
        add_menu();
        connect_controls();
    }

  protected:
    void closeEvent(QCloseEvent* event) override {
        const auto answer = ask();
        say(answer == QMessageBox::Cancel ? "stays" : "closes");
        event->setAccepted(answer != QMessageBox::Cancel);
    }

  private:
    void add_menu() {
        QMenu* file = menuBar()->addMenu("&File");
        add(file, "&Open...", QKeySequence("Ctrl+O"), [this] { open(); });
        add(file, "&Save As...", {}, [this] { save(); });
        add(file, "&Disabled", {}, [this] { say("impossible"); })->setEnabled(false);
        file->addSeparator();
        add(file, "E&xit", {}, [this] { close(); });
        QMenu* options = menuBar()->addMenu("O&ptions");
        QAction* tick = add(options, "&Tick", {}, [this] { say("ticked"); });
        tick->setCheckable(true);
        add(options, "&Ask", {}, [this] {
            const auto answer = ask();
            say(answer == QMessageBox::Yes ? "yes" : answer == QMessageBox::No ? "no" : "cancel");
        });
        QMenu* deeper = options->addMenu("Dee&per");
        add(deeper, "&Bottom", {}, [this] { say("bottom"); });
    }

    template <class Action>
    QAction* add(QMenu* menu, const char* caption, const QKeySequence& keys, Action action) {
        QAction* made = menu->addAction(caption);
        made->setShortcut(keys);
        connect(made, &QAction::triggered, this, action);
        return made;
    }

    void connect_controls() {
        connect(button_, &QPushButton::clicked, this,
                [this] { say(QString("pressed %1").arg(++presses_)); });
        connect(button_, &QWidget::customContextMenuRequested, this, [this] { say("context"); });
        connect(edit_, &QLineEdit::returnPressed, this,
                [this] { say("entered " + edit_->text()); });
        connect(check_, &QCheckBox::toggled, this, [this](bool on) { say(on ? "on" : "off"); });
        connect(table_, &QTableView::doubleClicked, this, [this](const QModelIndex& at) {
            say(QString("double %1,%2").arg(at.row()).arg(at.column()));
        });
    }

    QMessageBox::StandardButton ask() {
        return QMessageBox::question(this, "Sample asks", "Save the changes?",
                                     QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    }

    void open() { say("open " + QFileDialog::getOpenFileName(this, "Open a file")); }
    void save() { say("save " + QFileDialog::getSaveFileName(this, "Save a file")); }

    void say(const QString& text) {
        status_->setText(text);
        std::printf("%s\n", qPrintable(text));
        std::fflush(stdout);
    }

    QVBoxLayout* layout_ = new QVBoxLayout;
    QLabel* status_ = new QLabel("started");
    QLineEdit* edit_ = new QLineEdit;
    QComboBox* choice_ = new QComboBox;
    QCheckBox* check_ = new QCheckBox("Check &me");
    QProgressBar* progress_ = new QProgressBar;
    QPushButton* button_ = new QPushButton("&Press");
    QTableView* table_ = new QTableView;
    int presses_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc > 2 && std::strcmp(argv[1], "--exit") == 0) return std::atoi(argv[2]);
    if (argc > 1 && std::strcmp(argv[1], "--abort") == 0) std::abort();
    QApplication application(argc, argv);
    application.setApplicationName("sample");
    Sample window;
    window.show();
    return QApplication::exec();
}
