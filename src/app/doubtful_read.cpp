#include "app/doubtful_read.h"

#include <algorithm>

#include "image/layout.h"
#include "link/doubtful_blocks.h"
#include "table/columns.h"

namespace memwright {
namespace {

constexpr const char* kDoubtfulRead = "doubtful read";

bool holds_memories(int block) { return first_memory_of_block(block).has_value(); }

}  // namespace

DoubtfulRead::DoubtfulRead(CloneRead& clone_read, ImageFiles& files, Form1& form, Notices& notices)
    : clone_read_(clone_read), form_(form), notices_(notices) {
    connections_ = {clone_read_.received.connect([this](const MemoryImage&) {
                        // What is left of the exchange may fail; there is nowhere to go yet.
                        if (!clone_read_.doubtful_blocks().empty()) notices_.add(notice());
                    }),
                    clone_read_.replacing.connect([this] {
                        in_table_ = clone_read_.doubtful_blocks();
                        if (in_table_.empty()) {
                            notices_.withdraw(kDoubtfulRead);
                            return;
                        }
                        Notice said = notice();
                        if (std::ranges::any_of(in_table_, holds_memories)) {
                            said.action = "&Go to Memory";
                            said.act = [this] { show_first_memory(); };
                        }
                        notices_.add(said);
                    }),
                    files.replaced.connect([this](const MemoryImage&, const std::string&) {
                        notices_.withdraw(kDoubtfulRead);
                    })};
}

Notice DoubtfulRead::notice() const {
    const std::vector<int>& blocks = clone_read_.doubtful_blocks();
    const auto lines = doubts_about(blocks);
    if (blocks.size() == 1) return {.text = lines.front(), .about = kDoubtfulRead};
    constexpr std::size_t kNamed = 3;
    std::string text =
        std::to_string(blocks.size()) + " blocks came with a wrong checksum. Doubtful: ";
    for (std::size_t i = 0; i < std::min(blocks.size(), kNamed); ++i) {
        text += (i == 0 ? "" : "; ") + contents_of_block(blocks[i]);
    }
    text += blocks.size() > kNamed ? "; and more." : ".";
    std::string details;
    for (const std::string& line : lines) details += (details.empty() ? "" : "\n") + line;
    return {.text = text, .about = kDoubtfulRead, .details = details};
}

void DoubtfulRead::show_first_memory() {
    MSFlexGrid& grid = form_.MSFlexGrid1;
    const auto block = std::ranges::find_if(in_table_, holds_memories);
    if (block == in_table_.end() || !grid.enabled) return;
    form_.TxtGrid.visible = false;
    form_.CboGrid.visible = false;
    grid.set_row(*first_memory_of_block(*block) + 1);
    grid.set_col(*block * layout::kBlockSize < layout::kLabels ? columns::kFreq : columns::kTag);
    grid.focus_wanted();
}

}  // namespace memwright
