#include "app/row_commands.h"

#include <algorithm>
#include <array>
#include <utility>

#include "app/move_to.h"
#include "image/image_codec.h"
#include "table/choice_lists.h"

namespace memwright {
namespace {

using namespace columns;

constexpr const char* kAbout = "row commands";

int bank_of(int row) { return (row - 1) / layout::kMemoriesPerBank; }

int last_row_of_bank(int bank) { return (bank + 1) * layout::kMemoriesPerBank; }

std::string name_of_row(int row) {
    return memory_name(bank_of(row), (row - 1) % layout::kMemoriesPerBank);
}

}  // namespace

RowCommands::RowCommands(Work work, Events& events, Notices& notices)
    : work_(work),
      added_(work.form.added),
      grid_(work.form.MSFlexGrid1),
      events_(events),
      notices_(notices) {
    fill_lists();
    connect_commands();
    const auto show_entries = [this] {
        for (MenuEntry* entry : entries()) entry->enabled = grid_.enabled.get();
    };
    show_entries();
    connections_.push_back(grid_.enabled.changed.connect(show_entries));
    // What was said is about the table as it was.
    connections_.push_back(
        grid_.changed.connect([this](const GridChange&) { take_notice_back(); }));
    connections_.push_back(grid_.marked_rows.changed.connect([this] { take_notice_back(); }));
}

std::vector<MenuEntry*> RowCommands::entries() {
    return {&added_.insert_row, &added_.close_up, &added_.sort_rows, &added_.fill_series,
            &added_.move_to,    &added_.set_mode, &added_.set_pref};
}

void RowCommands::fill_lists() {
    added_.sort_rows.items = {"By &Frequency", "By &Tag", "By &Mode"};
    // In the order of the columns' lists of choices.
    added_.set_mode.items = {"&NFM", "&WFM", "&AM"};
    added_.set_pref.items = {"&Off", "O&n"};
}

void RowCommands::connect_commands() {
    const auto connect = [this](Signal<>& clicked, const char* command,
                                const Events::Procedure& procedure) {
        connections_.push_back(
            clicked.connect([this, command, procedure] { run(command, procedure); }));
    };
    connect(added_.insert_row.clicked, "Insert Row", [this] { insert_row(); });
    connect(added_.close_up.clicked, "Close Up", [this] {
        arrange("to close up", [](TableRows rows) { return closed_up(std::move(rows)); });
    });
    connect(added_.fill_series.clicked, "Fill Series", [this] { fill_series(); });
    connect(added_.move_to.clicked, "Move To", [this] { move_to(); });
    connect_choice(added_.sort_rows, [this](std::size_t choice) {
        constexpr std::array<std::pair<const char*, SortKey>, 3> kOrders = {
            {{"Sort by Frequency", SortKey::frequency},
             {"Sort by Tag", SortKey::tag},
             {"Sort by Mode", SortKey::mode}}};
        const auto& [command, key] = kOrders.at(choice);
        run(command, [this, by = key] {
            arrange("to sort", [by](TableRows rows) { return sorted(std::move(rows), by); });
        });
    });
    connect_choice(added_.set_mode, [this](std::size_t choice) {
        run("Set Mode", [this, choice] { set_column(kMode, choice); });
    });
    connect_choice(added_.set_pref, [this](std::size_t choice) {
        run("Set Pref", [this, choice] { set_column(kPref, choice); });
    });
}

void RowCommands::connect_choice(MenuChoice& choice,
                                 const std::function<void(std::size_t)>& choose) {
    connections_.push_back(choice.picked.connect(choose));
}

// Nothing while the table is locked, whatever wants it: a notice's action can be taken then.
void RowCommands::run(const std::string& command, const Events::Procedure& procedure) {
    if (!grid_.enabled) return;
    events_.run(command, [&] {
        take_notice_back();
        work_.form.TxtGrid.visible = false;
        work_.form.CboGrid.visible = false;
        procedure();
    });
}

void RowCommands::say(Notice notice) {
    notice.about = kAbout;
    notices_.add(std::move(notice));
    said_ = true;
}

void RowCommands::take_notice_back() {
    if (std::exchange(said_, false)) notices_.withdraw(kAbout);
}

void RowCommands::insert_row() {
    const int row = grid_.Row();
    if (row == 0) {
        say({.text = "To insert a row, choose the memory where it is to be."});
        return;
    }
    const int bank = bank_of(row);
    const auto in_bank = first_empty(rows_of({row + 1, last_row_of_bank(bank)}));
    if (in_bank) {
        insert_at(row, row + 1 + *in_bank);
        return;
    }
    const int below = last_row_of_bank(bank) + 1;
    const auto in_table = first_empty(rows_of({below, kRows - 1}));
    if (!in_table) {
        say({.text = "No row is inserted: no memory below " + name_of_row(row) + " is empty."});
        return;
    }
    say({.text = "No row is inserted: bank " + std::to_string(bank) +
                 " has no empty memory below " + name_of_row(row) + ". The next one is " +
                 name_of_row(below + *in_table) + ".",
         .action = "Shift into &Next Bank",
         .act = [this, row] { run("Insert Row", [this, row] { shift_into_next_bank(row); }); }});
}

void RowCommands::shift_into_next_bank(int row) {
    const auto empty = first_empty(rows_of({row + 1, kRows - 1}));
    if (empty) insert_at(row, row + 1 + *empty);
}

void RowCommands::insert_at(int row, int empty_row) {
    put(row, with_first_inserted(rows_of({row, empty_row})));
    grid_.set_row(row);
}

void RowCommands::fill_series() {
    const RowRange rows = marked();
    if (rows.last <= rows.first) {
        say({.text = "Mark the row that the series begins with, and the rows to fill, in the label "
                     "column first."});
        return;
    }
    TableRows before = rows_of(rows);
    if (before.front().is_empty()) {
        say({.text = "Row " + std::to_string(rows.first) +
                     ", the first of the marked ones, has no frequency to go on from."});
        return;
    }
    FillSeries dialog(std::move(before), rows.first, series_);
    work_.dialogs.show_modal(dialog);
    if (!dialog.wanted()) return;
    series_ = dialog.choices();
    put(rows.first, dialog.wanted()->rows);
    if (dialog.wanted()->blocked > 0) {
        say({.text = "Frequencies that the radio cannot receive: " +
                     std::to_string(dialog.wanted()->blocked) +
                     ". They are now at the upper edges of their ranges."});
    }
}

void RowCommands::move_to() {
    if (!has_marked("to move")) return;
    MoveTo dialog(marked());
    work_.dialogs.show_modal(dialog);
    if (!dialog.wanted()) return;
    const RowMove& move = *dialog.wanted();
    const RowRange target = move.target();
    const bool overwrites = move.kind == RowMove::Kind::overwrite && !move.overlaps();
    if (overwrites && !work_.rows.may_overwrite(target.first, target.last)) return;
    put(move.extent().first, moved(rows_of(move.extent()), move));
    work_.rows.select(target.first, target.last);
    grid_.set_row(target.first);
    grid_.rows_wanted(target.last, target.first);
}

bool RowCommands::has_marked(const std::string& purpose) {
    if (marked().first <= marked().last) return true;
    say({.text = "Mark the rows " + purpose + " in the label column first."});
    return false;
}

void RowCommands::arrange(const std::string& purpose, const Arrange& arranged) {
    if (has_marked(purpose)) put(marked().first, arranged(rows_of(marked())));
}

void RowCommands::set_column(int col, std::size_t choice) {
    arrange("to set", [&](TableRows rows) {
        if (std::ranges::all_of(rows, &TableRow::is_empty)) {
            say({.text = "Nothing is set: none of the marked rows has a frequency."});
        }
        return with_text(std::move(rows), col, choices_of(col).at(choice));
    });
}

RowRange RowCommands::marked() const {
    const RowRange& rows = grid_.marked_rows;
    return {std::max(rows.first, 1), rows.last};
}

TableRows RowCommands::rows_of(const RowRange& range) const {
    TableRows rows;
    for (int row = range.first; row <= range.last; ++row) {
        TableRow& copy = rows.emplace_back();
        for (int col = kTag; col < kCount; ++col) copy.at(col) = grid_.cell(row, col);
    }
    return rows;
}

void RowCommands::put(int first, const TableRows& rows) {
    const MSFlexGrid::Batch batch(grid_);
    int row = first;
    for (TableRow changed : rows) {
        for (int col = kTag; col < kCount; ++col) {
            grid_.set_text(row, col, std::move(changed.at(col).text));
            grid_.set_colour(row, col, changed.at(col).colour);
        }
        ++row;
    }
}

}  // namespace memwright
