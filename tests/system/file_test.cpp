// Files, the question about unsaved changes, start and close, as a user meets them.

#include <gmock/gmock.h>

#include "radio/demonstration.h"
#include "support/built_programs.h"
#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

using testing::ElementsAreArray;
using testing::Eq;
using testing::HasSubstr;

class SystemFiles : public MemwrightDesktop {
  protected:
    // Starts with an image whose display makes changes.
    void start_with_changes() {
        start({changing_image().string()});
        wait_for_caption(caption_of(changing_image()));
    }
    std::string caption_of(const std::filesystem::path& path) const {
        return std::string(kTitle) + " - " + path.string();
    }
    void expect_saved(const std::filesystem::path& path) {
        EXPECT_THAT(file_bytes(path), ElementsAreArray(through_the_table(MemoryImage{}).bytes()));
    }
    void expect_unsaved(const std::filesystem::path& path) {
        EXPECT_EQ(file_bytes(path), Bytes(layout::kImageSize, 0));
    }
    std::filesystem::path other_image() {
        const auto path = file("other.120");
        write_file(path, through_the_table(radio::demonstration_memory()).bytes());
        return path;
    }
};

TEST_F(SystemFiles, yes_before_open_saves_first) {
    const auto other = other_image();
    start_with_changes();
    choose("File", "Open");
    answer("Memwright", kChanged, "Yes");
    enter_path(*program, "Open File", other);
    wait_for_caption(caption_of(other));
    expect_saved(file("zeros.120"));
    EXPECT_EQ(cell(1, 1), "TOWER");
}

TEST_F(SystemFiles, no_on_close_ends_without_saving) {
    start_with_changes();
    keyboard.press("Alt+F");
    keyboard.press("x");
    answer("Memwright", kChanged, "No");
    EXPECT_EQ(program->wait_for_exit(), ExitStatus{});
    expect_unsaved(file("zeros.120"));
}

TEST_F(SystemFiles, the_window_comes_back_where_it_was) {
    start({other_image().string()});
    wait_for_caption(caption_of(file("other.120")));
    const TopWindow window = desktop.window(caption_of(file("other.120")));
    window.move_to({90, 110});
    window.resize(820, 600);
    expect_eventually([&] { return window.rectangle().width; }, Eq(820));
    program->settle();
    const Rectangle placed = window.rectangle();
    choose("File", "Exit");
    EXPECT_EQ(program->wait_for_exit(), ExitStatus{});
    start({file("other.120").string()});
    wait_for_caption(caption_of(file("other.120")));
    expect_eventually([&] { return desktop.window(caption_of(file("other.120"))).rectangle(); },
                      Eq(placed));
}

TEST_F(SystemFiles, wrong_arguments_end_with_status_2_and_a_message) {
    Program wrong(desktop, built_program("memwright"), {"--com", "13=/dev/null"});
    EXPECT_EQ(wrong.wait_for_exit().code, 2);
    EXPECT_THAT(wrong.errors(), HasSubstr("13=/dev/null"));
}

}  // namespace
}  // namespace memwright::systest
