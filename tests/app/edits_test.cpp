// Ten thousand random commands through the window's own events: each is one edit that says no more
// than what it changed, and all of them can be taken back and done again.

#include <array>
#include <iterator>

#include "app/frm_limit_search.h"
#include "app/frm_misc_setting.h"
#include "app/runs_test.h"
#include "fakes/seeded_random.h"

namespace memwright {
namespace {

using namespace columns;

constexpr int kCommands = 10000;

// All that an edit is about.
struct Content {
    std::vector<GridCell> cells;
    MemoryImage image;
    int row = 0;
    int col = 0;
    RowRange marked;

    friend bool operator==(const Content&, const Content&) = default;
};

Content content_of(const EditRecorder& edits) {
    const MSFlexGrid& grid = edits.grid();
    Content content{{}, edits.image().MemoryImage, grid.Row(), grid.Col(), grid.marked_rows};
    for (int row = 0; row < grid.Rows(); ++row) {
        for (int col = 0; col < grid.Cols(); ++col) content.cells.push_back(grid.cell(row, col));
    }
    return content;
}

class Edits : public RunsTest {
  protected:
    void SetUp() override {
        run = start_with_a_file();
        watch = run->program.edits().edited.connect(
            [this](const Edit& edit) { edits.push_back(edit); });
        for (const char* name : {"one.120", "two.120"}) {
            Bytes bytes = RunsTest::bytes(radio::demonstration_memory());
            for (std::size_t i = 0; i < layout::kRadioSettings; ++i) bytes[i] = random.byte();
            folder.put(name, bytes);
        }
        run->views.in_settings = [this](frmMiscSetting& dialog) { choose_settings(dialog); };
        run->views.in_limits = [this](frmLimitSearch& dialog) { choose_limits(dialog); };
    }

    Form1& form() { return run->form; }
    MSFlexGrid& grid() { return form().MSFlexGrid1; }

    template <class List>
    const auto& any(const List& list) {
        return list[static_cast<std::size_t>(
            random.between(0, static_cast<int>(std::size(list)) - 1))];
    }
    int some_row() {
        return random.coin() ? random.between(0, 640)
                             : std::clamp(grid().Row() + random.between(-3, 3), 0, 640);
    }

    void close_editor() {
        if (form().TxtGrid.visible) form().TxtGrid.focus_lost();
        if (form().CboGrid.visible) form().CboGrid.focus_lost();
    }
    void use_the_mouse() {
        close_editor();
        constexpr std::array kButtons = {MouseButton::left, MouseButton::left, MouseButton::right};
        const MouseButton button = any(kButtons);
        const MouseCell from{some_row(), random.between(0, 4)};
        const MouseCell to{random.coin() ? from.row : some_row(), from.col};
        grid().mouse_down(button, from);
        grid().mouse_up(button, to);
        grid().clicked();
        if (random.coin()) grid().double_clicked();
    }
    void press_a_key() {
        constexpr std::array kKeys = {Key::tab, Key::enter, Key::up, Key::down, Key::right};
        TextBox& text = form().TxtGrid;
        text.caret = text.text.get().size();
        if (text.visible) text.key_down(any(kKeys), random.coin());
        if (form().CboGrid.visible) form().CboGrid.key_down(Key::tab, random.coin());
    }
    void type_or_choose() {
        if (form().TxtGrid.visible) {
            form().TxtGrid.text = random.text("0123456789.ABCxyz", 7);
        } else if (form().CboGrid.visible && !form().CboGrid.items.get().empty()) {
            ComboBox& list = form().CboGrid;
            list.text = random.coin() ? any(list.items.get()) : random.text("NFMAWOn", 4);
            random.coin() ? list.picked() : list.edited();
        } else {
            grid().double_clicked();
        }
    }
    void work_on_rows() {
        close_editor();
        const std::array<Signal<>*, 10> kCommandsOnRows = {
            &form().mnuCut.clicked,   &form().mnuCopy.clicked,  &form().mnuPaste.clicked,
            &form().mnuPaste.clicked, &form().Command1.clicked, &form().Command2.clicked,
            &form().Command3.clicked, &form().Command4.clicked, &form().Command1.clicked,
            &form().mnuPaste.clicked};
        run->messages.answers.assign(1, random.coin() ? Answer::yes : Answer::no);
        (*any(kCommandsOnRows))();
        run->messages.answers.clear();
    }

    void choose_settings(frmMiscSetting& dialog) {
        dialog.Combo1.text = any(dialog.Combo1.items.get());
        dialog.Check1[3].checked = random.coin();
        random.between(0, 3) == 0 ? dialog.Command2.clicked() : dialog.Command1.clicked();
    }
    void choose_limits(frmLimitSearch& dialog) {
        const auto n = static_cast<std::size_t>(random.between(0, 17));
        dialog.Text1[n].text = std::to_string(random.between(1, 1299)) + ".5";
        random.between(0, 3) == 0 ? dialog.Command2.clicked() : dialog.Command1.clicked();
    }
    void import() {
        std::string text = "Ch,MHz,Mode,Pref,Label\r\n";
        for (int line = random.between(0, 20); line > 0; --line) {
            text += std::to_string(random.between(0, 9) * 100 + random.between(0, 63)) + "," +
                    std::to_string(random.between(100, 1299)) + ".5,AM,p,\"" +
                    random.text("ABCDEF", 6) + "\"\r\n";
        }
        run->dialogs.names.emplace_back(folder.put("in.csv", Bytes(text.begin(), text.end())));
        form().mnuImport.clicked();
    }
    void open_a_file() {
        run->messages.answers = {Answer::no};
        run->program.open_named(folder.file(random.coin() ? "one.120" : "two.120"));
        run->messages.answers.clear();
    }
    void do_something_large() {
        close_editor();
        switch (random.between(0, 7)) {
            case 0:
                form().Command5.clicked();
                break;
            case 1:
                form().mnuMiscSettings.enabled = true;
                form().mnuMiscSettings.clicked();
                break;
            case 2:
                form().mnuSearchBandMem.clicked();
                break;
            case 3:
            case 4:
                import();
                break;
            case 5:
                open_a_file();
                break;
            default:
                form().mnuSaveOnly.clicked();
                break;
        }
    }

    void do_a_command() {
        const int what = random.between(0, 99);
        if (what < 15) {
            use_the_mouse();
        } else if (what < 40) {
            press_a_key();
        } else if (what < 80) {
            type_or_choose();
        } else if (what < 97) {
            work_on_rows();
        } else {
            do_something_large();
        }
    }

    void read_from_the_radio() {
        close_editor();
        form().mnuSaveOnly.clicked();
        run->messages.answers = {Answer::ok};
        form().mnuRead.clicked();
        EXPECT_EQ(form().Label1.caption.get(), "Read from VR-120 complete.");
    }

    // The edit says what differs, and nothing else.
    static void expect_same_size(const Edit& edit, const Content& before, const Content& after) {
        std::size_t cells = 0;
        for (std::size_t i = 0; i < before.cells.size(); ++i) {
            cells += before.cells[i] == after.cells[i] ? 0U : 1U;
        }
        std::size_t bytes = 0;
        for (int i = 0; i < layout::kImageSize; ++i) {
            bytes += before.image.get(i) == after.image.get(i) ? 0U : 1U;
        }
        EXPECT_EQ(edit.cells.size(), cells) << edit.command;
        EXPECT_EQ(edit.bytes.size(), bytes) << edit.command;
    }

    SeededRandom random;
    std::unique_ptr<Running> run;
    std::vector<Edit> edits;
    Connection watch;
};

TEST_F(Edits, of_ten_thousand_commands_are_taken_back_and_done_again) {
    EditRecorder& recorder = run->program.edits();
    // What was there before the n-th edit, of some.
    std::vector<std::pair<std::size_t, Content>> known = {{0, content_of(recorder)}};
    for (int n = 0; n < kCommands && !HasFailure(); ++n) {
        const bool looks = n % 50 == 0;
        const std::size_t count = edits.size();
        const Content before = looks ? content_of(recorder) : Content{};
        n % 2000 == 1999 ? read_from_the_radio() : do_a_command();
        if (!looks) continue;
        known.emplace_back(edits.size(), content_of(recorder));
        if (edits.size() == count + 1) {
            expect_same_size(edits.back(), before, known.back().second);
        }
    }
    for (const Edit& edit : edits) ASSERT_NE(edit.command, "") << "changed outside of a command";
    ASSERT_GT(edits.size(), 5000U);

    const std::vector<Edit> done = std::move(edits);
    edits.clear();
    const Content last = content_of(recorder);
    std::size_t left = done.size();
    for (auto there = known.rbegin(); there != known.rend(); ++there) {
        for (; left > there->first; --left) recorder.apply(done[left - 1].inverse());
        ASSERT_TRUE(content_of(recorder) == there->second) << "before edit " << left;
    }
    ASSERT_EQ(left, 0U);
    for (const Edit& edit : done) recorder.apply(edit);
    EXPECT_TRUE(content_of(recorder) == last);
}

// With steps taken back and done again in between, and files saved.
TEST_F(Edits, taken_back_step_by_step_end_where_the_last_file_was_opened) {
    EditHistory& history = run->program.history();
    Content opened = content_of(run->program.edits());
    int begun = 0;
    const auto watching = run->program.edits().edited.connect([&](const Edit& edit) {
        if (edit.command != "Open" || !history.steps().empty()) return;
        opened = content_of(run->program.edits());
        ++begun;
    });
    for (int n = 0; n < kCommands && !HasFailure(); ++n) {
        switch (random.between(0, 9)) {
            case 0:
                form().added.undo.clicked();
                break;
            case 1:
                form().added.redo.clicked();
                break;
            default:
                do_a_command();
        }
        if (n % 500 != 499) continue;
        const Content before = content_of(run->program.edits());
        const std::size_t done = history.done();
        ASSERT_LT(history.steps().size(), EditHistory::kMostSteps);
        while (history.done() > 0) form().added.undo.clicked();
        const Content first = content_of(run->program.edits());
        ASSERT_TRUE(first.cells == opened.cells) << n;
        ASSERT_EQ(first.image, opened.image) << n;
        while (history.done() < done) form().added.redo.clicked();
        ASSERT_TRUE(content_of(run->program.edits()).cells == before.cells) << n;
    }
    EXPECT_GT(begun, 3);
}

TEST_F(Edits, behind_a_transfer_are_edits_of_their_own) {
    run->messages.answers = {Answer::ok};
    bool typed = false;
    const auto typing = form().TransferProgress.percent.changed.connect([&] {
        if (typed || form().TransferProgress.percent < 50) return;
        typed = true;
        grid().mouse_down(MouseButton::left, {5, kTag});
        grid().mouse_up(MouseButton::left, {5, kTag});
        grid().double_clicked();
        form().TxtGrid.text = "LATE";
    });
    form().mnuRead.clicked();
    ASSERT_TRUE(typed);
    std::vector<std::string> commands;
    for (const Edit& edit : edits) {
        if (edit.changes_content()) commands.push_back(edit.command);
    }
    EXPECT_EQ(commands, (std::vector<std::string>{"Type", "Read"}));
}

}  // namespace
}  // namespace memwright
