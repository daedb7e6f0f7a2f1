#include "table/edit_names.h"

#include <algorithm>

#include "table/columns.h"

namespace memwright {

std::string rows_text(const RowRange& rows) {
    const int first = std::max(rows.first, 1);
    if (rows.last <= first) return "row " + std::to_string(first);
    return "rows " + std::to_string(first) + "-" + std::to_string(rows.last);
}

std::string name_of(const Edit& step) {
    const RowRange& before = step.selected_before.marked;
    const RowRange& after = step.selected_after.marked;
    const std::string row = "row " + std::to_string(step.selected_after.row);
    const auto column = [&] {
        const auto col = static_cast<std::size_t>(step.selected_after.col);
        return std::string(columns::kColumns[col].heading);
    };
    if (step.command == "Type" || step.command == "Choose") {
        return "Change " + column() + " of " + row;
    }
    if (step.command == "Copy Value") return "Copy " + column() + " to " + row;
    if (step.command == "Cut" || step.command == "Delete") {
        return step.command + " " + rows_text(before);
    }
    if (step.command == "Paste") return "Paste " + rows_text(after);
    if (step.command == "Move Up" || step.command == "Move Down") {
        return "Move " + rows_text(before) + (after.first < before.first ? " up" : " down");
    }
    return step.command;
}

}  // namespace memwright
