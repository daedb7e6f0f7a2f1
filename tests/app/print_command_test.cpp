// The Print command: from the menu entry to the paper.

#include <gmock/gmock.h>

#include "app/frm_print.h"
#include "app/notice_texts.h"
#include "app/program_under_test.h"

namespace memwright {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class PrintCommand : public ProgramTest {
  protected:
    void SetUp() override { start_with_a_file(); }

    // Chooses the command; the dialog is answered with OK after `fill`.
    void print(const std::function<void(frmPrint&)>& fill = {}) {
        views.in_print = [fill](frmPrint& dialog) {
            if (fill) fill(dialog);
            dialog.Command1.clicked();
        };
        messages.answers.push_back(Answer::ok);
        form.mnuPrint.clicked();
    }
    static std::function<void(frmPrint&)> rows(const char* first, const char* last) {
        return [=](frmPrint& dialog) {
            dialog.Text1.text = first;
            dialog.Text1.edited();
            dialog.Text2.text = last;
        };
    }
};

TEST_F(PrintCommand, prints_all_rows_across_the_paper_under_the_files_name) {
    print();
    EXPECT_EQ(views.shown, 1);
    ASSERT_THAT(paper.documents, SizeIs(1));
    const auto& document = paper.documents[0];
    EXPECT_EQ(document.orientation, PaperOrientation::landscape);
    EXPECT_EQ(document.title, "Memwright");
    ASSERT_THAT(document.pages, SizeIs(7));
    const auto& lines = document.pages[0].lines;
    EXPECT_EQ(lines[0].text, "Memwright");
    EXPECT_EQ(lines[2].text, folder.file("mem.120"));
    EXPECT_EQ(lines[4].text, "21.11.26 12:34 - Page 1 of 7");
    ASSERT_THAT(messages.shown, SizeIs(1));
    EXPECT_EQ(messages.shown[0].text, "Memwright\r\nPrinting 7 pages to Paper");
}

TEST_F(PrintCommand, prints_the_main_grid_as_it_shows_at_that_moment) {
    edit("EDITED");
    print(rows("1", "3"));
    ASSERT_THAT(paper.documents, SizeIs(1));
    ASSERT_THAT(paper.documents[0].pages, SizeIs(1));
    const Picture& picture = paper.documents[0].pages[0].pictures.at(0).picture;
    // The headings that are seen, and the columns of three rows.
    EXPECT_EQ(picture.width, 6100);
    EXPECT_EQ(picture.height, 8640);
    std::vector<std::string> texts;
    for (const auto& text : picture.texts) texts.push_back(text.text);
    EXPECT_THAT(texts, testing::IsSupersetOf({"#", "Tag", "Freq", "Mode", "Pref", "Bank 0 - 0",
                                              "EDITED", "145.51250", "Bank 0 - 2"}));
    EXPECT_THAT(texts, testing::Not(testing::Contains("Bank 0 - 3")));
}

TEST_F(PrintCommand, prints_nothing_when_the_dialog_is_cancelled_or_closed) {
    views.in_print = [](frmPrint& dialog) { dialog.Command2.clicked(); };
    form.mnuPrint.clicked();
    views.in_print = {};
    form.mnuPrint.clicked();
    EXPECT_EQ(views.shown, 2);
    EXPECT_THAT(paper.documents, IsEmpty());
    EXPECT_THAT(messages.shown, IsEmpty());
}

TEST_F(PrintCommand, the_dialog_is_closed_before_the_printing_begins) {
    std::size_t documents_in_dialog = 99;
    views.in_print = [&](frmPrint& dialog) {
        dialog.Command1.clicked();
        documents_in_dialog = paper.documents.size();
    };
    messages.answers = {Answer::ok};
    form.mnuPrint.clicked();
    EXPECT_EQ(documents_in_dialog, 0U);
    EXPECT_THAT(paper.documents, SizeIs(1));
}

TEST_F(PrintCommand, the_dialog_starts_afresh_each_time) {
    print(rows("7", "9"));
    print([](frmPrint& dialog) {
        EXPECT_EQ(dialog.Text1.text.get(), "1");
        EXPECT_EQ(dialog.Text2.text.get(), "35");
        EXPECT_TRUE(dialog.Option1.selected);
    });
    EXPECT_THAT(paper.documents, SizeIs(2));
}

TEST_F(PrintCommand, a_printer_that_fails_is_reported_and_the_program_goes_on) {
    paper.fails = true;
    paper.fails_after = 2;
    print();
    ASSERT_THAT(messages.shown, SizeIs(1));
    EXPECT_EQ(messages.shown[0].text, "Cannot print on Paper: it is out of paper.");
    EXPECT_EQ(messages.shown[0].icon, Icon::critical);
    EXPECT_THAT(program.notices.of_this_run().back().notice.text,
                testing::HasSubstr("it is out of paper"));
    EXPECT_THAT(paper.documents[0].pages, SizeIs(2));

    paper.fails = false;
    print();
    EXPECT_EQ(messages.shown.back().text, "Memwright\r\nPrinting 7 pages to Paper");
}

TEST_F(PrintCommand, a_row_past_the_last_is_reported_and_the_program_goes_on) {
    print(rows("600", "700"));
    ASSERT_THAT(messages.shown, SizeIs(1));
    EXPECT_EQ(messages.shown[0].icon, Icon::critical);
    EXPECT_THAT(messages.shown[0].text, testing::HasSubstr("The grid has no row 641"));
    print(rows("1", "99999"));
    ASSERT_THAT(messages.shown, SizeIs(2));
    EXPECT_THAT(messages.shown[1].text, testing::HasSubstr("99999"));
    print(rows("1", "35"));
    EXPECT_EQ(messages.shown.back().text, "Memwright\r\nPrinting 1 pages to Paper");
}

TEST_F(PrintCommand, printing_changes_neither_the_table_nor_the_file) {
    const auto before = folder.get("mem.120");
    edit("B");
    print();
    EXPECT_EQ(shown_tag(), "B");
    EXPECT_EQ(folder.get("mem.120"), before);
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"mem.120"}));
}

}  // namespace
}  // namespace memwright
