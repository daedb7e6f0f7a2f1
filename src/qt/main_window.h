#pragma once

// The main window: its widgets, named after the controls that they show, the bars below them, and
// the events of the window itself. It decides nothing. The window is higher by its bars where there
// is room; its height and its frame, as the form counts them, are without.

#include <QMainWindow>
#include <vector>

#include "app/program.h"
#include "platform/form_window.h"
#include "qt/bar_area.h"
#include "qt/binder.h"
#include "qt/notice_list.h"

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
    double height() const override { return twips(frameGeometry().height() - grown()); }
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
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    double twips(int pixels) const;
    void create_widgets();
    void create_buttons();
    void bind_controls(Form1& form);
    void create_menus(Form1& form);
    void show_accessibly(Form1& form);
    void allow_for_frame();
    void show_additions(Program& program);
    void show_notice_list();
    bool fills_screen() const { return isMaximized() || isFullScreen(); }
    int grown() const { return fills_screen() ? 0 : grown_; }
    void make_room_for_bars();

    QWidget* canvas_;  // the form
    BarArea* bars_;
    int grown_ = 0;  // pixels by which the window is higher, while it does not fill the screen
    Program* program_ = nullptr;
    Binder binder_{*this};
    QPointer<NoticeList> notice_list_;
    std::vector<Connection> connections_;
    QSize asked_size_;  // of the whole window, until its frame is known
};

}  // namespace memwright::qt
