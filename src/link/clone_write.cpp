#include "link/clone_write.h"

#include <string>

#include "link/checksum.h"
#include "link/clone_frames.h"

namespace memwright {

using namespace clone;

void CloneWrite::mnuWrite_Click() {
    table_.SaveVR120Data();
    try {
        WriteToVR120();
    } catch (const TransferCancelled&) {
        link_.set_status("Write To VR-120 cancelled.");
    }
}

void CloneWrite::WriteToVR120() {
    link_.clear_status();
    link_.control().run(TransferControl::Kind::write, [this] { exchange(); });
}

void CloneWrite::exchange() {
    window_.DisableGui();
    messages_.show(
        {.text = "1. Hold down [Func] + [Band] on the VR-120 and power it on. It should say RX TX."
                 "\r\n2. Press [Scan] on the VR-120. It should say R."
                 "\r\n3. Click OK on this box to begin.",
         .title = "Write To VR-120",
         .buttons = Buttons::ok_cancel});
    // The program may have been ended behind the instructions.
    link_.control().check();
    sending_ = store_.MemoryImage;
    beginning();
    link_.InitPort();
    link_.open();
    link_.control().show();

    link_.send(kOpeningFrame);
    link_.pause(kSettle);
    link_.take();
    for (int number = 0; number < kBlocks; ++number) {
        link_.send(block(number));
        link_.pause(kSettle);
        const int percent = number * 100 / (kBlocks - 1);
        link_.set_status("Writing To VR-120: " + std::to_string(percent) + "% complete...");
        link_.control().show_progress(percent);
    }
    link_.send(kClosingFrame);
    link_.pause(kSettle);
    link_.send(kClosingFrame);
    link_.finish_sending();

    link_.set_status("Write To VR-120 complete.");
    link_.close();
    window_.EnableGui();
}

Bytes CloneWrite::block(int number) const {
    Bytes bytes(kBlockHeader.begin(), kBlockHeader.end());
    bytes.push_back(static_cast<std::uint8_t>(number));
    for (int i = 0; i < layout::kBlockSize; ++i) {
        bytes.push_back(number < layout::kImageBlocks
                            ? sending_.get(number * layout::kBlockSize + i)
                            : kFiller);
    }
    const std::string sum = CalcChecksum(bytes, 0, kBlockChecksum - 1);
    bytes.push_back(static_cast<std::uint8_t>(std::stoi(sum)));
    return bytes;
}

}  // namespace memwright
