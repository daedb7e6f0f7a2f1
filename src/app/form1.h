#pragma once

// The controls of the main window, their places on the form as designed, and the lock around
// transfers. Names are those under which the window shows them.

#include <vector>

#include "app/added_entries.h"
#include "controls/controls.h"
#include "files/user_interface.h"
#include "table/ms_flex_grid.h"

namespace memwright {

// A menu entry with this caption is a separator line.
inline constexpr const char* kSeparatorCaption = "-";

class Form1 final : public UserInterface {
  public:
    // The window's outer size as designed, in twips.
    static constexpr double kDesignWidth = 9990;
    static constexpr double kDesignHeight = 7050;

    // A top-level menu with its entries in order.
    struct Menu {
        MenuEntry& entry;
        std::vector<MenuEntry*> items;
    };

    Form1();
    Form1(const Form1&) = delete;
    Form1& operator=(const Form1&) = delete;

    MSFlexGrid MSFlexGrid1{"MSFlexGrid1"};
    TextBox TxtGrid{"TxtGrid"};   // laid over the grid's current cell
    ComboBox CboGrid{"CboGrid"};  // the same
    TextBox Text1{"Text1"};
    Label Label1{"Label1"};
    CommandButton Command1{"Command1"};  // moves rows down
    CommandButton Command2{"Command2"};  // moves rows up
    CommandButton Command3{"Command3"};
    CommandButton Command4{"Command4"};
    CommandButton Command5{"Command5"};

    // Beside the status line during a transfer.
    Label ReceivedLabel{"ReceivedLabel"};
    ProgressBar TransferProgress{"TransferProgress"};
    CommandButton TransferButton{"TransferButton"};

    MenuEntry mnuFile{"mnuFile", "&File"};
    MenuEntry mnuOpen{"mnuOpen", "&Open", {"Ctrl+O"}};
    MenuEntry mnuSaveOnly{"mnuSaveOnly", "&Save", {"Ctrl+S"}};
    MenuEntry mnuSave{"mnuSave", "Save &As...", {"Ctrl+Shift+S"}};
    MenuEntry mnuSep1{"mnuSep1", "-"};
    MenuEntry mnuImport{"mnuImport", "&Import From .CSV..."};
    MenuEntry mnuExport{"mnuExport", "&Export To .CSV..."};
    MenuEntry mnusepa{"mnusepa", "-"};
    MenuEntry mnuPrint{"mnuPrint", "&Print", {"Ctrl+P"}};
    MenuEntry mnusepq{"mnusepq", "-"};
    MenuEntry mnuexit{"mnuexit", "E&xit", {"Ctrl+Q"}};
    MenuEntry mnuEdit{"mnuEdit", "&Edit Channels"};
    MenuEntry mnuCut{"mnuCut", "Cu&t", {"Ctrl+X"}};
    MenuEntry mnuCopy{"mnuCopy", "&Copy", {"Ctrl+C"}};
    MenuEntry mnuPaste{"mnuPaste", "&Paste", {"Ctrl+V"}};
    MenuEntry mnuOptions{"mnuOptions", "&Settings"};
    MenuEntry mnuPort{"mnuPort", "&Port..."};
    MenuEntry mnuShwDbg{"mnuShwDbg", "&Show Status Window"};
    MenuEntry mnuVR120Settings{"mnuVR120Settings", "&VR120 Settings"};
    MenuEntry mnuMiscSettings{"mnuMiscSettings", "&Set Mode Settings..."};
    MenuEntry mnuSearchBandMem{"mnuSearchBandMem", "&Search Band Memories"};
    MenuEntry mnuTransfer{"mnuTransfer", "&Transfer"};
    MenuEntry mnuRead{"mnuRead", "&Read from VR-120"};
    MenuEntry mnuWrite{"mnuWrite", "&Write To VR-120"};
    MenuEntry mnuforce{"mnuforce", "&Force Timeout"};
    MenuEntry mnuHelp{"mnuHelp", "&Help"};
    MenuEntry mnuabout{"mnuabout", "&About..."};

    AddedEntries added;

    FormCaption caption;

    // The menu tree in the order shown.
    std::vector<Menu> menus();

    void DisableGui() override;
    void EnableGui() override;
    void unlock_gui() override;

  private:
    std::vector<Control*> lockable();

    std::vector<Control*> locked_;  // what the last DisableGui found enabled
};

}  // namespace memwright
