#pragma once

// The dialog that asks where a block of rows is to be moved, and what becomes of what is there. It
// closes with a move that can be done; else it says why not.

#include <optional>
#include <vector>

#include "controls/controls.h"
#include "table/row_arrangement.h"

namespace memwright {

class MoveTo {
  public:
    explicit MoveTo(const RowRange& block);

    Label RowsLabel{"RowsLabel"};
    ComboBox BankList{"BankList"};      // 0 to 9
    ComboBox MemoryList{"MemoryList"};  // 0 to 63
    OptionButton SwapOption{"SwapOption"};
    OptionButton OverwriteOption{"OverwriteOption"};
    Label ProblemLabel{"ProblemLabel"};
    CommandButton Command1{"Command1"};
    CommandButton Command2{"Command2"};

    // The move once the dialog is closed; none if it was cancelled.
    const std::optional<RowMove>& wanted() const { return wanted_; }

    Signal<> closed;

  private:
    void accept();
    void show_problem(const std::string& problem);

    RowRange block_;
    std::optional<RowMove> wanted_;
    std::vector<Connection> connections_;
};

}  // namespace memwright
