#include "install/support/debian_package.h"

#include <sstream>
#include <stdexcept>

#include "install/support/installation.h"
#include "support/run_program.h"

namespace memwright::install {
namespace {

namespace fs = std::filesystem;

constexpr const char* kDpkgDeb = "/usr/bin/dpkg-deb";
constexpr systest::Milliseconds kPatience{120000};

std::vector<std::string> lines_of(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

}  // namespace

std::string DebianPackage::why_not() {
    for (const auto& [program, package] : {std::pair{kDpkgDeb, "dpkg"},
                                           {"/usr/bin/dpkg-shlibdeps", "dpkg-dev"},
                                           {"/usr/bin/file", "file"}}) {
        if (const auto why = missing(program, package); !why.empty()) return why;
    }
    return "";
}

DebianPackage::DebianPackage() {
    systest::output_of(
        CPACK_PROGRAM,
        {"-G", "DEB", "--config", BUILD_FOLDER "/CPackConfig.cmake", "-B", folder_.path()}, {},
        kPatience);
    for (const auto& entry : fs::directory_iterator(folder_.path())) {
        if (entry.path().extension() == ".deb") file_ = entry.path();
    }
    if (file_.empty()) throw std::runtime_error("cpack made no package");
}

std::string DebianPackage::field(const std::string& name) const {
    std::string text = systest::output_of(kDpkgDeb, {"--field", file_, name});
    if (text.ends_with('\n')) text.pop_back();
    return text;
}

std::set<std::string> DebianPackage::packages_in(const std::string& name) const {
    std::set<std::string> names;
    for (const std::string& package :
         matches(field(name), "([a-z0-9][a-z0-9+.-]*)( \\([^)]*\\))?(, |$)")) {
        names.insert(package);
    }
    return names;
}

std::vector<std::string> DebianPackage::listing() const {
    return lines_of(systest::output_of(kDpkgDeb, {"--contents", file_}));
}

std::set<std::string> DebianPackage::control_files() const {
    const fs::path folder = folder_.path() / "control";
    systest::output_of(kDpkgDeb, {"--control", file_, folder});
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.insert(entry.path().filename());
    }
    return names;
}

void DebianPackage::unpack(const fs::path& folder) const {
    systest::output_of(kDpkgDeb, {"--extract", file_, folder});
}

}  // namespace memwright::install
