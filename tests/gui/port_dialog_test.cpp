// The port dialog, over devices that come and go, and the About box.

#include <gmock/gmock.h>

#include <QComboBox>
#include <QTimer>

#include "app/dialogs.h"
#include "fakes/memory_settings.h"
#include "gui/support/appearance.h"
#include "gui/support/plugged_devices.h"
#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PortDialog : public ::testing::Test {
  protected:
    PortDialog() { owner_.show(); }

    // Opens the dialog, looks at it, and closes it with a key.
    void open(const std::function<void(QDialog&)>& at, Qt::Key close = Qt::Key_Escape,
              std::map<int, std::string> named = {}) {
        ComPorts ports(devices_, settings_, std::move(named));
        Form2 form(settings_, ports);
        answering({look(at, press_key(close))}, [&] { dialogs_.show_modal(form); });
    }

    static QComboBox& list(QDialog& dialog, const char* name) {
        return *dialog.findChild<QComboBox*>(name);
    }
    static std::vector<std::string> entries(const QComboBox& list) {
        std::vector<std::string> found;
        for (int i = 0; i < list.count(); ++i) found.push_back(qt::to_utf8(list.itemText(i)));
        return found;
    }
    static std::string text(QDialog& dialog, const char* label) {
        return qt::to_utf8(dialog.findChild<QLabel*>(label)->text());
    }

    // Picks an entry of a list with the keyboard.
    static void pick(QComboBox& list, int entry) {
        list.setFocus();
        const int steps = entry - list.currentIndex();
        for (int i = 0; i < std::abs(steps); ++i) {
            QTest::keyClick(&list, steps > 0 ? Qt::Key_Down : Qt::Key_Up);
        }
    }

    QWidget owner_;
    qt::QtDialogViews dialogs_{owner_};
    PluggedDevices devices_;
    fakes::MemorySettings settings_;
};

TEST_F(PortDialog, lists_twelve_ports_and_shows_the_stored_one) {
    settings_.values["VR120/Settings/CommPort"] = "7";
    open([&](QDialog& dialog) {
        EXPECT_THAT(entries(list(dialog, "Combo1")),
                    ElementsAre("COM 1", "COM 2", "COM 3", "COM 4", "COM 5", "COM 6", "COM 7",
                                "COM 8", "COM 9", "COM 10", "COM 11", "COM 12"));
        EXPECT_EQ(list(dialog, "Combo1").currentText(), "COM 7");
    });
}

TEST_F(PortDialog, shows_a_text_that_is_no_entry_of_the_list) {
    const auto picture = [&](const char* stored) {
        settings_.values["VR120/Settings/CommPort"] = stored;
        QImage shown;
        open([&](QDialog& dialog) {
            auto& combo = list(dialog, "Combo1");
            EXPECT_EQ(combo.currentIndex(), -1);
            EXPECT_EQ(qt::to_utf8(combo.placeholderText()), std::string("COM ") + stored);
            combo.clearFocus();
            shown = picture_of(combo, combo.rect());
        });
        return shown;
    };
    EXPECT_NE(picture("55"), picture("66"));
}

TEST_F(PortDialog, ok_keeps_a_text_that_is_no_entry_as_it_is) {
    settings_.values["VR120/Settings/CommPort"] = "55";
    open([](QDialog&) {}, Qt::Key_Return);
    EXPECT_EQ(settings_.values["VR120/Settings/CommPort"], "55");
}

TEST_F(PortDialog, says_which_device_the_transfers_will_open) {
    open([&](QDialog& dialog) {
        EXPECT_EQ(text(dialog, "DeviceLabel"),
                  "Transfers use COM 1: /dev/ttyUSB0, FT232R USB UART");
        EXPECT_EQ(text(dialog, "DeviceListLabel"), "&Device for COM 1:");
        EXPECT_THAT(entries(list(dialog, "DeviceList")),
                    ElementsAre("Automatic (/dev/ttyUSB0)", "/dev/ttyUSB0, FT232R USB UART"));
        EXPECT_EQ(list(dialog, "DeviceList").currentIndex(), 0);
        EXPECT_TRUE(list(dialog, "DeviceList").isEnabled());
    });
    devices_.present.clear();
    open([&](QDialog& dialog) {
        EXPECT_EQ(text(dialog, "DeviceLabel"), "Transfers use COM 1: no device");
        EXPECT_THAT(entries(list(dialog, "DeviceList")), ElementsAre("Automatic (none found)"));
    });
}

TEST_F(PortDialog, a_device_of_the_command_line_is_shown_and_cannot_be_changed) {
    open(
        [&](QDialog& dialog) {
            EXPECT_EQ(text(dialog, "DeviceLabel"), "Transfers use COM 1: /dev/pts/7, not present");
            EXPECT_FALSE(list(dialog, "DeviceList").isEnabled());
        },
        Qt::Key_Return, {{1, "/dev/pts/7"}});
    EXPECT_THAT(settings_.saved, ElementsAre("VR120/Settings/CommPort"));
}

TEST_F(PortDialog, choosing_a_device_changes_what_transfers_use_and_enter_stores_it) {
    devices_.present.push_back({"/dev/ttyUSB1", "CP2102", true});
    open(
        [&](QDialog& dialog) {
            pick(list(dialog, "DeviceList"), 2);
            EXPECT_EQ(text(dialog, "DeviceLabel"), "Transfers use COM 1: /dev/ttyUSB1, CP2102");
        },
        Qt::Key_Return);
    EXPECT_EQ(settings_.values["Memwright/Ports/COM1"], "/dev/ttyUSB1");

    // And back to what the system's order gives.
    open([&](QDialog& dialog) { pick(list(dialog, "DeviceList"), 0); }, Qt::Key_Return);
    EXPECT_FALSE(settings_.values.contains("Memwright/Ports/COM1"));
}

TEST_F(PortDialog, choosing_a_port_is_stored_but_does_not_move_the_transfers) {
    open(
        [&](QDialog& dialog) {
            pick(list(dialog, "Combo1"), 2);
            EXPECT_EQ(list(dialog, "Combo1").currentText(), "COM 3");
        },
        Qt::Key_Return);
    EXPECT_EQ(settings_.values["VR120/Settings/CommPort"], "3");
    open([&](QDialog& dialog) {
        EXPECT_EQ(list(dialog, "Combo1").currentText(), "COM 3");
        EXPECT_EQ(text(dialog, "DeviceListLabel"), "&Device for COM 1:");
    });
}

TEST_F(PortDialog, a_device_that_is_plugged_in_appears_and_one_that_is_pulled_out_goes) {
    open([&](QDialog& dialog) {
        auto& combo = list(dialog, "DeviceList");
        devices_.present.push_back({"/dev/ttyUSB1", "CP2102", true});
        EXPECT_TRUE(wait_until([&] { return combo.count() == 3; }));
        EXPECT_THAT(entries(combo),
                    ElementsAre("Automatic (/dev/ttyUSB0)", "/dev/ttyUSB0, FT232R USB UART",
                                "/dev/ttyUSB1, CP2102"));
        EXPECT_EQ(combo.currentIndex(), 0);
        devices_.present.clear();
        EXPECT_TRUE(wait_until([&] { return combo.count() == 1; }));
        EXPECT_EQ(text(dialog, "DeviceLabel"), "Transfers use COM 1: no device");
    });
}

// Counts how often the dialog's timer has come round.
class Rounds final : public QObject {
  public:
    int count = 0;

    Rounds() { QCoreApplication::instance()->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override {
        constexpr int kLookForDevices = 1000;
        const auto* const timer = qobject_cast<QTimer*>(watched);
        if (event->type() == QEvent::Timer && timer != nullptr &&
            timer->interval() == kLookForDevices) {
            ++count;
        }
        return false;
    }
};

TEST_F(PortDialog, an_open_list_is_left_alone_while_a_device_comes) {
    open([&](QDialog& dialog) {
        auto& combo = list(dialog, "DeviceList");
        combo.showPopup();
        devices_.present.push_back({"/dev/ttyUSB1", "CP2102", true});
        const Rounds rounds;
        EXPECT_TRUE(wait_until([&] { return rounds.count == 2; }));
        EXPECT_EQ(combo.count(), 2);
        combo.hidePopup();
        EXPECT_TRUE(wait_until([&] { return combo.count() == 3; }));
    });
}

TEST_F(PortDialog, nothing_is_clipped_however_long_the_device_is) {
    for (const char* const path :
         {"/dev/ttyUSB0",
          "/dev/serial/by-id/usb-FTDI_FT232R_USB_UART_with_a_long_name_A50285BI-if00-port0"}) {
        devices_.present = {{path, "USB adapter", true}};
        open([&](QDialog& dialog) { EXPECT_THAT(clipped_texts(dialog), IsEmpty()); });
    }
    open([&](QDialog& dialog) {
        devices_.present.push_back({"/dev/ttyUSB1",
                                    "A much longer description than before, so "
                                    "that the dialog has to grow while it is open",
                                    true});
        auto& combo = list(dialog, "DeviceList");
        EXPECT_TRUE(wait_until([&] { return combo.count() == 3; }));
        pick(combo, 2);
        QCoreApplication::processEvents();
        EXPECT_THAT(clipped_texts(dialog), IsEmpty());
    });
}

using PortDialogOfTheWindow = WindowTest;

TEST_F(PortDialogOfTheWindow, opens_from_the_settings_menu_and_shows_the_command_lines_device) {
    ports_[1] = "/dev/no-such-device";
    start();
    answering({look(
                  [&](QDialog& dialog) {
                      EXPECT_EQ(dialog.windowTitle(), "Comm Port");
                      EXPECT_EQ(dialog.parentWidget(), &window());
                      EXPECT_TRUE(dialog.findChild<QLabel*>("DeviceLabel")
                                      ->text()
                                      .startsWith("Transfers use COM 1: /dev/no-such-device"));
                  },
                  press_key(Qt::Key_Return))},
              [&] { choose("mnuOptions", "mnuPort"); });
    EXPECT_EQ(setting("CommPort"), "1");
    EXPECT_EQ(setting("COM1", "Memwright", "Ports"), "(none)");
}

using AboutBox = StartedWindowTest;

TEST_F(AboutBox, opens_from_the_help_menu_and_tells_name_version_and_makers) {
    const auto check = [&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "Form5");
        EXPECT_EQ(dialog.parentWidget(), &window());
        std::vector<std::string> texts;
        for (const auto* const label : dialog.findChildren<QLabel*>()) {
            texts.push_back(qt::to_utf8(label->text()));
        }
        EXPECT_THAT(texts, ElementsAre("Memwright", "Version 1.0", "By the Memwright developers"));
    };
    answering({look(check, press_key(Qt::Key_Return))}, [&] { choose("mnuHelp", "mnuabout"); });
}

}  // namespace
}  // namespace memwright::gui
