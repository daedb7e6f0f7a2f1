// Transfers as their user meets them, with a radio at the other end of a pseudo-terminal.

#include <gmock/gmock.h>

#include <QApplication>
#include <QMenuBar>
#include <algorithm>

#include "gui/support/radio_end.h"
#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* kOpening = "\x0C\x01\x41\x31\x38\x12";  // without its two last bytes

class Transfer : public WindowTest {
  protected:
    explicit Transfer(radio::Mode mode = radio::Mode::send)
        : radio_(radio::Options{mode, radio::Pace::none, {}, {}}) {
        ports_[1] = radio_.path();
    }

    void SetUp() override {
        start();
        path_ = open_some_image();
        form().MSFlexGrid1.set_row(3);
        before_ = texts();
    }

    // Runs a transfer whose instructions are answered with OK, and the steps added to it.
    void run(const char* entry) {
        robot_.during([&] { choose("mnuTransfer", entry); });
    }
    Robot& after_ok() { return robot_.answer(press(QMessageBox::Ok)); }

    Robot& read_until_listening() {
        return after_ok().when([this] { return status() == "Listening..."; },
                               [this] { see_listening(); });
    }
    void see_listening() { listening_ = true; }

    std::function<bool()> progress_of(int percent) {
        return [this, percent] {
            return widget<QProgressBar>("TransferProgress").isVisible() &&
                   widget<QProgressBar>("TransferProgress").value() >= percent;
        };
    }

    void press_escape() {
        window().activateWindow();
        QTest::keyClick(&window(), Qt::Key_Escape);
    }
    void press_button() {
        QTest::mouseClick(&widget<QPushButton>("TransferButton"), Qt::LeftButton);
    }

    std::vector<std::string> texts() {
        std::vector<std::string> found;
        for (int row = 1; row <= 640; ++row) {
            for (int col = 1; col <= 4; ++col) {
                found.push_back(form().MSFlexGrid1.TextMatrix(row, col));
            }
        }
        return found;
    }

    void expect_locked(bool locked) {
        EXPECT_EQ(grid().isEnabled(), !locked);
        for (const QAction* const menu : window().menuBar()->actions()) {
            EXPECT_EQ(menu->isEnabled(), !locked) << qt::to_utf8(menu->text());
        }
    }

    void expect_all_as_before() {
        EXPECT_EQ(texts(), before_);
        EXPECT_EQ(caption(), "Memwright v1.0 - " + path_);
        EXPECT_EQ(form().MSFlexGrid1.Row(), 3);
        for (const char* const name : {"ReceivedLabel", "TransferProgress", "TransferButton"}) {
            EXPECT_FALSE(widget<QWidget>(name).isVisible()) << name;
        }
        expect_locked(false);
        EXPECT_TRUE(grid().hasFocus());
        EXPECT_TRUE(radio_.is_left());
    }

    RadioEnd radio_;
    Robot robot_;
    std::string path_;
    std::vector<std::string> before_;
    bool listening_ = false;
};

TEST_F(Transfer, the_instructions_of_a_read_come_first_and_cancel_ends_it) {
    robot_.answer(press(QMessageBox::Cancel));
    run("mnuRead");
    ASSERT_EQ(robot_.seen().size(), 1U);
    const Seen& box = robot_.seen().front();
    EXPECT_EQ(box.title, "Read From VR-120");
    EXPECT_EQ(box.text,
              "1. Hold down [Func] + [Band] on the VR-120 and power it on. It should say RX TX.\n"
              "2. Click OK to close this box.\n"
              "3. Press [Mode] on the VR-120 to start the read.");
    EXPECT_EQ(box.buttons, QMessageBox::Ok | QMessageBox::Cancel);
    EXPECT_EQ(status(), "");
    expect_locked(false);
}

TEST_F(Transfer, a_read_that_listens_says_so_and_whether_anything_arrives) {
    auto& received = widget<QLabel>("ReceivedLabel");
    read_until_listening()
        .when([&] { return received.isVisible(); },
              [&] {
                  EXPECT_EQ(received.text(), "Nothing received yet");
                  EXPECT_EQ(widget<QLabel>("Label1").text(), "Listening...");
                  EXPECT_EQ(widget<QProgressBar>("TransferProgress").maximum(), 0);
                  EXPECT_EQ(widget<QPushButton>("TransferButton").text(), "Cancel");
                  EXPECT_TRUE(widget<QPushButton>("TransferButton").isVisible());
                  expect_locked(true);
                  radio_.send(std::vector<std::uint8_t>{1, 2, 3});
              })
        .when([&] { return received.text() == "3 bytes received"; }, [&] { press_escape(); });
    run("mnuRead");
    EXPECT_EQ(status(), "Read from VR-120 cancelled.");
    expect_all_as_before();
}

TEST_F(Transfer, escape_in_the_middle_of_a_read_leaves_all_as_it_was) {
    read_until_listening()
        .when([&] { return listening_; }, [&] { radio_.begin(); })
        .when(progress_of(2), [&] {
            EXPECT_THAT(status(), HasSubstr("Reading from VR-120: "));
            EXPECT_FALSE(widget<QLabel>("ReceivedLabel").isVisible());
            expect_locked(true);
            press_escape();
        });
    run("mnuRead");
    EXPECT_EQ(status(), "Read from VR-120 cancelled.");
    expect_all_as_before();
    ASSERT_EQ(radio_.radio().report().transfers.size(), 1U);
    EXPECT_GE(radio_.radio().report().transfers[0].blocks, 5);
}

TEST_F(Transfer, the_cancel_button_does_what_escape_does) {
    read_until_listening()
        .when([&] { return listening_; }, [&] { radio_.begin(); })
        .when(progress_of(1), [&] { press_button(); });
    run("mnuRead");
    EXPECT_EQ(status(), "Read from VR-120 cancelled.");
    expect_all_as_before();
}

TEST_F(Transfer, a_radio_that_hangs_up_gives_one_report_and_the_unlock_button) {
    read_until_listening()
        .when([&] { return listening_; }, [&] { radio_.begin(); })
        .when(progress_of(1), [&] { radio_.hang_up(); })
        .answer(press(QMessageBox::Ok));
    run("mnuRead");
    ASSERT_EQ(robot_.seen().size(), 2U);
    const Seen& report = robot_.seen().back();
    EXPECT_EQ(report.title, "Memwright");
    EXPECT_EQ(report.icon, QMessageBox::Critical);
    EXPECT_THAT(qt::to_utf8(report.text), HasSubstr("Lost COM 1 (" + radio_.path() + ")"));
    EXPECT_THAT(program().notices.of_this_run().back().notice.text, HasSubstr("Lost COM 1"));
    EXPECT_EQ(texts(), before_);
    expect_locked(true);
    auto& button = widget<QPushButton>("TransferButton");
    ASSERT_TRUE(button.isVisible());
    EXPECT_EQ(button.text(), "Unlock");
    EXPECT_FALSE(widget<QProgressBar>("TransferProgress").isVisible());

    press_button();
    EXPECT_FALSE(button.isVisible());
    expect_locked(false);
    EXPECT_TRUE(grid().hasFocus());
}

class Write : public Transfer {
  protected:
    Write() : Transfer(radio::Mode::receive) {}
};

TEST_F(Write, the_instructions_of_a_write_are_shown_and_cancel_starts_it_all_the_same) {
    robot_.answer(press(QMessageBox::Cancel))
        .when([&] { return radio_.received().size() >= 8 + 38; }, [&] { press_escape(); })
        .answer(press(QMessageBox::Yes));
    run("mnuWrite");
    const Seen& box = robot_.seen().front();
    EXPECT_EQ(box.title, "Write To VR-120");
    EXPECT_EQ(box.text,
              "1. Hold down [Func] + [Band] on the VR-120 and power it on. It should say RX TX.\n"
              "2. Press [Scan] on the VR-120. It should say R.\n"
              "3. Click OK on this box to begin.");
    EXPECT_EQ(box.buttons, QMessageBox::Ok | QMessageBox::Cancel);
    EXPECT_TRUE(std::equal(kOpening, kOpening + 6, radio_.received().begin()));
    EXPECT_EQ(radio_.received()[8 + 4], 0);  // the number of the first block
}

TEST_F(Write, a_write_asks_before_it_is_cancelled_and_goes_on_after_no) {
    after_ok()
        .when(progress_of(1), [&] { press_escape(); })
        .answer(press(QMessageBox::No))
        .when(progress_of(3), [&] { press_button(); })
        .answer(press(QMessageBox::Yes));
    run("mnuWrite");
    ASSERT_EQ(robot_.seen().size(), 3U);
    for (const Seen& question : {robot_.seen()[1], robot_.seen()[2]}) {
        EXPECT_EQ(question.title, "Write To VR-120");
        EXPECT_THAT(qt::to_utf8(question.text), HasSubstr("Stop writing to the VR-120?"));
        EXPECT_EQ(question.icon, QMessageBox::Warning);
        EXPECT_EQ(question.buttons, QMessageBox::Yes | QMessageBox::No);
    }
    EXPECT_EQ(status(), "Write To VR-120 cancelled.");
    expect_all_as_before();
    // What had left by then is in order.
    ASSERT_EQ(radio_.radio().report().transfers.size(), 1U);
    const radio::Transfer& transfer = radio_.radio().report().transfers[0];
    EXPECT_EQ(transfer.direction, radio::Direction::receiving);
    EXPECT_GE(transfer.blocks, 7);
    EXPECT_EQ(transfer.checksum_errors + transfer.order_errors + transfer.stray_bytes, 0);
}

TEST_F(Write, goes_on_behind_the_question_whether_to_stop) {
    const auto question = [] {
        return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    };
    after_ok()
        .when(progress_of(1), [&] { press_escape(); })
        .when([&] { return question() != nullptr && progress_of(4)(); },
              [&] {
                  EXPECT_TRUE(question()->text().contains("Stop writing to the VR-120?"));
                  press(QMessageBox::No)(*question());
              })
        .when(progress_of(5), [&] { press_escape(); })
        .answer(press(QMessageBox::Yes));
    run("mnuWrite");
    EXPECT_EQ(status(), "Write To VR-120 cancelled.");
    const radio::Transfer& transfer = radio_.radio().report().transfers.at(0);
    EXPECT_EQ(transfer.checksum_errors + transfer.order_errors + transfer.stray_bytes, 0);
}

TEST_F(Write, goes_on_behind_the_question_about_closing_and_ends_with_its_no) {
    change_table();
    const auto question = [] {
        return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    };
    after_ok()
        .when(progress_of(1), [&] { static_cast<QWidget&>(window()).close(); })
        .when([&] { return question() != nullptr && progress_of(4)(); },
              [&] { press(QMessageBox::No)(*question()); });
    run("mnuWrite");
    EXPECT_FALSE(window().isVisible());
    EXPECT_TRUE(radio_.is_left());
}

TEST_F(Write, escape_in_the_question_whether_to_stop_goes_on) {
    after_ok()
        .when(progress_of(1), [&] { press_escape(); })
        .answer(press_key(Qt::Key_Escape))
        .when(progress_of(3), [&] { press_escape(); })
        .answer(press(QMessageBox::Yes));
    run("mnuWrite");
    EXPECT_EQ(status(), "Write To VR-120 cancelled.");
}

TEST_F(Transfer, closing_the_window_ends_the_read_and_leaves_the_port) {
    read_until_listening()
        .when([&] { return listening_; }, [&] { radio_.begin(); })
        .when(progress_of(1), [&] { static_cast<QWidget&>(window()).close(); });
    run("mnuRead");
    EXPECT_FALSE(window().isVisible());
    EXPECT_TRUE(radio_.is_left());
    EXPECT_EQ(setting("WindowState"), "0");
}

TEST_F(Transfer, a_close_that_is_cancelled_lets_the_transfer_go_on) {
    change_table();
    robot_.answer(press(QMessageBox::No));
    read_until_listening()
        .when([&] { return listening_; }, [&] { radio_.begin(); })
        .when(progress_of(1), [&] { static_cast<QWidget&>(window()).close(); })
        .answer(press(QMessageBox::Cancel))
        .when(progress_of(3), [&] { press_escape(); });
    run("mnuRead");
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(form().MSFlexGrid1.TextMatrix(1, 2), "145.50000");
}

TEST_F(Transfer, a_read_asks_about_changes_first_and_cancel_ends_it) {
    change_table();
    robot_.answer(press(QMessageBox::Cancel));
    run("mnuRead");
    ASSERT_EQ(robot_.seen().size(), 1U);
    EXPECT_EQ(robot_.seen().front().title, "Memwright");
    EXPECT_EQ(form().MSFlexGrid1.TextMatrix(1, 2), "145.50000");
}

class TransferWithoutDevice : public Transfer {
  protected:
    TransferWithoutDevice() { ports_[1] = "/dev/no-such-device"; }
};

TEST_F(TransferWithoutDevice, the_report_names_the_port_and_the_device) {
    for (const char* const entry : {"mnuRead", "mnuWrite"}) {
        Robot robot;
        robot.answer(press(QMessageBox::Ok)).answer(press(QMessageBox::Ok));
        robot.during([&] { choose("mnuTransfer", entry); });
        ASSERT_EQ(robot.seen().size(), 2U);
        const Seen& report = robot.seen().back();
        EXPECT_EQ(report.title, "Memwright");
        EXPECT_EQ(report.icon, QMessageBox::Critical);
        EXPECT_EQ(report.buttons, QMessageBox::Ok);
        EXPECT_THAT(qt::to_utf8(report.text), HasSubstr("COM 1 (/dev/no-such-device)"));
        expect_locked(true);
        press_button();
        expect_locked(false);
    }
    EXPECT_EQ(texts(), before_);
}

}  // namespace
}  // namespace memwright::gui
