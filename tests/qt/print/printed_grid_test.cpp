// The channel table on paper, as a reader of the file sees it.

#include <gmock/gmock.h>

#include <regex>

#include "app/idle_platform.h"
#include "app/print_grid.h"
#include "fakes/scripted_dialogs.h"
#include "qt/print/pdf_bench.h"
#include "radio/demonstration.h"
#include "table/channel_table.h"
#include "table/columns.h"

namespace memwright {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kFile = "/home/user/radio.120";
const QRectF kFrame(kOrigin + 600, kOrigin + 900, 6100, 8640);  // twips

class PdfPrinter final : public Printer {
  public:
    PdfPrinter(std::string path, FileSystem& files) : path_(std::move(path)), files_(files) {}
    std::unique_ptr<PrintedDocument> begin(const std::string& title,
                                           PaperOrientation orientation) override {
        return std::make_unique<qt::PdfDocument>(path_, title, orientation, files_);
    }

  private:
    std::string path_;
    FileSystem& files_;
};

class PrintedTable : public PdfBench {
  protected:
    PrintedTable() {
        store_.set_image(radio::demonstration_memory());
        table_.ParseVR120Data();
    }

    PdfFile print(int start, int end, bool horizontal = true) {
        PdfPrinter printer(path(), files_);
        messages_.answers.push_back(Answer::ok);
        GridPrinting(printer, clock_, messages_, [this] { return file_; })
            .PrintGrid(grid_, "Memwright", horizontal, static_cast<std::int16_t>(start),
                       static_cast<std::int16_t>(end));
        return pdf();
    }

    // The cells of a row that are seen, a blank between any two words.
    std::string row(int row) const {
        std::string text;
        for (int col = 0; col < columns::kCount; ++col) {
            const std::string& cell = grid_.TextMatrix(row, col);
            if (grid_.ColWidth(col) > 0 && !cell.empty()) text += (text.empty() ? "" : " ") + cell;
        }
        return text;
    }

    // The lines of a page, with single blanks, without empty ones.
    static std::vector<std::string> lines(const PdfFile& file, int page) {
        static const std::regex kBlanks(" +");
        std::vector<std::string> found;
        for (const std::string& line : file.lines(page)) {
            std::string text = std::regex_replace(line, kBlanks, " ");
            if (text.starts_with(" ")) text.erase(0, 1);
            if (!text.empty()) found.push_back(text);
        }
        return found;
    }

    static std::string whole_text(const PdfFile& file) {
        std::string text;
        for (int page = 1; page <= file.pages(); ++page) {
            for (const std::string& line : lines(file, page)) text += line + "\n";
        }
        return text;
    }

    ImageCodec store_;
    MSFlexGrid grid_{"MSFlexGrid1"};
    MenuEntry saving_{"mnuSaveOnly", "&Save"};
    ChannelTable table_{store_, grid_, saving_};
    fakes::IdleLoop clock_;
    fakes::ScriptedMessageBox messages_;
    std::string file_ = kFile;
};

TEST_F(PrintedTable, of_all_rows_is_seven_pages_with_every_cell_of_240_rows) {
    const PdfFile file = print(1, 240);
    ASSERT_EQ(file.pages(), 7);
    int next = 1;
    for (int page = 1; page <= 7; ++page) {
        std::vector<std::string> expected;
        const std::string date = "21.11.26 12:34 - Page " + std::to_string(page) + " of 7";
        expected.push_back(page == 1 ? "Memwright " + date : date);
        expected.push_back(kFile);
        expected.push_back("# Tag Freq Mode Pref");
        for (int line = 0; line < 35 && next <= 240; ++line) expected.push_back(row(next++));
        EXPECT_EQ(lines(file, page), expected) << "page " << page;
    }
    EXPECT_EQ(next, 241);
    EXPECT_EQ(messages_.shown.at(0).text, "Memwright\r\nPrinting 7 pages to " + path());
}

TEST_F(PrintedTable, of_no_row_is_an_empty_grid_or_no_file) {
    EXPECT_THAT(lines(print(5, 4), 1), ElementsAre("Memwright 21.11.26 12:34 - Page 1 of 1", kFile,
                                                   "# Tag Freq Mode Pref"));
    std::filesystem::remove(path());
    PdfPrinter printer(path(), files_);
    messages_.answers.push_back(Answer::ok);
    GridPrinting(printer, clock_, messages_, [this] {
        return file_;
    }).PrintGrid(grid_, "Memwright", true, 5, 3);
    EXPECT_THAT(folder_.names(), IsEmpty());
}

TEST_F(PrintedTable, is_text_and_vectors_and_no_bitmaps) {
    const PdfFile file = print(1, 240);
    EXPECT_EQ(file.images(), 0);
    EXPECT_TRUE(file.fonts_are_whole());
}

TEST_F(PrintedTable, has_its_header_texts_at_their_places) {
    const PdfFile file = print(1, 35);
    const auto words = file.words(1);
    const auto box = [&](const std::string& text) {
        for (const auto& word : words) {
            if (word.text == text) return word.box;
        }
        throw std::runtime_error("no word " + text);
    };
    constexpr double kNear = 40;
    EXPECT_NEAR(box("Memwright").left(), kOrigin + 6500, kNear);
    EXPECT_NEAR(box("Memwright").top(), kOrigin, kNear);
    EXPECT_NEAR(box("21.11.26").left(), kOrigin + 10000, kNear);
    EXPECT_NEAR(box("21.11.26").top(), kOrigin, kNear);
    EXPECT_NEAR(box(kFile).left(), kOrigin + 650, kNear);
    EXPECT_GT(box(kFile).top(), box("Memwright").bottom());
    EXPECT_LT(box(kFile).bottom(), kFrame.top()) << "clear of the grid";
    for (const auto& word : words) {
        const bool heading = word.box.bottom() < kFrame.top();
        EXPECT_TRUE(heading || kFrame.contains(word.box)) << word.text << " leaves the grid";
        EXPECT_LT(word.box.right(), file.paper().width() - kOrigin) << word.text;
    }
}

TEST_F(PrintedTable, under_a_file_with_foreign_letters_tells_its_name_whole) {
    file_ = "/home/J\xC3\xB6rg/\xD0\xA0\xD0\xB0\xD0\xB4\xD0\xB8\xD0\xBE \xCE\xB1\xCE\xB2.120";
    grid_.set_text(1, columns::kTag, "\xC4\xD6\xDC\xDF\xE9\x80");
    const std::string text = whole_text(print(1, 3));
    EXPECT_THAT(text, HasSubstr(file_ + "\n"));
    EXPECT_THAT(text, HasSubstr("\xC3\x84\xC3\x96\xC3\x9C\xC3\x9F\xC3\xA9\xE2\x82\xAC"));
}

// A page as a picture, in which lines are looked for.
class Look {
  public:
    Look(QImage image, int dots_per_inch)
        : image_(std::move(image)), scale_(dots_per_inch / 1440.) {}

    // The first and the last column that are ink from top to bottom of the grid, in twips.
    std::pair<double, double> upright_rules() const {
        return outermost(image_.width(), [this](int x) {
            return dark_share(QRect(x, dots(kFrame.top()), 1, dots(kFrame.height()))) > 0.97;
        });
    }
    std::pair<double, double> level_rules() const {
        return outermost(image_.height(), [this](int y) {
            return dark_share(QRect(dots(kFrame.left()), y, dots(kFrame.width()), 1)) > 0.97;
        });
    }

    // Whether a part of the page, in twips, is white.
    bool white(const QRectF& part) const {
        const QRect box(dots(part.left()), dots(part.top()), dots(part.width()),
                        dots(part.height()));
        return dark_share(box & image_.rect()) == 0;
    }

    QSizeF size() const { return QSizeF(image_.size()) / scale_; }

  private:
    int dots(double twips) const { return static_cast<int>(std::lround(twips * scale_)); }
    std::pair<double, double> outermost(int count, const std::function<bool(int)>& rule) const {
        int first = -1, last = -1;
        for (int i = 0; i < count; ++i) {
            if (!rule(i)) continue;
            if (first < 0) first = i;
            last = i;
        }
        return {(first + 0.5) / scale_, (last + 0.5) / scale_};
    }
    double dark_share(const QRect& box) const {
        constexpr int kPaper = 240;
        int dark = 0;
        for (int y = box.top(); y <= box.bottom(); ++y) {
            for (int x = box.left(); x <= box.right(); ++x) {
                dark += qGray(image_.pixel(x, y)) < kPaper ? 1 : 0;
            }
        }
        return static_cast<double>(dark) / box.width() / box.height();
    }

    QImage image_;
    double scale_;
};

TEST_F(PrintedTable, has_the_frame_of_its_grid_where_the_twips_say_on_every_page) {
    constexpr int kDotsPerInch = 300;
    constexpr double kDot = 1440. / kDotsPerInch;
    const PdfFile file = print(1, 240);
    for (const int page : {1, 2, 7}) {
        const Look look(file.picture(page, kDotsPerInch), kDotsPerInch);
        const auto [left, right] = look.upright_rules();
        const auto [top, bottom] = look.level_rules();
        EXPECT_NEAR(left, kFrame.left(), 2 * kDot) << "page " << page;
        EXPECT_NEAR(right, kFrame.right(), 2 * kDot) << "page " << page;
        EXPECT_NEAR(top, kFrame.top(), 2 * kDot) << "page " << page;
        EXPECT_NEAR(bottom, kFrame.bottom(), 2 * kDot) << "page " << page;
    }
}

TEST_F(PrintedTable, leaves_the_margins_and_what_lies_around_the_grid_white) {
    const Look look(print(1, 240).picture(1, 150), 150);
    const QSizeF paper = look.size();
    const double width = paper.width(), height = paper.height();
    EXPECT_TRUE(look.white({0, 0, width, kOrigin - 10}));
    EXPECT_TRUE(look.white({0, 0, kOrigin - 10, height}));
    EXPECT_TRUE(look.white({width - kOrigin, 0, kOrigin, height}));
    EXPECT_TRUE(look.white({0, height - kOrigin, width, kOrigin}));
    EXPECT_TRUE(look.white({0, kFrame.bottom() + 30, width, height - kFrame.bottom() - 30}));
    EXPECT_TRUE(look.white({kFrame.right() + 30, kFrame.top(), 3000, kFrame.height()}));
    EXPECT_FALSE(look.white(kFrame));
}

TEST_F(PrintedTable, is_sharp_however_closely_one_looks) {
    constexpr int kDotsPerInch = 1200;
    const PdfFile file = print(1, 35);
    // Across the frame's left edge, in the middle of a row.
    const QImage edge =
        file.picture(1, kDotsPerInch, QRectF(kFrame.left() - 60, kFrame.top() + 360, 120, 2));
    int inked = 0, pure = 0;
    for (int x = 0; x < edge.width(); ++x) {
        const int grey = qGray(edge.pixel(x, 0));
        inked += grey < 250 ? 1 : 0;
        pure += grey == 0xA0 ? 1 : 0;
    }
    EXPECT_GE(pure, 5) << "a rule is 8 twips, which are 6.7 dots";
    EXPECT_LE(inked, 9) << "and has no soft edge";

    // The first cell's text: hardly a dot between black and white.
    const QImage text =
        file.picture(1, kDotsPerInch, QRectF(kFrame.left() + 30, kFrame.top() + 270, 1600, 180));
    int black = 0, between = 0;
    for (int y = 0; y < text.height(); ++y) {
        for (int x = 0; x < text.width(); ++x) {
            const int grey = qGray(text.pixel(x, y));
            black += grey < 16 ? 1 : 0;
            between += grey >= 16 && grey < 240 ? 1 : 0;
        }
    }
    EXPECT_GT(black, 5000);
    EXPECT_LT(between, black / 4);
}

TEST_F(PrintedTable, upright_has_57_rows_stretched_from_its_place) {
    const PdfFile file = print(1, 113, false);
    ASSERT_EQ(file.pages(), 2);
    EXPECT_LT(file.paper().width(), file.paper().height());
    const auto first_page = lines(file, 1);
    EXPECT_EQ(std::ranges::count_if(
                  first_page, [](const std::string& line) { return line.starts_with("Bank"); }),
              56);
    EXPECT_EQ(lines(file, 2).back(), row(112));
    const auto words = file.words(1);
    double first = 0, last = 0;
    for (const auto& word : words) {
        if (word.text == "Tag") first = word.box.center().y();
        if (word.box.center().y() > last) last = word.box.center().y();
    }
    // From the middle of the first row to that of the last are 56 of 57 rows.
    EXPECT_NEAR(last - first, 13950. * 56 / 57, 60);
}

}  // namespace
}  // namespace memwright
