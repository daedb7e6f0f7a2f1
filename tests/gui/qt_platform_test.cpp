// The event loop, the clock and the settings store on Qt.

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QSettings>
#include <QTimer>
#include <chrono>
#include <filesystem>

#include "gui/support/robot.h"
#include "qt/core/qt_platform.h"
#include "qt/core/text.h"
#include "support/temporary_folder.h"

namespace memwright::gui {
namespace {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;

TEST(EventLoop, wait_returns_when_an_event_comes) {
    qt::QtEventLoop loop;
    bool came = false;
    QTimer::singleShot(20ms, [&] { came = true; });
    const auto start = SteadyClock::now();
    while (!came && SteadyClock::now() - start < 5s) loop.wait(60s);
    EXPECT_TRUE(came);
    EXPECT_LT(SteadyClock::now() - start, 5s);
}

TEST(EventLoop, wait_handles_what_has_come_already) {
    qt::QtEventLoop loop;
    bool handled = false;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [&] { handled = true; }, Qt::QueuedConnection);
    loop.wait(10s);
    EXPECT_TRUE(handled);
}

TEST(EventLoop, wait_ends_by_itself) {
    qt::QtEventLoop loop;
    const auto start = SteadyClock::now();
    loop.wait(30ms);
    EXPECT_LT(SteadyClock::now() - start, 10s);
    loop.wait(0ms);
    EXPECT_LT(SteadyClock::now() - start, 10s);
}

TEST(EventLoop, wait_sleeps_when_nothing_happens) {
    qt::QtEventLoop loop;
    QCoreApplication::processEvents();
    int rounds = 0;
    const auto start = SteadyClock::now();
    while (SteadyClock::now() - start < 300ms) {
        loop.wait(50ms);
        ++rounds;
    }
    // Six, and some for events of the desktop.
    EXPECT_LE(rounds, 20);
}

TEST(EventLoop, a_tick_comes_again_and_again_until_its_connection_ends) {
    qt::QtEventLoop loop;
    int ticks = 0;
    Connection connection = loop.every(5ms, [&] { ++ticks; });
    EXPECT_TRUE(wait_until([&] { return ticks >= 3; }));
    connection.reset();
    const int last = ticks;
    bool later = false;
    QTimer::singleShot(50ms, [&] { later = true; });
    EXPECT_TRUE(wait_until([&] { return later; }));
    EXPECT_EQ(ticks, last);
}

TEST(EventLoop, a_tick_may_end_its_own_connection) {
    qt::QtEventLoop loop;
    int ticks = 0;
    Connection connection;
    connection = loop.every(1ms, [&] {
        ++ticks;
        connection.reset();
    });
    bool later = false;
    QTimer::singleShot(50ms, [&] { later = true; });
    EXPECT_TRUE(wait_until([&] { return later; }));
    EXPECT_EQ(ticks, 1);
}

TEST(Clock, tells_seconds_of_the_day) {
    qt::QtClock clock;
    const double now = clock.seconds_since_midnight();
    EXPECT_GE(now, 0);
    EXPECT_LT(now, 86400);
    EXPECT_TRUE(wait_until([&] { return clock.seconds_since_midnight() != now; }));
}

class Settings : public ::testing::Test {
  protected:
    Settings() { use("settings"); }

    void use(const std::string& name) {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                           qt::from_file_name(folder_.file(name)));
    }

    // What another run of the program finds, which has none of this one's memory.
    void read_from_disk() {
        std::filesystem::copy(folder_.path() / "settings", folder_.path() / "copy",
                              std::filesystem::copy_options::recursive);
        use("copy");
    }

    TemporaryFolder folder_;
    qt::QtSettingsStore store_;
};

TEST_F(Settings, what_was_not_saved_is_not_there) {
    EXPECT_EQ(store_.find("VR120", "Settings", "CommPort"), std::nullopt);
    EXPECT_EQ(store_.get("VR120", "Settings", "CommPort", "1"), "1");
}

TEST_F(Settings, every_text_comes_back_as_it_was_saved) {
    const std::vector<std::string> texts = {"",
                                            "True",
                                            "9990",
                                            "-0.5",
                                            "a, b,, c",
                                            ",",
                                            "\"quoted\"",
                                            "it's; #not a comment",
                                            "  blanks around  ",
                                            "back\\slash\\n and % and = and [x]",
                                            "line\nbreak\r\n\ttab",
                                            "@Invalid()",
                                            "@ByteArray(abc)",
                                            "@@",
                                            "/home/J\xC3\xB6rg \xE2\x82\xAC/\xE4\xB8\xAD.120",
                                            "\xF0\x9F\x93\xBB"};
    const auto key = [](std::size_t i) { return "Key" + std::to_string(i); };
    for (std::size_t i = 0; i < texts.size(); ++i) {
        store_.save("VR120", "Settings", key(i), texts[i]);
        EXPECT_EQ(store_.find("VR120", "Settings", key(i)), texts[i]);
    }
    read_from_disk();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(store_.find("VR120", "Settings", key(i)), texts[i]) << i;
    }
}

TEST_F(Settings, applications_and_sections_keep_theirs_apart) {
    store_.save("VR120", "Settings", "CommPort", "3");
    store_.save("VR120Clone", "Settings", "CommPort", "5");
    store_.save("Memwright", "Ports", "CommPort", "7");
    store_.save("VR120", "Ports", "CommPort", "9");
    read_from_disk();
    EXPECT_EQ(store_.find("VR120", "Settings", "CommPort"), "3");
    EXPECT_EQ(store_.find("VR120Clone", "Settings", "CommPort"), "5");
    EXPECT_EQ(store_.find("Memwright", "Ports", "CommPort"), "7");
    EXPECT_EQ(store_.find("VR120", "Ports", "CommPort"), "9");
    EXPECT_EQ(store_.find("Memwright", "Settings", "CommPort"), std::nullopt);
}

TEST_F(Settings, the_last_one_saved_counts_and_a_removed_one_is_gone) {
    store_.save("VR120", "Settings", "Top", "1");
    store_.save("VR120", "Settings", "Top", "2");
    EXPECT_EQ(store_.find("VR120", "Settings", "Top"), "2");
    store_.save("VR120", "Settings", "Left", "3");
    store_.remove("VR120", "Settings", "Top");
    store_.remove("VR120", "Settings", "NeverThere");
    read_from_disk();
    EXPECT_EQ(store_.find("VR120", "Settings", "Top"), std::nullopt);
    EXPECT_EQ(store_.find("VR120", "Settings", "Left"), "3");
}

TEST_F(Settings, a_file_written_by_hand_with_commas_is_read_as_text) {
    store_.save("VR120", "Settings", "Left", "3");
    const std::string file = folder_.names().at(0) + "/Memwright/VR120.ini";
    const std::string lines = "[Settings]\nFilePath=/home/me/radios, old ones\n";
    folder_.put(file, {lines.begin(), lines.end()});
    read_from_disk();
    EXPECT_EQ(store_.find("VR120", "Settings", "FilePath"), "/home/me/radios, old ones");
}

}  // namespace
}  // namespace memwright::gui
