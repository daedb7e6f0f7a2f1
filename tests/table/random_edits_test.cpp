// Ten thousand random keys, clicks, menu commands, edits and rebuilds, as a window could send them.
// Whatever they do, the table stays a table.

#include <array>

#include "fakes/seeded_random.h"
#include "image/frequency_text.h"
#include "table/editing_test.h"

namespace memwright {
namespace {

using namespace columns;

class RandomEdits : public EditingTest {
  protected:
    RandomEdits() {
        for (int row = 0; row <= kLastRow; ++row) labels.push_back(text(row, 0));
        for (int col = 0; col < 15; ++col) headings.push_back(text(0, col));
    }

    int any_row() { return edge_rows[static_cast<std::size_t>(random.between(0, 11))]; }
    int near_row() { return std::clamp(grid.Row() + random.between(-3, 3), 0, kLastRow); }
    int some_row() {
        switch (random.between(0, 2)) {
            case 0:
                return any_row();
            case 1:
                return near_row();
            default:
                return random.between(0, kLastRow);
        }
    }
    int some_col() {
        constexpr std::array kOften = {kLabel, kTag, kFreq, kFreq, kMode, kMasked};
        return random.coin() ? kOften[static_cast<std::size_t>(random.between(0, 5))]
                             : random.between(0, 14);
    }
    MouseButton some_button() {
        constexpr std::array kButtons = {MouseButton::left, MouseButton::left, MouseButton::right,
                                         MouseButton::other};
        return kButtons[static_cast<std::size_t>(random.between(0, 3))];
    }

    // Whatever takes the focus away from an overlay hides it.
    void focus_elsewhere() {
        if (TxtGrid.visible) editor.TxtGrid_LostFocus();
        if (CboGrid.visible) editor.CboGrid_LostFocus();
    }

    void use_the_mouse() {
        focus_elsewhere();
        const MouseButton button = some_button();
        const MouseCell from{some_row(), some_col()};
        const MouseCell to = random.coin() ? from : MouseCell{some_row(), some_col()};
        editor.MSFlexGrid1_MouseDown(button, from);
        rows.MSFlexGrid1_MouseUp(button, to);
        editor.MSFlexGrid1_Click();
        if (random.coin()) editor.MSFlexGrid1_DblClick();
    }

    void press_a_key() {
        if (!TxtGrid.visible && !CboGrid.visible) return;
        constexpr std::array kKeys = {Key::tab,  Key::tab,  Key::enter, Key::up,
                                      Key::down, Key::left, Key::right, Key::other};
        TxtGrid.caret = static_cast<std::size_t>(
            random.between(0, static_cast<int>(TxtGrid.text.get().size())));
        press(kKeys[static_cast<std::size_t>(random.between(0, 7))], random.coin());
    }

    void type_something() {
        if (CboGrid.visible) {
            const auto& items = CboGrid.items.get();
            const int which = random.between(0, static_cast<int>(items.size()) - 1);
            if (random.coin()) {
                pick(items[static_cast<std::size_t>(which)]);
            } else {
                type_in_list(random.text("NFMtrueTrue 1.", 6));
            }
        } else if (TxtGrid.visible) {
            const std::string before = TxtGrid.text;
            if (random.coin()) TxtGrid.text = "";
            type_or_insert();
            typed_frequency = grid.Col() == kFreq && TxtGrid.text.get() != before;
        }
    }

    void type_or_insert() {
        std::string bytes(static_cast<std::size_t>(random.between(1, 8)), ' ');
        for (char& c : bytes) c = static_cast<char>(random.byte());
        switch (random.between(0, 2)) {
            case 0:
                type(random.text("0123456789.aZ(#\xE9", 12));
                break;
            case 1:
                insert(random.text("0123456789.-+eEdD&H ", 10));
                break;
            default:
                insert(bytes);
                break;
        }
    }

    void work_on_rows() {
        focus_elsewhere();
        if (random.between(0, 3) == 0) go_to(some_row(), some_col());
        constexpr std::array<void (RowOperations::*)(), 9> kOperations = {
            &RowOperations::mnuEdit_Click,  &RowOperations::mnuCut_Click,
            &RowOperations::mnuCopy_Click,  &RowOperations::mnuPaste_Click,
            &RowOperations::mnuPaste_Click, &RowOperations::Command1_Click,
            &RowOperations::Command2_Click, &RowOperations::Command3_Click,
            &RowOperations::Command4_Click};
        messages.answers.assign(1, random.coin() ? Answer::yes : Answer::no);
        const CountedSignals changes(grid);
        (rows.*kOperations[static_cast<std::size_t>(random.between(0, 8))])();
        EXPECT_LE(changes.count, 1);
    }

    void do_something_else() {
        switch (random.between(0, 29)) {
            case 0:
                rows.Command5_Click();
                break;
            case 1:
                table.IsDataChanged();
                break;
            case 2:
                editor.MSFlexGrid1_Scroll();
                break;
            case 3:
                focus_elsewhere();
                rows.reset_buffer();
                break;
            case 4:
                grid.left = random.between(0, 3000);
                editor.place_overlays();
                break;
            default:
                editor.MSFlexGrid1_DblClick();
                break;
        }
    }

    void step() {
        typed_frequency = false;
        const int what = random.between(0, 99);
        if (what < 15) {
            use_the_mouse();
        } else if (what < 40) {
            press_a_key();
        } else if (what < 75) {
            type_something();
        } else if (what < 85) {
            work_on_rows();
        } else {
            do_something_else();
        }
    }

    void check_table() const {
        ASSERT_EQ(grid.Rows(), 641);
        ASSERT_EQ(grid.Cols(), 15);
        ASSERT_TRUE(grid.Redraw());
        ASSERT_EQ(wrong_cell(), "");
    }

    // Plain comparisons: this runs over ten thousand cells after each of ten thousand steps.
    std::string wrong_cell() const {
        for (int row = 0; row <= kLastRow; ++row) {
            const Colour colour = grid.colour(row, 1);
            bool right = grid.TextMatrix(row, 0) == labels[static_cast<std::size_t>(row)] &&
                         grid.colour(row, 0) == 0 && (colour == 0 || (row > 0 && colour == kGrey));
            for (int col = 2; col < 15; ++col) right = right && grid.colour(row, col) == colour;
            if (!right) return "row " + std::to_string(row);
        }
        for (int col = 1; col < 15; ++col) {
            if (grid.TextMatrix(0, col) != headings[static_cast<std::size_t>(col)]) {
                return "heading " + std::to_string(col);
            }
        }
        return "";
    }

    void check_selection() const {
        const int top = rows.SelTop();
        const int bottom = rows.SelBottom();
        ASSERT_TRUE(0 <= top && top <= bottom && bottom <= kLastRow) << top << " to " << bottom;
        for (const int row : {0, 1, top - 1, top, bottom, bottom + 1, kLastRow}) {
            ASSERT_EQ(grid.is_marked(row), row > 0 && row >= top && row <= bottom);
        }
        ASSERT_LE(rows.RowBuffer().size(), 640U);
        for (const auto& record : rows.RowBuffer()) {
            for (std::size_t i = 4; i < record.size(); ++i) ASSERT_EQ(record[i], "");
        }
    }

    void check_overlays() {
        ASSERT_FALSE(TxtGrid.visible && CboGrid.visible);
        if (!TxtGrid.visible && !CboGrid.visible) return;
        const int col = grid.Col();
        ASSERT_TRUE(grid.Row() > 0 && col > 0);
        const bool as_text = col < 3 || col == 8 || col == 14;
        ASSERT_EQ(TxtGrid.visible.get(), as_text);
        const PlacedControl& overlay =
            as_text ? static_cast<const PlacedControl&>(TxtGrid) : CboGrid;
        const double inset = as_text ? 40 : 0;
        const auto cell = places.current_cell();
        ASSERT_EQ(overlay.left.get(), grid.left + cell.left + inset);
        ASSERT_EQ(overlay.top.get(), grid.top + cell.top + inset);
        if (typed_frequency) {
            std::string typed = TxtGrid.text;
            ASSERT_EQ(text(grid.Row(), kFreq), FormatFreq(typed)) << TxtGrid.text.get();
            ASSERT_NE(text(grid.Row(), kMode), "");
        }
        ASSERT_TRUE(col != kTag || TxtGrid.text.get().size() <= 6);
    }

    void count() {
        seen.text_boxes += TxtGrid.visible ? 1 : 0;
        seen.lists += CboGrid.visible ? 1 : 0;
        seen.frequencies += typed_frequency ? 1 : 0;
        seen.grey_rows += grid.colour(grid.Row(), 1) == kGrey ? 1 : 0;
        seen.questions += messages.shown.empty() ? 0 : 1;
    }

    SeededRandom random;
    std::vector<std::string> labels;
    std::vector<std::string> headings;
    bool typed_frequency = false;  // in this step
    struct Seen {
        int text_boxes = 0;
        int lists = 0;
        int frequencies = 0;
        int grey_rows = 0;
        int questions = 0;
    } seen;  // a walk that meets none of these shows nothing
    static constexpr std::array<int, 12> edge_rows = {0,   1,   2,   3,   239, 240,
                                                      241, 499, 500, 501, 639, 640};
};

TEST_F(RandomEdits, leave_the_table_a_table) {
    for (int i = 0; i < 10000; ++i) {
        SCOPED_TRACE("step " + std::to_string(i));
        messages.shown.clear();
        ASSERT_NO_THROW(step());
        check_table();
        check_selection();
        check_overlays();
        ASSERT_NO_THROW(table.SaveVR120Data());
        if (HasFailure()) return;
        count();
    }
    EXPECT_GT(seen.text_boxes, 500);
    EXPECT_GT(seen.lists, 500);
    EXPECT_GT(seen.frequencies, 100);
    EXPECT_GT(seen.grey_rows, 10);
    EXPECT_GT(seen.questions, 5);
    EXPECT_GT(pop_ups, 5);
}

}  // namespace
}  // namespace memwright
