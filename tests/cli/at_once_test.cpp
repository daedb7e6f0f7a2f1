// Several commands that change one file at once.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>

#include "cli/support/running_cli.h"
#include "support/eventually.h"

namespace memwright::cli_tests {
namespace {

namespace fs = std::filesystem;

// A file of the test's own, closed at its end.
class OpenFile {
  public:
    explicit OpenFile(const std::string& path) : file_(open(path.c_str(), O_RDWR | O_CLOEXEC)) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { close(file_); }

    bool lock() const { return flock(file_, LOCK_EX | LOCK_NB) == 0; }
    bool put(const std::string& text) const {
        return write(file_, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    }
    int unread() const {
        int count = 0;
        return ioctl(file_, FIONREAD, &count) == 0 ? count : -1;
    }

  private:
    int file_;
};

class AtOnce : public CliTest {
  protected:
    void run_all(const std::vector<Words>& all) const {
        std::vector<std::unique_ptr<RunningCli>> running;
        running.reserve(all.size());
        for (const Words& words : all) {
            running.push_back(std::make_unique<RunningCli>(command(words)));
        }
        for (const auto& cli : running) EXPECT_EQ(cli->end(), done());
    }

    // Does the process sleep with the file open? It waits for its lock then.
    static bool waits_with(const std::string& path, pid_t process) {
        const fs::path about = fs::path("/proc") / std::to_string(process);
        std::ifstream stat(about / "stat");
        std::string number, name, state;
        if (!(stat >> number >> name >> state) || state != "S") return false;
        std::error_code gone;
        for (fs::directory_iterator entry(about / "fd", gone), end; !gone && entry != end;
             entry.increment(gone)) {
            std::error_code closed;
            if (fs::read_symlink(entry->path(), closed) == path) return true;
        }
        return false;
    }

    std::string image_ = put("radio.120", Image());
};

TEST_F(AtOnce, changes_of_limits_are_all_kept) {
    Image all;
    std::vector<Words> changes;
    for (int limit = 0; limit < 18; ++limit) {
        const std::string frequency = std::to_string(100 + limit);
        changes.push_back({"limits", image_, std::to_string(limit) + "=" + frequency + ",AM"});
        all.limit(limit, frequency, 3);
    }
    run_all(changes);
    EXPECT_TRUE(text("radio.120") == all.text()) << run({"limits", image_}).output;
}

TEST_F(AtOnce, changes_by_different_commands_and_names_are_all_kept) {
    fs::create_symlink("radio.120", folder_.path() / "link.120");
    Image all;
    std::vector<Words> changes = {
        {"settings", "link.120", "lamp=ON"},
        {"settings", image_, "linked-scan-bands=0,3,9", "--output", "link.120"}};
    all.set(6666, {1}).set(6688, {0x09, 0x02});
    for (int row = 1; row <= 8; ++row) {
        const std::string list = "list " + std::to_string(row);
        const std::string number = std::to_string(row - 1);
        put_text(list, "Ch,MHz,Mode,Pref,Label\r\n" + number + ",121.5,AM,,TAG\r\n");
        changes.push_back({"import", row % 2 == 0 ? "radio.120" : "./link.120", list});
        changes.push_back({"limits", "link.120", number + "=145,NFM"});
        all.channel(row, "TAG", "121.5", "AM").limit(row - 1, "145", 1);
    }
    run_all(changes);
    // An import leaves no frequency in memories that have none, whatever their other bits are.
    put("all.120", all);
    EXPECT_EQ(run({"diff", "radio.120", "all.120"}), done());
    EXPECT_TRUE(fs::is_symlink(folder_.path() / "link.120"));
}

TEST_F(AtOnce, a_file_that_stays_locked_is_given_up_and_left_as_it_is) {
    const OpenFile other(image_);
    ASSERT_TRUE(other.lock());
    EXPECT_EQ(run({"limits", image_}).status, 0) << "looking needs no lock";
    EXPECT_EQ(run({"limits", "radio.120", "0=145"}),
              (Ended{4, "",
                     "memwright-cli: Cannot change radio.120: it is being changed by another "
                     "program.\nNothing was changed there. Wait for that program, or end it, and "
                     "try again.\n"}));
    EXPECT_TRUE(text("radio.120") == Image().text());
    EXPECT_EQ(folder_.names(), Words{"radio.120"});
}

TEST_F(AtOnce, a_command_that_waits_goes_on_when_the_other_one_has_ended) {
    auto other = std::make_unique<OpenFile>(image_);
    ASSERT_TRUE(other->lock());
    RunningCli cli(command({"settings", image_, "lamp=ON"}));
    ASSERT_TRUE(systest::wait_until([&] { return waits_with(image_, cli.pid()); }));
    EXPECT_TRUE(text("radio.120") == Image().text());
    other.reset();
    EXPECT_EQ(cli.end(), done());
    EXPECT_TRUE(text("radio.120") == Image().set(6666, {1}).text());
}

TEST_F(AtOnce, a_command_that_waits_can_be_interrupted) {
    const OpenFile other(image_);
    ASSERT_TRUE(other.lock());
    RunningCli cli(command({"settings", image_, "lamp=ON"}));
    ASSERT_TRUE(systest::wait_until([&] { return waits_with(image_, cli.pid()); }));
    cli.signal(SIGINT);
    EXPECT_EQ(cli.end(), (Ended{kBySignal, "", ""}));
    EXPECT_TRUE(text("radio.120") == Image().text());
    EXPECT_EQ(folder_.names(), Words{"radio.120"});
}

TEST_F(AtOnce, nobody_waits_for_what_is_still_being_typed) {
    const std::string typed = home_.file("typed");
    ASSERT_EQ(mkfifo(typed.c_str(), 0600), 0);
    auto keys = std::make_unique<OpenFile>(typed);
    auto import = command({"import", image_, "-"});
    import.input = typed;
    RunningCli cli(import);
    ASSERT_TRUE(keys->put("Ch,MHz,Mode,Pref,Label\r\n"));
    ASSERT_TRUE(systest::wait_until([&] { return keys->unread() == 0; }));
    EXPECT_EQ(run({"settings", image_, "lamp=ON"}), done());
    ASSERT_TRUE(keys->put("1,121.5,AM,,GUARD\r\n"));
    keys.reset();
    EXPECT_EQ(cli.end(), done());
    EXPECT_THAT(run({"settings", image_}).output, ::testing::HasSubstr("\nlamp=ON\n"));
    EXPECT_EQ(run({"export", image_}).output,
              "Ch,MHz,Mode,Pref,Label\r\n1,121.50000,AM,,\"GUARD\"\r\n");
}

}  // namespace
}  // namespace memwright::cli_tests
