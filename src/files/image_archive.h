#pragma once

// Dated copies of the images that came from a radio or went to one, and of those that were in no
// file when they went ("set aside"), in the user's data folder, for the user alone to see. The last
// 50 distinct ones of either are kept.

#include <optional>
#include <string>
#include <vector>

#include "image/memory_image.h"
#include "platform/file_system.h"
#include "platform/time.h"

namespace memwright {

class ImageArchive {
  public:
    static constexpr std::size_t kMost = 50;
    static constexpr const char* kSetAside = "set aside";

    // `data_folder`: the user's; "" if there is none, then nothing is kept.
    ImageArchive(FileSystem& files, const std::string& data_folder)
        : files_(files),
          data_folder_(data_folder),
          folder_(data_folder.empty() ? "" : data_folder + "/radio images") {}

    // Keeps an image under the date, `timestamp` (platform/time.h), and what happened to it:
    // "read", "written" or kSetAside. An image that is there already gets the new name. FileError.
    void keep(const MemoryImage& image, const std::string& timestamp, const std::string& what);

    // The same for a transfer, in whose way nothing may stand: what failed, "" if nothing did.
    std::string try_to_keep(const MemoryImage& image, const std::string& timestamp,
                            const std::string& what);

    // The image that a radio was last known to hold: what it sent or was sent. Nothing if none was
    // kept, or none can be read.
    std::optional<MemoryImage> latest_of_a_radio() const;

    // The names of the images, the latest first.
    std::vector<std::string> names() const;

    std::string path(const std::string& name) const { return folder_ + "/" + name; }
    const std::string& folder() const { return folder_; }

  private:
    std::vector<std::string> names_or_none() const;
    bool holds(const std::string& name, const MemoryImage& image) const;

    FileSystem& files_;
    std::string data_folder_;
    std::string folder_;
};

}  // namespace memwright
