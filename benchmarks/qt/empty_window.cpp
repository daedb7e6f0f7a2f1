// The least that a program of this kind can be: a main window with an empty table of 640 rows.
// What memwright costs beyond it is its own.

#include <QAbstractTableModel>
#include <QApplication>
#include <QMainWindow>
#include <QTableView>

namespace {

class EmptyTable final : public QAbstractTableModel {
  public:
    int rowCount(const QModelIndex& /*parent*/) const override { return 640; }
    int columnCount(const QModelIndex& /*parent*/) const override { return 15; }
    QVariant data(const QModelIndex& /*index*/, int /*role*/) const override { return {}; }
};

}  // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    QMainWindow window;
    EmptyTable model;
    QTableView view;
    view.setModel(&model);
    window.setCentralWidget(&view);
    window.resize(666, 470);
    window.show();
    return QApplication::exec();
}
