#include "app/fill_series.h"

#include <string_view>
#include <utility>

#include "base/number_text.h"
#include "table/edit_names.h"

namespace memwright {
namespace {

bool accepts_in_step(char KeyAscii) {
    constexpr char kBackspace = 8;
    return is_digit(KeyAscii) || KeyAscii == kBackspace ||
           std::string_view(".,-").find(KeyAscii) != std::string_view::npos;
}

}  // namespace

FillSeries::FillSeries(TableRows rows, int first_row, const Choices& choices)
    : rows_(std::move(rows)), first_row_(first_row) {
    const RowRange filled{first_row + 1, first_row + static_cast<int>(rows_.size()) - 1};
    RowsLabel.caption =
        "Fill " + rows_text(filled) + ", going on from row " + std::to_string(first_row) + ":";
    StepBox.text = choices.step;
    StepBox.key_press = [](char& KeyAscii) { return accepts_in_step(KeyAscii); };
    NumberTags.caption = "&Number the tags on";
    NumberTags.checked = choices.number_tags;
    Command1.caption = "&OK";
    Command2.caption = "&Cancel";
    show_problem("");
    const auto another_choice = [this] { show_problem(""); };
    connections_ = {StepBox.text.changed.connect(another_choice),
                    NumberTags.checked.changed.connect(another_choice),
                    Command1.clicked.connect([this] { accept(); }),
                    Command2.clicked.connect([this] { closed(); })};
}

void FillSeries::accept() {
    FilledRows result;
    if (const auto step = step_from_text(StepBox.text.get())) {
        result = filled(rows_, {*step, NumberTags.checked}, first_row_);
    } else {
        result.problem = "A step is a number of kHz with at most 5 decimals, such as -6.25.";
    }
    show_problem(result.problem);
    if (!result.problem.empty()) {
        StepBox.focus_wanted();
        return;
    }
    wanted_ = std::move(result);
    closed();
}

void FillSeries::show_problem(const std::string& problem) {
    ProblemLabel.caption = problem;
    ProblemLabel.visible = !problem.empty();
}

}  // namespace memwright
