#include "install/support/installation.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <stdexcept>

#include "radio/demonstration.h"

namespace memwright::install {

namespace fs = std::filesystem;

Installation::Installation() {
    fs::create_directory(folder_.path() / "home");
    install(prefix());
}

fs::path Installation::module(const std::string& name) const {
    return prefix() / INSTALL_LIBDIR / "memwright/modules" / name;
}

fs::path Installation::page(const std::string& program) const {
    return share() / "man/man1" / (program + ".1");
}

fs::path Installation::desktop_file() const {
    return share() / "applications" / (std::string(kId) + ".desktop");
}

fs::path Installation::mime_file() const {
    return share() / "mime/packages" / (std::string(kId) + ".xml");
}

fs::path Installation::metainfo() const {
    return share() / "metainfo" / (std::string(kId) + ".metainfo.xml");
}

systest::Environment Installation::environment() const {
    return {{"PATH", (prefix() / "bin").string() + ":/usr/sbin:/usr/bin:/sbin:/bin"},
            {"XDG_DATA_DIRS", share().string() + ":/usr/local/share:/usr/share"},
            {"HOME", (folder() / "home").string()},
            {"LC_ALL", "C.UTF-8"}};
}

std::string Installation::say(const std::string& name, std::vector<std::string> arguments) const {
    return systest::output_of(program(name), std::move(arguments), environment());
}

void install(const fs::path& prefix, const std::string& stage) {
    systest::output_of(CMAKE_PROGRAM, {"--install", BUILD_FOLDER, "--prefix", prefix},
                       {{"DESTDIR", stage}});
}

Files files_under(const fs::path& folder) {
    Files found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_directory() && !entry.is_symlink()) continue;
        found[entry.path().lexically_relative(folder)] =
            static_cast<int>(entry.symlink_status().permissions());
    }
    return found;
}

Files installed_files() {
    // Debian's libraries are not executable.
    const int library = fs::exists("/etc/debian_version") ? 0644 : 0755;
    const std::string id = kId;
    const std::string icons = "share/icons/hicolor/";
    Files files = {{"share/applications/" + id + ".desktop", 0644},
                   {"share/bash-completion/completions/memwright-cli", 0644},
                   {"share/doc/memwright/copyright", 0644},
                   {"share/metainfo/" + id + ".metainfo.xml", 0644},
                   {"share/mime/packages/" + id + ".xml", 0644},
                   {icons + "scalable/apps/" + id + ".svg", 0644},
                   {icons + "scalable/mimetypes/" + kMimeIcon + ".svg", 0644}};
    for (const std::string& module : kModules) {
        files[INSTALL_LIBDIR "/memwright/modules/" + module] = library;
    }
    for (const std::string& program : kPrograms) {
        files["bin/" + program] = 0755;
        files["share/man/man1/" + program + ".1"] = 0644;
    }
    for (const char* size : {"16x16", "24x24", "32x32", "48x48", "64x64", "128x128", "256x256"}) {
        files[icons + size + "/apps/" + id + ".png"] = 0644;
    }
    for (const char* size : {"16x16", "32x32", "48x48", "128x128"}) {
        files[icons + size + "/mimetypes/" + kMimeIcon + ".png"] = 0644;
    }
    return files;
}

void write_image(const fs::path& file) {
    const MemoryImage memory = radio::demonstration_memory();
    const auto bytes = memory.bytes();
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    if (!out.flush()) throw std::runtime_error("Cannot write " + file.string());
}

std::string missing(const fs::path& program, const std::string& package) {
    if (fs::exists(program)) return "";
    return program.string() + " is missing: install the package " + package + ".";
}

std::vector<std::string> matches(const std::string& text, const std::string& expression) {
    const std::regex pattern(expression, std::regex::ECMAScript | std::regex::multiline);
    std::vector<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end;
         ++match) {
        const std::string group = (*match)[1];
        if (std::ranges::find(found, group) == found.end()) found.push_back(group);
    }
    return found;
}

}  // namespace memwright::install
