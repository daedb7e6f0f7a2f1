// Commands that are told to write over what they read.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "cli/support/cli_test.h"

namespace memwright::cli_tests {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace fs = std::filesystem;

const std::string kList = "Ch,MHz,Mode,Pref,Label\r\n1,121.5,AM,,\"GUARD\"\r\n";

class KeptInput : public CliTest {
  protected:
    void SetUp() override {
        put("radio.120", image_);
        put_text("list.csv", kList);
        fs::create_directory(folder_.path() / "more");
        fs::create_symlink(folder_.path(), folder_.path() / "again");
        for (const std::string name : {"radio.120", "list.csv"}) {
            fs::create_symlink(name, folder_.path() / ("link to " + name));
            fs::create_symlink("link to " + name, folder_.path() / ("link to link to " + name));
            fs::create_hard_link(folder_.path() / name, folder_.path() / ("second " + name));
        }
        names_ = folder_.names();
    }

    // The ways to name a file of the folder.
    Words names_of(const std::string& name) const {
        return {name,
                "./" + name,
                "more/../" + name,
                ".//" + name,
                file(name),
                "again/" + name,
                "link to " + name,
                "second " + name,
                "/proc/self/cwd/" + name,
                "link to link to " + name,
                "again/second " + name};
    }

    void expect_all_kept() const {
        EXPECT_TRUE(text("radio.120") == image_.text());
        EXPECT_EQ(text("list.csv"), kList);
        EXPECT_EQ(folder_.names(), names_);
        EXPECT_TRUE(fs::is_symlink(folder_.path() / "link to radio.120"));
        EXPECT_EQ(fs::hard_link_count(folder_.path() / "radio.120"), 2U);
        EXPECT_EQ(fs::hard_link_count(folder_.path() / "list.csv"), 2U);
    }

    void expect_refused(const Words& arguments, const std::string& what,
                        const std::string& input = "") {
        const Ended ended = run(arguments, input);
        EXPECT_EQ(ended.status, 2) << ended;
        EXPECT_EQ(ended.output, "");
        EXPECT_THAT(ended.errors, StartsWith("memwright-cli: " + what));
        EXPECT_THAT(ended.errors, HasSubstr("\nUsage: memwright-cli " + arguments.front() + " "));
        expect_all_kept();
    }

    const Image image_ = Image().channel(1, "TOWER", "118.1", "AM").rest("and more");
    Words names_;
};

TEST_F(KeptInput, an_export_never_writes_over_its_image) {
    for (const std::string& name : names_of("radio.120")) {
        const std::string what = name +
                                 " is the file that is read as IMAGE: the channel list would "
                                 "replace it.\nNothing was written. Name another file for CSV.\n";
        expect_refused({"export", "radio.120", name}, what);
        expect_refused({"export", "--", "link to radio.120", name}, what);
    }
}

TEST_F(KeptInput, pages_never_take_the_place_of_their_image) {
    for (const std::string& name : names_of("radio.120")) {
        expect_refused({"print", "radio.120", "--pdf", name},
                       name +
                           " is the file that is read as IMAGE: the pages would replace it.\n"
                           "Nothing was written. Name another file for --pdf.\n");
    }
}

TEST_F(KeptInput, an_import_never_writes_over_its_list) {
    for (const std::string& name : names_of("list.csv")) {
        expect_refused({"import", "radio.120", "list.csv", "--output", name},
                       name +
                           " is the file that is read as CSV: the image would replace it.\n"
                           "Nothing was written. Name another file for --output.\n");
    }
    for (const std::string& name : names_of("radio.120")) {
        expect_refused({"import", name, "radio.120"},
                       name +
                           " is the file that is read as CSV: the image would replace it.\n"
                           "Nothing was written. Name another file for CSV.\n");
    }
}

TEST_F(KeptInput, it_is_kept_where_it_is_standard_input_too) {
    const auto with_input = [&](const std::string& name, const Words& arguments) {
        auto redirected = command(arguments);
        redirected.input = file(name);
        const Ended ended = run_to_end(redirected);
        EXPECT_EQ(ended.status, 2) << ended;
        EXPECT_THAT(ended.errors, HasSubstr(" is the file that is read as "));
        expect_all_kept();
    };
    with_input("radio.120", {"export", "-", "radio.120"});
    with_input("radio.120", {"print", "-", "--pdf", "second radio.120"});
    with_input("list.csv", {"import", "radio.120", "-", "--output", "link to list.csv"});
}

TEST_F(KeptInput, of_the_same_kind_may_be_written_over) {
    const Image imported = Image(image_).channel(2, "GUARD", "121.5", "AM");
    EXPECT_EQ(run({"import", "radio.120", "list.csv", "--output", "link to radio.120"}), done());
    EXPECT_TRUE(text("radio.120") == imported.text());
    EXPECT_EQ(run({"settings", "radio.120", "lamp=ON", "--output", "./radio.120"}), done());
    EXPECT_EQ(run({"limits", "radio.120", "0=145,NFM", "--output", "again/radio.120"}), done());
    EXPECT_TRUE(text("radio.120") ==
                Image(imported).set(6666, {1}).limit(0, "145", 1).rest("and more").text());
}

TEST_F(KeptInput, is_not_confused_with_a_copy_of_it) {
    put("copy.120", image_);
    EXPECT_EQ(run({"export", "radio.120", "copy.120"}), done());
    EXPECT_THAT(text("copy.120"), StartsWith("Ch,MHz,Mode,Pref,Label\r\n0,118.10000,AM,,"));
    EXPECT_EQ(run({"export", "gone.120", "gone.120"}).status, 4);
}

}  // namespace
}  // namespace memwright::cli_tests
