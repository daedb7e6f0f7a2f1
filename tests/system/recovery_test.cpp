// The built program, killed in the middle of work, and started again.

#include <gmock/gmock.h>

#include <algorithm>

#include "files/snapshot.h"
#include "radio/demonstration.h"
#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Eq;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class SystemRecovery : public MemwrightDesktop {
  protected:
    fs::path state() const { return desktop.home() / ".local/state/memwright"; }

    std::vector<std::string> snapshots() const {
        std::vector<std::string> names;
        std::error_code none;
        for (const auto& entry : fs::directory_iterator(state(), none)) {
            const std::string name = entry.path().filename();
            if (name.ends_with(".recovery")) names.push_back(name);
        }
        std::ranges::sort(names);
        return names;
    }
    // The first cells of the snapshots.
    std::vector<std::string> first_cells() const {
        std::vector<std::string> cells;
        for (const std::string& name : snapshots()) {
            cells.push_back(snapshot_from(file_bytes(state() / name)).cells[0]);
        }
        return cells;
    }

    fs::path demonstration(const std::string& name = "mine.120") {
        const auto path = file(name);
        write_file(path, through_the_table(radio::demonstration_memory()).bytes());
        return path;
    }
    std::string caption_of(const fs::path& path) const {
        return std::string(kTitle) + " - " + path.string();
    }
    void start_with(const fs::path& path) {
        start({path.string()});
        wait_for_caption(caption_of(path));
    }
    void kill() {
        program->kill();
        program.reset();
    }
    void close_answering(const std::string& button) {
        choose("File", "Exit");
        answer("Memwright", kChanged, button);
        EXPECT_EQ(program->wait_for_exit(), ExitStatus{});
        program.reset();
    }
};

TEST_F(SystemRecovery, what_was_typed_before_a_kill_comes_back_after_yes) {
    const auto path = demonstration();
    start_with(path);
    keyboard.type("abc");
    keyboard.press("Tab");
    keyboard.type("145.5");
    keyboard.press("Down");
    keyboard.type("146.5");
    expect_eventually([&] { return cell(2, 2); }, Eq("146.50000"));
    expect_eventually(
        [&] {
            const auto names = snapshots();
            return names.empty() ? std::string()
                                 : snapshot_from(file_bytes(state() / names[0])).cells[14 + 1];
        },
        Eq("146.50000"));
    const Bytes before = file_bytes(path);
    kill();
    EXPECT_EQ(file_bytes(path), before);

    start();
    const std::string question = program->message_box("Memwright", "Do you want to restore").tree();
    EXPECT_THAT(question, HasSubstr("Memwright ended before the table of " + path.string() +
                                    " was saved. It was last changed on "));
    answer("Memwright", "Do you want to restore it?", "Yes");
    wait_for_caption(caption_of(path));
    EXPECT_EQ(cell(1, 1), "ABC");
    EXPECT_EQ(cell(1, 2), "145.50000");
    EXPECT_EQ(cell(2, 2), "146.50000");
    EXPECT_TRUE(grid().enabled());
    close_answering("Yes");
    EXPECT_NE(file_bytes(path), before);
    EXPECT_THAT(snapshots(), IsEmpty());
    start_with(path);
    EXPECT_EQ(cell(1, 1), "ABC");
}

TEST_F(SystemRecovery, every_key_reaches_the_disk_by_itself_while_the_cell_is_still_open) {
    start_with(demonstration());
    std::string typed;
    for (const char* const key : {"a", "b", "c"}) {
        keyboard.type(key);
        typed += static_cast<char>(*key - 'a' + 'A');
        expect_eventually([&] { return first_cells(); }, ElementsAre(typed));
    }
    kill();
    start();
    answer("Memwright", "Do you want to restore it?", "Yes");
    wait_for_caption(caption_of(file("mine.120")));
    EXPECT_EQ(cell(1, 1), "ABC");
}

TEST_F(SystemRecovery, a_kill_at_any_moment_leaves_a_whole_snapshot_or_none) {
    start_with(demonstration());
    for (int round = 0; round < 6; ++round) {
        keyboard.type("abc");
        // Killed before there is anything on the disk, or as soon as there is.
        if (round % 2 == 1) {
            expect_eventually(
                [&] {
                    const auto names = snapshots();
                    return std::ranges::any_of(
                        names, [](const auto& name) { return !name.starts_with("declined "); });
                },
                Eq(true));
        }
        kill();
        bool asked = false;
        for (const std::string& name : snapshots()) {
            EXPECT_NO_THROW(snapshot_from(file_bytes(state() / name))) << name;
            asked = asked || !name.starts_with("declined ");
        }
        start({file("mine.120").string()});
        if (asked) answer("Memwright", "Do you want to restore it?", "No");
        wait_for_caption(caption_of(file("mine.120")));
        EXPECT_EQ(cell(1, 1), "TOWER");
    }
    EXPECT_GE(snapshots().size(), 3U);
}

TEST_F(SystemRecovery, no_starts_empty_and_the_next_start_asks_nothing) {
    start_with(demonstration());
    keyboard.type("abc");
    expect_eventually([&] { return first_cells(); }, ElementsAre("ABC"));
    kill();
    start();
    answer("Memwright", "Do you want to restore it?", "No");
    wait_for_caption(kFreshCaption);
    EXPECT_FALSE(grid().enabled());
    expect_eventually([&] { return snapshots(); }, ElementsAre(StartsWith("declined ")));
    EXPECT_THAT(first_cells(), ElementsAre("ABC"));
    kill();
    start();
    main();
    program->settle();
    EXPECT_FALSE(program->has_window("Memwright"));
    // By hand it comes back: it only has to have its old name.
    kill();
    const std::string name = snapshots().at(0);
    fs::rename(state() / name, state() / name.substr(std::string("declined ").size()));
    start();
    answer("Memwright", "Do you want to restore it?", "Yes");
    wait_for_caption(caption_of(file("mine.120")));
    EXPECT_EQ(cell(1, 1), "ABC");
}

TEST_F(SystemRecovery, a_clean_exit_asks_nothing) {
    start_with(demonstration());
    keyboard.type("abc");
    expect_eventually([&] { return first_cells(); }, ElementsAre("ABC"));
    close_answering("No");
    EXPECT_THAT(snapshots(), IsEmpty());
    start();
    wait_for_caption(kFreshCaption);
    program->settle();
    EXPECT_FALSE(program->has_window("Memwright"));
}

TEST_F(SystemRecovery, two_running_programs_do_not_take_each_others) {
    start_with(demonstration("one.120"));
    keyboard.type("one");
    expect_eventually([&] { return first_cells(); }, ElementsAre("ONE"));
    const auto one = std::move(program);

    start({demonstration("two.120").string()});
    wait_for_caption(caption_of(file("two.120")));
    program->settle();
    EXPECT_FALSE(program->has_window("Memwright")) << "the other one is alive";
    keyboard.type("two");
    expect_eventually([&] { return first_cells(); }, testing::UnorderedElementsAre("ONE", "TWO"));
    kill();

    // The one that was killed is offered beside the one that runs.
    start();
    const std::string question = program->message_box("Memwright", "Do you want to restore").tree();
    EXPECT_THAT(question, HasSubstr(file("two.120").string()));
    answer("Memwright", "Do you want to restore it?", "Yes");
    wait_for_caption(caption_of(file("two.120")));
    EXPECT_EQ(cell(1, 1), "TWO");
    EXPECT_TRUE(one->running());
    EXPECT_THAT(first_cells(), testing::UnorderedElementsAre("ONE", "TWO"));
    one->kill();
}

TEST_F(SystemRecovery, a_table_that_came_from_a_radio_comes_back_without_a_name) {
    plug_in();
    start_in_quick_time();
    read_to_end();
    EXPECT_EQ(cell(1, 1), "TOWER");
    expect_eventually([&] { return first_cells(); }, ElementsAre("TOWER"));
    kill();
    start();
    answer("Memwright", "a table that has no file yet", "Yes");
    expect_eventually([&] { return cell(1, 1); }, Eq("TOWER"));
    EXPECT_TRUE(grid().enabled());
    wait_for_caption(kFreshCaption);
    const auto saved = file("mine");
    choose("File", "Save");
    enter_path(*program, "Save File As..", saved);
    wait_for_caption(caption_of(saved) + ".120");
    EXPECT_EQ(file_bytes(saved.string() + ".120").size(), std::size_t{layout::kImageSize});
    EXPECT_THAT(snapshots(), IsEmpty());

    // And what the radio sent is in the archive, byte for byte.
    const auto archive = desktop.home() / ".local/share/memwright/radio images";
    std::vector<fs::path> kept{fs::directory_iterator(archive), {}};
    ASSERT_THAT(kept, SizeIs(1));
    EXPECT_TRUE(kept[0].string().ends_with(" read.120")) << kept[0];
    const auto sent = radio::demonstration_memory();
    EXPECT_EQ(file_bytes(kept[0]), Bytes(sent.bytes().begin(), sent.bytes().end()));
}

TEST_F(SystemRecovery, a_state_folder_that_cannot_be_made_is_told_and_the_program_goes_on) {
    fs::create_directories(desktop.home() / ".local");
    write_file(desktop.home() / ".local/state", Bytes{1});
    start_with(demonstration());
    keyboard.type("abc");
    expect_eventually([&] { return main().tree(); },
                      HasSubstr("Changes are not kept for the case of a crash."));
    EXPECT_EQ(cell(1, 1), "ABC");
    close_answering("Yes");
}

}  // namespace
}  // namespace memwright::systest
