// Whatever the image, it comes through the cable unchanged in both directions.

#include <gtest/gtest.h>

#include "link/clone_bench.h"

namespace memwright::link_tests {
namespace {

TEST(CloneRoundTrip, random_images_are_read_and_written_back_unchanged) {
    for (unsigned seed = 9001; seed <= 9010; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const MemoryImage image = random_image(seed);
        CloneBench bench(sending(), image);
        ASSERT_EQ(bench.click_read(), "");
        ASSERT_EQ(bench.store.MemoryImage, image);

        radio::SimulatedRadio blank({}, receiving());
        bench.port.plug(blank);
        ASSERT_EQ(bench.run({Answer::ok}, [&] { bench.write.WriteToVR120(); }), "");
        bench.settle();
        ASSERT_EQ(blank.memory(), image);
    }
}

TEST(CloneRoundTrip, an_image_survives_the_way_through_the_table_too) {
    const MemoryImage image = image_of_user();
    CloneBench bench({.mode = radio::Mode::automatic}, image);
    ASSERT_EQ(bench.click_read(), "");
    radio::SimulatedRadio blank({}, {.mode = radio::Mode::automatic});
    bench.port.plug(blank);
    ASSERT_EQ(bench.click_write(), "");
    bench.settle();
    EXPECT_EQ(blank.memory(), image);
    bench.store.set_image({});
    ASSERT_EQ(bench.run({Answer::ok}, [&] { bench.read.ReadFromVR120(); }), "");
    EXPECT_EQ(bench.store.MemoryImage, image);
}

TEST(CloneRoundTrip, random_images_hold_what_the_table_makes_of_them_when_written) {
    for (unsigned seed = 9101; seed <= 9110; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        CloneBench bench(sending(), random_image(seed));
        ASSERT_EQ(bench.click_read(), "");
        radio::SimulatedRadio blank({}, receiving());
        bench.port.plug(blank);
        ASSERT_EQ(bench.click_write(), "");
        bench.settle();
        ASSERT_EQ(blank.memory(), bench.store.MemoryImage);
        for (int i = layout::kRadioSettings; i < layout::kImageSize; ++i) {
            ASSERT_EQ(blank.memory().get(i), random_image(seed).get(i)) << "byte " << i;
        }
    }
}

}  // namespace
}  // namespace memwright::link_tests
