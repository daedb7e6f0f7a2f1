#pragma once

// File > New: an empty table. Whatever is written to a radio sets all that it is set to, so the
// settings and search limits are those that the radio was last known to have; without them there is
// no new table.

#include <string>

#include "app/events.h"
#include "app/form1.h"
#include "app/notices.h"
#include "files/image_archive.h"
#include "files/image_files.h"

namespace memwright {

class NewTable {
  public:
    struct Work {
        Form1& form;
        ChannelTable& table;
        ImageFiles& files;
    };

    // `data_folder`: where images of radios are kept; "" if nowhere.
    NewTable(Work work, FileSystem& files, const std::string& data_folder, Events& events,
             Notices& notices);

  private:
    void begin();

    Work work_;
    ImageArchive archive_;
    Notices& notices_;
};

}  // namespace memwright
