#include "app/transfers/transfer_bench.h"

#include <algorithm>

#include "files/snapshot.h"
#include "radio/demonstration.h"
#include "radio/frames.h"

namespace memwright::transfer_tests {
namespace {

const std::string kFile = "/radio/mine.120";
const std::string kData = "/data";

std::string end_text(End end) {
    return end == End::complete ? "complete" : end == End::reported ? "reported" : "cancelled";
}

bool ends_with(const std::string& text, const std::string& end) { return text.ends_with(end); }

// The fewer there are, the quicker it is to put them into the table and back.
MemoryImage few_channels() {
    constexpr int kChannels = 40;
    MemoryImage image = radio::demonstration_memory();
    for (int i = kChannels * layout::kRecordSize; i < layout::kLabels; ++i) image.set(i, 0xFF);
    return image;
}

}  // namespace

TransferBench::TransferBench(MSComm& port, Clock& clock, EventLoop& loop)
    : port_(port),
      program_({user_,
                dialogs_,
                files_,
                settings_,
                port,
                clock,
                loop,
                window_,
                views_,
                cells_,
                paper_,
                locks_,
                {"", kData}},
               ports_) {
    cells_.grid = &program_.form.MSFlexGrid1;
    program_.start();
    files_.overwrite(kFile, few_channels().bytes());
    open_file();
    program_.form.mnuSaveOnly.clicked();
    const Bytes& bytes = files_.files[kFile];
    for (int i = 0; i < layout::kImageSize; ++i) {
        owned_.set(i, bytes.at(static_cast<std::size_t>(i)));
    }
    open_file();
    kept_ = kept();
    enabled_ = enabled_names();
    connections_.push_back(program_.form.MSFlexGrid1.changed.connect(
        [this](const GridChange&) { table_changed_ = true; }));
}

void TransferBench::open_file() { program_.open_named(kFile); }

TransferBench::Kept TransferBench::kept() const {
    return {cells_of(program_.form.MSFlexGrid1), program_.form.caption.caption};
}

// The added entries follow the table and its history.
std::vector<std::string> TransferBench::enabled_names() {
    std::vector<std::string> names;
    Form1& form = program_.form;
    if (form.MSFlexGrid1.enabled) names.push_back(form.MSFlexGrid1.name);
    for (const auto& [menu, items] : form.menus()) {
        if (menu.enabled) names.push_back(menu.name);
        for (const MenuEntry* item : items) {
            if (item->enabled && item->name.starts_with("mnu")) names.push_back(item->name);
        }
    }
    return names;
}

std::string TransferBench::transfer(const Plan& plan, const Expected& expected) {
    Form1& form = program_.form;
    user_.reports.clear();
    std::erase_if(files_.files, [](const auto& file) { return file.first.starts_with(kData); });
    table_changed_ = false;
    running_ = true;
    (plan.reads() ? form.mnuRead : form.mnuWrite).clicked();
    running_ = false;

    ended_ = !user_.reports.empty()                          ? End::reported
             : ends_with(form.Label1.caption, " cancelled.") ? End::cancelled
                                                             : End::complete;
    Outcome outcome = expected.outcome;
    if (expected.otherwise && expected.otherwise->end == ended_) outcome = *expected.otherwise;
    if (expected.close_call) {
        outcome.end = ended_;
        outcome.report.clear();
    }
    std::string wrong = check_end(plan, outcome);
    if (plan.reads() && !expected.close_call) wrong += check_archive(outcome);
    if (plan.reads() && ended_ == End::complete) {
        if (!expected.close_call) wrong += check_doubts(outcome);
        open_file();
    } else {
        if (table_changed_) wrong += "the table changed\n";
        if (form.caption.caption.get() != kept_.caption) wrong += "the caption changed\n";
    }
    return wrong;
}

std::string TransferBench::check_end(const Plan& plan, const Outcome& outcome) {
    Form1& form = program_.form;
    if (ended_ != outcome.end) {
        return "it ended " + end_text(ended_) + ", not " + end_text(outcome.end) + ": " +
               (user_.reports.empty() ? form.Label1.caption.get() : user_.reports.front()) + "\n";
    }
    std::string wrong;
    if (port_.PortOpen()) wrong += "the port is still open\n";
    if (form.TransferProgress.visible) wrong += "progress is still shown\n";
    if (ended_ == End::reported) {
        const std::string& report = user_.reports.front();
        if (user_.reports.size() != 1) wrong += "there was more than one report\n";
        if (report.find(outcome.report) == std::string::npos) {
            wrong += "the report is: " + report + "\nnot: " + outcome.report + "\n";
        }
        const auto& noted = program_.notices.of_this_run();
        if (noted.empty() || noted.back().notice.text != report) {
            wrong += "the list of notices does not hold the report\n";
        }
        const bool locked = !form.mnuFile.enabled && !form.MSFlexGrid1.enabled;
        if (!locked) wrong += "the window is not locked\n";
        if (!form.TransferButton.visible || form.TransferButton.caption.get() != "Unlock") {
            wrong += "there is no Unlock\n";
        }
        escape();
    } else if (ended_ == End::complete) {
        const std::string done = plan.reads() ? "Read from VR-120" : "Write To VR-120";
        if (form.Label1.caption.get() != done + " complete.") {
            wrong += "the status is " + form.Label1.caption.get() + "\n";
        }
    }
    if (form.TransferButton.visible) wrong += "the button is still there\n";
    if (enabled_names() != enabled_) wrong += "other commands are enabled than before\n";
    return wrong;
}

// The image as it was by the table that it makes, and by the file that both make.
std::string TransferBench::check_what_is_kept() {
    std::string wrong;
    if (kept() != kept_) wrong += "the table or the caption is another one\n";
    program_.form.Command5.clicked();
    if (cells_of(program_.form.MSFlexGrid1) != kept_.cells) wrong += "the image changed\n";
    program_.form.mnuSaveOnly.clicked();
    if (!std::ranges::equal(files_.files[kFile], owned_.bytes())) {
        wrong += "what is saved is not what was opened\n";
    }
    return wrong;
}

// What was received whole is archived, however the read ended.
std::string TransferBench::check_archive(const Outcome& outcome) {
    std::string wrong;
    int archived = 0;
    for (const auto& [name, bytes] : files_.files) {
        if (!name.starts_with(kData)) continue;
        ++archived;
        if (!std::ranges::equal(bytes, outcome.image.bytes())) wrong += "another image was read\n";
    }
    if (archived != (outcome.all_received ? 1 : 0)) {
        wrong += std::to_string(archived) + " images were archived\n";
    }
    return wrong;
}

std::string TransferBench::check_doubts(const Outcome& outcome) {
    std::string wrong;
    if (!program_.form.Text1.text.get().empty()) wrong += "the status window is not empty\n";
    std::string status;
    if (const auto number = program_.notices.current()) {
        const Notice& notice = program_.notices.of_this_run()[*number].notice;
        status = (notice.details.empty() ? notice.text : notice.details) + "\n";
    }
    const auto lines = std::ranges::count(status, '\n');
    if (lines != static_cast<std::ptrdiff_t>(outcome.doubtful.size())) {
        wrong += "other blocks are doubted: " + status + "\n";
    }
    for (const int block : outcome.doubtful) {
        if (status.find("Block " + std::to_string(block) + " ") == std::string::npos) {
            wrong += "block " + std::to_string(block) + " is not doubted\n";
        }
    }
    return wrong;
}

std::vector<std::uint8_t> bytes_of_write(const MemoryImage& image) {
    std::vector<std::uint8_t> bytes;
    const auto add = [&](const auto& frame) {
        bytes.insert(bytes.end(), frame.begin(), frame.end());
    };
    add(radio::kOpeningFrame);
    for (int number = 0; number < radio::kBlocks; ++number) add(radio::block_frame(image, number));
    add(radio::kClosingFrame);
    add(radio::kClosingFrame);
    return bytes;
}

}  // namespace memwright::transfer_tests
