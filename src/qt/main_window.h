#pragma once

// The main window: its widgets, named after the controls that they show, and the events of the
// window itself. It decides nothing.

#include <QMainWindow>
#include <vector>

#include "app/program.h"
#include "platform/form_window.h"
#include "qt/binder.h"

namespace memwright::qt {

class MainWindow final : public QMainWindow, public FormWindow {
  public:
    MainWindow();

    // Shows the program's form from now on and hands it the window's events.
    void show_program(Program& program);

    // Hands it no more events.
    void forget_program();

    const Binder& binder() const { return binder_; }

    WindowState state() const override;
    void set_state(WindowState state) override;
    double left() const override { return twips(frameGeometry().left()); }
    double top() const override { return twips(frameGeometry().top()); }
    double width() const override { return twips(frameGeometry().width()); }
    double height() const override { return twips(frameGeometry().height()); }
    void set_left(double twips) override;
    void set_top(double twips) override;
    void set_width(double twips) override;
    void set_height(double twips) override;
    void bring_into_sight() override;
    double frame_height() const override;
    double screen_width() const override;
    double screen_height() const override;
    void pop_up_menu(const std::string& name) override;
    CellPlaces& cell_places() { return *findChild<GridView*>(); }
    void close() override { QMainWindow::close(); }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    double twips(int pixels) const;
    void create_widgets();
    void create_buttons();
    void bind_controls(Form1& form);
    void create_menus(Form1& form);
    void show_accessibly(Form1& form);
    void allow_for_frame();

    QWidget* canvas_;
    Program* program_ = nullptr;
    Binder binder_{*this};
    std::vector<Connection> connections_;
    QSize asked_size_;  // of the whole window, until its frame is known
};

}  // namespace memwright::qt
