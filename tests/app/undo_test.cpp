// Undo and Redo in the main window: their entries, what they do while an editor is open, and where
// a history begins.

#include <gmock/gmock.h>

#include "app/frm_misc_setting.h"
#include "app/runs_test.h"

namespace memwright {
namespace {

using namespace columns;
using testing::ElementsAre;

class UndoTest : public RunsTest {
  protected:
    void SetUp() override { run = start_with_a_file(); }

    Form1& form() { return run->form; }
    MSFlexGrid& grid() { return form().MSFlexGrid1; }
    void undo() { form().added.undo.clicked(); }
    void redo() { form().added.redo.clicked(); }
    std::string undo_caption() { return form().added.undo.caption; }
    std::string redo_caption() { return form().added.redo.caption; }
    std::vector<bool> enabled() { return {form().added.undo.enabled, form().added.redo.enabled}; }

    void click(int row, int col, MouseButton button = MouseButton::left) {
        grid().mouse_down(button, {row, col});
        grid().mouse_up(button, {row, col});
        grid().clicked();
    }
    void open(int row, int col) {
        click(row, col);
        grid().double_clicked();
    }
    void type(const std::string& text) {
        for (std::size_t n = 1; n <= text.size(); ++n) form().TxtGrid.text = text.substr(0, n);
    }
    void type_into(int row, int col, const std::string& text) {
        open(row, col);
        type(text);
    }
    void select(int first, int last) {
        grid().mouse_down(MouseButton::left, {first, kLabel});
        grid().mouse_up(MouseButton::left, {last, kLabel});
    }
    std::string cell(int row, int col) { return grid().TextMatrix(row, col); }

    std::unique_ptr<Running> run;
};

TEST_F(UndoTest, the_entries_say_which_step_they_take_back_or_do_again) {
    EXPECT_EQ(undo_caption(), "&Undo");
    EXPECT_EQ(redo_caption(), "&Redo");
    EXPECT_EQ(enabled(), (std::vector<bool>{false, false}));
    type_into(5, kTag, "AB");
    EXPECT_EQ(undo_caption(), "&Undo Change Tag of row 5");
    EXPECT_EQ(enabled(), (std::vector<bool>{true, false}));
    undo();
    EXPECT_EQ(undo_caption(), "&Undo");
    EXPECT_EQ(redo_caption(), "&Redo Change Tag of row 5");
    EXPECT_EQ(enabled(), (std::vector<bool>{false, true}));
    redo();
    EXPECT_EQ(cell(5, kTag), "AB");
}

TEST_F(UndoTest, in_an_opened_editor_takes_back_what_was_typed_there_and_stays_in_it) {
    type_into(5, kFreq, "145.5");
    type_into(6, kFreq, "146");
    undo();
    EXPECT_TRUE(form().TxtGrid.visible);
    EXPECT_EQ(form().TxtGrid.text.get(), "");
    EXPECT_EQ(cell(6, kMode), "");
    type("147");
    EXPECT_EQ(cell(6, kFreq), "147.00000");
    undo();
    undo();
    EXPECT_FALSE(form().TxtGrid.visible) << "the step before it is of another cell";
    EXPECT_EQ(cell(5, kFreq), "");
    EXPECT_EQ(grid().Row(), 5);
}

TEST_F(UndoTest, Escape_takes_back_what_was_typed_in_the_editor_that_it_closes) {
    type_into(5, kTag, "A");
    open(5, kTag);
    form().TxtGrid.escaped();
    form().TxtGrid.visible = false;
    EXPECT_EQ(cell(5, kTag), "A") << "nothing was typed since it was opened";
    type_into(5, kTag, "AB");
    form().TxtGrid.escaped();
    EXPECT_EQ(cell(5, kTag), "A");
    open(5, kMode);
    form().CboGrid.text = "AM";
    form().CboGrid.picked();
    form().CboGrid.escaped();
    EXPECT_EQ(cell(5, kMode), "");
}

TEST_F(UndoTest, takes_back_each_command_as_one_step) {
    type_into(5, kTag, "A");
    type_into(5, kFreq, "145.5");
    click(5, kFreq);
    click(9, kFreq, MouseButton::right);
    EXPECT_EQ(undo_caption(), "&Undo Copy Freq to row 9");
    select(5, 6);
    form().mnuCut.clicked();
    EXPECT_EQ(undo_caption(), "&Undo Cut rows 5-6");
    click(20, kTag);
    form().mnuPaste.clicked();
    EXPECT_EQ(undo_caption(), "&Undo Paste rows 20-21");
    form().Command1.clicked();
    form().Command1.clicked();
    EXPECT_EQ(undo_caption(), "&Undo Move rows 20-21 down");
    form().Command3.clicked();
    EXPECT_EQ(undo_caption(), "&Undo Delete rows 22-23");
    form().Command5.clicked();
    EXPECT_EQ(undo_caption(), "&Undo Load");
    run->views.in_settings = [](frmMiscSetting& dialog) {
        dialog.Check1[3].checked = !dialog.Check1[3].checked;
        dialog.Command1.clicked();
    };
    form().mnuMiscSettings.clicked();
    EXPECT_EQ(undo_caption(), "&Undo Set Mode Settings");
    run->dialogs.names.emplace_back(
        folder.put("in.csv", {'C', 'h', '\r', '\n', '7', ',', '1', '2', '0', ',', 'A', 'M', ',',
                              'n', ',', 'X', '\r', '\n'}));
    form().mnuImport.clicked();
    EXPECT_EQ(undo_caption(), "&Undo Import");
    while (form().added.undo.enabled) undo();
    for (int row = 1; row < kRows; ++row) ASSERT_EQ(cell(row, kFreq), "") << row;
    EXPECT_FALSE(run->program.history().next_to_undo());
}

TEST_F(UndoTest, shows_what_it_changed) {
    select(300, 302);
    type_into(300, kFreq, "145.5");
    select(300, 302);
    form().Command3.clicked();
    click(1, kTag);
    std::vector<std::pair<int, int>> shown;
    const auto watching =
        grid().rows_wanted.connect([&](int first, int last) { shown.emplace_back(first, last); });
    undo();
    EXPECT_EQ(grid().Row(), 300);
    EXPECT_EQ(cell(300, kFreq), "145.50000");
    // A step elsewhere than at the cell that was the current one.
    click(1, kTag);
    form().Command5.clicked();
    undo();
    EXPECT_THAT(shown, ElementsAre(testing::Pair(300, 300)));
}

TEST_F(UndoTest, tells_a_screen_reader_what_was_undone) {
    std::vector<std::string> said;
    const auto listening =
        run->program.notices.said.connect([&](const std::string& text) { said.push_back(text); });
    type_into(5, kTag, "A");
    undo();
    redo();
    EXPECT_THAT(said, ElementsAre("Undone: Change Tag of row 5", "Redone: Change Tag of row 5"));
}

TEST_F(UndoTest, a_save_is_a_point_in_the_history) {
    type_into(5, kFreq, "145.5");
    form().mnuSaveOnly.clicked();
    EXPECT_EQ(undo_caption(), "&Undo Change Freq of row 5");
    undo();
    EXPECT_EQ(cell(5, kFreq), "");
    EXPECT_EQ(run->messages.shown.size(), 0U);
    redo();
    form().mnuSaveOnly.clicked();
    EXPECT_EQ(run->program.edits().image().MemoryImage.get(4 * 4), 0x14);
}

TEST_F(UndoTest, a_file_that_is_opened_begins_a_new_history) {
    type_into(5, kTag, "A");
    run->program.open_named(folder.file("mem.120"));
    EXPECT_EQ(enabled(), (std::vector<bool>{false, false}));
}

TEST_F(UndoTest, a_file_that_is_not_opened_leaves_the_history_as_it_is) {
    type_into(5, kFreq, "145.5");
    run->messages.answers = {Answer::cancel};
    run->program.open_named(folder.file("mem.120"));
    EXPECT_EQ(undo_caption(), "&Undo Change Freq of row 5");
}

TEST_F(UndoTest, a_read_is_a_step_but_the_first_image_is_where_the_history_begins) {
    run = start();
    run->messages.answers = {Answer::ok};
    form().mnuRead.clicked();
    ASSERT_EQ(form().Label1.caption.get(), "Read from VR-120 complete.");
    EXPECT_EQ(enabled(), (std::vector<bool>{false, false}));

    run = start_with_a_file();
    run->messages.answers = {Answer::ok};
    form().mnuRead.clicked();
    EXPECT_EQ(undo_caption(), "&Undo Read");
    EXPECT_NE(cell(1, kTag), "");
    undo();
    EXPECT_EQ(cell(1, kTag), "");
}

TEST_F(UndoTest, goes_on_after_a_crash) {
    type_into(5, kFreq, "145.5");
    type_into(6, kFreq, "146.5");
    type_into(7, kFreq, "147.5");
    undo();
    form().TxtGrid.focus_lost();
    run->time.wait(Recovery::kDelay);
    run.reset();

    run = start();
    run->messages.answers = {Answer::yes};
    run->program.offer_recovery();
    ASSERT_EQ(cell(6, kFreq), "146.50000");
    EXPECT_EQ(redo_caption(), "&Redo Change Freq of row 7");
    undo();
    undo();
    EXPECT_EQ(cell(5, kFreq), "");
    EXPECT_FALSE(form().added.undo.enabled);
    for (int n = 0; n < 3; ++n) redo();
    EXPECT_EQ(cell(7, kFreq), "147.50000");
}

}  // namespace
}  // namespace memwright
