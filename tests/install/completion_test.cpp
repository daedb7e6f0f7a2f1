// What bash offers for a command line of memwright-cli that is not yet complete.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "install/support/installation.h"

namespace memwright::install {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

// Bash gives a completion the words of the line, the last of them as far as it has been typed.
// $1 is the completion, $2 the folder to be in.
constexpr const char* kComplete = R"bash(
    source "$1"
    cd "$2" || exit
    shift 2
    COMP_WORDS=("$@")
    COMP_CWORD=$(($# - 1))
    read -ra registered <<< "$(complete -p memwright-cli)"
    "${registered[2]}" memwright-cli "${COMP_WORDS[-1]}" "${COMP_WORDS[-2]}"
    [[ ${#COMPREPLY[@]} -eq 0 ]] || printf '%s\0' "${COMPREPLY[@]}"
)bash";

class Completion : public testing::Test {
  protected:
    Completion() {
        fs::create_directory(folder());
        write_image(folder() / "radio.120");
        for (const char* name : {"my radio.120", "old.TK1", "list.csv", "LIST.CSV", "pages.pdf",
                                 "notes.txt", "radio.120.bak"}) {
            std::ofstream(folder() / name) << "";
        }
        fs::create_directory(folder() / "more");
    }
    fs::path folder() const { return installation.folder() / "images"; }

    std::vector<std::string> offered(std::vector<std::string> words) const {
        std::vector<std::string> arguments = {
            "--noprofile", "--norc",
            "-c",          kComplete,
            "bash",        installation.share() / "bash-completion/completions/memwright-cli",
            folder(),      "memwright-cli"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        std::istringstream offers(
            systest::output_of("/bin/bash", arguments, installation.environment()));
        std::vector<std::string> found;
        for (std::string offer; std::getline(offers, offer, '\0');) found.push_back(offer);
        return found;
    }
    // What is evaluated makes a file of this name.
    static constexpr const char* kCommand = "$(>evaluated)`>evaluated`";
    void expect_nothing_evaluated() const {
        for (const fs::path& place : {folder(), folder() / "more", installation.folder(), home()}) {
            EXPECT_FALSE(fs::exists(place / "evaluated")) << place;
        }
    }
    fs::path home() const { return installation.environment().at("HOME"); }

    void choose_port(const std::string& device) const {
        fs::create_directories(home() / ".config/Memwright");
        std::ofstream(home() / ".config/Memwright/Memwright.ini")
            << "[Ports]\nCOM3=\"" << device << "\"\n";
    }

    std::vector<std::string> commands() const {
        return matches(installation.say("memwright-cli", {"--help"}), "^  ([a-z]+) ");
    }

    Installation installation;
    const testing::Matcher<std::vector<std::string>> images =
        UnorderedElementsAre("radio.120", "my radio.120", "old.TK1", "more");
    const testing::Matcher<std::vector<std::string>> lists =
        UnorderedElementsAre("list.csv", "LIST.CSV", "more");
};

TEST_F(Completion, every_command_is_offered) {
    std::vector<std::string> all = commands();
    ASSERT_THAT(all, testing::SizeIs(12));
    all.insert(all.end(), {"--help", "--version"});
    EXPECT_THAT(offered({""}), UnorderedElementsAreArray(all));
}

TEST_F(Completion, a_begun_command_is_completed) {
    EXPECT_THAT(offered({"ch"}), UnorderedElementsAre("channels", "check"));
    EXPECT_THAT(offered({"exp"}), ElementsAre("export"));
    EXPECT_THAT(offered({"--v"}), ElementsAre("--version"));
    EXPECT_THAT(offered({"x"}), IsEmpty());
}

TEST_F(Completion, every_command_has_the_options_of_its_help) {
    for (const std::string& command : commands()) {
        const std::string help = installation.say("memwright-cli", {command, "--help"});
        auto options = matches(help.substr(0, help.find('\n')), "(--[a-z]+)");
        options.push_back("--help");
        EXPECT_THAT(offered({command, "-"}), UnorderedElementsAreArray(options)) << command;
        EXPECT_THAT(offered({command, "radio.120", "--"}), UnorderedElementsAreArray(options));
    }
}

TEST_F(Completion, every_command_takes_the_files_that_it_needs) {
    for (const char* command : {"channels", "export", "import", "settings", "limits", "diff",
                                "check", "read", "write", "print"}) {
        EXPECT_THAT(offered({command, ""}), images) << command;
    }
    EXPECT_THAT(offered({"export", "radio.120", ""}), lists);
    EXPECT_THAT(offered({"import", "radio.120", ""}), lists);
    EXPECT_THAT(offered({"diff", "radio.120", ""}), images);
    EXPECT_THAT(offered({"import", "radio.120", "l"}), ElementsAre("list.csv"));
}

TEST_F(Completion, nothing_is_offered_where_nothing_can_follow) {
    EXPECT_THAT(offered({"ports", ""}), IsEmpty());
    EXPECT_THAT(offered({"check", "radio.120", ""}), IsEmpty());
    EXPECT_THAT(offered({"diff", "radio.120", "old.TK1", ""}), IsEmpty());
    EXPECT_THAT(offered({"export", "radio.120", "list.csv", ""}), IsEmpty());
    EXPECT_THAT(offered({"print", "radio.120", "--range", ""}), IsEmpty());
    EXPECT_THAT(offered({"nonsense", ""}), images);
}

TEST_F(Completion, images_of_the_archive_are_offered_by_their_numbers) {
    EXPECT_THAT(offered({"archive", ""}), ElementsAre("show", "restore"));
    EXPECT_THAT(offered({"archive", "restore", ""}), IsEmpty());
    const fs::path kept =
        fs::path(installation.environment().at("HOME")) / ".local/share/memwright/radio images";
    fs::create_directories(kept);
    for (const char* name : {"2026-01-02 03.04.05 read.120", "2026-01-02 03.04.06 written.120"}) {
        fs::copy_file(folder() / "radio.120", kept / name);
    }
    EXPECT_THAT(offered({"archive", "show", ""}), ElementsAre("1", "2"));
    EXPECT_THAT(offered({"archive", "show", "1", ""}), IsEmpty());
    EXPECT_THAT(offered({"archive", "restore", "2", ""}), images);
}

TEST_F(Completion, options_among_the_arguments_are_not_counted) {
    EXPECT_THAT(offered({"import", "--output", "new.120", ""}), images);
    EXPECT_THAT(offered({"import", "--output", "new.120", "radio.120", ""}), lists);
    EXPECT_THAT(offered({"channels", "--all", ""}), images);
    EXPECT_THAT(offered({"read", "--yes", "--com", "1", "=", "/dev/ttyUSB0", ""}), images);
}

TEST_F(Completion, the_values_of_options_are_offered) {
    EXPECT_THAT(offered({"channels", "--format", ""}), ElementsAre("text", "csv", "json"));
    EXPECT_THAT(offered({"diff", "--format", ""}), ElementsAre("text", "json"));
    EXPECT_THAT(offered({"settings", "radio.120", "--format", "j"}), ElementsAre("json"));
    EXPECT_THAT(offered({"import", "--output", ""}), images);
    EXPECT_THAT(offered({"print", "--pdf", ""}), UnorderedElementsAre("pages.pdf", "more"));
}

TEST_F(Completion, a_port_is_one_of_those_that_there_are) {
    const auto ports = matches(installation.say("memwright-cli", {"ports"}), "(/dev/[^ \\n]+)");
    EXPECT_THAT(offered({"read", "radio.120", "--port", ""}), UnorderedElementsAreArray(ports));
}

TEST_F(Completion, a_device_is_offered_whole_and_not_evaluated) {
    choose_port(std::string("/dev/a") + kCommand + " b*'");
    const std::string quoted = R"(/dev/a\$\(\>evaluated\)\`\>evaluated\`\ b\*\')";
    EXPECT_THAT(offered({"read", "radio.120", "--port", ""}), Contains(quoted));
    for (const char* const typed : {"/dev/a", "/dev/a\\$", "/dev/a\\$\\('>'"}) {
        EXPECT_THAT(offered({"read", "radio.120", "--port", typed}), ElementsAre(quoted)) << typed;
    }
    for (const char* const typed :
         {"'/dev/a", "\"/dev/a", "/dev/a$(>evaluated)", "/dev/a`>evaluated`"}) {
        EXPECT_THAT(offered({"read", "radio.120", "--port", typed}), IsEmpty()) << typed;
    }
    choose_port(std::string("/dev/a") + kCommand + " b*");
    EXPECT_THAT(offered({"read", "radio.120", "--port", "'/dev/a"}),
                ElementsAre(std::string("/dev/a") + kCommand + " b*"));
    expect_nothing_evaluated();
}

TEST_F(Completion, files_are_offered_whole_and_not_evaluated) {
    const std::string name = std::string("hard *?[a] ") + kCommand + "$HOME\nline.120";
    for (const fs::path& place : {folder() / name, folder() / "more" / name, home() / name}) {
        write_image(place);
    }
    EXPECT_THAT(offered({"check", ""}), Contains(name));
    EXPECT_THAT(offered({"check", "h"}), ElementsAre(name));
    EXPECT_THAT(offered({"check", "more/"}), ElementsAre("more/" + name));
    EXPECT_THAT(offered({"check", "~/h"}), ElementsAre((home() / name).string()));
    EXPECT_THAT(offered({"check", "$(>evaluated)/"}), IsEmpty());
    EXPECT_THAT(offered({"check", "`>evaluated`/"}), IsEmpty());
    expect_nothing_evaluated();
}

TEST_F(Completion, files_below_the_home_folder_keep_its_short_name) {
    write_image(home() / "mine.120");
    EXPECT_THAT(offered({"check", "~/m"}), ElementsAre("~/mine.120"));
    fs::create_directory(home() / "mice");
    EXPECT_THAT(offered({"check", "~/m"}), UnorderedElementsAre("~/mine.120", "~/mice"));
    EXPECT_THAT(offered({"settings", "~/mine.120", "lam"}), ElementsAre("lamp="));
}

TEST_F(Completion, settings_of_a_file_are_known_however_it_is_written) {
    const std::string name = std::string("a 'b' \"c\" \\") + kCommand + ".120";
    write_image(folder() / name);
    for (const char* const written : {R"(a\ \'b\'\ \"c\"\ \\\$\(\>evaluated\)\`\>evaluated\`.120)",
                                      R"("a 'b' \"c\" \\\$(>evaluated)\`>evaluated\`.120")",
                                      R"('a '\''b'\'' "c" \$(>evaluated)`>evaluated`.120')"}) {
        EXPECT_THAT(offered({"settings", written, "lam"}), ElementsAre("lamp=")) << written;
    }
    EXPECT_THAT(offered({"settings", "\"my\\ radio.120\"", ""}), IsEmpty());
    EXPECT_THAT(offered({"settings", "$(>evaluated)radio.120", ""}), IsEmpty());
    EXPECT_THAT(offered({"settings", "\"`>evaluated`radio.120\"", ""}), IsEmpty());
    EXPECT_THAT(offered({"settings", "-", ""}), IsEmpty());
    expect_nothing_evaluated();
}

TEST_F(Completion, every_setting_of_the_image_is_offered_by_its_name) {
    const std::string shown =
        installation.say("memwright-cli", {"settings", folder() / "radio.120"});
    const auto names = matches(shown, "^([a-z-]+=)");
    EXPECT_THAT(names, testing::SizeIs(16));
    EXPECT_THAT(offered({"settings", "radio.120", ""}), UnorderedElementsAreArray(names));
    EXPECT_THAT(offered({"settings", "radio.120", "s-meter-"}),
                UnorderedElementsAre("s-meter-beep=", "s-meter-sens="));
}

TEST_F(Completion, settings_are_offered_beside_those_that_have_a_value) {
    EXPECT_THAT(offered({"settings", "radio.120", "lamp", "=", "AUTO", "link"}),
                ElementsAre("linked-scan-bands="));
    EXPECT_THAT(offered({"settings", "radio.120", "lamp", "=", "A"}), IsEmpty());
}

TEST_F(Completion, settings_of_a_file_that_is_no_image_are_not_known) {
    EXPECT_THAT(offered({"settings", "notes.txt", ""}), IsEmpty());
}

TEST_F(Completion, the_limits_are_offered_by_their_numbers) {
    EXPECT_THAT(offered({"limits", "radio.120", ""}), testing::SizeIs(18));
    EXPECT_THAT(offered({"limits", "radio.120", "1"}),
                UnorderedElementsAre("1=", "10=", "11=", "12=", "13=", "14=", "15=", "16=", "17="));
}

TEST_F(Completion, files_of_other_folders_are_found) {
    write_image(folder() / "more/deep.120");
    EXPECT_THAT(offered({"check", "more/"}), ElementsAre("more/deep.120"));
    EXPECT_THAT(offered({"check", folder() / "ra"}), ElementsAre(folder() / "radio.120"));
    EXPECT_THAT(offered({"check", "my"}), ElementsAre("my radio.120"));
}

}  // namespace
}  // namespace memwright::install
