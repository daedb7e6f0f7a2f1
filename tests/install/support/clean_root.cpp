#include "install/support/clean_root.h"

#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

#include "install/support/installation.h"
#include "support/read_file.h"

namespace memwright::install {
namespace {

namespace fs = std::filesystem;

constexpr const char* kUnshare = "/usr/bin/unshare";
constexpr const char* kMaker = "/usr/bin/mmdebstrap";
constexpr const char* kPath = "/usr/sbin:/usr/bin:/sbin:/bin";
constexpr systest::Milliseconds kPatience{480000};
constexpr unsigned long long kSize = 1ULL << 30;

// In memory where there is room, because the package manager waits for the disk all the time.
fs::path place() {
    struct statvfs facts {};
    const char* const memory = "/dev/shm";
    const bool usable = statvfs(memory, &facts) == 0 &&
                        (facts.f_flag & (ST_NOEXEC | ST_RDONLY)) == 0 &&
                        facts.f_bavail * facts.f_frsize >= kSize;
    return usable ? fs::path(memory) : fs::temp_directory_path();
}

// What the machine's own packages come from, without other makers' sources.
fs::path sources() {
    for (const char* file : {"/etc/apt/sources.list.d/debian.sources", "/etc/apt/sources.list"}) {
        std::error_code error;
        if (fs::file_size(file, error) > 0 && !error) return file;
    }
    return {};
}

std::string value_in_os_release(const std::string& key) {
    const auto found =
        matches(systest::read_file("/etc/os-release"), "^" + key + "=\"?([^\"\\n]*)");
    return found.empty() ? "" : found.front();
}

systest::Environment with_proxies(systest::Environment environment) {
    for (const char* name : {"http_proxy", "https_proxy", "no_proxy"}) {
        if (const char* value = std::getenv(name)) environment[name] = value;
    }
    return environment;
}

std::string joined(const std::set<std::string>& names) {
    std::string list;
    for (const std::string& name : names) list += (list.empty() ? "" : ",") + name;
    return list;
}

bool changes_with_every_installation(std::string_view path) {
    constexpr std::array<std::string_view, 9> kBeginnings = {"proc/",
                                                             "var/log/",
                                                             "var/cache/ldconfig/",
                                                             "etc/ld.so.cache",
                                                             "var/lib/dpkg/available",
                                                             "var/lib/dpkg/lock",
                                                             "var/lib/dpkg/status",
                                                             "var/lib/dpkg/diversions-old",
                                                             "var/lib/dpkg/triggers/"};
    return std::ranges::any_of(kBeginnings,
                               [&](std::string_view start) { return path.starts_with(start); });
}

std::string description_of(const fs::directory_entry& entry) {
    const auto status = entry.symlink_status();
    const int mode = static_cast<int>(status.permissions());
    if (entry.is_symlink()) return "link to " + fs::read_symlink(entry.path()).string();
    if (entry.is_regular_file()) {
        return "file of " + std::to_string(entry.file_size()) + " bytes, mode " +
               std::to_string(mode);
    }
    return "kind " + std::to_string(static_cast<int>(status.type())) + ", mode " +
           std::to_string(mode);
}

}  // namespace

std::string CleanRoot::why_not() {
    if (geteuid() != 0) return "Only root can make a clean root.";
    if (value_in_os_release("ID") != "debian") return "A clean root is one of Debian's own.";
    if (const auto why = missing(kMaker, "mmdebstrap"); !why.empty()) return why;
    if (sources().empty()) return "There are no package sources in /etc/apt.";
    const auto namespaces =
        systest::run_program(kUnshare, {"--mount", "--pid", "--fork", "--mount-proc", "/bin/true"});
    return namespaces.status.success() ? "" : "No namespaces: " + namespaces.output;
}

CleanRoot::CleanRoot(const std::set<std::string>& packages)
    : folder_(TemporaryFolder::For::the_test, place()) {
    // The user under which packages are fetched has to come by.
    fs::permissions(folder_.path(),
                    fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
    // What it mounts is not mounted for anybody else, whatever happens.
    const auto made = systest::run_program(
        kUnshare,
        {"--mount", kMaker, "--mode=root", "--variant=essential", "--dpkgopt=force-unsafe-io",
         "--aptopt=Acquire::Languages \"none\"", "--aptopt=APT::Install-Recommends \"false\"",
         "--include=" + joined(packages), value_in_os_release("VERSION_CODENAME"), path(),
         sources()},
        with_proxies({{"PATH", kPath}, {"LC_ALL", "C.UTF-8"}}), kPatience);
    if (made.status.success()) return;
    if (made.output.find("Failed to fetch") != std::string::npos) throw NoMirror(made.output);
    throw std::runtime_error("mmdebstrap failed: " + made.output);
}

systest::Outcome CleanRoot::run(const std::string& program,
                                std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"--mount", "--pid", "--fork", "--mount-proc",
                                         "--root=" + path().string(), program});
    return systest::run_program(kUnshare, std::move(arguments),
                                {{"PATH", kPath},
                                 {"HOME", "/root"},
                                 {"XDG_RUNTIME_DIR", "/root"},
                                 {"LC_ALL", "C.UTF-8"},
                                 {"DEBIAN_FRONTEND", "noninteractive"}},
                                kPatience);
}

std::string CleanRoot::output_of(const std::string& program,
                                 std::vector<std::string> arguments) const {
    const auto outcome = run(program, std::move(arguments));
    if (!outcome.status.success()) throw std::runtime_error(program + ": " + outcome.output);
    return outcome.output;
}

std::map<std::string, std::string> CleanRoot::content() const {
    std::map<std::string, std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(path())) {
        const std::string name = entry.path().lexically_relative(path());
        if (!changes_with_every_installation(name)) found[name] = description_of(entry);
    }
    return found;
}

}  // namespace memwright::install
