// Texts between the core and the screen: every byte of the radio's labels has its character.

#include "qt/core/text.h"
#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

// Windows-1252 from 0x80 to 0x9F; the five codes that it leaves undefined stay control characters.
constexpr char16_t kUpper[] =
    u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D"
    u"\u008F\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D"
    u"\u017E\u0178";

QChar character(int byte) {
    return byte < 0x80 || byte > 0x9F ? QChar(byte) : QChar(kUpper[byte - 0x80]);
}

TEST(Text, every_byte_of_the_radio_has_its_character_and_comes_back_as_itself) {
    for (int byte = 0; byte <= 0xFF; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        EXPECT_EQ(qt::from_radio(one), QString(character(byte))) << byte;
        EXPECT_EQ(qt::to_radio(qt::from_radio(one)), one) << byte;
    }
}

TEST(Text, characters_that_the_radio_lacks_become_question_marks) {
    EXPECT_EQ(qt::to_radio(QString::fromUtf8("a\u4E2Db")), "a?b");
}

TEST(Text, texts_for_people_are_utf_8) {
    EXPECT_EQ(qt::from_utf8("Gr\xC3\xBC\xC3\x9F"
                            "e"),
              QString::fromUtf16(u"Gr\u00FC\u00DFe"));
    EXPECT_EQ(qt::to_utf8(QString::fromUtf16(u"\u20AC")), "\xE2\x82\xAC");
}

TEST(Text, file_names_come_back_as_the_same_bytes) {
    const std::string name =
        "/tmp/Gr\xC3\xBC\xC3\x9F"
        "e \xE2\x82\xAC.120";
    EXPECT_EQ(qt::to_file_name(qt::from_file_name(name)), name);
}

using TextInTheTable = StartedWindowTest;

TEST_F(TextInTheTable, labels_of_all_256_byte_values_are_shown) {
    MemoryImage image = some_image();
    constexpr int kLabels = 2560, kLabelSize = 6;
    for (int memory = 0; memory < 256; ++memory) {
        // 100 MHz, FM, and the label "<byte>A".
        const int record = memory * 4;
        for (const auto& [at, byte] : {std::pair{0, 0x10}, {1, 0x00}, {2, 0x00}, {3, 0x01}}) {
            image.set(record + at, static_cast<std::uint8_t>(byte));
        }
        const int label = kLabels + memory * kLabelSize;
        image.set(label, static_cast<std::uint8_t>(memory));
        image.set(label + 1, 'A');
        for (int at = 2; at < kLabelSize; ++at) image.set(label + at, ' ');
    }
    const std::string path =
        folder_.put("labels.120", {image.bytes().begin(), image.bytes().end()});
    program().open_named(path);
    for (int memory = 0; memory < 256; ++memory) {
        EXPECT_EQ(grid().model()->index(memory, 1).data().toString(),
                  QString(character(memory)) + "A")
            << memory;
    }
}

}  // namespace
}  // namespace memwright::gui
