#include "table/edit_names.h"

#include <algorithm>
#include <string_view>

#include "base/number_text.h"
#include "table/columns.h"

namespace memwright {

std::string rows_text(const RowRange& rows) {
    const int first = std::max(rows.first, 1);
    if (rows.last <= first) return "row " + std::to_string(first);
    return "rows " + std::to_string(first) + "-" + std::to_string(rows.last);
}

namespace {

// What a command that arranges or sets whole rows is called; "" for any other.
std::string name_of_row_command(const Edit& step) {
    constexpr std::string_view kSort = "Sort by ";
    const std::string rows = rows_text(step.selected_before.marked);
    const std::string& command = step.command;
    if (command == "Insert Row") return "Insert row " + std::to_string(step.selected_after.row);
    if (command == "Close Up") return "Close up " + rows;
    if (command.starts_with(kSort)) {
        return "Sort " + rows + " by " + lower_case(command.substr(kSort.size()));
    }
    if (command == "Fill Series") return "Fill " + rows;
    if (command == "Move To") {
        return "Move " + rows + " to row " + std::to_string(step.selected_after.marked.first);
    }
    if (command == "Set Mode") return "Set mode of " + rows;
    if (command == "Set Pref") return "Set pref of " + rows;
    return "";
}

}  // namespace

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
    const std::string row_command = name_of_row_command(step);
    return row_command.empty() ? step.command : row_command;
}

}  // namespace memwright
