#pragma once

// Says which memories to doubt of a read whose blocks came with wrong checksums, as long as the
// table is that read's. Added around the clone read, which says nothing of them.

#include <vector>

#include "app/form1.h"
#include "app/notices.h"
#include "files/image_files.h"
#include "link/clone_read.h"

namespace memwright {

class DoubtfulRead {
  public:
    DoubtfulRead(CloneRead& clone_read, ImageFiles& files, Form1& form, Notices& notices);

  private:
    Notice notice() const;
    void show_first_memory();

    CloneRead& clone_read_;
    Form1& form_;
    Notices& notices_;
    std::vector<int> in_table_;  // the doubtful blocks of what the table shows
    std::vector<Connection> connections_;
};

}  // namespace memwright
