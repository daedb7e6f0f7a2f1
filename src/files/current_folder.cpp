#include "files/current_folder.h"

#include "base/error.h"
#include "native/file.h"

namespace memwright {

void enter_folder_of(const std::string& path, FileSystem& files) {
    const auto folder = native::path_of(path).parent_path();
    if (folder.empty()) return;
    try {
        files.set_current_folder(native::name_of(folder));
    } catch (const FileError&) {
    }
}

}  // namespace memwright
