#pragma once

// Work on whole rows of the channel table: a block of them is selected in the label column and can
// be copied, cut, pasted, cleared and moved.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "controls/controls.h"
#include "platform/message_box.h"
#include "table/cell_editor.h"
#include "table/channel_table.h"

namespace memwright {

class RowOperations {
  public:
    struct EditMenu {
        MenuEntry& mnuCut;
        MenuEntry& mnuCopy;
        MenuEntry& mnuPaste;
    };

    RowOperations(MSFlexGrid& grid, ChannelTable& table, CellEditor& editor, MessageBox& messages,
                  EditMenu menu)
        : grid_(grid), table_(table), editor_(editor), messages_(messages), menu_(menu) {}

    // The first and last row of the selected block, which the grid shows as marked; SelTop is 0
    // while nothing is selected.
    std::int16_t SelTop() const { return static_cast<std::int16_t>(grid_.marked_rows.get().first); }
    std::int16_t SelBottom() const {
        return static_cast<std::int16_t>(grid_.marked_rows.get().last);
    }

    // A row's texts of columns 1 to 14.
    using Record = std::array<std::string, 14>;

    // At start the copy buffer is one empty record.
    void reset_buffer() { RowBuffer_.assign(1, Record{}); }
    const std::vector<Record>& RowBuffer() const { return RowBuffer_; }

    // Marks these rows.
    void select(int top, int bottom);

    // Asks before rows with a tag or a frequency are overwritten. False if they are to stay.
    bool may_overwrite(int first, int last);

    void MSFlexGrid1_MouseUp(MouseButton button, MouseCell under_mouse);

    void CutCopy();
    void mnuEdit_Click();
    void mnuCut_Click();
    void mnuCopy_Click() { CutCopy(); }
    void mnuPaste_Click();

    void Command1_Click();  // moves the block down
    void Command2_Click();  // moves the block up
    void Command3_Click();  // empties it
    void Command4_Click() { table_.SaveVR120Data(); }
    void Command5_Click() { table_.ParseVR120Data(); }

  private:
    void clear_rows();
    void copy_visible_fields(int from_row, int to_row);
    void write_buffer(int first_row);

    MSFlexGrid& grid_;
    ChannelTable& table_;
    CellEditor& editor_;
    MessageBox& messages_;
    EditMenu menu_;
    std::vector<Record> RowBuffer_;
};

}  // namespace memwright
