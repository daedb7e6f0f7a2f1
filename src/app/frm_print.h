#pragma once

// The dialog that asks which rows of the table are printed.

#include <cstdint>
#include <optional>
#include <vector>

#include "controls/controls.h"

namespace memwright {

class frmPrint {
  public:
    static constexpr int kFirstRow = 1;
    // Deliberate: the rows below are not printed, not even by "All".
    static constexpr int kLastRow = 240;

    // Rows of the table, first to last.
    struct Range {
        std::int16_t first;
        std::int16_t last;
        friend bool operator==(const Range&, const Range&) = default;
    };

    frmPrint();

    OptionButton Option1{"Option1"};  // all rows
    OptionButton Option2{"Option2"};  // those from Text1 to Text2
    TextBox Text1{"Text1"};
    Label Label1{"Label1"};
    TextBox Text2{"Text2"};
    CommandButton Command1{"Command1"};
    CommandButton Command2{"Command2"};

    // What is to be printed once the dialog is closed; none if it was cancelled. ConversionError
    // for a row past 32767.
    std::optional<Range> wanted() const;

    Signal<> closed;

  private:
    void Command1_Click();

    bool confirmed_ = false;
    std::vector<Connection> connections_;
};

}  // namespace memwright
