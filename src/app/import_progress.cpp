#include "app/import_progress.h"

#include <string>

namespace memwright {
namespace {

constexpr const char* kCancelled = "cancelled import";
constexpr const char* kLineBreak = "\r\n";

std::string name_of(const std::string& path) { return path.substr(path.find_last_of("/\\") + 1); }

std::size_t count_of(const std::string& lines) {
    std::size_t count = 1;
    for (std::size_t at = lines.find(kLineBreak); at != lines.npos;
         at = lines.find(kLineBreak, at + 2)) {
        ++count;
    }
    return count;
}

// The first few of them.
std::string first_of(const std::string& lines, int few) {
    std::size_t end = 0;
    for (int i = 0; i < few && end != lines.npos; ++i) {
        end = lines.find(kLineBreak, i == 0 ? 0 : end + 2);
    }
    return lines.substr(0, end);
}

}  // namespace

void ImportProgress::begin() {
    running_ = true;
    cancelled_ = false;
    notices_.withdraw(kCancelled);
    form_.DisableGui();
    form_.TransferProgress.busy = false;
    form_.TransferProgress.visible = true;
    form_.TransferButton.caption = "Cancel";
    form_.TransferButton.visible = true;
}

bool ImportProgress::go_on(double share) {
    if (!running_) begin();
    form_.TransferProgress.percent = static_cast<int>(share * 100);
    // Without waiting: what the user did meanwhile, and a look at the window.
    loop_.wait(std::chrono::milliseconds(0));
    return !cancelled_;
}

void ImportProgress::end() {
    if (!running_) return;
    running_ = false;
    form_.TransferProgress.visible = false;
    form_.TransferButton.visible = false;
    form_.unlock_gui();
    if (!cancelled_) return;
    notices_.add({.text = "Import cancelled. Nothing was taken over.", .about = kCancelled});
}

// However many there are, they are one notice.
void ImportProgress::note_skipped(const std::string& path, const std::string& lines) {
    constexpr int kNamed = 3;
    const std::string about = "import of " + path;
    const std::size_t count = count_of(lines);
    if (count == 1) {
        notices_.add({.text = name_of(path) + ": " + lines, .about = about});
        return;
    }
    notices_.add({.text = std::to_string(count) + " lines of " + name_of(path) + " were skipped. " +
                          one_line(first_of(lines, kNamed)) + (count > kNamed ? " And so on." : ""),
                  .about = about,
                  .details = lines});
}

}  // namespace memwright
