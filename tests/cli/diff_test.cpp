// diff: memories, settings, limits by their texts, everything else by its bytes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/support/cli_test.h"
#include "cli/support/json.h"
#include "fakes/seeded_random.h"

namespace memwright::cli_tests {
namespace {

class Diff : public CliTest {
  protected:
    // The lines about two images; the exit status says whether there are any.
    std::string diff(const Image& a, const Image& b) const {
        put("a.120", a);
        put("b.120", b);
        const Ended ended = run({"diff", "a.120", "b.120"});
        EXPECT_EQ(ended.errors, "");
        EXPECT_EQ(ended.status, ended.output.empty() ? 0 : 1);
        EXPECT_EQ(run({"diff", "-", "b.120"}, a.text()), ended);
        EXPECT_EQ(run({"diff", "a.120", "-"}, b.text()), ended);
        return ended.output;
    }

    Json json(const Image& a, const Image& b) const {
        put("a.120", a);
        put("b.120", b);
        const Ended ended = run({"diff", "a.120", "b.120", "--format", "json"});
        EXPECT_EQ(ended.errors, "");
        const Json all = read_json(ended.output);
        EXPECT_EQ(all.names(), (Words{"memories", "settings", "limits", "bytes"}));
        std::size_t count = 0;
        for (const JsonMember& group : all.object()) count += group.value.array().size();
        EXPECT_EQ(ended.status, count == 0 ? 0 : 1);
        return all;
    }
};

Image plain() {
    Image image;
    image.channel(6, "CALL", "145.5")
        .channel(640, "LAST", "1299", "WFM", "On")
        .limit(3, "27.405", 1);
    return image;
}

TEST_F(Diff, of_equal_images_is_none) {
    EXPECT_EQ(diff(plain(), plain()), "");
    EXPECT_EQ(diff(plain().rest("more"), plain().rest("more")), "");
    EXPECT_TRUE(json(plain(), plain())["bytes"].array().empty());
}

TEST_F(Diff, tells_each_field_of_a_memory) {
    EXPECT_EQ(diff(plain(), plain().channel(6, "CALL", "145.525", "AM", "On")),
              "Bank 0 - 5: freq 145.50000 -> 145.52500\n"
              "Bank 0 - 5: mode NFM -> AM\n"
              "Bank 0 - 5: pref Off -> On\n");
    EXPECT_EQ(diff(plain(), plain().channel(6, "C\xFC\n\x81", "145.5")),
              "Bank 0 - 5: tag CALL -> C\xC3\xBC??\n");
    EXPECT_EQ(diff(plain(), plain().channel(6, "CALL", "145.5", "")),
              "Bank 0 - 5: mode NFM -> (empty)\n");
    EXPECT_EQ(diff(plain(), plain().channel(7, "NEW", "88.3", "WFM")),
              "Bank 0 - 6: tag (empty) -> NEW\n"
              "Bank 0 - 6: freq (empty) -> 88.30000\n"
              "Bank 0 - 6: mode (empty) -> WFM\n"
              "Bank 0 - 6: pref (empty) -> Off\n");
    EXPECT_EQ(diff(plain(), plain().set(record_of(640), {0xFF, 0xFF, 0xFF})),
              "Bank 9 - 63: tag LAST -> (empty)\n"
              "Bank 9 - 63: freq 1299.00000 -> (empty)\n"
              "Bank 9 - 63: mode WFM -> (empty)\n"
              "Bank 9 - 63: pref On -> (empty)\n");
}

TEST_F(Diff, of_a_memory_that_one_image_lacks_speaks_of_no_bytes_of_its_label) {
    const Image label_alone = plain().set(label_of(8), {'x'});
    EXPECT_EQ(diff(label_alone, plain().channel(8, "", "88.3", "WFM")),
              "Bank 0 - 7: freq (empty) -> 88.30000\n"
              "Bank 0 - 7: mode (empty) -> WFM\n"
              "Bank 0 - 7: pref (empty) -> Off\n");
}

TEST_F(Diff, tells_each_setting_and_those_that_no_list_has) {
    EXPECT_EQ(diff(plain(), plain().set(6662, {4})), "fast-step: 10 KHz -> 100 MHz\n");
    EXPECT_EQ(diff(plain(), plain().set(6669, {200})), "scan-resume: 1 Sec -> 200 (no choice)\n");
    EXPECT_EQ(diff(plain().set(6669, {200}), plain().set(6669, {201})),
              "scan-resume: 200 (no choice) -> 201 (no choice)\n");
    EXPECT_EQ(diff(plain(), plain().set(6676, {0x08})),
              "key-beep: ON -> OFF\nscan-mode: All -> Bank\n");
    EXPECT_EQ(diff(plain().set(6688, {0x09, 0x02}), plain()),
              "linked-scan-bands: 0,3,9 -> (empty)\n");
    EXPECT_EQ(diff(plain(), plain().set(6673, {0x44}).set(6676, {0x19}).set(6677, {0x6C})),
              "attenuator: OFF -> ON\n"
              "am-antenna: External -> Bar\n"
              "fm-antenna: External -> Earphone\n"
              "key-beep: ON -> OFF\n"
              "s-meter-beep: OFF -> ON\n"
              "s-meter-sens: Normal -> Low\n"
              "smart-search: Single -> Continue\n"
              "keypad-lock: OFF -> ON\n"
              "search: VFO -> Limit\n"
              "scan-mode: All -> Bank\n");
}

TEST_F(Diff, tells_each_limit) {
    EXPECT_EQ(diff(plain(), plain().limit(3, "27.405", 0).limit(17, "1299", 3)),
              "limit 3: mode NFM -> AUTO\n"
              "limit 17: freq (empty) -> 1299.00000\n"
              "limit 17: mode AUTO -> AM\n");
    EXPECT_EQ(diff(plain(), plain().limit(3, "27.40525", 1)),
              "limit 3: freq 27.40500 -> 27.40525\n");
}

TEST_F(Diff, tells_other_bytes_by_their_offset) {
    EXPECT_EQ(diff(plain(), plain().set(7000, {0x0A})), "byte 7000: 00 -> 0A\n");
    // Bits beside those of settings, in unused flags, and in memories without a frequency.
    EXPECT_EQ(diff(plain(), plain().set(6673, {0xBB})), "byte 6673: 00 -> BB\n");
    EXPECT_EQ(diff(plain(), plain().set(6689, {0xFC})), "byte 6689: 00 -> FC\n");
    EXPECT_EQ(diff(plain(), plain().set(flags_of(6), {0x19})), "byte 23: 01 -> 19\n");
    EXPECT_EQ(diff(plain(), plain().set(label_of(8), {'x'})), "byte 2602: 20 -> 78\n");
    EXPECT_EQ(diff(plain(), plain().set(6924 + 3, {0x1D})), "byte 6927: 01 -> 1D\n");
}

TEST_F(Diff, tells_other_bits_of_what_it_tells_by_its_text) {
    EXPECT_EQ(diff(plain(), plain().channel(6, "CALL", "145.5", "AM").set(flags_of(6), {0x1B})),
              "Bank 0 - 5: mode NFM -> AM\nbyte 23: 01 -> 1B\n");
    EXPECT_EQ(diff(plain(), plain().channel(6, "CALL2", "145.5").set(flags_of(6), {0x09})),
              "Bank 0 - 5: tag CALL -> CALL2\nbyte 23: 01 -> 09\n");
    EXPECT_EQ(diff(plain(), plain().set(6673, {0x05})),
              "attenuator: OFF -> ON\nbyte 6673: 00 -> 05\n");
    EXPECT_EQ(diff(plain(), plain().limit(3, "27.5", 5)),
              "limit 3: freq 27.40500 -> 27.50000\nbyte 6927: 01 -> 05\n");
}

TEST_F(Diff, tells_what_the_files_hold_behind_the_image) {
    EXPECT_EQ(diff(plain().rest("abc"), plain().rest("aX")),
              "byte 7393: 62 -> 58\n"
              "byte 7394: 63 -> none\n");
    EXPECT_EQ(diff(plain(), plain().rest(" ")), "byte 7392: none -> 20\n");
}

TEST_F(Diff, comes_in_the_order_of_memories_settings_limits_and_bytes) {
    EXPECT_EQ(diff(plain(), plain()
                                .channel(6, "X", "145.5")
                                .channel(640, "Y", "1299", "WFM", "On")
                                .set(6666, {1})
                                .limit(0, "0.5", 3)
                                .set(6500, {1})
                                .rest("r")),
              "Bank 0 - 5: tag CALL -> X\n"
              "Bank 9 - 63: tag LAST -> Y\n"
              "lamp: AUTO -> ON\n"
              "limit 0: freq (empty) -> 0.50000\n"
              "limit 0: mode AUTO -> AM\n"
              "byte 6500: 00 -> 01\n"
              "byte 7392: none -> 72\n");
}

TEST_F(Diff, as_JSON_is_an_array_for_each_kind) {
    const Json all = json(plain(), plain()
                                       .channel(6, "\"\\\n\xFC", "145.5", "AM")
                                       .set(6666, {1})
                                       .limit(3, "28", 1)
                                       .set(6500, {1}));
    const auto text = [](const char* value) { return Json{std::string(value)}; };
    EXPECT_EQ(
        all,
        (Json{JsonObject{
            {"memories",
             {JsonArray{{JsonObject{
                 {"row", {6.0}},
                 {"a", {JsonObject{{"tag", text("CALL")}, {"mode", text("NFM")}}}},
                 {"b", {JsonObject{{"tag", text("\"\\\n\xC3\xBC")}, {"mode", text("AM")}}}}}}}}},
            {"settings",
             {JsonArray{
                 {JsonObject{{"setting", text("lamp")}, {"a", text("AUTO")}, {"b", text("ON")}}}}}},
            {"limits",
             {JsonArray{{JsonObject{{"limit", {3.0}},
                                    {"a", {JsonObject{{"freq", text("27.40500")}}}},
                                    {"b", {JsonObject{{"freq", text("28.00000")}}}}}}}}},
            {"bytes",
             {JsonArray{
                 {JsonObject{{"offset", {6500.0}}, {"a", text("00")}, {"b", text("01")}}}}}}}}));
}

// Whatever differs is told in one way or another.
TEST_F(Diff, finds_every_bit_that_differs) {
    SeededRandom random;
    for (int round = 0; round < 60; ++round) {
        Image a;
        for (int i = 0; i < 7392; ++i) a.set(i, {random.byte()});
        Image b = a;
        const int offset = random.between(0, 7391);
        b.set(offset, {static_cast<std::uint8_t>(a.at(offset) ^ (1 << random.between(0, 7)))});
        EXPECT_NE(diff(a, b), "") << "byte " << offset;
    }
}

}  // namespace
}  // namespace memwright::cli_tests
