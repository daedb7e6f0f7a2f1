#pragma once

// Keeps images that would be lost otherwise, in the user's archive: what a radio sent, what is
// about to be written to one, and the table that is in no file when another takes its place. Added
// around the procedures of files and transfers, in whose way it never stands.

#include <functional>
#include <string>
#include <vector>

#include "files/image_archive.h"
#include "files/unfiled_images.h"
#include "link/clone_read.h"
#include "link/clone_write.h"

namespace memwright {

class KeptImages {
  public:
    struct Work {
        ImageCodec& store;
        ChannelTable& table;
        ImageFiles& files;
        CloneRead& clone_read;
        CloneWrite& clone_write;
        const MenuEntry& mnuSaveOnly;  // enabled once there is an image
    };

    // `data_folder`: the user's; "" if there is none, then nothing is kept. `note` tells the user
    // something in passing.
    KeptImages(Work work, FileSystem& files, Clock& clock, const std::string& data_folder,
               std::function<void(const std::string&)> note);

    // The table is about to go.
    void set_table_aside();

  private:
    void keep(const MemoryImage& image, const char* what);

    Work work_;
    Clock& clock_;
    std::function<void(const std::string&)> note_;
    ImageArchive archive_;
    UnfiledImages unfiled_;
    std::vector<Connection> connections_;
};

}  // namespace memwright
