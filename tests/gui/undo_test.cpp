// Undo and Redo by keys and from the menu, and the keys of the everyday commands.

#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>

#include "gui/support/editing_test.h"
#include "image/mod_vr120.h"
#include "native/file_system.h"
#include "table/channel_table.h"

namespace memwright::gui {
namespace {

using ::testing::Pair;

constexpr auto kShiftCtrl = Qt::ControlModifier | Qt::ShiftModifier;

class UndoKeys : public EditingTest {
  protected:
    void SetUp() override {
        EditingTest::SetUp();
        for (int row = 1; row <= 640; ++row) {
            for (int col = 1; col <= 4; ++col) set_cell(row, col, "");
        }
        form().mnuSaveOnly.clicked();
    }

    void undo() { key(Qt::Key_Z, Qt::ControlModifier); }
    void redo() { key(Qt::Key_Z, kShiftCtrl); }
    void type_into(int row, int col, const char* text) {
        open(row, col);
        type(text);
        key(Qt::Key_Tab);
    }
    void select(int first, int last) {
        press_at(place_of_label(first).center());
        release_at(place_of_label(last).center());
    }
    std::string caption_of(const char* entry) { return qt::to_utf8(widget<QAction>(entry).text()); }
};

TEST_F(UndoKeys, take_back_steps_and_do_them_again) {
    type_into(3, 1, "one");
    type_into(4, 1, "two");
    key(Qt::Key_Escape);
    undo();
    EXPECT_EQ(cell(4, 1), "");
    EXPECT_EQ(cell(3, 1), "ONE");
    EXPECT_EQ(focused(), "MSFlexGrid1");
    EXPECT_THAT(current(), Pair(4, 1));
    undo();
    EXPECT_EQ(cell(3, 1), "");
    redo();
    EXPECT_EQ(cell(3, 1), "ONE");
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(cell(4, 1), "TWO");
}

TEST_F(UndoKeys, in_an_opened_editor_take_back_its_typing_and_leave_it_open) {
    type_into(3, 1, "one");
    open(4, 2);
    type("1455");
    EXPECT_EQ(cell(4, 3), "NFM");
    undo();
    EXPECT_EQ(open_overlay(), "TxtGrid");
    EXPECT_EQ(focused(), "TxtGrid");
    EXPECT_EQ(cell(4, 2), "");
    EXPECT_EQ(cell(4, 3), "");
    type("145.5");
    EXPECT_EQ(cell(4, 2), "145.50000");
    undo();
    undo();
    EXPECT_EQ(open_overlay(), "none");
    EXPECT_EQ(cell(3, 1), "");
}

TEST_F(UndoKeys, in_an_opened_list_take_back_its_picks) {
    set_cell(5, 3, "NFM");
    open(5, 3);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    EXPECT_EQ(cell(5, 3), "AM");
    undo();
    EXPECT_EQ(cell(5, 3), "NFM");
    EXPECT_EQ(list_text(), "NFM");
    EXPECT_EQ(focused(), "CboGrid");
}

TEST_F(UndoKeys, are_shown_in_the_menu_with_the_step) {
    EXPECT_FALSE(widget<QAction>("UndoEntry").isEnabled());
    select(5, 7);
    set_cell(6, 1, "A");
    choose("mnuEdit", "mnuCut");
    EXPECT_EQ(caption_of("UndoEntry"), "&Undo Cut rows 5-7");
    EXPECT_EQ(qt::to_utf8(widget<QAction>("UndoEntry").shortcut().toString()), "Ctrl+Z");
    choose("mnuEdit", "UndoEntry");
    EXPECT_EQ(cell(6, 1), "A");
    EXPECT_THAT(marked(), Pair(5, 7));
    EXPECT_EQ(caption_of("RedoEntry"), "&Redo Cut rows 5-7");
}

TEST_F(UndoKeys, scroll_to_what_changed) {
    set_cell(400, 1, "A");
    set_current(400, 1);
    select(400, 401);
    click_button("Command3");
    key(Qt::Key_Home, Qt::ControlModifier);
    set_current(1, 1);
    ASSERT_FALSE(is_in_sight(400, 1));
    undo();
    EXPECT_EQ(cell(400, 1), "A");
    EXPECT_TRUE(is_in_sight(400, 1));
}

TEST_F(UndoKeys, do_nothing_in_a_transfer) {
    type_into(3, 1, "one");
    key(Qt::Key_Escape);
    form().DisableGui();
    undo();
    EXPECT_EQ(cell(3, 1), "ONE");
    form().EnableGui();
    undo();
    EXPECT_EQ(cell(3, 1), "");
}

// The menu has never been opened, so that its entries' states are those of the start.
TEST_F(UndoKeys, of_cut_copy_and_paste_act_on_the_marked_rows) {
    set_cell(3, 1, "A");
    set_cell(4, 1, "B");
    select(3, 4);
    key(Qt::Key_C, Qt::ControlModifier);
    set_current(10, 1);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(cell(10, 1) + cell(11, 1), "AB");
    select(3, 3);
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(cell(3, 1), "");
    EXPECT_EQ(cell(4, 1), "B");
}

TEST_F(UndoKeys, of_cut_copy_and_paste_belong_to_the_text_while_an_editor_is_open) {
    set_cell(3, 1, "AB");
    select(3, 3);
    open(5, 1);
    type("XY");
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "XY");
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(cell(5, 1), "");
    EXPECT_EQ(cell(3, 1), "AB");
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(cell(5, 1), "XY");
}

TEST_F(UndoKeys, of_files_open_and_save) {
    const std::string path = open_some_image("keys.120");
    type_into(1, 1, "KEYS");
    key(Qt::Key_S, Qt::ControlModifier);
    NativeFileSystem files;
    modVR120 saved(files);
    saved.OpenVR120(path);
    EXPECT_EQ(saved.GetMemTag(0, 0).substr(0, 4), "KEYS");
}

// Two hundred channels, typed along the rows, every tenth with a slip.
TEST_F(UndoKeys, mend_the_slips_of_a_long_list) {
    Bytes empty(layout::kImageSize, 0);
    std::fill_n(empty.begin(), layout::kLabels, std::uint8_t{0xFF});
    std::fill_n(empty.begin() + layout::kLabels, layout::kRadioSettings - layout::kLabels,
                std::uint8_t{' '});
    const std::string path = folder_.put("list.120", empty);
    program().open_named(path);

    NativeFileSystem files;
    modVR120 store(files);
    store.OpenVR120(path);
    MSFlexGrid expected("expected");
    MenuEntry enabled("mnuSaveOnly", "");
    ChannelTable table(store, expected, enabled);
    table.ParseVR120Data();

    constexpr int kChannels = 200;
    open(1, 1);
    for (int row = 1; row <= kChannels; ++row) {
        const std::string tag = "CH" + std::to_string(row);
        std::string frequency = std::to_string(100 + row) + ".5";
        type(qt::from_utf8(tag));
        key(Qt::Key_Tab);
        if (row % 10 == 0) {
            type("9999");
            undo();
        }
        type(qt::from_utf8(frequency));
        for (int n = 0; n < 3; ++n) key(Qt::Key_Tab);
        expected.set_text(row, 1, tag);
        expected.set_text(row, 2, FormatFreq(frequency));
        expected.set_text(row, 3, "NFM");
        expected.set_text(row, 4, "Off");
    }
    key(Qt::Key_Escape);
    key(Qt::Key_S, Qt::ControlModifier);
    table.SaveVR120Data();
    const auto wanted = store.MemoryImage.bytes();
    EXPECT_EQ(folder_.get("list.120"), Bytes(wanted.begin(), wanted.end()));
}

}  // namespace
}  // namespace memwright::gui
