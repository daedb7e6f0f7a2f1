// The layout for the window's size.

#include "app/program_under_test.h"

namespace memwright {
namespace {

class Resize : public ProgramTest {
  protected:
    Resize() { program.start(); }

    void resize(double width, double height) {
        window.its_width = width;
        window.its_height = height;
        program.resized();
    }
};

TEST_F(Resize, gives_the_grid_the_room_that_the_status_window_leaves) {
    resize(12000, 9000);
    EXPECT_EQ(form.MSFlexGrid1.height.get(), 5800);
    EXPECT_EQ(form.MSFlexGrid1.width.get(), 10200);
    EXPECT_EQ(form.Label1.width.get(), 12000);
    EXPECT_EQ(form.Label1.top.get(), 8000);
    EXPECT_EQ(form.Text1.width.get(), 10200);
    EXPECT_EQ(form.Text1.top.get(), 6200);
}

TEST_F(Resize, gives_it_1900_twips_more_with_the_status_window_hidden) {
    resize(12000, 9000);
    const double shown = form.MSFlexGrid1.height;
    form.mnuShwDbg.checked = false;
    program.resized();
    EXPECT_EQ(form.MSFlexGrid1.height.get(), 9000 - 1300);
    EXPECT_EQ(form.MSFlexGrid1.height - shown, 1900);
    EXPECT_EQ(form.Text1.top.get(), 6200) << "all else stays";
    EXPECT_EQ(form.Label1.top.get(), 8000);
}

TEST_F(Resize, does_not_move_the_grid_or_size_its_columns) {
    const double left = form.MSFlexGrid1.left;
    const double top = form.MSFlexGrid1.top;
    resize(30000, 20000);
    EXPECT_EQ(form.MSFlexGrid1.left.get(), left);
    EXPECT_EQ(form.MSFlexGrid1.top.get(), top);
    EXPECT_EQ(form.MSFlexGrid1.ColWidth(columns::kFreq), 1500);
    EXPECT_EQ(form.MSFlexGrid1.RowHeight(1), 320);
}

TEST_F(Resize, does_not_apply_sizes_that_would_be_negative) {
    resize(12000, 9000);
    resize(1700, 3000);
    EXPECT_EQ(form.MSFlexGrid1.height.get(), 5800) << "3000 - 3200";
    EXPECT_EQ(form.MSFlexGrid1.width.get(), 10200) << "1700 - 1800";
    EXPECT_EQ(form.Text1.width.get(), 10200) << "as wide as the grid is";
    EXPECT_EQ(form.Label1.width.get(), 1700) << "the other steps go on";
    EXPECT_EQ(form.Label1.top.get(), 2000);
    EXPECT_EQ(form.Text1.top.get(), 200);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Resize, applies_a_size_of_nothing) {
    resize(1800, 3200);
    EXPECT_EQ(form.MSFlexGrid1.height.get(), 0);
    EXPECT_EQ(form.MSFlexGrid1.width.get(), 0);
}

TEST_F(Resize, places_may_be_negative) {
    resize(12000, 900);
    EXPECT_EQ(form.Label1.top.get(), -100);
    EXPECT_EQ(form.Text1.top.get(), -1900);
}

TEST_F(Resize, takes_a_taller_frame_than_designed_off_the_height) {
    window.its_frame_height = 960;
    resize(12000, 9000);
    EXPECT_EQ(form.MSFlexGrid1.height.get(), 5800 - 300);
    EXPECT_EQ(form.Label1.top.get(), 8000 - 300);
    EXPECT_EQ(form.Text1.top.get(), 6200 - 300);
    EXPECT_EQ(form.MSFlexGrid1.width.get(), 10200);
}

TEST_F(Resize, gives_nothing_more_for_a_lower_frame) {
    for (const double frame : {0.0, 300.0, 660.0}) {
        window.its_frame_height = frame;
        resize(12000, 9000);
        EXPECT_EQ(form.MSFlexGrid1.height.get(), 5800) << frame;
    }
}

TEST_F(Resize, keeps_the_status_line_inside_the_window_whatever_the_frame_takes) {
    for (const double frame : {300.0, 660.0, 960.0, 1400.0}) {
        window.its_frame_height = frame;
        resize(12000, 9000);
        EXPECT_LE(form.Label1.top + form.Label1.height, 9000 - frame) << frame;
    }
}

TEST_F(Resize, keeps_what_belongs_to_a_transfer_in_line_with_the_status_line) {
    for (const double height : {7050.0, 12000.0}) {
        resize(12000, height);
        const double middle = form.Label1.top + form.Label1.height / 2;
        EXPECT_EQ(form.TransferProgress.top + form.TransferProgress.height / 2, middle);
        EXPECT_EQ(form.TransferButton.top + form.TransferButton.height / 2, middle);
        EXPECT_EQ(form.ReceivedLabel.top + form.ReceivedLabel.height / 2, middle);
    }
}

class StatusWindowToggle : public Resize {};

TEST_F(StatusWindowToggle, hides_it_stores_that_and_gives_the_grid_its_room) {
    resize(12000, 9000);
    form.mnuShwDbg.clicked();
    EXPECT_FALSE(form.mnuShwDbg.checked);
    EXPECT_FALSE(form.Text1.visible);
    EXPECT_EQ(stored("DebugWin"), "False");
    EXPECT_EQ(form.MSFlexGrid1.height.get(), 7700);
}

TEST_F(StatusWindowToggle, shows_it_again_and_takes_the_room_back) {
    resize(12000, 9000);
    form.mnuShwDbg.clicked();
    form.mnuShwDbg.clicked();
    EXPECT_TRUE(form.mnuShwDbg.checked);
    EXPECT_TRUE(form.Text1.visible);
    EXPECT_EQ(stored("DebugWin"), "True");
    EXPECT_EQ(form.MSFlexGrid1.height.get(), 5800);
    EXPECT_EQ(settings.saved, (std::vector<std::string>(2, "VR120/Settings/DebugWin")));
}

TEST_F(StatusWindowToggle, is_restored_by_the_next_start) {
    form.mnuShwDbg.clicked();
    form.mnuShwDbg.checked = true;
    program.start();
    EXPECT_FALSE(form.mnuShwDbg.checked);
    EXPECT_FALSE(form.Text1.visible);
}

}  // namespace
}  // namespace memwright
