// The dialogs of the settings and of the search limits in the whole program: from the menu to the
// file.

#include <gmock/gmock.h>

#include "app/frm_limit_search.h"
#include "app/frm_misc_setting.h"
#include "app/notice_texts.h"
#include "app/program_under_test.h"

namespace memwright {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::size_t kScanResume = 6669;
constexpr std::size_t kLastLimit = 7156;

class RadioDialogs : public ProgramTest {
  protected:
    void SetUp() override { start_with_a_file(); }

    Bytes saved() {
        form.mnuSaveOnly.clicked();
        return folder.get("mem.120");
    }
    // Opens the file anew with one byte changed.
    void open_with(std::size_t offset, std::uint8_t value) {
        Bytes bytes = folder.get("mem.120");
        bytes.at(offset) = value;
        program.open_named(folder.put("mem.120", bytes));
    }
};

TEST_F(RadioDialogs, the_settings_that_are_accepted_are_in_the_next_saved_file) {
    Bytes expected = saved();
    views.in_settings = [](frmMiscSetting& dialog) {
        EXPECT_EQ(dialog.Combo1.text.get(), "1 Sec");
        dialog.Combo1.text = "12 Sec";
        dialog.Check1[9].checked = true;
        dialog.Command1.clicked();
    };
    form.mnuMiscSettings.clicked();
    EXPECT_EQ(views.shown, 1);
    EXPECT_EQ(folder.get("mem.120"), expected) << "nothing is saved by itself";
    expected[kScanResume] = 11;
    expected[6689] = 0x02;
    EXPECT_EQ(saved(), expected);
}

TEST_F(RadioDialogs, the_limits_that_are_accepted_are_in_the_next_saved_file) {
    Bytes expected = saved();
    views.in_limits = [](frmLimitSearch& dialog) {
        EXPECT_EQ(dialog.Text1[17].text.get(), "0.00000");
        dialog.Text1[17].text = "145.5125";
        dialog.Combo1[17].text = "AM";
        dialog.Command1.clicked();
    };
    form.mnuSearchBandMem.clicked();
    EXPECT_EQ(views.shown, 1);
    const Bytes record = {0x14, 0x55, 0x12, 0x43};
    std::ranges::copy(record, expected.begin() + kLastLimit);
    EXPECT_EQ(saved(), expected);
}

TEST_F(RadioDialogs, what_is_cancelled_is_not_saved) {
    const Bytes before = saved();
    views.in_settings = [](frmMiscSetting& dialog) {
        dialog.Combo1.text = "12 Sec";
        dialog.Command2.clicked();
    };
    views.in_limits = [](frmLimitSearch& dialog) {
        dialog.Text1[0].text = "145.5125";
        dialog.Command2.clicked();
    };
    form.mnuMiscSettings.clicked();
    form.mnuSearchBandMem.clicked();
    EXPECT_EQ(views.shown, 2);
    EXPECT_EQ(saved(), before);
}

TEST_F(RadioDialogs, each_opening_reads_the_image_anew) {
    views.in_settings = [](frmMiscSetting& dialog) {
        dialog.Combo1.text = "2 Sec";
        dialog.Command1.clicked();
    };
    form.mnuMiscSettings.clicked();
    std::string shown;
    views.in_settings = [&](frmMiscSetting& dialog) { shown = dialog.Combo1.text; };
    form.mnuMiscSettings.clicked();
    EXPECT_EQ(shown, "2 Sec");
    saved();
    open_with(kScanResume, 7);
    form.mnuMiscSettings.clicked();
    EXPECT_EQ(shown, "8 Sec");
}

TEST_F(RadioDialogs, accepted_changes_are_asked_about_before_another_file_is_opened) {
    views.in_settings = [](frmMiscSetting& dialog) {
        dialog.Combo1.text = "3 Sec";
        dialog.Command1.clicked();
    };
    form.mnuMiscSettings.clicked();
    messages.answers = {Answer::cancel};
    program.open_named(folder.file("other.120"));
    ASSERT_THAT(messages.shown, SizeIs(1));
    EXPECT_THAT(messages.shown[0].text, HasSubstr("has changed"));
}

TEST_F(RadioDialogs, an_edit_of_the_table_goes_with_the_settings_into_the_file) {
    edit("B");
    views.in_settings = [](frmMiscSetting& dialog) {
        dialog.Combo10.text = "OFF";
        dialog.Command1.clicked();
    };
    form.mnuMiscSettings.clicked();
    EXPECT_EQ(shown_tag(), "B");
    EXPECT_EQ(saved()[6666], 2);
    EXPECT_EQ(saved_tag("mem.120"), "B");
}

TEST_F(RadioDialogs, an_image_that_a_list_cannot_show_is_reported_and_the_program_goes_on) {
    open_with(kScanResume, 12);
    ASSERT_THAT(messages.shown, IsEmpty());
    const Bytes before = folder.get("mem.120");
    messages.answers = {Answer::ok};
    form.mnuMiscSettings.clicked();
    EXPECT_EQ(views.shown, 0) << "no dialog";
    ASSERT_THAT(messages.shown, SizeIs(1));
    EXPECT_EQ(messages.shown[0].title, "Memwright");
    EXPECT_EQ(messages.shown[0].icon, Icon::critical);
    EXPECT_EQ(messages.shown[0].buttons, Buttons::ok);
    EXPECT_THAT(messages.shown[0].text,
                HasSubstr("\"Scan Resume\", at offset 6669 of the memory image, is 12,"));
    EXPECT_THAT(noted(program.notices),
                testing::ElementsAre(HasSubstr("\"Scan Resume\", at offset 6669")));

    EXPECT_EQ(shown_tag(), "A");
    EXPECT_EQ(saved(), before);
    form.mnuSearchBandMem.clicked();
    EXPECT_EQ(views.shown, 1) << "the limits can be edited all the same";
    open_with(kScanResume, 11);
    form.mnuMiscSettings.clicked();
    EXPECT_EQ(views.shown, 2) << "another image can be shown";
    EXPECT_THAT(messages.shown, SizeIs(1));
}

}  // namespace
}  // namespace memwright
