// The rows of a grid on paper, page by page.

#include "app/print_grid.h"

#include <gmock/gmock.h>

#include <map>

#include "app/idle_platform.h"
#include "fakes/paper.h"
#include "fakes/scripted_dialogs.h"
#include "fakes/seeded_random.h"

namespace memwright {
namespace {

using fakes::PrintedLine;
using fakes::PrintedPage;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kRows = 641;
constexpr int kCols = 15;
constexpr int kPrintedCols = 14;
constexpr double kRowHeight = 240;
constexpr const char* kPath = "/home/user/radio.120";

std::string cell_text(int row, int col) { return std::to_string(row) + "/" + std::to_string(col); }

double col_width(int col) { return 600 + 10 * col; }

class PrintedGrid : public testing::Test {
  protected:
    PrintedGrid() {
        grid_.set_rows(kRows);
        grid_.set_cols(kCols);
        for (int row = 0; row < kRows; ++row) {
            for (int col = 0; col < kCols; ++col) grid_.set_text(row, col, cell_text(row, col));
        }
        for (int col = 0; col < kCols; ++col) grid_.set_col_width(col, col_width(col));
    }

    // Prints rows, and closes the final message.
    fakes::Paper::Document& print(int start, int end, bool horizontal = true) {
        messages_.answers.push_back(Answer::ok);
        printing_.PrintGrid(grid_, "Memwright", horizontal, static_cast<std::int16_t>(start),
                            static_cast<std::int16_t>(end));
        return paper_.documents.back();
    }

    // The texts of a page's grid, by row of the page.
    static std::map<int, std::vector<std::string>> texts(const PrintedPage& page) {
        std::map<int, std::vector<std::string>> rows;
        for (const Picture::Text& text : page.pictures.at(0).picture.texts) {
            rows[static_cast<int>(text.area.top / kRowHeight)].push_back(text.text);
        }
        return rows;
    }

    static std::vector<std::string> source_row(int row) {
        std::vector<std::string> cells;
        for (int col = 0; col < kPrintedCols; ++col) cells.push_back(cell_text(row, col));
        return cells;
    }

    // The rows of the source that are on a page, in order; fails the test unless they fill the
    // page's rows from the first one on, below the headings, cell by cell.
    static std::vector<int> data_rows(const PrintedPage& page) {
        std::vector<int> rows;
        for (const auto& [row, cells] : texts(page)) {
            const int source = std::stoi(cells.at(0));
            EXPECT_EQ(cells, source_row(source));
            EXPECT_EQ(row, static_cast<int>(rows.size()) + (row == 0 ? 0 : 1));
            EXPECT_TRUE(row > 0 || source == 0) << "the headings";
            if (row > 0) rows.push_back(source);
        }
        return rows;
    }

    static std::vector<int> all_data_rows(const fakes::Paper::Document& document) {
        std::vector<int> rows;
        for (const PrintedPage& page : document.pages) {
            for (const int row : data_rows(page)) rows.push_back(row);
        }
        return rows;
    }

    static std::vector<int> from_to(int first, int last) {
        std::vector<int> rows;
        for (int row = first; row <= last; ++row) rows.push_back(row);
        return rows;
    }

    std::string final_message() const { return messages_.shown.back().text; }

    MSFlexGrid grid_{"MSFlexGrid1"};
    fakes::Paper paper_;
    fakes::IdleLoop clock_;
    fakes::ScriptedMessageBox messages_;
    std::string path_ = kPath;
    GridPrinting printing_{paper_, clock_, messages_, [this] { return path_; }};
};

TEST_F(PrintedGrid, all_rows_are_seven_pages_six_of_35_rows_and_one_of_30) {
    const auto& document = print(1, 240);
    ASSERT_THAT(document.pages, SizeIs(7));
    for (int page = 0; page < 6; ++page) {
        EXPECT_EQ(data_rows(document.pages[static_cast<std::size_t>(page)]),
                  from_to(35 * page + 1, 35 * page + 35));
    }
    EXPECT_EQ(data_rows(document.pages[6]), from_to(211, 240));
}

TEST_F(PrintedGrid, rows_1_to_35_are_one_full_page) {
    const auto& document = print(1, 35);
    ASSERT_THAT(document.pages, SizeIs(1));
    EXPECT_EQ(data_rows(document.pages[0]), from_to(1, 35));
}

TEST_F(PrintedGrid, of_rows_1_to_71_the_last_finds_no_page) {
    const auto& document = print(1, 71);
    EXPECT_THAT(document.pages, SizeIs(2));
    EXPECT_EQ(all_data_rows(document), from_to(1, 70));
    EXPECT_THAT(all_data_rows(print(1, 70)), SizeIs(70));
    EXPECT_THAT(all_data_rows(print(1, 72)), SizeIs(72)) << "which takes a third page";
}

TEST_F(PrintedGrid, in_portrait_a_page_holds_56_rows_and_the_113th_finds_no_page) {
    const auto& document = print(1, 113, false);
    ASSERT_THAT(document.pages, SizeIs(2));
    EXPECT_EQ(data_rows(document.pages[0]), from_to(1, 56));
    EXPECT_EQ(data_rows(document.pages[1]), from_to(57, 112));
}

TEST_F(PrintedGrid, one_row_is_one_page_with_the_headings_and_that_row) {
    const auto& document = print(77, 77);
    ASSERT_THAT(document.pages, SizeIs(1));
    EXPECT_EQ(data_rows(document.pages[0]), (std::vector<int>{77}));
}

TEST_F(PrintedGrid, row_0_can_be_printed_as_any_other) {
    const auto& document = print(0, 1);
    ASSERT_THAT(document.pages, SizeIs(1));
    EXPECT_EQ(texts(document.pages[0]).size(), 3U);
    EXPECT_EQ(texts(document.pages[0]).at(1), source_row(0));
    EXPECT_EQ(texts(document.pages[0]).at(2), source_row(1));
}

// Counted out instead of divided: rows and headings are dealt out to pages, one after the other.
int pages_counted(int rows_and_headings, int rows_per_page) {
    int pages = 0;
    for (int left = rows_and_headings; left > 0; left -= rows_per_page) ++pages;
    return pages;
}

TEST_F(PrintedGrid, any_range_takes_its_number_of_pages_and_as_many_of_its_rows_as_fit) {
    SeededRandom random;
    for (int round = 0; round < 150; ++round) {
        const bool horizontal = random.coin();
        const int per_page = horizontal ? 36 : 57;
        const int start = random.between(1, kRows - 1);
        const int end = random.between(std::max(start - 3, 1), kRows - 1);
        const auto& document = print(start, end, horizontal);
        const int pages = pages_counted(end - start + 2, per_page);
        const int fit = pages * (per_page - 1);
        ASSERT_THAT(document.pages, SizeIs(pages)) << start << " to " << end;
        ASSERT_EQ(all_data_rows(document), from_to(start, std::min(end, start + fit - 1)));
        ASSERT_EQ(final_message(),
                  "Memwright\r\nPrinting " + std::to_string(pages) + " pages to Paper");
    }
}

TEST_F(PrintedGrid, every_length_from_row_1_takes_its_number_of_pages) {
    for (int end = 1; end <= 240; ++end) {
        print(1, end);
        ASSERT_THAT(paper_.documents.back().pages, SizeIs(pages_counted(end + 1, 36))) << end;
    }
}

TEST_F(PrintedGrid, a_start_above_the_end_is_at_most_a_page_with_an_empty_grid) {
    const auto& document = print(5, 4);
    ASSERT_THAT(document.pages, SizeIs(1));
    EXPECT_THAT(document.pages[0].lines, SizeIs(5));
    EXPECT_THAT(data_rows(document.pages[0]), IsEmpty());
    EXPECT_EQ(texts(document.pages[0]).at(0), source_row(0));
    EXPECT_EQ(document.pages[0].pictures.at(0).picture.height, 36 * kRowHeight);
    EXPECT_EQ(final_message(), "Memwright\r\nPrinting 1 pages to Paper");
    for (const int end : {3, 2, 1}) {
        EXPECT_THAT(print(5, end).pages, IsEmpty());
        EXPECT_EQ(final_message(), "Memwright\r\nPrinting 0 pages to Paper");
    }
    print(240, 1);
    EXPECT_THAT(paper_.documents.back().steps, ElementsAre("end"));
    EXPECT_EQ(final_message(), "Memwright\r\nPrinting 0 pages to Paper");
}

TEST_F(PrintedGrid, each_page_is_printed_step_by_step_across_the_paper) {
    EXPECT_THAT(
        print(1, 36).steps,
        ElementsAre("y 0", "x 6500", "font Ariel bold 12", "print \"Memwright\"", "print \"\"",
                    "font MS Sans Seriff 10", "x 650", "print \"/home/user/radio.120\"",
                    "print \"\"", "x 10000", "y 0", "font MS Sans Seriff 10",
                    "print \"21.11.26 12:34 - Page 1 of 2\"", "draw at 600, 900", "new page",
                    //
                    "y 0", "x 6500", "font Ariel bold 12", "print \" \"", "print \"\"",
                    "font MS Sans Seriff 10", "x 650", "print \"/home/user/radio.120\"",
                    "print \"\"", "x 10000", "y 0", "font MS Sans Seriff 10",
                    "print \"21.11.26 12:34 - Page 2 of 2\"", "draw at 600, 900", "new page",
                    //
                    "end"));
}

TEST_F(PrintedGrid, in_portrait_the_date_stands_farther_left_and_the_picture_is_stretched) {
    const auto& document = print(1, 3, false);
    EXPECT_EQ(document.orientation, PaperOrientation::portrait);
    EXPECT_THAT(document.steps,
                ElementsAre("y 0", "x 6500", "font Ariel bold 12", "print \"Memwright\"",
                            "print \"\"", "font MS Sans Seriff 10", "x 650",
                            "print \"/home/user/radio.120\"", "print \"\"", "x 7000", "y 0",
                            "font MS Sans Seriff 10", "print \"21.11.26 12:34 - Page 1 of 1\"",
                            "draw at 600, 900 sized 11400 x 13950", "new page", "end"));
}

TEST_F(PrintedGrid, landscape_and_portrait_have_the_printers_codes_and_the_title_is_the_jobs) {
    EXPECT_EQ(print(1, 1).orientation, PaperOrientation::landscape);
    EXPECT_EQ(static_cast<int>(PaperOrientation::landscape), 2);
    EXPECT_EQ(static_cast<int>(PaperOrientation::portrait), 1);
    EXPECT_EQ(paper_.documents.back().title, "Memwright");
    EXPECT_TRUE(paper_.documents.back().ended);
}

TEST_F(PrintedGrid, the_file_line_stands_two_lines_below_the_title_and_is_empty_without_a_file) {
    path_ = "";
    const auto& page = print(1, 1).pages.at(0);
    ASSERT_THAT(page.lines, SizeIs(5));
    EXPECT_EQ(page.lines[2].text, "");
    EXPECT_EQ(page.lines[2].x, 650);
    EXPECT_EQ(page.lines[2].y, 2 * fakes::Paper::kLineHeight);
    EXPECT_EQ(page.lines[4].x, 10000);
    EXPECT_EQ(page.lines[4].y, 0);
}

TEST_F(PrintedGrid, the_picture_has_14_columns_of_the_grids_widths_and_36_or_57_rows) {
    double width = 0;
    for (int col = 0; col < kPrintedCols; ++col) width += col_width(col);
    for (const bool horizontal : {true, false}) {
        const Picture& picture = print(1, 3, horizontal).pages.at(0).pictures.at(0).picture;
        EXPECT_EQ(picture.width, width);
        EXPECT_EQ(picture.height, (horizontal ? 36 : 57) * kRowHeight);
    }
    grid_.set_col_width(5, 0);
    EXPECT_EQ(print(1, 3).pages.at(0).pictures.at(0).picture.width, width - col_width(5));
}

TEST_F(PrintedGrid, cells_of_windows_1252_are_printed_as_the_characters_that_they_are) {
    grid_.set_text(1, 1, "Z\xFCrich \x80");
    EXPECT_EQ(texts(print(1, 1).pages.at(0)).at(1).at(1), "Z\xC3\xBCrich \xE2\x82\xAC");
}

TEST_F(PrintedGrid, only_the_headings_are_shaded_the_first_column_is_no_label) {
    const Picture& picture = print(1, 35).pages.at(0).pictures.at(0).picture;
    EXPECT_THAT(picture.fills, SizeIs(kPrintedCols));
    for (const auto& fill : picture.fills) EXPECT_EQ(fill.area.top, 0);
}

TEST_F(PrintedGrid, a_second_print_has_no_leftovers_of_the_first) {
    print(1, 240);
    EXPECT_EQ(all_data_rows(print(100, 102)), from_to(100, 102));
    print(1, 113, false);
    EXPECT_EQ(all_data_rows(print(7, 8)), from_to(7, 8));
    EXPECT_EQ(paper_.documents.back().pages.at(0).pictures.at(0).picture.height, 36 * kRowHeight);
    EXPECT_EQ(all_data_rows(print(7, 8, false)), from_to(7, 8));
    EXPECT_EQ(paper_.documents.back().pages.at(0).pictures.at(0).picture.height, 57 * kRowHeight);
    EXPECT_THAT(all_data_rows(print(5, 4)), IsEmpty());
}

TEST_F(PrintedGrid, the_grid_that_is_printed_stays_as_it_was) {
    grid_.set_row(7);
    grid_.set_col(3);
    int changes = 0;
    const Connection counted = grid_.changed.connect([&](const GridChange&) { ++changes; });
    const Connection moved = grid_.current_changed.connect([&] { ++changes; });
    print(1, 71);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(grid_.Row(), 7);
    EXPECT_EQ(grid_.Col(), 3);
}

TEST_F(PrintedGrid, the_final_message_names_title_pages_and_printer) {
    paper_.name = "Laser in the hall";
    messages_.answers = {Answer::ok};
    printing_.PrintGrid(grid_, "My title", true, 1, 240);
    ASSERT_THAT(messages_.shown, SizeIs(1));
    const Message& message = messages_.shown[0];
    EXPECT_EQ(message.text, "My title\r\nPrinting 7 pages to Laser in the hall");
    EXPECT_EQ(message.title, "Memwright");
    EXPECT_EQ(message.buttons, Buttons::ok);
    EXPECT_EQ(message.icon, Icon::information);
    EXPECT_EQ(paper_.documents.at(0).title, "My title");
    EXPECT_EQ(paper_.documents.at(0).pages.at(0).lines.at(0).text, "My title");
}

TEST_F(PrintedGrid, the_message_comes_when_the_document_has_ended) {
    bool ended = false;
    messages_.while_shown = [&] { ended = paper_.documents.back().ended; };
    print(1, 1);
    EXPECT_TRUE(ended);
}

TEST_F(PrintedGrid, a_printer_that_fails_keeps_the_pages_it_has_and_the_next_print_is_whole) {
    for (const std::size_t pages : {0U, 1U, 3U}) {
        paper_.fails = true;
        paper_.fails_after = pages;
        EXPECT_THROW(printing_.PrintGrid(grid_, "Memwright", true, 1, 240), PrinterError);
        const auto& broken = paper_.documents.back();
        EXPECT_FALSE(broken.ended);
        EXPECT_EQ(all_data_rows(broken), from_to(1, 35 * static_cast<int>(pages)));
        EXPECT_THAT(messages_.shown, IsEmpty());

        paper_.fails = false;
        EXPECT_EQ(all_data_rows(print(1, 3)), from_to(1, 3));
        EXPECT_TRUE(paper_.documents.back().ended);
        messages_.shown.clear();
    }
}

TEST_F(PrintedGrid, a_row_that_the_grid_does_not_have_ends_the_print_when_its_page_is_reached) {
    EXPECT_THROW(printing_.PrintGrid(grid_, "Memwright", true, 601, 720), IndexError);
    const auto& document = paper_.documents.back();
    EXPECT_FALSE(document.ended);
    ASSERT_THAT(document.pages, SizeIs(2));
    EXPECT_EQ(data_rows(document.pages[0]), from_to(601, 635));
    EXPECT_THAT(document.pages[1].lines, SizeIs(5));
    EXPECT_THAT(document.pages[1].pictures, IsEmpty());
    EXPECT_THAT(messages_.shown, IsEmpty());

    EXPECT_EQ(all_data_rows(print(1, 2)), from_to(1, 2)) << "rows 636 to 640 are gone";
    EXPECT_THROW(printing_.PrintGrid(grid_, "Memwright", true, -1, 5), IndexError);
}

TEST_F(PrintedGrid, the_largest_row_numbers_end_with_the_error_too) {
    EXPECT_THROW(printing_.PrintGrid(grid_, "Memwright", true, 32767, 32767), IndexError);
    EXPECT_THROW(printing_.PrintGrid(grid_, "Memwright", true, -32768, 32767), IndexError);
    print(32767, -32768);
    EXPECT_EQ(final_message(), "Memwright\r\nPrinting 0 pages to Paper");
}

}  // namespace
}  // namespace memwright
