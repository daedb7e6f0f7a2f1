// Files, the question about unsaved changes, start and close, as a user meets them.

#include <gmock/gmock.h>

#include "radio/demonstration.h"
#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

using testing::ElementsAreArray;
using testing::Eq;
using testing::HasSubstr;

constexpr const char* kQuestion = "The VR120 data has changed.\nDo you want to save the changes?";

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
    void close_window() { desktop.window(caption_of(file("zeros.120"))).close(); }
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
    answer("Memwright", kQuestion, "Yes");
    enter_path(*program, "Open File", other);
    wait_for_caption(caption_of(other));
    expect_saved(file("zeros.120"));
    EXPECT_EQ(cell(1, 1), "TOWER");
}

TEST_F(SystemFiles, no_before_open_leaves_the_file_as_it_is) {
    const auto other = other_image();
    start_with_changes();
    choose("File", "Open");
    answer("Memwright", kQuestion, "No");
    enter_path(*program, "Open File", other);
    wait_for_caption(caption_of(other));
    expect_unsaved(file("zeros.120"));
}

TEST_F(SystemFiles, cancel_before_open_changes_nothing) {
    start_with_changes();
    choose("File", "Open");
    answer("Memwright", kQuestion, "Cancel");
    program->settle();
    EXPECT_FALSE(program->has_window("Open File"));
    wait_for_caption(caption_of(file("zeros.120")));
    expect_unsaved(file("zeros.120"));
}

TEST_F(SystemFiles, yes_before_a_read_saves_first) {
    start_with_changes();
    choose("Transfer", "Read from VR-120");
    answer("Memwright", kQuestion, "Yes");
    answer("Read From VR-120", kReadInstructions, "Cancel");
    expect_saved(file("zeros.120"));
}

TEST_F(SystemFiles, no_before_a_read_goes_on_without_saving) {
    start_with_changes();
    choose("Transfer", "Read from VR-120");
    answer("Memwright", kQuestion, "No");
    answer("Read From VR-120", kReadInstructions, "Cancel");
    program->settle();
    expect_unsaved(file("zeros.120"));
}

TEST_F(SystemFiles, cancel_before_a_read_ends_it) {
    start_with_changes();
    choose("Transfer", "Read from VR-120");
    answer("Memwright", kQuestion, "Cancel");
    program->settle();
    EXPECT_FALSE(program->has_window("Read From VR-120"));
    expect_unsaved(file("zeros.120"));
}

TEST_F(SystemFiles, yes_on_close_saves_and_ends) {
    start_with_changes();
    close_window();
    answer("Memwright", kQuestion, "Yes");
    EXPECT_EQ(program->wait_for_exit(), ExitStatus{});
    expect_saved(file("zeros.120"));
}

TEST_F(SystemFiles, no_on_close_ends_without_saving) {
    start_with_changes();
    keyboard.press("Alt+F");
    keyboard.press("x");
    answer("Memwright", kQuestion, "No");
    EXPECT_EQ(program->wait_for_exit(), ExitStatus{});
    expect_unsaved(file("zeros.120"));
}

TEST_F(SystemFiles, cancel_on_close_stays_with_the_settings_written) {
    start_with_changes();
    EXPECT_EQ(setting("WindowState"), "");
    close_window();
    program->message_box("Memwright", kQuestion);
    keyboard.press("Esc");
    wait_for_caption(caption_of(file("zeros.120")));
    EXPECT_EQ(setting("WindowState"), "0");
    EXPECT_EQ(setting("Width"), "9990");
    EXPECT_EQ(setting("Height"), "7050");
    EXPECT_NE(setting("FilePath"), "");
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

TEST_F(SystemFiles, save_as_declined_and_then_under_another_name_keeps_the_declined_one) {
    const auto there = other_image();
    const Bytes before = file_bytes(there);
    start_with_changes();
    save_as(there);
    answer("Save As", there.string() + " already exists.\nDo you want to replace it?", "No");
    enter_path(*program, "Save File As..", file("new"));
    wait_for_caption(caption_of(there));
    expect_saved(file("new.120"));
    EXPECT_EQ(file_bytes(there), before);
}

TEST_F(SystemFiles, save_as_cancelled_at_the_question_changes_nothing) {
    const auto there = other_image();
    const Bytes before = file_bytes(there);
    start_with_changes();
    save_as(there);
    answer("Save As", "already exists.", "Cancel");
    wait_for_caption(caption_of(file("zeros.120")));
    EXPECT_EQ(file_bytes(there), before);
}

TEST_F(SystemFiles, a_file_that_cannot_be_opened_is_reported_and_what_was_there_stays) {
    const auto other = other_image();
    start({other.string()});
    wait_for_caption(caption_of(other));
    std::filesystem::create_directory(file("folder.120"));
    program.reset();
    start({file("folder.120").string()});
    const Accessible report = program->message_box("Memwright", "folder.120");
    EXPECT_THAT(report.tree(), HasSubstr("it is a folder"));
    mouse.click(report.button("OK"));
    wait_for_caption(std::string(kTitle) + " - By the Memwright developers");
    EXPECT_TRUE(main().menu_item("Open").enabled());
}

TEST_F(SystemFiles, wrong_arguments_end_with_status_2_and_a_message) {
    Program wrong(desktop, MEMWRIGHT, {"--com", "13=/dev/null"});
    EXPECT_EQ(wrong.wait_for_exit().code, 2);
    EXPECT_THAT(wrong.errors(), HasSubstr("13=/dev/null"));
}

}  // namespace
}  // namespace memwright::systest
