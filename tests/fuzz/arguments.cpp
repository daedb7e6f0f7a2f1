// The arguments of memwright-cli, in a folder with a few files: it ends with a status that it has,
// and writes the file that it was to write and no other.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/error.h"
#include "cli/commands.h"
#include "fuzz/sandbox.h"
#include "fuzz/streams.h"
#include "fuzz/target.h"
#include "image/layout.h"
#include "native/modules.h"
#include "radio/demonstration.h"

namespace memwright::fuzz {
namespace {

namespace fs = std::filesystem;
using Arguments = std::vector<std::string>;
// By their names from the sandbox on.
using Files = std::map<std::string, Bytes>;

constexpr const char* kHome = "home";
constexpr const char* kWork = "work";  // where memwright-cli runs

Files files_under(const fs::path& folder) {
    Files files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        std::ifstream in(entry.path(), std::ios::binary);
        files[entry.path().lexically_relative(folder).string()] = {
            std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    return files;
}

void put(const fs::path& path, const Bytes& bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

Bytes bytes_of(const std::string& text) { return {text.begin(), text.end()}; }

const Files& files_at_start() {
    static const Files files = [] {
        const MemoryImage image = radio::demonstration_memory();
        const Bytes a(image.bytes().begin(), image.bytes().end());
        Bytes b = a;
        b[layout::kLabels] = 'Z';
        b[layout::kLamp] = 0xFF;  // no choice of this setting
        b.push_back('!');
        const std::string work = std::string(kWork) + "/";
        const std::string archive = std::string(kHome) + "/memwright/radio images/";
        return Files{{work + "a", a},
                     {work + "b", b},
                     {work + "short", Bytes(100, 1)},
                     {work + "csv", bytes_of("Ch,MHz,Mode,Pref,Label\r\n5,145.5,NFM,p,\"X\"\r\n")},
                     {archive + "2026-11-21 12.34.56 read.120", a},
                     {archive + "2026-11-21 12.34.57 written.120", b}};
    }();
    return files;
}

struct Given {
    Arguments arguments;
    Bytes file;
};

Given given_by(Input input) {
    Given given;
    while (!input.empty()) {
        const auto end = std::ranges::find(input, 0);
        const std::string argument(input.begin(), end);
        input = input.subspan(std::min(argument.size() + 1, input.size()));
        if (argument.empty()) break;
        given.arguments.push_back(argument);
    }
    given.file.assign(input.begin(), input.end());
    return given;
}

// No module may ever be loaded here.
void expect_no_modules() {
    try {
        open_ports_and_pages(ModuleUse::ports);
        ADD_FAILURE() << "the modules are the real ones";
    } catch (const FileError& error) {
        EXPECT_STREQ(error.what(), "There are no modules here.");
    }
}

bool writes_files(const std::string& command) {
    static const std::set<std::string> kWriting = {"export", "import", "settings", "limits",
                                                   "archive"};
    return kWriting.contains(command);
}

// The one file that a run with these arguments may write is named by one of them.
bool may_write(const Arguments& arguments, const std::string& name) {
    if (arguments.empty() || !writes_files(arguments.front())) return false;
    return std::any_of(arguments.begin() + 1, arguments.end(), [&](const std::string& argument) {
        const std::string option = "--output=";
        const std::string file =
            argument.starts_with(option) ? argument.substr(option.size()) : argument;
        return fs::path(name) == fs::path(kWork) / file;
    });
}

void expect_written_as_told(const Arguments& arguments, int status, const Files& before,
                            const Files& after) {
    constexpr std::size_t kHeadingsOfCsv = 24;
    int written = 0;
    for (const auto& [name, bytes] : after) {
        const auto old = before.find(name);
        if (old != before.end() && old->second == bytes) continue;
        ++written;
        EXPECT_TRUE(may_write(arguments, name)) << name;
        EXPECT_EQ(status, cli::kDone) << name;
        const bool csv = arguments.front() == "export";
        EXPECT_GE(bytes.size(), csv ? kHeadingsOfCsv : std::size_t{layout::kImageSize}) << name;
    }
    EXPECT_LE(written, 1);
    for (const auto& [name, bytes] : before) EXPECT_TRUE(after.contains(name)) << name;
}

// Makes the sandbox hold these files and no others.
void prepare(const Sandbox& sandbox, const Files& wanted) {
    const Files found = files_under(sandbox.folder());
    for (const auto& [name, bytes] : found) {
        if (!wanted.contains(name)) fs::remove(sandbox.folder() / name);
    }
    for (const auto& [name, bytes] : wanted) {
        const auto there = found.find(name);
        if (there == found.end() || there->second != bytes) put(sandbox.folder() / name, bytes);
    }
}

}  // namespace

void arguments(Input input) {
    const Given given = given_by(input);
    // Nothing outside of the sandbox can be named then.
    const auto leads_away = [](const std::string& a) { return a.find('/') != a.npos; };
    if (std::ranges::any_of(given.arguments, leads_away)) return;
    expect_no_modules();

    const Sandbox sandbox;
    Files before = files_at_start();
    before[std::string(kWork) + "/given"] = given.file;
    prepare(sandbox, before);
    setenv("XDG_DATA_HOME", (sandbox.folder() / kHome).c_str(), 1);
    fs::current_path(sandbox.folder() / kWork);
    Streams streams("given");
    const int status = cli::run(given.arguments);
    streams.restore();

    EXPECT_GE(status, cli::kDone);
    EXPECT_LT(status, cli::kRadioFailed) << "there is no radio";
    EXPECT_EQ(status >= cli::kWrongUsage,
              streams.errors().find("memwright-cli: ") != std::string::npos)
        << status << ": " << streams.errors();
    EXPECT_TRUE(status != cli::kWrongUsage || streams.output().empty());
    expect_written_as_told(given.arguments, status, before, files_under(sandbox.folder()));
}

}  // namespace memwright::fuzz
