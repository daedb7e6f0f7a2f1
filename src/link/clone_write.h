#pragma once

// Clone write: sends the memory image to the radio in 240 blocks, paced by pauses. Deliberate:
// nothing that comes back is looked at, and Cancel in the instructions starts the write like OK.

#include "base/bytes.h"
#include "files/user_interface.h"
#include "link/serial_link.h"
#include "table/channel_table.h"

namespace memwright {

class CloneWrite {
  public:
    CloneWrite(SerialLink& link, const ImageCodec& store, ChannelTable& table,
               UserInterface& window, MessageBox& messages)
        : link_(link), store_(store), table_(table), window_(window), messages_(messages) {}

    void mnuWrite_Click();

    void WriteToVR120();

    // The image is about to be sent.
    Signal<> beginning;

  private:
    void exchange();
    Bytes block(int number) const;

    SerialLink& link_;
    const ImageCodec& store_;
    ChannelTable& table_;
    UserInterface& window_;
    MessageBox& messages_;

    MemoryImage sending_;  // as it was at the beginning, whatever is done to the image meanwhile
};

}  // namespace memwright
