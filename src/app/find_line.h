#pragma once

// The line that finds memories of the table and replaces texts in tags: its controls, and what they
// do. What is found becomes the current cell; nothing is filtered away. Its texts that are typed
// are in the radio's character set. What a query means is told by table/finding.h.

#include <optional>
#include <string>
#include <vector>

#include "app/events.h"
#include "app/form1.h"
#include "app/notices.h"
#include "table/cell_editor.h"
#include "table/finding.h"
#include "table/row_operations.h"

namespace memwright {

class FindLine {
  public:
    FindLine(Form1& form, RowOperations& rows, CellPlaces& cells, Events& events, Notices& notices);
    FindLine(const FindLine&) = delete;
    FindLine& operator=(const FindLine&) = delete;

    Property<bool> shown{false};
    TextBox query{"FindText"};
    TextBox replacement{"FindReplacement"};
    Label count{"FindCount"};  // how many finds there are, and what was done with them
    CommandButton previous{"FindPrevious"};
    CommandButton next{"FindNext"};
    CommandButton replace{"FindReplace"};
    CommandButton replace_all{"FindReplaceAll"};
    CommandButton mark_all{"FindMarkAll"};
    CommandButton close{"FindClose"};

    // The rows of the finds, in order, as long as the line is shown.
    Property<std::vector<int>> found_rows;

  private:
    using StepFrom = std::optional<finding::Step> (*)(const finding::Finds&, int row);

    void connect_controls(Events& events);
    void follow_table();
    void open();
    void open_quietly();
    void typed();
    void go_on(StepFrom step, const char* round);
    void replace_one();
    void replace_everywhere();
    void mark_everything();
    void shut();

    void look();
    bool go_to(const finding::Finds& finds, const std::optional<finding::Step>& step,
               const char* round);
    void show_count(const std::string& addition = "");
    void say_count();
    bool in_tag(const finding::Find& find) const;
    finding::Finds finds_in_tags() const;
    bool replace_in(const finding::Find& find);

    Form1& form_;
    RowOperations& rows_;
    CellPlaces& cells_;
    Notices& notices_;
    finding::Finds finds_;
    int start_row_ = 0;  // from which what is typed is found
    std::vector<Connection> connections_;
};

}  // namespace memwright
