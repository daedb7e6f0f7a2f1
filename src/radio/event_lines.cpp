#include "radio/event_lines.h"

#include <algorithm>

#include "image/layout.h"

namespace memwright::radio {
namespace {

std::string counted(int count, const std::string& one) {
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

std::string beginning_of(const Transfer& transfer) {
    if (transfer.direction == Direction::receiving) return "receiving";
    return "sending: " + counted(kBlocks, "block");
}

std::string end_of(const Transfer& transfer, const std::string& saved) {
    const std::string blocks = counted(transfer.blocks, "block");
    if (transfer.direction == Direction::sending) {
        return (transfer.complete ? "sent: " : "sent in part: ") + blocks;
    }
    const std::string sums = ", " + counted(transfer.checksum_errors, "checksum error");
    if (transfer.complete) {
        return "received: " + counted(layout::kImageSize, "byte") + ", " + blocks + sums + saved;
    }
    return "received in part or damaged, not kept: " + blocks + sums + ", " +
           counted(transfer.order_errors, "order error") + ", " +
           counted(transfer.content_errors, "content error") + ", " +
           counted(transfer.stray_bytes, "stray byte");
}

}  // namespace

std::vector<std::string> EventLines::take(const Report& report, const std::string& saved) {
    std::vector<std::string> lines;
    while (ended_ < report.transfers.size()) {
        const Transfer& transfer = report.transfers[ended_];
        if (!begun_) lines.push_back(beginning_of(transfer));
        begun_ = true;
        for (; faults_ < transfer.faults.size(); ++faults_) {
            lines.push_back("fault: " + text_of(transfer.faults[faults_]));
        }
        if (!transfer.ended) break;
        lines.push_back(end_of(transfer, saved));
        ++ended_;
        begun_ = false;
        faults_ = 0;
    }
    return lines;
}

bool EventLines::image_received(const Report& report) const {
    const auto is_it = [](const Transfer& transfer) {
        return transfer.direction == Direction::receiving && transfer.complete;
    };
    return std::any_of(report.transfers.begin() + static_cast<std::ptrdiff_t>(ended_),
                       report.transfers.end(), is_it);
}

}  // namespace memwright::radio
