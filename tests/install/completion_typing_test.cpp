// What bash puts into a line when Tab is pressed, and what memwright-cli is given by it then: an
// interactive bash at a pseudo-terminal.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "install/support/installation.h"
#include "support/eventually.h"

// Behind the others, which mean GoogleTest's by the name of its namespace.
#include "fakes/pseudo_terminal.h"

namespace memwright::install {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using Words = std::vector<std::string>;

// While it completes, the program is the real one; a line that is entered leaves its words.
constexpr const char* kStart = R"bash(
    memwright-cli() {
        if [[ -n ${COMP_LINE-} ]]; then
            command memwright-cli "$@"
        else
            printf '%s\0' "$@" > words.new
            mv words.new words
        fi
    }
    PS1='ready> '
)bash";

class TypedCompletion : public ::testing::Test {
  protected:
    TypedCompletion() {
        fs::create_directory(folder());
        std::ofstream(folder() / "start")
            << "source " << (installation.share() / "bash-completion/completions/memwright-cli")
            << "\n"
            << kStart;
    }
    fs::path folder() const { return installation.folder() / "images"; }
    fs::path home() const { return installation.environment().at("HOME"); }

    // The words of a line that is entered after its keys and Tab; `more` is typed behind that.
    Words entered(const std::string& keys, const std::string& more = "") const {
        memwright::fakes::PseudoTerminal terminal;
        systest::Environment environment = installation.environment();
        environment["TERM"] = "dumb";
        environment["INPUTRC"] = "/dev/null";
        systest::Process bash({.program = "/bin/bash",
                               .arguments = {"--noprofile", "--rcfile", folder() / "start", "-i"},
                               .environment = environment,
                               .folder = folder(),
                               .input = terminal.path(),
                               .output = terminal.path(),
                               .errors = terminal.path()});
        std::string shown;
        while (!shown.ends_with("ready> ")) {
            const auto byte = terminal.receive(1);
            if (byte.empty()) break;
            shown += static_cast<char>(byte.front());
        }
        const std::string line = "memwright-cli " + keys + "\t" + more + "\r";
        terminal.send({reinterpret_cast<const std::uint8_t*>(line.data()), line.size()});
        const fs::path words = folder() / "words";
        const bool done = systest::wait_until([&] { return fs::exists(words); });
        bash.signal(SIGKILL);  // interactive, it does not end for less
        if (!done) {
            const auto rest = terminal.receive(4096, std::chrono::milliseconds(100));
            ADD_FAILURE() << keys << ": " << shown << std::string(rest.begin(), rest.end());
            return {};
        }
        std::ifstream in(words);
        Words found;
        for (std::string word; std::getline(in, word, '\0');) found.push_back(word);
        in.close();
        fs::remove(words);
        return found;
    }

    void expect_nothing_evaluated() const {
        for (const fs::path& place : {folder(), installation.folder(), home()}) {
            EXPECT_FALSE(fs::exists(place / "evaluated")) << place;
        }
    }

    Installation installation;
};

TEST_F(TypedCompletion, a_file_is_the_one_that_is_there_whatever_its_name) {
    for (const std::string name :
         {"plain.120", "two words.120", "$(>evaluated).120", "`>evaluated`.120",
          "'quoted' \"twice\".120", "*[a]?{b,c}.120", "line\nfeed.120", "a;b&c|d>e#f!g.120",
          "$HOME.120", "back\\slash.120", "Z\xC3\xBCrich.120"}) {
        write_image(folder() / ("x" + name));
        EXPECT_THAT(entered("check x"), ElementsAre("check", "x" + name));
        EXPECT_THAT(entered("check 'x"), ElementsAre("check", "x" + name));
        EXPECT_THAT(entered("check \"x"), ElementsAre("check", "x" + name));
        fs::rename(folder() / ("x" + name), home() / ("x" + name));
        EXPECT_THAT(entered("check ~/x"), ElementsAre("check", home() / ("x" + name)));
        fs::remove(home() / ("x" + name));
    }
    expect_nothing_evaluated();
}

TEST_F(TypedCompletion, files_of_a_folder_and_of_a_variable_are_found) {
    const fs::path more = folder() / "more $(>evaluated)";
    fs::create_directory(more);
    write_image(more / "radio.120");
    write_image(home() / "mine.120");
    EXPECT_THAT(entered("check mo", "ra\t"), ElementsAre("check", "more $(>evaluated)/radio.120"));
    EXPECT_THAT(entered("check $HOME/m"), ElementsAre("check", home() / "mine.120"));
    write_image(home() / "other $HOME $(>evaluated).120");
    EXPECT_THAT(entered("check $HOME/o"), ElementsAre("check", home() / "o"));
    expect_nothing_evaluated();
}

TEST_F(TypedCompletion, a_device_is_the_one_that_was_chosen_whatever_its_name) {
    const std::string device = "/dev/chosen$(>evaluated)`>evaluated` $HOME;*";
    fs::create_directories(home() / ".config/Memwright");
    std::ofstream(home() / ".config/Memwright/Memwright.ini")
        << "[Ports]\nCOM3=\"" << device << "\"\n";
    const auto given = ElementsAre("read", "--port", device);
    EXPECT_THAT(entered("read --port /dev/ch"), given);
    EXPECT_THAT(entered("read --port /dev/chosen\\$"), given);
    EXPECT_THAT(entered("read --port '/dev/ch"), given);
    expect_nothing_evaluated();
}

TEST_F(TypedCompletion, a_setting_of_a_file_is_followed_by_its_value) {
    write_image(folder() / "$(>evaluated) radio.120");
    EXPECT_THAT(entered("settings \\$\\(\\>evaluated\\)\\ radio.120 lam", "ON"),
                ElementsAre("settings", "$(>evaluated) radio.120", "lamp=ON"));
    EXPECT_THAT(entered("settings '$(>evaluated) radio.120' lam", "ON"),
                ElementsAre("settings", "$(>evaluated) radio.120", "lamp=ON"));
    expect_nothing_evaluated();
}

}  // namespace
}  // namespace memwright::install
