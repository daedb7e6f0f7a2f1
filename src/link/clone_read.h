#pragma once

// Clone read: the radio sends its memory as 240 blocks, each asked for by an acknowledgement. The
// image changes only when the whole exchange has ended; a read that is cancelled or fails leaves
// the image, the table and the file name as they were.

#include <cstdint>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "files/image_files.h"
#include "link/serial_link.h"

namespace memwright {

class CloneRead {
  public:
    CloneRead(SerialLink& link, ImageCodec& store, ChannelTable& table, ImageFiles& files,
              UserInterface& window, MessageBox& messages)
        : link_(link),
          store_(store),
          table_(table),
          files_(files),
          window_(window),
          messages_(messages) {}

    void mnuRead_Click();

    // "Invalid Checksum." after a block whose sum is wrong; "Success" when the read has ended.
    std::string ReadFromVR120();

    // The radio has sent all of its memory, this one. What is left of the exchange is for the
    // radio: cancelling it completes the read, unless the program ends.
    Signal<const MemoryImage&> received;

    // The image is about to be replaced by the one received.
    Signal<> replacing;

    // The blocks of the image, 0 to 230, that came with a wrong sum in the last read.
    const std::vector<int>& doubtful_blocks() const { return doubtful_blocks_; }

  private:
    using Response = Bytes;

    void exchange();
    void exchange_closing_frame();
    Response receive_block();
    void keep_block(const Response& response, int count);

    SerialLink& link_;
    ImageCodec& store_;
    ChannelTable& table_;
    ImageFiles& files_;
    UserInterface& window_;
    MessageBox& messages_;

    MemoryImage received_;
    int write_position_ = 0;
    std::string result_;
    std::vector<int> doubtful_blocks_;
};

}  // namespace memwright
