// The dated images in the user's data folder.

#include "files/image_archive.h"

#include <gmock/gmock.h>

#include "fakes/faulty_file_system.h"
#include "fakes/seeded_random.h"
#include "native/file_system.h"
#include "support/temporary_folder.h"

namespace memwright {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class Archive : public testing::Test {
  protected:
    static MemoryImage image(int number) {
        MemoryImage made;
        made.set(0, static_cast<std::uint8_t>(number));
        made.set(layout::kImageSize - 1, static_cast<std::uint8_t>(number >> 8));
        return made;
    }
    // A second for each: later ones are greater.
    static std::string time(int second) {
        const std::string minutes = std::to_string(100 + second / 60).substr(1);
        return "2026-11-21 12." + minutes + "." + std::to_string(100 + second % 60).substr(1);
    }
    Bytes kept(const std::string& name) const { return folder.get("data/radio images/" + name); }
    static Bytes bytes(const MemoryImage& of) { return {of.bytes().begin(), of.bytes().end()}; }
    std::string put(const std::string& name, const Bytes& content) {
        native.make_private_folder(archive.folder());
        return folder.put("data/radio images/" + name, content);
    }

    TemporaryFolder folder;
    NativeFileSystem native;
    fakes::FaultyFileSystem files{native};
    ImageArchive archive{files, folder.file("data")};
};

TEST_F(Archive, keeps_an_image_under_its_date_and_what_happened_to_it) {
    EXPECT_THAT(archive.names(), IsEmpty());
    archive.keep(image(1), time(1), "read");
    archive.keep(image(2), time(2), "written");
    EXPECT_THAT(archive.names(),
                ElementsAre("2026-11-21 12.00.02 written.120", "2026-11-21 12.00.01 read.120"));
    EXPECT_EQ(kept("2026-11-21 12.00.01 read.120"), bytes(image(1)));
    EXPECT_EQ(kept("2026-11-21 12.00.02 written.120"), bytes(image(2)));
    EXPECT_EQ(archive.path("a"), folder.file("data") + "/radio images/a");
}

TEST_F(Archive, an_image_that_is_there_already_moves_to_the_new_date) {
    archive.keep(image(1), time(1), "read");
    archive.keep(image(2), time(2), "read");
    archive.keep(image(1), time(3), "written");
    EXPECT_THAT(archive.names(),
                ElementsAre("2026-11-21 12.00.03 written.120", "2026-11-21 12.00.02 read.120"));
    EXPECT_EQ(kept("2026-11-21 12.00.03 written.120"), bytes(image(1)));
}

TEST_F(Archive, two_images_of_the_same_second_are_both_kept_and_the_same_one_once) {
    archive.keep(image(1), time(1), "read");
    archive.keep(image(2), time(1), "read");
    archive.keep(image(1), time(1), "read");
    archive.keep(image(2), time(1), "read");
    EXPECT_THAT(archive.names(),
                ElementsAre("2026-11-21 12.00.01 read.120", "2026-11-21 12.00.01 read 2.120"));
    EXPECT_EQ(kept("2026-11-21 12.00.01 read.120"), bytes(image(1)));
    EXPECT_EQ(kept("2026-11-21 12.00.01 read 2.120"), bytes(image(2)));
}

TEST_F(Archive, images_set_aside_have_a_limit_of_their_own) {
    for (int i = 0; i < 50; ++i) archive.keep(image(i), time(i), "read");
    for (int i = 50; i < 101; ++i) archive.keep(image(i), time(i), ImageArchive::kSetAside);
    const auto names = archive.names();
    EXPECT_THAT(names, SizeIs(100));
    EXPECT_THAT(names, Contains("2026-11-21 12.00.00 read.120"));
    EXPECT_THAT(names, Contains("2026-11-21 12.01.40 set aside.120"));
    EXPECT_THAT(names, Contains("2026-11-21 12.00.51 set aside.120"));
    EXPECT_THAT(names, testing::Not(Contains("2026-11-21 12.00.50 set aside.120")));
    archive.keep(image(101), time(101), "written");
    EXPECT_THAT(archive.names(), SizeIs(100));
    EXPECT_THAT(archive.names(), testing::Not(Contains("2026-11-21 12.00.00 read.120")));
}

TEST_F(Archive, keeps_the_last_fifty_distinct_ones) {
    for (int i = 0; i < 50; ++i) archive.keep(image(i), time(i), "read");
    EXPECT_THAT(archive.names(), SizeIs(50));
    // One that is there already pushes none out.
    archive.keep(image(0), time(50), "written");
    EXPECT_THAT(archive.names(), SizeIs(50));
    EXPECT_EQ(archive.names().back(), "2026-11-21 12.00.01 read.120");
    archive.keep(image(50), time(51), "read");
    EXPECT_THAT(archive.names(), SizeIs(50));
    EXPECT_EQ(archive.names().back(), "2026-11-21 12.00.02 read.120");
}

TEST_F(Archive, a_clock_that_was_set_back_costs_the_oldest_ones_not_the_latest) {
    for (int i = 100; i < 150; ++i) archive.keep(image(i), time(i), "read");
    for (int i = 0; i < 20; ++i) archive.keep(image(i), time(i), "read");
    const auto names = archive.names();
    EXPECT_THAT(names, SizeIs(50));
    for (int i = 0; i < 20; ++i) EXPECT_THAT(names, Contains(time(i) + " read.120"));
    for (int i = 120; i < 150; ++i) EXPECT_THAT(names, Contains(time(i) + " read.120"));
}

TEST_F(Archive, one_of_the_same_second_is_not_the_oldest) {
    for (int i = 0; i < 50; ++i) archive.keep(image(i), time(i), "read");
    archive.keep(image(50), time(49), "written");
    const auto names = archive.names();
    EXPECT_THAT(names, SizeIs(50));
    EXPECT_THAT(names, Contains(time(49) + " read.120"));
    EXPECT_THAT(names, Contains(time(49) + " written.120"));
    EXPECT_EQ(names.back(), time(1) + " read.120");
}

// A disk that answers one of two questions only.
TEST_F(Archive, one_of_the_same_second_is_not_replaced_because_it_cannot_be_found) {
    for (bool* const fails : {&files.listing_fails, &files.asking_fails}) {
        const std::string second = time(fails == &files.asking_fails ? 1 : 2);
        archive.keep(image(1), second, "read");
        *fails = true;
        archive.keep(image(2), second, "read");
        *fails = false;
        EXPECT_EQ(kept(second + " read.120"), bytes(image(1)));
        EXPECT_EQ(kept(second + " read 2.120"), bytes(image(2)));
    }
}

TEST_F(Archive, random_images_are_the_last_fifty_distinct_ones_in_the_end) {
    SeededRandom random;
    std::vector<int> latest_first;
    for (int i = 0; i < 300; ++i) {
        const int number = random.between(0, 70);
        archive.keep(image(number), time(i), random.coin() ? "read" : "written");
        std::erase(latest_first, number);
        latest_first.insert(latest_first.begin(), number);
        if (latest_first.size() > 50) latest_first.pop_back();
    }
    const auto names = archive.names();
    ASSERT_EQ(names.size(), latest_first.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(kept(names[i]), bytes(image(latest_first[i]))) << names[i];
    }
}

TEST_F(Archive, what_the_user_saved_in_its_folder_is_never_listed_nor_removed) {
    const std::vector<std::string> names = {
        ".120",
        "mine.120",
        "2026-11-21 mine.120",
        "2026-11-21 12.00.xx read.120",
        "2026-11-21 12.00.00 read.tk1",
        "x026-11-21 12.00.00 read.120",
        "2026-11-2- 12.00.00 read.120",
        "2026-11-2: 12.00.00 read.120",
        "2026-11-21T12.00.00 read.120",
    };
    for (const std::string& name : names) put(name, bytes(image(1)));
    EXPECT_THAT(archive.names(), IsEmpty());
    for (int i = 0; i < 60; ++i) archive.keep(image(i), time(i), "read");
    EXPECT_THAT(archive.names(), SizeIs(50));
    for (const std::string& name : names) EXPECT_EQ(kept(name), bytes(image(1))) << name;
}

TEST_F(Archive, a_file_of_its_own_name_that_holds_something_else_is_left) {
    put(time(1) + " read.120", bytes(image(2)));
    put(time(2) + " read.120", {1, 2, 3});
    archive.keep(image(1), time(1), "read");
    EXPECT_EQ(kept(time(1) + " read.120"), bytes(image(2)));
    EXPECT_EQ(kept(time(1) + " read 2.120"), bytes(image(1)));
    EXPECT_EQ(kept(time(2) + " read.120"), (Bytes{1, 2, 3}));
}

TEST_F(Archive, a_file_that_only_begins_as_the_image_does_is_another_one) {
    Bytes longer = bytes(image(1));
    longer.push_back(0);
    put(time(0) + " read.120", longer);
    archive.keep(image(1), time(1), "read");
    EXPECT_THAT(archive.names(), SizeIs(2));
}

TEST_F(Archive, those_that_cannot_be_read_are_other_ones_and_stay) {
    archive.keep(image(1), time(1), "read");
    archive.keep(image(2), time(2), "read");
    files.reading_fails = true;
    archive.keep(image(2), time(2), "read");
    EXPECT_THAT(archive.names(),
                ElementsAre("2026-11-21 12.00.02 read.120", "2026-11-21 12.00.02 read 2.120",
                            "2026-11-21 12.00.01 read.120"));
}

TEST_F(Archive, a_full_disk_is_told_and_costs_none_of_the_old_ones) {
    for (int i = 0; i < 50; ++i) archive.keep(image(i), time(i), "read");
    const auto before = archive.names();
    files.writing_fails = true;
    EXPECT_THROW(archive.keep(image(50), time(50), "read"), FileError);
    EXPECT_THROW(archive.keep(image(0), time(51), "read"), FileError);
    EXPECT_EQ(archive.names(), before);
}

TEST_F(Archive, old_ones_that_cannot_be_removed_go_with_the_next_image) {
    for (int i = 0; i < 50; ++i) archive.keep(image(i), time(i), "read");
    files.removing_fails = true;
    archive.keep(image(50), time(50), "read");
    EXPECT_THAT(archive.names(), SizeIs(51));
    files.removing_fails = false;
    archive.keep(image(51), time(51), "read");
    EXPECT_THAT(archive.names(), SizeIs(50));
}

TEST_F(Archive, without_a_data_folder_nothing_is_kept) {
    ImageArchive none(files, "");
    none.keep(image(1), time(1), "read");
    EXPECT_THAT(none.names(), IsEmpty());
    EXPECT_EQ(none.folder(), "");
    EXPECT_THAT(folder.names(), IsEmpty());
}

}  // namespace
}  // namespace memwright
