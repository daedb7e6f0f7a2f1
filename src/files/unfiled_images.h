#pragma once

// Sets an image aside that would go without a trace: one that is in no file byte for byte when
// another takes its place or the program ends. It lies beside the images of radios.

#include <functional>
#include <string>

#include "files/image_archive.h"
#include "image/memory_image.h"
#include "platform/file_system.h"
#include "platform/time.h"

namespace memwright {

class UnfiledImages {
  public:
    // `note` tells the user something in passing.
    UnfiledImages(FileSystem& files, ImageArchive& archive, Clock& clock,
                  std::function<void(const std::string&)> note)
        : files_(files), archive_(archive), clock_(clock), note_(std::move(note)) {}

    // The image is about to go. `path`: its file, "" if it has none. What the table makes of an
    // image that is in a file is as good as that image.
    void set_aside(const MemoryImage& image, const std::string& path);

  private:
    bool is_in(const std::string& path, const MemoryImage& image) const;
    bool is_in_archive(const MemoryImage& image) const;

    FileSystem& files_;
    ImageArchive& archive_;
    Clock& clock_;
    std::function<void(const std::string&)> note_;
};

}  // namespace memwright
