// check: what looks wrong in an image, where, and why it matters.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/support/cli_test.h"
#include "radio/demonstration.h"

namespace memwright::cli_tests {
namespace {

class Check : public CliTest {
  protected:
    std::string check(const std::string& file) const {
        put_text("a.120", file);
        const Ended ended = run({"check", "a.120"});
        EXPECT_EQ(ended.errors, "");
        EXPECT_EQ(ended.status, ended.output.empty() ? 0 : 1);
        EXPECT_EQ(run({"check", "-"}, file), ended);
        EXPECT_EQ(text("a.120"), file);
        return ended.output;
    }
    std::string check(const Image& image) const { return check(image.text()); }
};

TEST_F(Check, finds_nothing_in_a_clean_image) {
    EXPECT_EQ(check(Image()), "");
    EXPECT_EQ(
        check(Image().channel(1, "A", "145.5").channel(2, "B", "1299.999").limit(0, "145.5", 0)),
        "");
    EXPECT_EQ(check(Image(radio::demonstration_memory())), "");
}

TEST_F(Check, of_the_length) {
    const std::string image = Image().text();
    EXPECT_EQ(
        check(""),
        "length: the file has 0 bytes instead of 7392: what is missing would be taken for zeros\n");
    EXPECT_EQ(check(image.substr(0, 7391)),
              "length: the file has 7391 bytes instead of 7392: what is missing would be taken for "
              "zeros\n");
    EXPECT_EQ(
        check(image + "x"),
        "length: the file has 7393 bytes instead of 7392: those behind the image mean nothing to "
        "the radio\n");
}

TEST_F(Check, of_digits_that_are_no_digits) {
    const std::string why =
        ", and some are no decimal digits: the radio and this program may read different "
        "frequencies\n";
    EXPECT_EQ(check(Image().channel(1, "A", "145").set(record_of(1), {0x14, 0x5A, 0x00})),
              "Bank 0 - 0: the frequency's digits are 145A00" + why);
    EXPECT_EQ(check(Image().channel(65, "A", "145").set(record_of(65), {0x1F, 0x50, 0x00})),
              "Bank 1 - 0: the frequency's digits are 1F5000" + why);
    EXPECT_EQ(check(Image().limit(17, "145").set(7156, {0xFF, 0xFF, 0xF0})),
              "limit 17: the frequency's digits are FFFFF0" + why);
}

TEST_F(Check, of_frequencies_that_the_radio_cannot_receive) {
    EXPECT_EQ(
        check(Image().channel(640, "A", "145").set(record_of(640), {0x33, 0x95, 0x00})),
        "Bank 9 - 63: 339.50000 MHz lies in a range that the radio cannot receive, which ends at "
        "340.00000 MHz: typed again it would move there\n");
    EXPECT_EQ(
        check(Image().channel(1, "A", "145").set(record_of(1), {0x38, 0x35, 0x00})),
        "Bank 0 - 0: 383.50000 MHz lies in a range that the radio cannot receive, which ends at "
        "385.00000 MHz: typed again it would move there\n");
    EXPECT_EQ(check(Image().channel(1, "A", "340").channel(2, "B", "338.999")), "");
    EXPECT_EQ(
        check(Image().channel(1, "A", "145").set(record_of(1), {0xD0, 0x00, 0x00})),
        "Bank 0 - 0: 1300.00000 MHz is past the radio's range, which ends at 1299.99999 MHz: it "
        "cannot be received\n");
    EXPECT_EQ(
        check(Image().limit(0, "339.5").limit(16, "145").set(7152, {0xF9, 0x99, 0x99})),
        "limit 0: 339.50000 MHz lies in a range that the radio cannot receive, which ends at "
        "340.00000 MHz: typed again it would move there\n"
        "limit 16: 1599.99900 MHz is past the radio's range, which ends at 1299.99999 MHz: it "
        "cannot be received\n");
}

TEST_F(Check, of_modes) {
    EXPECT_EQ(check(Image().channel(3, "A", "145", "")),
              "Bank 0 - 2: the mode is missing: the radio has none to receive with\n");
    EXPECT_EQ(check(Image().limit(3, "145", 0)), "");
}

TEST_F(Check, of_settings_that_no_list_has) {
    EXPECT_EQ(
        check(
            Image().set(6662, {5}).set(6666, {3}).set(6667, {6}).set(6669, {12}).set(6671, {255})),
        "Scan Resume: byte 6669 is 12, and its choices are 0 to 11: the settings cannot be shown "
        "or changed\n"
        "Battery Save: byte 6667 is 6, and its choices are 0 to 5: the settings cannot be shown or "
        "changed\n"
        "Search Width: byte 6671 is 255, and its choices are 0 to 3: the settings cannot be shown "
        "or changed\n"
        "Lamp: byte 6666 is 3, and its choices are 0 to 2: the settings cannot be shown or "
        "changed\n"
        "Fast Step: byte 6662 is 5, and its choices are 0 to 4: the settings cannot be shown or "
        "changed\n");
    EXPECT_EQ(check(Image().set(6673, {255}).set(6676, {255, 255}).set(6688, {255, 255})), "");
}

TEST_F(Check, of_frequencies_that_come_twice) {
    EXPECT_EQ(check(Image()
                        .channel(1, "A", "145.5")
                        .channel(2, "B", "145.525")
                        .channel(3, "C", "145.5", "AM")
                        .channel(640, "D", "145.5")),
              "Bank 0 - 2: 145.50000 MHz is also in Bank 0 - 0: a scan stops at it twice\n"
              "Bank 9 - 63: 145.50000 MHz is also in Bank 0 - 0: a scan stops at it twice\n");
}

TEST_F(Check, tells_all_that_it_finds) {
    const std::string found = check(Image()
                                        .channel(1, "A", "145.5", "")
                                        .channel(2, "B", "145.5")
                                        .set(6666, {9})
                                        .limit(0, "339.5")
                                        .rest("x"));
    EXPECT_EQ(std::ranges::count(found, '\n'), 5) << found;
}

}  // namespace
}  // namespace memwright::cli_tests
