// Pictures for human eyes, if the environment variable MEMWRIGHT_PICTURES names a folder.

#include <QComboBox>

#include "gui/support/appearance.h"
#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

class Pictures : public WindowTest, public ::testing::WithParamInterface<bool> {
  protected:
    void SetUp() override {
        if (GetParam()) palette_.emplace(dark_palette());
        theme_ = GetParam() ? "-dark" : "-light";
        start();
    }

    void picture(const std::string& name, QWidget* of = nullptr) {
        take_picture(of == nullptr ? window() : *of, name + theme_);
    }

    // A picture of the dialog that the action opens.
    void picture_of_dialog(const std::string& name, const std::function<void()>& action) {
        answering(
            {look([&](QDialog& dialog) { picture(name, &dialog); }, press_key(Qt::Key_Escape))},
            action);
    }

    std::optional<WithPalette> palette_;
    std::string theme_;
};

TEST_P(Pictures, of_the_window) {
    picture("window-start");
    open_some_image();
    picture("window-opened");
    form().MSFlexGrid1.set_row(4);
    form().MSFlexGrid1.set_col(2);
    picture("window-current-cell");
    for (int row = 5; row <= 9; ++row) {
        for (int col = 1; col <= 4; ++col) form().MSFlexGrid1.set_colour(row, col, 0xC0C0C0);
    }
    picture("window-masked");
    widget<QPlainTextEdit>("Text1").setFocus();
    form().Text1.text = "Cannot open COM 1 (/dev/ttyUSB0): there is no such device.\r\n";
    picture("window-log");
    choose("mnuOptions", "mnuShwDbg");
    picture("window-without-log");
    window().resize(window().minimumSize());
    picture("window-smallest-without-log");
    choose("mnuOptions", "mnuShwDbg");
    picture("window-smallest");
}

TEST_P(Pictures, of_the_window_in_a_transfer) {
    open_some_image();
    form().DisableGui();
    form().Label1.caption = "Listening...";
    form().ReceivedLabel.caption = "Nothing received yet";
    form().ReceivedLabel.visible = true;
    form().TransferProgress.busy = true;
    form().TransferProgress.visible = true;
    form().TransferButton.caption = "Cancel";
    form().TransferButton.visible = true;
    picture("transfer-listening");
    form().ReceivedLabel.visible = false;
    form().TransferProgress.busy = false;
    form().TransferProgress.percent = 100;
    form().Label1.caption = "Reading from VR-120: 100% complete...";
    picture("transfer-half");
    window().resize(window().minimumSize());
    picture("transfer-smallest");
}

TEST_P(Pictures, of_the_menus) {
    open_some_image();
    for (const char* const name : {"mnuFile", "mnuEdit", "mnuOptions", "mnuTransfer"}) {
        auto& menu = widget<QMenu>(name);
        menu.popup(window().mapToGlobal(QPoint(0, 0)));
        picture(name, &menu);
        menu.hide();
    }
}

TEST_P(Pictures, of_the_dialogs) {
    picture_of_dialog("about", [&] { choose("mnuHelp", "mnuabout"); });
    picture_of_dialog("port", [&] { choose("mnuOptions", "mnuPort"); });
    store_setting("COM1", "/dev/serial/by-id/usb-FTDI_FT232R_USB_UART_A50285BI-if00-port0",
                  "Memwright", "Ports");
    picture_of_dialog("port-long", [&] { choose("mnuOptions", "mnuPort"); });
    picture_of_dialog("read", [&] { choose("mnuTransfer", "mnuRead"); });
    open_some_image();
    picture_of_dialog("settings", [&] { choose("mnuVR120Settings", "mnuMiscSettings"); });
    picture_of_dialog("limits", [&] { choose("mnuVR120Settings", "mnuSearchBandMem"); });
    picture_of_dialog("open", [&] { choose("mnuFile", "mnuOpen"); });
    picture_of_dialog("save", [&] { choose("mnuFile", "mnuSave"); });
    picture_of_dialog("error", [&] { program().open_named("/"); });
    const std::string long_name = folder_.put(std::string(200, 'n') + ".120", {1});
    answering(
        {type_name(qt::from_file_name(long_name)),
         look([&](QDialog& dialog) { picture("long-name", &dialog); }, press_key(Qt::Key_Escape))},
        [&] { choose("mnuFile", "mnuSave"); });
    change_table();
    picture_of_dialog("changed", [&] { choose("mnuTransfer", "mnuRead"); });
}

std::vector<bool> themes() {
    return pictures_wanted() ? std::vector<bool>{false, true} : std::vector<bool>{};
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Pictures);
INSTANTIATE_TEST_SUITE_P(themes, Pictures, ::testing::ValuesIn(themes()),
                         [](const auto& dark) { return dark.param ? "dark" : "light"; });

}  // namespace
}  // namespace memwright::gui
