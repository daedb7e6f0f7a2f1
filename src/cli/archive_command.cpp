// archive: the images that came from radios and went to them.

#include <algorithm>

#include "base/printable.h"
#include "cli/commands.h"
#include "cli/workbench.h"
#include "files/image_archive.h"
#include "platform/user_folders.h"

namespace memwright::cli {
namespace {

// The path of a kept image, which is meant by its name or its number in the list: not empty, as
// no argument is.
std::string path_of(const ImageArchive& archive, const std::string& meant) {
    const auto names = archive.names();
    const auto name = std::ranges::find(names, meant);
    if (name != names.end()) return archive.path(*name);
    constexpr std::size_t kLongest = 3;
    const bool number =
        meant.size() <= kLongest && meant.find_first_not_of("0123456789") == std::string::npos;
    const auto place = number ? static_cast<std::size_t>(std::stoi(meant)) : 0;
    if (place >= 1 && place <= names.size()) return archive.path(names[place - 1]);
    throw FileError("There is no image \"" + meant + "\" in " + archive.folder() +
                    ".\nmemwright-cli archive lists those that are there.");
}

void list(const ImageArchive& archive, Console& console) {
    std::size_t place = 1;
    for (const std::string& name : archive.names()) {
        std::string number = std::to_string(place++);
        number.resize(4, ' ');
        console.print(number + printable_in_line(name) + "\n");
    }
}

}  // namespace

Status archive(const Arguments& arguments, Session& session) {
    ImageArchive archive(session.files, native_user_folders().data);
    if (archive.folder().empty()) {
        throw FileError(
            "Cannot tell where the images of radios are: there is no home folder.\n"
            "Set HOME or XDG_DATA_HOME.");
    }
    if (arguments.size() == 0) {
        list(archive, session.console);
        return kDone;
    }
    const bool restore = arguments[0] == "restore";
    if (!restore && arguments[0] != "show") {
        throw WrongUsage("archive shows or restores an image; \"" + arguments[0] +
                         "\" is neither.");
    }
    const std::size_t wanted = restore ? 3 : 2;
    if (arguments.size() < wanted) throw WrongUsage("An argument is missing.");
    if (arguments.size() > wanted) {
        throw WrongUsage("\"" + arguments[wanted] + "\" is one argument too many.");
    }
    const std::string path = path_of(archive, arguments[1]);
    if (!restore) return channels(Arguments({path}, {{{"--format", true}}, 1, 1}), session);
    Workbench bench(session.console, session.files);
    bench.load(path);
    bench.save(arguments[2]);
    return kDone;
}

}  // namespace memwright::cli
