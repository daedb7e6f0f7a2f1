#pragma once

// The commands of the Edit Channels menu that insert, arrange and set whole rows
// (table/row_arrangement.h). All but Insert Row, which works at the current row, work on the marked
// rows; without any they say so in a notice. Each is one step of the history.

#include <functional>
#include <string>
#include <vector>

#include "app/events.h"
#include "app/form1.h"
#include "app/notices.h"
#include "table/row_arrangement.h"

namespace memwright {

class RowCommands {
  public:
    RowCommands(Form1& form, Events& events, Notices& notices);

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
    void arrange(const std::string& purpose, const Arrange& arranged);
    void set_column(int col, std::size_t choice);

    RowRange marked() const;
    TableRows rows_of(const RowRange& range) const;
    void put(int first, const TableRows& rows);

    Form1& form_;
    MSFlexGrid& grid_;
    Events& events_;
    Notices& notices_;
    bool said_ = false;  // a notice of these commands may be waiting
    std::vector<Connection> connections_;
};

}  // namespace memwright
