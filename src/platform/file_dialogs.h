#pragma once

// The system's dialogs that ask for a file name. File names: see platform/file_system.h.

#include <optional>
#include <string>
#include <vector>

namespace memwright {

struct FileFilter {
    std::string caption;   // "All Files (*.*)"
    std::string patterns;  // "*.120;*.tk1"
};

inline const FileFilter kAllFiles{"All Files (*.*)", "*.*"};

struct FileRequest {
    std::string title;
    std::vector<FileFilter> filters;  // the first is preselected
    std::string folder;               // where the dialog starts; "" for wherever it likes
    std::vector<std::string> places{};  // further folders to offer
};

class FileDialogs {
  public:
    virtual ~FileDialogs() = default;

    // The full name of the file that the user chose or typed, existing or not; none if the user
    // cancelled.
    virtual std::optional<std::string> open(const FileRequest& request) = 0;
    virtual std::optional<std::string> save(const FileRequest& request) = 0;
};

// A name as a dialog returns it, up to its first NUL character.
std::string up_to_nul(const std::string& name);

// `name`, with `extension` behind it if there is no "." anywhere in it, its folders included.
std::string with_extension(std::string name, const std::string& extension);

}  // namespace memwright
