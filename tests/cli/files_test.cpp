// Files that are not there, are no images, have odd names, or cannot be written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "cli/support/cli_test.h"
#include "fakes/child_process.h"
#include "radio/demonstration.h"
#include "support/built_programs.h"

namespace memwright::cli_tests {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace fs = std::filesystem;

// What each command reads, "@" being the image, with the rest that it needs.
const std::vector<Words> kReaders = {{"channels", "@"},
                                     {"export", "@"},
                                     {"import", "@", "list.csv"},
                                     {"settings", "@"},
                                     {"settings", "@", "lamp=ON"},
                                     {"limits", "@"},
                                     {"limits", "@", "0=145"},
                                     {"diff", "@", "good.120"},
                                     {"diff", "good.120", "@"},
                                     {"print", "@", "--pdf", "out.pdf"}};

// What each command writes, "@" being the file.
const std::vector<Words> kWriters = {{"export", "good.120", "@"},
                                     {"import", "good.120", "list.csv", "--output", "@"},
                                     {"settings", "good.120", "lamp=ON", "--output", "@"},
                                     {"limits", "good.120", "0=145", "--output", "@"},
                                     {"print", "good.120", "--pdf", "@"}};

// What each command writes in place.
const std::vector<Words> kInPlace = {
    {"import", "@", "list.csv"}, {"settings", "@", "lamp=ON"}, {"limits", "@", "0=145"}};

Words with(const std::string& name, Words words) {
    std::ranges::replace(words, std::string("@"), name);
    return words;
}

class Files : public CliTest {
  protected:
    void SetUp() override {
        put("good.120", good_);
        put_text("list.csv", "Ch,MHz,Mode,Pref,Label\r\n5,121.5,AM,,GUARD\r\n");
    }

    Image good_{radio::demonstration_memory()};
};

TEST_F(Files, that_are_not_there_are_told_and_not_made) {
    for (const Words& words : kReaders) {
        const Ended ended = run(with("gone.120", words));
        EXPECT_EQ(ended, (Ended{4, "",
                                "memwright-cli: Cannot open gone.120: No such file or directory.\n"
                                "Check that the file can be read, or open another one.\n"}))
            << words.front();
    }
    EXPECT_EQ(run({"check", "gone.120"}).status, 4);
    const Ended list = run({"import", "good.120", "gone.csv"});
    EXPECT_EQ(list.status, 4);
    EXPECT_THAT(list.errors, StartsWith("memwright-cli: Cannot open gone.csv: No such file"));
    EXPECT_EQ(folder_.names(), (Words{"good.120", "list.csv"}));
}

TEST_F(Files, that_are_too_short_are_no_images) {
    for (const std::size_t size : {0U, 1U, 7391U}) {
        put_text("short.120", std::string(size, 'x'));
        for (const Words& words : kReaders) {
            const std::string what =
                " is no memory image: it has " + std::to_string(size) +
                " bytes, and an image has 7392.\n"
                "Name a file that was saved or read as an image (*.120, *.tk1).\n";
            EXPECT_EQ(run(with("short.120", words)),
                      (Ended{3, "", "memwright-cli: short.120" + what}))
                << words.front();
            EXPECT_EQ(run(with("-", words), std::string(size, 'x')).status, 3);
        }
        EXPECT_EQ(text("short.120"), std::string(size, 'x'));
    }
    EXPECT_EQ(folder_.names(), (Words{"good.120", "list.csv", "short.120"}));
}

TEST_F(Files, that_are_folders_or_devices_are_told) {
    fs::create_directory(folder_.path() / "folder");
    for (const auto& [name, kind] :
         {std::pair("folder", "it is a folder"), {"/dev/null", "it is a device"}}) {
        for (const Words& words : kReaders) {
            const Ended ended = run(with(name, words));
            EXPECT_EQ(ended.status, 4) << words.front();
            EXPECT_EQ(ended.output, "");
            EXPECT_THAT(ended.errors, StartsWith("memwright-cli: Cannot open " + std::string(name) +
                                                 ": " + kind));
        }
        for (const Words& words : kWriters) {
            const Ended ended = run(with(name, words));
            EXPECT_EQ(ended.status, 4) << words.front();
            EXPECT_EQ(ended.output, "");
            EXPECT_THAT(ended.errors,
                        HasSubstr("memwright-cli: Cannot save " + std::string(name) + ": " + kind));
        }
    }
    EXPECT_TRUE(fs::is_empty(folder_.path() / "folder"));
}

TEST_F(Files, in_folders_that_are_not_there_are_not_written) {
    for (const Words& words : kWriters) {
        const Ended ended = run(with("nowhere/out", words));
        EXPECT_EQ(ended.status, 4) << words.front();
        EXPECT_EQ(ended.output, "");
        EXPECT_THAT(ended.errors,
                    HasSubstr("memwright-cli: Cannot save nowhere/out: No such file or directory.\n"
                              "Nothing was changed there. Check that its folder exists"));
    }
    EXPECT_EQ(folder_.names(), (Words{"good.120", "list.csv"}));
}

TEST_F(Files, may_have_any_name) {
    for (const std::string name :
         {"two words.120", "Z\xC3\xBCrich \xE2\x82\xAC.120", "not \xFF UTF-8.120", "-", "--",
          "--help", "-x=1", "a=b", "new\nline", "\"quotes\" '$HOME' `x` \\ *"}) {
        const std::string dashed = name == "-" ? "./-" : name;
        put(name, good_);
        const Words all[] = {{"channels", "--", dashed},
                             {"check", "--", dashed},
                             {"settings", "--", dashed, "lamp=ON"},
                             {"limits", "--", dashed, "0=145"},
                             {"import", "--", dashed, "list.csv"},
                             {"diff", "--", dashed, dashed},
                             {"export", "--", "good.120", dashed}};
        for (const Words& words : all) {
            const Ended ended = run(words);
            EXPECT_EQ(ended.status, 0) << name << ' ' << words.front() << '\n' << ended;
            EXPECT_EQ(ended.errors, "") << name;
        }
        EXPECT_THAT(text(name), StartsWith("Ch,MHz,Mode,Pref,Label\r\n0,118.10000,AM,p,")) << name;
        EXPECT_EQ(run({"settings", "good.120", "lamp=ON", "--output=" + dashed}).status, 0);
        EXPECT_EQ(text(name).size(), 7392U) << name;
        fs::remove(folder_.path() / name);
    }
}

// The program is where an ordinary user can start it, wherever it was built.
TEST_F(Files, that_may_not_be_written_stay_as_they_are) {
    fs::copy_file(systest::built_program("memwright-cli"), home_.path() / "memwright-cli");
    const fs::path file = folder_.path() / "kept";
    put_text("kept", good_.text());
    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    std::vector<Words> all = kInPlace;
    all.insert(all.end(), kWriters.begin(), kWriters.end());
    std::erase_if(all, [](const Words& words) { return words.front() == "print"; });
    for (const Words& words : all) {
        const std::string report = as_an_ordinary_user([&] {
            auto as_other = command(with("kept", words));
            as_other.program = home_.path() / "memwright-cli";
            const Ended ended = run_to_end(as_other);
            return std::to_string(ended.status) + ended.output + ended.errors;
        });
        EXPECT_THAT(
            report,
            StartsWith("4memwright-cli: Cannot save kept: Permission denied.\n"
                       "Nothing was changed there. Save to a folder that you may write to."))
            << words.front();
        EXPECT_TRUE(text("kept") == good_.text());
    }
    EXPECT_EQ(folder_.names(), (Words{"good.120", "kept", "list.csv"}));
}

TEST_F(Files, that_may_not_be_read_are_told) {
    fs::copy_file(systest::built_program("memwright-cli"), home_.path() / "memwright-cli");
    fs::permissions(folder_.path() / "good.120", fs::perms::none);
    const std::string report = as_an_ordinary_user([&] {
        auto as_other = command({"channels", "good.120"});
        as_other.program = home_.path() / "memwright-cli";
        const Ended ended = run_to_end(as_other);
        return std::to_string(ended.status) + ended.output + ended.errors;
    });
    EXPECT_THAT(report, StartsWith("4memwright-cli: Cannot open good.120: Permission denied.\n"));
    fs::permissions(folder_.path() / "good.120", fs::perms::owner_all);
}

TEST_F(Files, for_which_there_is_no_room_stay_as_they_are) {
    put_text("kept", good_.text());
    std::vector<Words> all = kInPlace;
    all.insert(all.end(), kWriters.begin(), kWriters.end());
    for (const Words& words : all) {
        const std::string report = in_child([&]() -> std::string {
            constexpr rlim_t kRoom = 1000;  // less than any of these files is
            if (!limit_file_size(kRoom)) return "no limit";
            const Ended ended = run(with("kept", words));
            return std::to_string(ended.status) + ended.output + ended.errors;
        });
        EXPECT_THAT(report, StartsWith("4memwright-cli: Cannot save kept: File too large.\n"
                                       "Nothing was changed there. Free some space"))
            << words.front();
        EXPECT_TRUE(text("kept") == good_.text());
    }
    EXPECT_EQ(folder_.names(), (Words{"good.120", "kept", "list.csv"}));
}

TEST_F(Files, behind_a_link_are_written_and_the_link_stays) {
    put("target.120", good_);
    fs::create_symlink("target.120", folder_.path() / "link.120");
    EXPECT_EQ(run({"settings", "link.120", "lamp=ON"}), done());
    EXPECT_TRUE(fs::is_symlink(folder_.path() / "link.120"));
    EXPECT_EQ(text("target.120"), Image(good_).set(6666, {1}).text());
}

}  // namespace
}  // namespace memwright::cli_tests
