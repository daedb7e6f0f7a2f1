// Where things are painted, and how.

#include "qt/print/painted_document.h"

#include <gmock/gmock.h>

#include <QPdfWriter>

#include "base/error.h"
#include "qt/print/pdf_bench.h"

namespace memwright {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr double kNear = 30;  // twips that a glyph's own margin takes

class PaintedPage : public PdfBench {
  protected:
    // What is on the pages that `paint` makes.
    std::vector<PdfFile::Word> words(const std::function<void(PrintedDocument&)>& paint,
                                     int page = 1) {
        const auto document = begin();
        paint(*document);
        document->end();
        return pdf().words(page);
    }

    static PdfFile::Word word(const std::vector<PdfFile::Word>& words, const std::string& text) {
        for (const PdfFile::Word& found : words) {
            if (found.text == text) return found;
        }
        throw std::runtime_error("no word " + text);
    }

    static Picture some_picture() {
        Picture picture;
        picture.width = 2000;
        picture.height = 1000;
        picture.fills.push_back({{0, 0, 2000, 1000}, 0x808080});
        picture.texts.push_back({{100, 0, 1800, 1000}, "inside", 9, false, 0xFFFFFF});
        return picture;
    }

    // The box around everything that is not white, in twips.
    QRectF ink(int page = 1) const {
        constexpr int kDotsPerInch = 288;  // a dot is five twips
        const QImage image = pdf().picture(page, kDotsPerInch);
        QRect box;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qGray(image.pixel(x, y)) < 250) box |= QRect(x, y, 1, 1);
            }
        }
        return {box.left() * 5.0, box.top() * 5.0, box.width() * 5.0, box.height() * 5.0};
    }
};

TEST_F(PaintedPage, a_line_begins_at_its_place_and_the_next_one_below_at_the_left_edge) {
    const auto found = words([](PrintedDocument& document) {
        document.set_font({"Ariel", false, 12});
        document.set_x(6500);
        document.set_y(3000);
        document.print_line("first");
        document.print_line("second");
        document.print_line("");
        document.print_line("fourth");
    });
    const QRectF first = word(found, "first").box, second = word(found, "second").box,
                 fourth = word(found, "fourth").box;
    EXPECT_NEAR(first.left(), kOrigin + 6500, kNear);
    EXPECT_NEAR(first.top(), kOrigin + 3000, kNear);
    EXPECT_NEAR(second.left(), kOrigin, kNear);
    EXPECT_NEAR(fourth.left(), kOrigin, kNear);
    const double line = second.top() - first.top();
    EXPECT_GE(line, 12 * 20);
    EXPECT_LE(line, 12 * 20 * 1.5);
    EXPECT_NEAR(fourth.top() - second.top(), 2 * line, 2) << "an empty line takes its room";
}

TEST_F(PaintedPage, fonts_have_their_size_and_weight_whatever_they_are_called) {
    const auto found = words([](PrintedDocument& document) {
        document.set_font({"Ariel", false, 10});
        document.print_line("small-words");
        document.set_font({"MS Sans Seriff", false, 20});
        document.print_line("large-words");
        document.set_font({"MS Sans Seriff", true, 20});
        document.print_line("heavy-words");
    });
    const QRectF plain = word(found, "small-words").box, large = word(found, "large-words").box,
                 heavy = word(found, "heavy-words").box;
    EXPECT_NEAR(large.height() / plain.height(), 2, 0.05);
    EXPECT_NEAR(large.width() / word(found, "heavy-words").box.width(), 0.9, 0.09);
    EXPECT_NEAR(heavy.height(), large.height(), 20);
    const auto darkness = [&](const QRectF& box) {
        const QImage image = pdf().picture(1, 300, box);
        int dark = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) dark += qGray(image.pixel(x, y)) < 128 ? 1 : 0;
        }
        return static_cast<double>(dark) / image.width() / image.height();
    };
    EXPECT_GT(darkness(heavy), 1.2 * darkness(large));
}

TEST_F(PaintedPage, texts_in_any_letters_stay_texts) {
    const std::vector<std::string> kTexts = {
        "Z\xC3\xBCrich-\xE2\x82\xAC-\xC3\xA9",                       // Latin
        "\xCE\xA3\xCF\x84\xCE\xB1\xCE\xB8\xCE\xBC\xCF\x8C\xCF\x82",  // Greek
        "\xD0\xA0\xD0\xB0\xD0\xB4\xD0\xB8\xD0\xBE",                  // Cyrillic
        "a<b>&c;\"d\"",
        "Off-fine-office-flight",
    };
    const auto document = begin();
    document->set_font({"MS Sans Seriff", false, 10});
    for (const std::string& text : kTexts) document->print_line(text);
    document->end();
    std::string all;
    for (const std::string& line : pdf().lines(1)) all += line + "\n";
    for (const std::string& text : kTexts) EXPECT_THAT(all, HasSubstr(text));
    EXPECT_TRUE(pdf().fonts_are_whole());
}

TEST_F(PaintedPage, a_page_begins_when_something_is_drawn_on_it) {
    const auto document = begin();
    document->print_line("one");
    document->new_page();
    document->set_font({"Ariel", true, 12});
    document->set_y(0);
    document->new_page();
    document->draw(some_picture(), 0, 0, std::nullopt);
    document->new_page();
    document->end();
    EXPECT_EQ(pdf().pages(), 2) << "and none behind the last";
}

TEST_F(PaintedPage, a_picture_lies_where_it_is_put_in_its_own_size) {
    words([](PrintedDocument& document) { document.draw(some_picture(), 600, 900); });
    const QRectF box = ink();
    EXPECT_NEAR(box.left(), kOrigin + 600, 10);
    EXPECT_NEAR(box.top(), kOrigin + 900, 10);
    EXPECT_NEAR(box.width(), 2000, 10);
    EXPECT_NEAR(box.height(), 1000, 10);
}

TEST_F(PaintedPage, a_picture_is_stretched_to_a_size_with_its_texts_and_nothing_after_it_is) {
    const auto found = words([](PrintedDocument& document) {
        document.draw(some_picture(), 600, 900, PrintedDocument::Size{8000, 2000});
        document.set_font({"Ariel", false, 9});
        document.set_y(5000);
        document.print_line("inside-not");
    });
    const QRectF box = ink();
    EXPECT_NEAR(box.left(), kOrigin, kNear) << "the line";
    const QRectF inside = word(found, "inside").box;
    const QRectF after = word(found, "inside-not").box;
    EXPECT_NEAR(inside.left(), kOrigin + 600 + 4 * 100, 4 * kNear);
    EXPECT_NEAR(inside.center().y(), kOrigin + 900 + 1000, 100);
    EXPECT_NEAR(inside.height() / after.height(), 2, 0.1);
    const QImage corner =
        pdf().picture(1, 144, QRectF(kOrigin + 600 + 7900, kOrigin + 900 + 1900, 200, 200));
    EXPECT_EQ(qGray(corner.pixel(5, 5)), 0x80);
    EXPECT_EQ(qGray(corner.pixel(15, 5)), 0xFF);
    EXPECT_EQ(qGray(corner.pixel(5, 15)), 0xFF);
}

TEST_F(PaintedPage, a_text_too_long_for_its_place_ends_with_dots_inside_of_it) {
    Picture picture;
    picture.width = 3000;
    picture.height = 480;
    picture.texts.push_back({{100, 0, 1000, 240}, "WWWWWWWWWWWWWWWW", 9, false, 0});
    picture.texts.push_back({{100, 240, 1000, 240}, "fits", 9, false, 0});
    const auto found = words([&](PrintedDocument& document) { document.draw(picture, 0, 0); });
    ASSERT_EQ(found.size(), 2U);
    EXPECT_THAT(found[0].text, testing::MatchesRegex("WW+\xE2\x80\xA6"));
    EXPECT_LE(found[0].box.right(), kOrigin + 1100 + kNear);
    EXPECT_EQ(found[1].text, "fits");
}

TEST_F(PaintedPage, texts_of_a_picture_have_their_colour_and_stand_in_the_middle_of_their_height) {
    Picture picture;
    picture.width = 3000;
    picture.height = 1000;
    picture.texts.push_back({{0, 0, 3000, 1000}, "grey", 20, true, 0xA0A0A0});
    const auto found = words([&](PrintedDocument& document) { document.draw(picture, 0, 0); });
    EXPECT_NEAR(found.at(0).box.center().y(), kOrigin + 500, 60);
    const QImage image = pdf().picture(1, 600, found[0].box);
    int darkest = 255;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            darkest = std::min(darkest, qGray(image.pixel(x, y)));
        }
    }
    EXPECT_EQ(darkest, 0xA0);
}

TEST_F(PaintedPage, what_comes_later_lies_above) {
    Picture picture = some_picture();
    picture.lines.push_back({0, 500, 2000, 500, 0x000000});
    words([&](PrintedDocument& document) { document.draw(picture, 0, 0); });
    const QImage image = pdf().picture(1, 1440, QRectF(kOrigin + 1900, kOrigin + 495, 10, 10));
    EXPECT_EQ(qGray(image.pixel(5, 5)), 0);
    EXPECT_EQ(qGray(image.pixel(5, 0)), 0x80);
}

// A device that takes nothing.
class Unplugged final : public qt::PaintedDocument {
  public:
    explicit Unplugged(QPagedPaintDevice& device) : PaintedDocument(device) {
        set_up(PaperOrientation::landscape);
    }
    std::string device_name() const override { return "Laser in the hall"; }
};

TEST_F(PaintedPage, a_device_that_takes_no_page_is_a_printer_error_that_names_it) {
    QPdfWriter nowhere(QString::fromStdString(folder_.file("away/printed.pdf")));
    Unplugged document(nowhere);
    document.set_x(1);
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            document.print_line("one");
            FAIL() << "no error";
        } catch (const PrinterError& error) {
            EXPECT_THAT(error.what(), HasSubstr("Cannot print on Laser in the hall"));
            EXPECT_THAT(error.what(), HasSubstr("print again"));
        }
    }
    EXPECT_NO_THROW(document.end()) << "nothing was painted";
}

}  // namespace
}  // namespace memwright
