#pragma once

// File > Open Recent: the last ten files that were opened or saved and still exist, the latest
// first. They are kept between runs. Paths are bytes, as the file system has them.

#include <string>
#include <vector>

#include "app/events.h"
#include "app/form1.h"
#include "files/image_files.h"
#include "platform/file_system.h"
#include "platform/settings_store.h"

namespace memwright {

class RecentFiles {
  public:
    static constexpr std::size_t kMost = 10;

    RecentFiles(Form1& form, ImageFiles& image_files, FileSystem& files, SettingsStore& settings,
                Events& events);

  private:
    void note_current();
    void show();
    void pick(std::size_t number);
    void store();
    bool is_kept_copy(const std::string& path) const;

    MenuChoice& menu_;
    ImageFiles& image_files_;
    FileSystem& files_;
    SettingsStore& settings_;
    Events& events_;
    std::vector<std::string> paths_;
    std::vector<std::string> shown_;  // the paths behind the items
    std::vector<Connection> connections_;
};

}  // namespace memwright
