#include "app/move_to.h"

#include "base/number_text.h"
#include "image/layout.h"
#include "table/edit_names.h"

namespace memwright {
namespace {

std::vector<std::string> numbers_below(int end) {
    std::vector<std::string> numbers;
    for (int number = 0; number < end; ++number) numbers.push_back(std::to_string(number));
    return numbers;
}

int number_in(const ComboBox& list) { return whole_number(list.text.get()).value_or(0); }

}  // namespace

MoveTo::MoveTo(const RowRange& block) : block_(block) {
    RowsLabel.caption = "Move " + rows_text(block) + " to:";
    BankList.items = numbers_below(layout::kBanks);
    MemoryList.items = numbers_below(layout::kMemoriesPerBank);
    BankList.text = std::to_string((block.first - 1) / layout::kMemoriesPerBank);
    MemoryList.text = std::to_string((block.first - 1) % layout::kMemoriesPerBank);
    SwapOption.caption = "&Swap with what is there";
    SwapOption.selected = true;
    OverwriteOption.caption = "O&verwrite what is there";
    Command1.caption = "&OK";
    Command2.caption = "&Cancel";
    show_problem("");
    const auto another_choice = [this] { show_problem(""); };
    connections_ = {BankList.text.changed.connect(another_choice),
                    MemoryList.text.changed.connect(another_choice),
                    OverwriteOption.selected.changed.connect(another_choice),
                    Command1.clicked.connect([this] { accept(); }),
                    Command2.clicked.connect([this] { closed(); })};
}

void MoveTo::accept() {
    const RowMove move{block_,
                       number_in(BankList) * layout::kMemoriesPerBank + number_in(MemoryList) + 1,
                       OverwriteOption.selected ? RowMove::Kind::overwrite : RowMove::Kind::swap};
    show_problem(move.problem());
    if (!move.problem().empty()) {
        BankList.focus_wanted();
        return;
    }
    wanted_ = move;
    closed();
}

void MoveTo::show_problem(const std::string& problem) {
    ProblemLabel.caption = problem;
    ProblemLabel.visible = !problem.empty();
}

}  // namespace memwright
