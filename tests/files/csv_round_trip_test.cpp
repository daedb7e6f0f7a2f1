// Export and import are each other's way back.

#include <algorithm>

#include "fakes/seeded_random.h"
#include "files/csv_test.h"
#include "image/blocked_ranges.h"

namespace memwright {
namespace {

class CsvRoundTrip : public CsvTest {
  protected:
    // Any bytes, or such as lines and fields are made of; but no comma and no CR LF, which no file
    // brings back.
    std::string random_label() {
        std::string label(static_cast<std::size_t>(random.between(0, layout::kLabelSize)), ' ');
        const bool any = random.coin();
        for (char& c : label) {
            c = any ? static_cast<char>(random.byte()) : random.one_of("\"\"\"\r\n\n a0p");
        }
        return kept(label);
    }
    static std::string kept(std::string label) {
        std::ranges::replace(label, ',', ';');
        for (auto pair = label.find("\r\n"); pair != label.npos; pair = label.find("\r\n")) {
            label[pair] = '\n';
        }
        return label;
    }

    std::string random_frequency() {
        std::string frequency = std::to_string(random.between(0, 1298)) + "." +
                                std::to_string(random.between(10000, 99999));
        frequency = FormatFreq(frequency);
        return frequency;
    }

    void fill_at_random() {
        static const char* const kModes[] = {"NFM", "WFM", "AM", ""};
        for (int number = 1; number <= layout::kMemories; ++number) {
            if (random.between(0, 3) == 0) continue;
            fill(number, {random_label(), random_frequency(), kModes[random.between(0, 3)],
                          random.coin() ? "On" : "Off"});
        }
        table.SaveVR120Data();
        bring_into_form();
    }

    // The image as the table itself encodes it, which may take more than once, and without what a
    // file does not bring back.
    void bring_into_form() {
        MemoryImage before;
        do {
            before = store.MemoryImage;
            table.ParseVR120Data();
            for (int number = 1; number <= layout::kMemories; ++number) {
                Channel channel = row(number);
                if (CheckBlocked(channel.frequency) != channel.frequency)
                    channel = {"", "", "", ""};
                channel.tag = kept(channel.tag);
                fill(number, channel);
            }
            table.SaveVR120Data();
        } while (store.MemoryImage != before);
        table.ParseVR120Data();
    }

    void import_exported() { ASSERT_EQ(import_file(folder.file("out.csv")), "imported"); }

    SeededRandom random;
};

TEST_F(CsvRoundTrip, of_random_tables_gives_the_same_table_in_place_and_from_nothing) {
    int channels = 0;
    for (int round = 0; round < 30; ++round) {
        table.initgrid();
        fill_at_random();
        const auto before = texts();
        const std::string file = exported();
        channels += static_cast<int>(std::ranges::count(file, '\r'));

        ASSERT_NO_FATAL_FAILURE(import_exported());
        ASSERT_EQ(texts(), before) << "over itself";

        table.initgrid();
        table.SaveVR120Data();
        ASSERT_NO_FATAL_FAILURE(import_exported());
        ASSERT_EQ(texts(), before) << "into an empty table";
        ASSERT_EQ(exported("again.csv"), file);
    }
    EXPECT_GT(channels, 10000);
    EXPECT_TRUE(display.notes.empty());
}

TEST_F(CsvRoundTrip, brings_back_every_byte_in_every_place_of_a_label) {
    for (std::size_t place = 0; place < layout::kLabelSize; ++place) {
        for (int first = 0; first < 256; first += 128) {
            table.initgrid();
            for (int i = 0; i < 128; ++i) {
                std::string label(layout::kLabelSize, 'x');
                label[place] = static_cast<char>(first + i);
                fill(i + 1, {kept(label), "145.00000"});
            }
            table.SaveVR120Data();
            table.ParseVR120Data();
            const auto before = texts();
            exported();
            table.initgrid();
            table.SaveVR120Data();
            ASSERT_NO_FATAL_FAILURE(import_exported());
            ASSERT_EQ(texts(), before) << "place " << place;
        }
    }
}

TEST_F(CsvRoundTrip, of_random_images_gives_the_same_image_where_the_radio_can_receive_it) {
    int channels = 0;
    for (int round = 0; round < 15; ++round) {
        const auto random_byte = [&] { return random.coin() ? random.byte() : std::uint8_t{0x20}; };
        for (int i = 0; i < layout::kImageSize; ++i) {
            store.set_byte(i, i < layout::kLabels ? random.byte() : random_byte());
        }
        bring_into_form();
        const MemoryImage before = store.MemoryImage;
        channels += static_cast<int>(std::ranges::count(exported(), '\r'));
        table.initgrid();
        table.SaveVR120Data();
        ASSERT_NE(store.MemoryImage, before);
        ASSERT_NO_FATAL_FAILURE(import_exported());
        ASSERT_EQ(store.MemoryImage, before);
    }
    EXPECT_GT(channels, 3000);
}

TEST_F(CsvRoundTrip, loses_what_stands_behind_a_comma_in_a_label) {
    fill(1, {"AIR,1", "145.00000"});
    EXPECT_EQ(exported(), std::string(kHeader) + "0,145.00000,NFM,,\"AIR,1\"\r\n");
    import_exported();
    EXPECT_EQ(row(1).tag, "\"AIR");
}

}  // namespace
}  // namespace memwright
