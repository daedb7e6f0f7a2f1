#include "app/find_line.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/charset.h"
#include "table/cell_rules.h"
#include "table/columns.h"

namespace memwright {
namespace {

using namespace columns;
using finding::Find;
using finding::Finds;
using finding::Step;

constexpr const char* kNothingFound = "No memory found.";
constexpr const char* kFromTop = ", from the top";
constexpr const char* kFromBottom = ", from the bottom";

std::string tags_changed(std::size_t number) {
    if (number == 0) return "No tag changed.";
    return number == 1 ? "1 tag changed." : std::to_string(number) + " tags changed.";
}

}  // namespace

FindLine::FindLine(Form1& form, RowOperations& rows, CellPlaces& cells, Events& events,
                   Notices& notices)
    : form_(form), rows_(rows), cells_(cells), notices_(notices) {
    previous.caption = "&Previous";
    next.caption = "&Next";
    replace.caption = "&Replace";
    replace_all.caption = "Replace &All";
    mark_all.caption = "&Mark All";
    replacement.key_press = [](char& character) { return cell_rules::takes(kTag, "", character); };
    connect_controls(events);
    follow_table();
}

void FindLine::connect_controls(Events& events) {
    AddedEntries& entries = form_.added;
    events.connect(entries.find.clicked, "Find", [this] { open(); });
    for (Signal<>* signal : {&entries.find_next.clicked, &next.clicked}) {
        events.connect(*signal, "Find", [this] { go_on(finding::after, kFromTop); });
    }
    for (Signal<>* signal : {&entries.find_previous.clicked, &previous.clicked}) {
        events.connect(*signal, "Find", [this] { go_on(finding::before, kFromBottom); });
    }
    events.connect(query.edited, "Find", [this] { typed(); });
    events.connect(replace.clicked, "Replace", [this] { replace_one(); });
    events.connect(replace_all.clicked, "Replace", [this] { replace_everywhere(); });
    events.connect(mark_all.clicked, "Mark All", [this] { mark_everything(); });
    events.connect(close.clicked, "Close Find", [this] { shut(); });
}

// Without a table there is nothing to be found.
void FindLine::follow_table() {
    MSFlexGrid& grid = form_.MSFlexGrid1;
    const auto follow_state = [this, &grid] {
        AddedEntries& entries = form_.added;
        for (Control* control : std::initializer_list<Control*>{
                 &query, &replacement, &count, &previous, &next, &replace, &replace_all, &mark_all,
                 &close, &entries.find, &entries.find_next, &entries.find_previous}) {
            control->enabled = grid.enabled.get();
        }
    };
    follow_state();
    connections_ = {grid.enabled.changed.connect(follow_state),
                    grid.changed.connect([this](const GridChange&) {
                        if (shown) look();
                    }),
                    grid.current_changed.connect([this] {
                        start_row_ = form_.MSFlexGrid1.Row();
                        if (shown) show_count();
                    })};
}

void FindLine::open() {
    open_quietly();
    query.focus_wanted();
    say_count();
}

void FindLine::open_quietly() {
    form_.TxtGrid.visible = false;
    form_.CboGrid.visible = false;
    if (shown) {
        show_count();
        return;
    }
    start_row_ = form_.MSFlexGrid1.Row();
    shown = true;
    look();
}

void FindLine::shut() {
    shown = false;
    finds_.clear();
    found_rows = std::vector<int>{};
}

void FindLine::typed() {
    look();
    const int start = start_row_;
    if (!go_to(finds_, finding::from(finds_, start), kFromTop)) say_count();
    // A longer text is looked for from where the shorter one was.
    start_row_ = start;
}

void FindLine::go_on(StepFrom step, const char* round) {
    open_quietly();
    if (query.text.get().empty()) {
        query.focus_wanted();
    } else if (!go_to(finds_, step(finds_, form_.MSFlexGrid1.Row()), round)) {
        say_count();
    }
}

// All that the query finds in the table as it is now.
void FindLine::look() {
    finds_ = finding::finds_of(form_.MSFlexGrid1, query.text.get());
    std::vector<int> rows;
    std::ranges::transform(finds_, std::back_inserter(rows), &Find::row);
    found_rows = std::move(rows);
    show_count();
}

// False if there is nowhere to go.
bool FindLine::go_to(const Finds& finds, const std::optional<Step>& step, const char* round) {
    if (!step) return false;
    const Find& find = finds[step->number];
    MSFlexGrid& grid = form_.MSFlexGrid1;
    grid.set_row(find.row);
    grid.set_col(find.col);
    cells_.show_cell();
    start_row_ = find.row;
    show_count(step->round ? round : "");
    notices_.say(count.caption.get() + ": " + utf8_from_radio(grid.TextMatrix(find.row, kLabel)));
    return true;
}

void FindLine::show_count(const std::string& addition) {
    const auto here = std::ranges::find(finds_, form_.MSFlexGrid1.Row(), &Find::row);
    const std::string all = std::to_string(finds_.size());
    if (query.text.get().empty()) {
        count.caption = "";
    } else if (finds_.empty()) {
        count.caption = kNothingFound;
    } else if (here == finds_.end()) {
        count.caption = all + " found";
    } else {
        count.caption = std::to_string(here - finds_.begin() + 1) + " of " + all + addition;
    }
}

void FindLine::say_count() {
    if (!count.caption.get().empty()) notices_.say(count.caption);
}

bool FindLine::in_tag(const Find& find) const {
    return finding::has_text(form_.MSFlexGrid1.TextMatrix(find.row, kTag), query.text.get());
}

Finds FindLine::finds_in_tags() const {
    Finds finds;
    std::ranges::copy_if(finds_, std::back_inserter(finds),
                         [this](const Find& find) { return in_tag(find); });
    return finds;
}

// True if that changed the tag.
bool FindLine::replace_in(const Find& find) {
    MSFlexGrid& grid = form_.MSFlexGrid1;
    const std::string before = grid.TextMatrix(find.row, kTag);
    grid.set_text(find.row, kTag,
                  finding::with_text_replaced(before, query.text.get(), replacement.text.get()));
    return grid.TextMatrix(find.row, kTag) != before;
}

// In the current find's tag, and on to the next one. From a row that is none, only on.
void FindLine::replace_one() {
    open_quietly();
    const int row = form_.MSFlexGrid1.Row();
    std::size_t changed = 0;
    for (const Find& find : finds_in_tags()) {
        if (find.row == row && replace_in(find)) ++changed;
    }
    const Finds left = finds_in_tags();
    if (go_to(left, finding::after(left, row), kFromTop)) return;
    show_count();
    if (changed > 0 || !finds_.empty()) count.caption = tags_changed(changed);
    say_count();
}

void FindLine::replace_everywhere() {
    open_quietly();
    const Finds finds = finds_in_tags();
    std::size_t changed = 0;
    {
        const MSFlexGrid::Batch batch(form_.MSFlexGrid1);
        for (const Find& find : finds) {
            if (replace_in(find)) ++changed;
        }
    }
    if (!query.text.get().empty()) count.caption = tags_changed(changed);
    say_count();
}

// As if the labels of the first and the last row had been dragged over.
void FindLine::mark_everything() {
    open_quietly();
    if (const auto block = finding::block_of(finds_)) {
        MSFlexGrid& grid = form_.MSFlexGrid1;
        grid.set_row(block->first);
        grid.set_col(kTag);
        cells_.show_cell();
        grid.set_col(kLabel);
        rows_.MSFlexGrid1_MouseUp(MouseButton::left, {block->last, kLabel});
        const auto number = std::to_string(finds_.size());
        count.caption = finds_.size() == 1 ? "1 row marked." : number + " rows marked.";
    } else if (!finds_.empty()) {
        count.caption = "Not marked: rows lie apart.";
    }
    say_count();
}

}  // namespace memwright
