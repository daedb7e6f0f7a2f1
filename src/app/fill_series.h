#pragma once

// The dialog that asks for the step of a series of frequencies, and whether its tags are numbered
// on. It closes with rows that can be filled; else it says why not.

#include <optional>
#include <string>
#include <vector>

#include "controls/controls.h"
#include "table/frequency_series.h"

namespace memwright {

class FillSeries {
  public:
    struct Choices {
        std::string step = "12.5";  // as typed
        bool number_tags = true;
    };

    // The first row, whose number is `first_row`, and those that are to go on from it.
    FillSeries(TableRows rows, int first_row, const Choices& choices);

    Label RowsLabel{"RowsLabel"};
    TextBox StepBox{"StepBox"};  // kHz
    CheckBox NumberTags{"NumberTags"};
    Label ProblemLabel{"ProblemLabel"};
    CommandButton Command1{"Command1"};
    CommandButton Command2{"Command2"};

    // The filled rows once the dialog is closed; none if it was cancelled.
    const std::optional<FilledRows>& wanted() const { return wanted_; }

    Choices choices() const { return {StepBox.text, NumberTags.checked}; }

    Signal<> closed;

  private:
    void accept();
    void show_problem(const std::string& problem);

    TableRows rows_;
    int first_row_;
    std::optional<FilledRows> wanted_;
    std::vector<Connection> connections_;
};

}  // namespace memwright
