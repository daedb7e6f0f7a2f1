#include "link/clone_read.h"

#include "base/error.h"
#include "link/checksum.h"
#include "link/clone_frames.h"

namespace memwright {
namespace {

using namespace clone;

constexpr std::size_t kNumber = kLeadingBytes + kBlockNumber;
constexpr std::size_t kData = kLeadingBytes + kBlockData;
constexpr std::size_t kChecksum = kLeadingBytes + kBlockChecksum;

[[noreturn]] void fail(int count, const std::string& cause) {
    throw RadioError("The read from the VR-120 failed at block " + std::to_string(count) + " of " +
                         std::to_string(kBlocks) + ": " + cause + ".",
                     "The table is as it was before. Check the plugs of the clone cable, press "
                     "Unlock, and read again.");
}

// A block's response is complete with its checksum; one that is not has no such byte.
void check_length(std::size_t size, int count) {
    if (size > kChecksum) return;
    fail(count,
         std::to_string(size) + " bytes arrived instead of " + std::to_string(kChecksum + 1));
}

}  // namespace

void CloneRead::mnuRead_Click() {
    if (!files_.may_go_on()) return;
    try {
        ReadFromVR120();
    } catch (const TransferCancelled&) {
        link_.set_status("Read from VR-120 cancelled.");
        return;
    }
    table_.ParseVR120Data();
}

std::string CloneRead::ReadFromVR120() {
    result_.clear();
    doubtful_blocks_.clear();
    link_.clear_status();
    link_.InitPort();
    const Answer answer = messages_.show(
        {.text = "1. Hold down [Func] + [Band] on the VR-120 and power it on. It should say RX TX."
                 "\r\n2. Click OK to close this box."
                 "\r\n3. Press [Mode] on the VR-120 to start the read.",
         .title = "Read From VR-120",
         .buttons = Buttons::ok_cancel});
    if (answer != Answer::ok) {
        link_.set_status("");
        return result_;
    }
    link_.control().run(TransferControl::Kind::read, [this] { exchange(); });
    return result_;
}

void CloneRead::exchange() {
    window_.DisableGui();
    link_.open();
    link_.set_status("Listening...");
    link_.control().show();
    link_.wait_for_bytes([](int count) { return count == kOpeningFrame.size(); },
                         [this](int count) { link_.control().show_received(count); });
    link_.take();
    link_.control().hide_received();

    // Bytes for which no block comes stay as they are.
    received_ = store_.MemoryImage;
    write_position_ = 0;
    for (int count = 1; count <= kBlocks; ++count) {
        Response response = receive_block();
        // A frame in place of a block is acknowledged again.
        while (response.size() == kFrameResponse) response = receive_block();
        keep_block(response, count);
        const int percent = count * 100 / kBlocks;
        link_.set_status("Reading from VR-120: " + std::to_string(percent) + "% complete...");
        link_.control().show_progress(percent);
    }

    received(received_);
    try {
        exchange_closing_frame();
    } catch (const TransferCancelled&) {
        // The memory is complete all the same.
        if (link_.control().abandoned()) throw;
    }
    link_.close();

    replacing();
    store_.set_image(received_);
    result_ = "Success";
    link_.set_status("Read from VR-120 complete.");
    table_.SetChangeCheck();
    window_.EnableGui();
}

void CloneRead::exchange_closing_frame() {
    link_.send(kAcknowledgement);
    link_.wait_for_bytes([](int count) { return count >= static_cast<int>(kFrameResponse); });
    link_.take();
    link_.send(kAcknowledgement);
}

CloneRead::Response CloneRead::receive_block() {
    link_.send(kAcknowledgement);
    link_.wait_for_bytes([](int count) { return count >= static_cast<int>(kFrameResponse); });
    link_.pause(kSettle);
    return link_.take();
}

void CloneRead::keep_block(const Response& response, int count) {
    if (response[kNumber] >= layout::kImageBlocks) return;
    check_length(response.size(), count);
    if (write_position_ == layout::kImageSize) fail(count, "the memory was complete already");
    const std::string sum = CalcChecksum(response, kLeadingBytes, kChecksum - 1);
    // Deliberate: the block is kept all the same, and the exchange goes on.
    if (sum != std::to_string(response[kChecksum])) {
        result_ = "Invalid Checksum.";
        doubtful_blocks_.push_back(write_position_ / layout::kBlockSize);
    }
    // Deliberate: blocks are stored in the order they arrive, not by their numbers.
    for (std::size_t i = 0; i < layout::kBlockSize; ++i) {
        received_.set(write_position_++, response[kData + i]);
    }
}

}  // namespace memwright
