// What a command changed, as one value: of cells, colours, marks, the current cell and the image.

#include "table/edit_recorder.h"

#include <gmock/gmock.h>

#include "table/editing_test.h"

namespace memwright {
namespace {

using namespace columns;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Cell = Edit::Cell;
using Byte = Edit::Byte;

class EditRecorderTest : public EditingTest {
  protected:
    EditRecorder recorder{grid, store};
    std::vector<Edit> edits;
    Connection watch = recorder.edited.connect([this](const Edit& edit) { edits.push_back(edit); });
};

TEST_F(EditRecorderTest, an_edit_says_what_was_there_before_and_what_is_after) {
    {
        const EditScope scope(recorder, "Some command");
        grid.set_text(3, kFreq, "145.50000");
        grid.set_text(2, kTag, "A");
        grid.set_colour(2, kTag, kGrey);
        store.set_byte(7391, 5);
        store.set_byte(layout::kLamp, 2);
        go_to(3, kFreq);
        grid.marked_rows = RowRange{2, 3};
        EXPECT_THAT(edits, IsEmpty()) << "it has not ended";
    }
    ASSERT_THAT(edits, SizeIs(1));
    const Edit& edit = edits[0];
    EXPECT_EQ(edit.command, "Some command");
    EXPECT_THAT(edit.cells, ElementsAre(Cell{2, kTag, {"", 0}, {"A", kGrey}},
                                        Cell{3, kFreq, {"", 0}, {"145.50000", 0}}));
    EXPECT_THAT(edit.bytes, ElementsAre(Byte{layout::kLamp, 0, 2}, Byte{7391, 0, 5}));
    EXPECT_EQ(edit.selected_before, (Edit::Selection{0, 0, {0, 0}}));
    EXPECT_EQ(edit.selected_after, (Edit::Selection{3, kFreq, {2, 3}}));
}

TEST_F(EditRecorderTest, what_is_rebuilt_as_it_was_is_no_change) {
    store.set_byte(layout::kLamp, 2);
    grid.set_text(2, kTag, "A");
    edits.clear();
    {
        const EditScope scope(recorder, "Load");
        grid.set_text(1, kTag, "B");
        grid.set_text(1, kTag, "");
        table.initgrid();
        store.set_image(MemoryImage(store.MemoryImage));
        store.set_byte(0, 1);
        store.set_byte(0, 0);
    }
    ASSERT_THAT(edits, SizeIs(1));
    EXPECT_THAT(edits[0].cells, ElementsAre(Cell{2, kTag, {"A", 0}, {"", 0}}));
    EXPECT_THAT(edits[0].bytes, IsEmpty());
}

TEST_F(EditRecorderTest, a_command_that_changes_nothing_is_no_edit) {
    { const EditScope scope(recorder, "Save"); }
    EXPECT_THAT(edits, IsEmpty());
}

TEST_F(EditRecorderTest, a_change_outside_of_any_command_is_an_edit_without_a_name) {
    grid.set_text(2, kTag, "A");
    store.set_byte(0, 1);
    go_to(0, kTag);
    grid.marked_rows = RowRange{2, 3};
    ASSERT_THAT(edits, SizeIs(4));
    for (const Edit& edit : edits) EXPECT_EQ(edit.command, "");
    EXPECT_THAT(edits[0].cells, SizeIs(1));
    EXPECT_THAT(edits[1].bytes, SizeIs(1));
    EXPECT_FALSE(edits[2].changes_content());
    EXPECT_EQ(edits[3].selected_after.marked, (RowRange{2, 3}));
}

TEST_F(EditRecorderTest, a_command_within_another_is_part_of_it) {
    {
        const EditScope outer(recorder, "Import");
        grid.set_text(1, kTag, "A");
        {
            const EditScope inner(recorder, "Type");
            grid.set_text(2, kTag, "B");
        }
        EXPECT_THAT(edits, IsEmpty());
        grid.set_text(3, kTag, "C");
    }
    ASSERT_THAT(edits, SizeIs(1));
    EXPECT_EQ(edits[0].command, "Import");
    EXPECT_THAT(edits[0].cells, SizeIs(3));
}

TEST_F(EditRecorderTest, a_command_behind_one_that_waits_is_an_edit_of_its_own) {
    {
        const EditScope outer(recorder, "Read", EditScope::Kind::waits);
        grid.set_text(1, kTag, "A");
        {
            const EditScope inner(recorder, "Type");
            grid.set_text(2, kTag, "B");
        }
        grid.set_text(3, kTag, "C");
    }
    std::vector<std::string> commands;
    for (const Edit& edit : edits) {
        commands.push_back(edit.command);
        EXPECT_THAT(edit.cells, SizeIs(1));
    }
    EXPECT_THAT(commands, ElementsAre("Read", "Type", "Read"));
}

TEST_F(EditRecorderTest, what_is_under_way_can_be_asked) {
    const EditScope scope(recorder, "Type");
    EXPECT_TRUE(recorder.so_far().is_empty());
    grid.set_text(2, kTag, "A");
    EXPECT_THAT(recorder.so_far().cells, ElementsAre(Cell{2, kTag, {"", 0}, {"A", 0}}));
    EXPECT_EQ(recorder.so_far().command, "Type");
    EXPECT_THAT(edits, IsEmpty());
}

TEST_F(EditRecorderTest, each_change_is_told_at_once_and_what_is_only_chosen_is_none) {
    int changes = 0;
    const auto counting = recorder.changed.connect([&] { ++changes; });
    const EditScope scope(recorder, "Type");
    grid.set_text(2, kTag, "A");
    EXPECT_EQ(changes, 1);
    store.set_byte(0, 1);
    EXPECT_EQ(changes, 2);
    go_to(5, kTag);
    grid.marked_rows = RowRange{2, 3};
    EXPECT_EQ(changes, 2);
}

TEST_F(EditRecorderTest, an_edit_is_taken_back_and_done_again) {
    grid.set_text(2, kTag, "OLD");
    edits.clear();
    {
        const EditScope scope(recorder, "Cut");
        grid.set_text(2, kTag, "");
        grid.set_colour(2, kTag, kGrey);
        store.set_byte(7391, 5);
        go_to(3, kFreq);
        grid.marked_rows = RowRange{2, 3};
    }
    const Edit edit = edits.at(0);
    const CountedSignals changes(grid);
    recorder.apply(edit.inverse());
    EXPECT_EQ(changes.count, 1) << "one signal for the whole";
    EXPECT_EQ(text(2, kTag), "OLD");
    EXPECT_EQ(grid.colour(2, kTag), 0U);
    EXPECT_EQ(store.MemoryImage.get(7391), 0);
    expect_cell(0, 0);
    expect_selected(0, 0);
    EXPECT_EQ(edits.at(1), edit.inverse()) << "it is an edit itself";
    recorder.apply(edit);
    EXPECT_EQ(text(2, kTag), "");
    EXPECT_EQ(grid.colour(2, kTag), kGrey);
    EXPECT_EQ(store.MemoryImage.get(7391), 5);
    expect_cell(3, kFreq);
    expect_selected(2, 3);
}

}  // namespace
}  // namespace memwright
