// The import of a long CSV file in the window: what it shows, and the ways out of it. What the user
// does comes at a certain share of the file, not at a certain time.

#include <gmock/gmock.h>

#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <fstream>

#include "gui/support/appearance.h"
#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

using ::testing::IsEmpty;

constexpr int kMemories = 640;

class PaintCounter final : public QObject {
  public:
    int paints = 0;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++paints;
        return QObject::eventFilter(watched, event);
    }
};

class CsvProgress : public StartedWindowTest {
  protected:
    void SetUp() override {
        StartedWindowTest::SetUp();
        path_ = open_some_image();
        form().MSFlexGrid1.set_row(3);
        before_ = texts();
    }

    // All memories over and over again; the last time with the labels "END 0" and so on.
    void put_lines(int rounds, const std::string& last_line = {}) {
        std::ofstream out(folder_.path() / "in.csv", std::ios::binary);
        out << "Ch,MHz,Mode,Pref,Label\r\n";
        for (int round = 0; round < rounds; ++round) {
            for (int i = 0; i < kMemories; ++i) {
                out << i / 64 * 100 + i % 64 << ",145.50000,NFM,,\""
                    << (round == rounds - 1 ? "END " : "NO ") << i % 10 << "\"\r\n";
            }
        }
        out << last_line;
    }

    // Does something in the middle of the import, as soon as so much is read.
    void at(int percent, std::function<void()> act) {
        actions_.push_back(form().TransferProgress.percent.changed.connect(
            [this, percent, act = std::move(act), done = false]() mutable {
                if (done || form().TransferProgress.percent < percent) return;
                done = true;
                QTimer::singleShot(0, &window(), act);
            }));
    }

    // Chooses Import and the file; the robot's steps come behind that.
    void import() {
        robot_.during([&] { choose("mnuFile", "mnuImport"); });
    }
    Reply choose_file() { return type_name(qt::from_file_name(folder_.file("in.csv"))); }

    QProgressBar& bar() { return widget<QProgressBar>("TransferProgress"); }
    QPushButton& button() { return widget<QPushButton>("TransferButton"); }

    void press_escape() {
        window().activateWindow();
        QTest::keyClick(&window(), Qt::Key_Escape);
    }

    // The status line is as wide as the window; its text may not be.
    int end_of_status_text() {
        auto& label = widget<QLabel>("Label1");
        return label.x() + label.sizeHint().width();
    }
    std::vector<std::string> clipped_texts() {
        auto clipped = gui::clipped_texts(window());
        std::erase(clipped, "Label1");
        return clipped;
    }

    std::vector<std::string> texts() {
        std::vector<std::string> found;
        for (int row = 1; row <= kMemories; ++row) {
            for (int col = 1; col <= 4; ++col) {
                found.push_back(form().MSFlexGrid1.TextMatrix(row, col));
            }
        }
        return found;
    }
    std::string tag(int row) { return form().MSFlexGrid1.TextMatrix(row, 1); }

    void expect_locked(bool locked) {
        EXPECT_EQ(grid().isEnabled(), !locked);
        for (const QAction* const menu : window().menuBar()->actions()) {
            EXPECT_EQ(menu->isEnabled(), !locked) << qt::to_utf8(menu->text());
        }
    }
    void expect_over() {
        for (const char* const name : {"ReceivedLabel", "TransferProgress", "TransferButton"}) {
            EXPECT_FALSE(widget<QWidget>(name).isVisible()) << name;
        }
        expect_locked(false);
        EXPECT_TRUE(grid().hasFocus());
        EXPECT_EQ(caption(), "Memwright v1.0 - " + path_);
    }
    void expect_cancelled() {
        EXPECT_EQ(texts(), before_);
        EXPECT_EQ(form().MSFlexGrid1.Row(), 3);
        EXPECT_EQ(status(), "");
        EXPECT_EQ(widget<QLabel>("NoticeText").text(), "Import cancelled. Nothing was taken over.");
        EXPECT_EQ(robot_.seen().size(), 1U) << "the file dialog alone";
        EXPECT_LT(end_of_status_text(), window().width());
        expect_over();
    }

    Robot robot_;
    std::string path_;
    std::vector<std::string> before_;
    std::vector<Connection> actions_;
};

TEST_F(CsvProgress, a_long_import_shows_how_far_it_is_and_locks_the_window) {
    put_lines(100);
    bool looked = false;
    at(40, [&] {
        looked = true;
        EXPECT_TRUE(bar().isVisible());
        EXPECT_GE(bar().value(), 40);
        EXPECT_LT(bar().value(), 100);
        EXPECT_EQ(bar().maximum(), 100);
        EXPECT_EQ(widget<QLabel>("Label1").text(), "");
        EXPECT_TRUE(button().isVisible());
        EXPECT_EQ(button().text(), "Cancel");
        EXPECT_FALSE(widget<QLabel>("ReceivedLabel").isVisible());
        EXPECT_LT(end_of_status_text(), bar().x());
        EXPECT_THAT(clipped_texts(), IsEmpty());
        expect_locked(true);
    });
    robot_.answer(choose_file());
    import();
    EXPECT_TRUE(looked);
    EXPECT_EQ(tag(1), "END 0");
    EXPECT_EQ(tag(640), "END 9");
    EXPECT_EQ(status(), "");
    expect_over();
}

TEST_F(CsvProgress, the_window_is_painted_meanwhile) {
    put_lines(600);
    PaintCounter counter;
    int early = 0, late = 0;
    at(1, [&] { early = counter.paints; });
    at(99, [&] { late = counter.paints; });
    bar().installEventFilter(&counter);
    robot_.answer(choose_file());
    import();
    EXPECT_GT(late - early, 2);
}

TEST_F(CsvProgress, the_cancel_button_leaves_all_as_it_was) {
    put_lines(100);
    at(40, [&] { QTest::mouseClick(&button(), Qt::LeftButton); });
    robot_.answer(choose_file());
    import();
    expect_cancelled();
}

TEST_F(CsvProgress, escape_does_what_the_button_does) {
    put_lines(100);
    at(40, [&] { press_escape(); });
    robot_.answer(choose_file());
    import();
    expect_cancelled();
}

}  // namespace
}  // namespace memwright::gui
