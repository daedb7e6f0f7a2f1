#pragma once

// The commands of the Edit Channels menu that insert, arrange, fill and set whole rows
// (table/row_arrangement.h, table/frequency_series.h). All but Insert Row, which works at the
// current row, work on the marked rows; without any they say so in a notice. Each is one step of
// the history.

#include <functional>
#include <string>
#include <vector>

#include "app/dialog_views.h"
#include "app/events.h"
#include "app/fill_series.h"
#include "app/form1.h"
#include "app/notices.h"
#include "table/row_arrangement.h"
#include "table/row_operations.h"

namespace memwright {

class RowCommands {
  public:
    struct Work {
        Form1& form;
        RowOperations& rows;
        DialogViews& dialogs;
    };

    RowCommands(Work work, Events& events, Notices& notices);

  private:
    // Gives back what the marked rows become.
    using Arrange = std::function<TableRows(TableRows)>;

    void fill_lists();
    void connect_commands();
    void connect_choice(MenuChoice& choice, const std::function<void(std::size_t)>& choose);
    void run(const std::string& command, const Events::Procedure& procedure);
    void say(Notice notice);
    void take_notice_back();

    void insert_row();
    void shift_into_next_bank(int row);
    void insert_at(int row, int empty_row);
    void fill_series();
    void move_to();
    void arrange(const std::string& purpose, const Arrange& arranged);
    void set_column(int col, std::size_t choice);

    std::vector<MenuEntry*> entries();
    RowRange marked() const;
    bool has_marked(const std::string& purpose);
    TableRows rows_of(const RowRange& range) const;
    void put(int first, const TableRows& rows);

    Work work_;
    AddedEntries& added_;
    MSFlexGrid& grid_;
    Events& events_;
    Notices& notices_;
    FillSeries::Choices series_;  // as last chosen
    bool said_ = false;           // a notice of these commands may be waiting
    std::vector<Connection> connections_;
};

}  // namespace memwright
