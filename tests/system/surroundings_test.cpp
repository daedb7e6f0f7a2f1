// The built program where little is as it should be: settings that are no settings, a home that
// takes no files, a current folder that is gone, files with odd names, files that are no files.

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "files/snapshot.h"
#include "radio/demonstration.h"
#include "support/built_programs.h"
#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAreArray;
using testing::Eq;
using testing::HasSubstr;

// Where not even the superuser can make a file.
constexpr const char* kReadOnly = "/proc/self/task";

class SystemSurroundings : public MemwrightDesktop {
  protected:
    fs::path demonstration(const fs::path& path) {
        write_file(path, through_the_table(radio::demonstration_memory()).bytes());
        return path;
    }
    std::string caption_of(const fs::path& path) const {
        return std::string(kTitle) + " - " + path.string();
    }
    fs::path settings_file() const { return desktop.settings() / "Memwright" / "VR120.ini"; }

    // Types a label into the first row of what is shown, saves, and ends without a question.
    void edit_save_and_exit(const fs::path& path) {
        wait_for_caption(caption_of(path));
        keyboard.type("abc");
        keyboard.press("Return");
        expect_eventually([&] { return cell(1, 1); }, Eq("ABC"));
        choose("File", "Save");
        choose("File", "Exit");
        EXPECT_EQ(program->wait_for_exit(), ExitStatus{});
        const Bytes saved = file_bytes(path);
        ASSERT_EQ(saved.size(), std::size_t{layout::kImageSize});
        EXPECT_EQ(std::string(saved.begin() + layout::kLabels, saved.begin() + layout::kLabels + 3),
                  "ABC");
    }
    void works_with(const fs::path& path, const Environment& extra = {}) {
        start({demonstration(path).string()}, extra);
        edit_save_and_exit(path);
    }

    // The file is named with the reason, and the program goes on to open another one.
    void expect_refused(const std::string& path, const std::string& reason) {
        start({path});
        const std::string box = program->message_box("Memwright", reason).tree();
        EXPECT_THAT(box, HasSubstr(path));
        keyboard.press("Return");
        wait_for_caption(kFreshCaption);
        EXPECT_FALSE(grid().enabled());
        open(demonstration(file("other.120")));
        EXPECT_EQ(cell(1, 1), "TOWER");
        choose("File", "Exit");
        EXPECT_EQ(program->wait_for_exit(), ExitStatus{});
    }
};

TEST_F(SystemSurroundings, settings_that_cannot_be_read_are_as_none) {
    fs::create_directories(settings_file() / "in the way");
    works_with(file("mine.120"));
    EXPECT_TRUE(fs::is_directory(settings_file()));
}

TEST_F(SystemSurroundings, settings_that_cannot_be_written_stand_in_no_ones_way) {
    fs::remove_all(desktop.settings() / "Memwright");
    write_file(desktop.settings() / "Memwright", Bytes{1});
    works_with(file("mine.120"));
    EXPECT_EQ(file_bytes(desktop.settings() / "Memwright"), Bytes{1});
}

TEST_F(SystemSurroundings, settings_full_of_nonsense_are_skipped_and_written_anew) {
    fs::create_directories(settings_file().parent_path());
    Bytes nonsense;
    for (int i = 0; i < 20000; ++i) {
        nonsense.push_back(static_cast<std::uint8_t>(i * i / 7 + i % 251));
    }
    write_file(settings_file(), nonsense);
    works_with(file("mine.120"));
    EXPECT_EQ(setting("WindowState"), "0");
    EXPECT_EQ(setting("Width"), "9990");
}

TEST_F(SystemSurroundings, a_home_folder_that_takes_no_files_is_told_once_and_the_work_goes_on) {
    const Environment read_only = {{"HOME", kReadOnly},
                                   {"XDG_CONFIG_HOME", kReadOnly},
                                   {"XDG_DATA_HOME", kReadOnly},
                                   {"XDG_STATE_HOME", kReadOnly}};
    start({demonstration(file("mine.120")).string()}, read_only);
    wait_for_caption(caption_of(file("mine.120")));
    keyboard.type("x");
    expect_eventually([&] { return main().tree(); },
                      HasSubstr("Changes are not kept for the case of a crash."));
    keyboard.press("Esc");
    edit_save_and_exit(file("mine.120"));
}

TEST_F(SystemSurroundings, a_read_is_shown_although_no_copy_of_it_can_be_kept) {
    plug_in();
    start_in_quick_time({}, {{"XDG_DATA_HOME", kReadOnly}});
    read_to_end();
    EXPECT_EQ(cell(1, 1), "TOWER");
    EXPECT_THAT(main().tree(), HasSubstr(std::string(kReadOnly) + "/memwright"));
}

TEST_F(SystemSurroundings, a_current_folder_that_is_gone_hinders_nothing) {
    const auto path = demonstration(file("mine.120"));
    fs::create_directory(file("gone"));
    program = std::make_unique<Application>(
        desktop, "sh",
        std::vector<std::string>{"-c", "cd '" + file("gone").string() +
                                           "' && rmdir ../gone && exec '" +
                                           built_program("memwright") + "' --com 1=none"});
    wait_for_caption(kFreshCaption);
    open(path);
    edit_save_and_exit(path);
}

TEST_F(SystemSurroundings, a_current_folder_that_is_gone_is_told_where_a_file_was_to_be_in_it) {
    fs::create_directory(file("gone"));
    program = std::make_unique<Application>(
        desktop, "sh",
        std::vector<std::string>{"-c", "cd '" + file("gone").string() +
                                           "' && rmdir ../gone && exec '" +
                                           built_program("memwright") + "' --com 1=none mine.120"});
    answer("Memwright", "mine.120", "OK");
    wait_for_caption(kFreshCaption);
}

TEST_F(SystemSurroundings, a_stored_folder_that_is_gone_hinders_nothing) {
    fs::create_directories(settings_file().parent_path());
    const std::string stored =
        "[Settings]\nDebugWin=False\nFilePath=/media/gone/radio\nTop=200000\nLeft=-200000\n";
    write_file(settings_file(), Bytes(stored.begin(), stored.end()));
    const fs::path path = demonstration(file("mine.120"));
    start({path.string()});
    wait_for_caption(caption_of(path));
    const Query log{.name = "Status window", .showing = true};
    EXPECT_FALSE(main().find_now(log)) << "what is stored was not read";
    edit_save_and_exit(path);
    EXPECT_NE(setting("FilePath"), "/media/gone/radio");
    EXPECT_LT(std::stod(setting("Top")), 200000);
}

TEST_F(SystemSurroundings, a_path_of_four_thousand_characters_is_one_like_any_other) {
    fs::path path = file("deep");
    while (path.string().size() < 3800) path /= std::string(150, 'd');
    fs::create_directories(path);
    path /= std::string(4000 - path.string().size() - 5, 'f') + ".120";
    ASSERT_EQ(path.string().size(), 4000U);
    works_with(path);
}

TEST_F(SystemSurroundings, a_path_that_is_too_long_is_refused) {
    std::string path = file("deep").string();
    while (path.size() < 4200) path += "/" + std::string(150, 'd');
    start({path + ".120"});
    program->message_box("Memwright", "too long");
    keyboard.press("Return");
    wait_for_caption(kFreshCaption);
}

TEST_F(SystemSurroundings, foreign_letters_in_a_path_are_letters) {
    const auto folder = file("Empfänger – приёмник 受信機 📻 \"quoted\" & 'so'");
    fs::create_directory(folder);
    works_with(folder / "mémoire über %1 %s.120");
}

TEST_F(SystemSurroundings, a_drive_that_vanishes_costs_nothing_of_the_table) {
    fs::create_directory(file("drive"));
    const auto path = demonstration(file("drive/mine.120"));
    start({path.string()});
    wait_for_caption(caption_of(path));
    keyboard.type("abc");
    keyboard.press("Return");
    fs::remove_all(file("drive"));
    choose("File", "Save");
    answer("Memwright", path.string(), "OK");
    wait_for_caption(caption_of(path));
    EXPECT_EQ(cell(1, 1), "ABC");
    // It still counts as unsaved, and goes to another place.
    save_as(file("rescued.120"));
    wait_for_caption(caption_of(file("rescued.120")));
    choose("File", "Exit");
    EXPECT_EQ(program->wait_for_exit(), ExitStatus{});
    EXPECT_EQ(file_bytes(file("rescued.120"))[layout::kLabels], 'A');
}

TEST_F(SystemSurroundings, a_drive_that_is_gone_already_is_told) {
    expect_refused(file("drive/mine.120").string(), "Check that its folder exists");
}

TEST_F(SystemSurroundings, a_folder_is_no_image) {
    fs::create_directory(file("folder.120"));
    expect_refused(file("folder.120").string(), "it is a folder");
}

TEST_F(SystemSurroundings, a_named_pipe_is_no_image_and_nobody_waits_for_it) {
    ASSERT_EQ(mkfifo(file("pipe.120").c_str(), 0600), 0);
    expect_refused(file("pipe.120").string(), "it is a named pipe");
}

TEST_F(SystemSurroundings, a_device_is_no_image) { expect_refused("/dev/zero", "it is a device"); }

}  // namespace
}  // namespace memwright::systest
