#pragma once

// The memory image store: the image, its codec, and the files that it is loaded from.

#include <string>

#include "image/image_codec.h"
#include "platform/file_system.h"

namespace memwright {

class modVR120 : public ImageCodec {
  public:
    explicit modVR120(FileSystem& files) : files_(files) {}

    // Fills the image from the first 7392 bytes of a file; past the end of a shorter one it holds
    // zeros. FileError if it cannot be read; bytes read before that stay in the image.
    void OpenVR120(const std::string& FilePath);

    bool FileExists(const std::string& fpath) const noexcept;

  private:
    FileSystem& files_;
};

}  // namespace memwright
