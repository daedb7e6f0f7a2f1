// Symbolic links: followed, and left links.

#include <filesystem>
#include <vector>

#include "native/files.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class Links {
  protected:
    // A link that says exactly `target`.
    std::string link(const std::string& name, const std::string& target) {
        fs::create_symlink(target, folder_.path() / name);
        return folder_.file(name);
    }
    std::string target_of(const std::string& name) {
        return fs::is_symlink(folder_.path() / name)
                   ? fs::read_symlink(folder_.path() / name).string()
                   : "no link any more";
    }

    TemporaryFolder folder_;
};

class NativeLinks : public Links, public BothWaysToSave {};
class NativeLinksRead : public Links, public testing::Test {};

TEST_F(NativeLinksRead, reading_follows_a_link) {
    folder_.put("real.120", pattern(7392));
    EXPECT_EQ(read_all(link("link.120", "real.120"), 7392), pattern(7392));
}

TEST_F(NativeLinksRead, reading_a_dangling_link_creates_the_file_that_it_leads_to) {
    const std::string path = link("link.120", "real.120");
    EXPECT_TRUE(read_all(path, 7392).empty());
    EXPECT_EQ(folder_.names(), (Names{"link.120", "real.120"}));
    EXPECT_EQ(target_of("link.120"), "real.120");
}

TEST_F(NativeLinksRead, a_dangling_link_does_not_exist) {
    NativeFileSystem files;
    EXPECT_FALSE(files.exists(link("link.120", "real.120")));
    folder_.put("real.120", {});
    EXPECT_TRUE(files.exists(folder_.file("link.120")));
}

TEST_F(NativeLinksRead, names_of_one_file_are_told_from_those_of_two) {
    NativeFileSystem files;
    const std::string real = folder_.put("real.120", pattern(100));
    const std::string copy = folder_.put("copy.120", pattern(100));
    fs::create_hard_link(real, folder_.file("second.120"));
    const std::string gone = folder_.file("gone.120");
    const std::string last = link("link.120", "second.120");
    for (const std::string& same : {real, folder_.file("./real.120"), folder_.file("second.120"),
                                    last, link("link to link.120", "link.120")}) {
        EXPECT_TRUE(files.lead_to_one_file(real, same)) << same;
        EXPECT_TRUE(files.lead_to_one_file(same, real)) << same;
    }
    for (const std::string& other : {copy, gone, link("dangling.120", "gone.120"), std::string()}) {
        EXPECT_FALSE(files.lead_to_one_file(real, other)) << other;
        EXPECT_FALSE(files.lead_to_one_file(other, real)) << other;
    }
    EXPECT_FALSE(files.lead_to_one_file(gone, gone));
    const std::string folder = folder_.path().string();
    EXPECT_FALSE(files.lead_to_one_file(folder, folder)) << "no file to be replaced";
}

TEST_P(NativeLinks, saving_through_a_whole_name_writes_the_file_that_the_link_leads_to) {
    const std::string real = folder_.put("real.120", pattern(7392));
    EXPECT_EQ(saving(link("link.120", real), pattern(7392, 5)), "saved");
    EXPECT_EQ(target_of("link.120"), real);
    EXPECT_EQ(folder_.get("real.120"), pattern(7392, 5));
    EXPECT_FALSE(fs::is_symlink(real));
    EXPECT_EQ(folder_.names(), (Names{"link.120", "real.120"}));
}

TEST_P(NativeLinks, a_relative_link_counts_from_its_own_folder) {
    fs::create_directory(folder_.path() / "links");
    fs::create_directory(folder_.path() / "images");
    folder_.put("images/real.120", pattern(10000));
    const std::string path = link("links/link.120", "../images/real.120");
    EXPECT_EQ(saving(path, pattern(7392, 5)), "saved");
    EXPECT_EQ(target_of("links/link.120"), "../images/real.120");
    EXPECT_EQ(folder_.get("images/real.120").size(), GetParam().keeps_rest() ? 10000U : 7392U);
    EXPECT_EQ(read_all(folder_.file("images/real.120"), 7392), pattern(7392, 5));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path() / "links"), {}), 1);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path() / "images"), {}), 1);
}

TEST_P(NativeLinks, a_chain_of_links_is_followed_to_its_end) {
    fs::create_directory(folder_.path() / "sub");
    folder_.put("real.120", pattern(7392));
    link("sub/third", "../real.120");
    link("second", "sub/third");
    EXPECT_EQ(saving(link("first", folder_.file("second")), pattern(7392, 5)), "saved");
    EXPECT_EQ(target_of("first"), folder_.file("second"));
    EXPECT_EQ(target_of("second"), "sub/third");
    EXPECT_EQ(target_of("sub/third"), "../real.120");
    EXPECT_EQ(folder_.get("real.120"), pattern(7392, 5));
    EXPECT_EQ(folder_.names(), (Names{"first", "real.120", "second", "sub"}));
}

TEST_P(NativeLinks, saving_through_a_dangling_link_creates_the_file_that_it_leads_to) {
    EXPECT_EQ(saving(link("link.120", "real.120"), pattern(7392)), "saved");
    EXPECT_EQ(target_of("link.120"), "real.120");
    EXPECT_EQ(folder_.get("real.120"), pattern(7392));
    EXPECT_FALSE(fs::is_symlink(folder_.path() / "real.120"));
}

TEST_P(NativeLinks, a_link_into_a_missing_folder_is_an_error) {
    const std::string path = link("link.120", "missing/real.120");
    const std::string error = saving(path, pattern(7392));
    EXPECT_TRUE(has(error, path)) << error;
    EXPECT_EQ(target_of("link.120"), "missing/real.120");
    EXPECT_EQ(folder_.names(), Names{"link.120"});
}

TEST_P(NativeLinks, links_that_lead_round_in_a_circle_are_refused_and_stay) {
    link("a", "b");
    const std::string path = link("b", "a");
    EXPECT_TRUE(has(saving(path, pattern(7392)), "Cannot save " + path));
    EXPECT_NE(reading(path), "read");
    EXPECT_FALSE(NativeFileSystem().exists(path));
    EXPECT_EQ(target_of("a"), "b");
    EXPECT_EQ(target_of("b"), "a");
    EXPECT_EQ(folder_.names(), (Names{"a", "b"}));
}

TEST_P(NativeLinks, a_link_to_a_folder_is_refused_as_the_folder_is) {
    fs::create_directory(folder_.path() / "sub");
    const std::string path = link("link", "sub");
    EXPECT_TRUE(has(saving(path, pattern(7392)), "it is a folder"));
    EXPECT_TRUE(has(reading(path), "it is a folder"));
    EXPECT_EQ(target_of("link"), "sub");
}

TEST_P(NativeLinks, a_linked_folder_on_the_way_is_followed) {
    fs::create_directory(folder_.path() / "sub");
    link("folder", "sub");
    EXPECT_EQ(saving(folder_.file("folder/a.120"), pattern(7392)), "saved");
    EXPECT_EQ(folder_.get("sub/a.120"), pattern(7392));
    EXPECT_EQ(target_of("folder"), "sub");
}

TEST_P(NativeLinks, a_link_named_without_its_folder_is_followed) {
    folder_.put("real.120", pattern(7392));
    link("link.120", "real.120");
    const auto before = fs::current_path();
    fs::current_path(folder_.path());
    const std::string result = saving("link.120", pattern(7392, 5));
    fs::current_path(before);
    EXPECT_EQ(result, "saved");
    EXPECT_EQ(target_of("link.120"), "real.120");
    EXPECT_EQ(folder_.get("real.120"), pattern(7392, 5));
}

INSTANTIATE_TEST_SUITE_P(Saving, NativeLinks, kBothWays, name_of_way);

}  // namespace
}  // namespace memwright
