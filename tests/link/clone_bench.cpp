#include "link/clone_bench.h"

#include <array>
#include <random>
#include <utility>

#include "radio/demonstration.h"

namespace memwright::link_tests {

MemoryImage random_image(unsigned seed, unsigned highest) {
    std::mt19937 random(seed);
    MemoryImage image;
    for (int i = 0; i < layout::kImageSize; ++i) {
        image.set(i, static_cast<std::uint8_t>((random() >> 8) % (highest + 1)));
    }
    return image;
}

MemoryImage image_of_user() {
    fakes::MemoryFiles files;
    modVR120 store(files);
    store.set_image(radio::demonstration_memory());
    // The table shows the frequencies of these two as others.
    store.ClearMem(9, 8);
    store.ClearMem(9, 9);
    // Nor do the last bytes mean anything to it.
    for (int i = layout::kImageSize - layout::kBlockSize; i < layout::kImageSize; ++i) {
        store.set_byte(i, static_cast<std::uint8_t>(i % 200 + 1));
    }
    return store.MemoryImage;
}

std::string hexadecimal(const Bytes& bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (!text.empty()) text += ' ';
        text += kDigits[byte / 16U];
        text += kDigits[byte % 16U];
    }
    return text;
}

radio::Options sending(std::vector<radio::Fault> faults) {
    return {.mode = radio::Mode::send, .faults = std::move(faults), .short_frames_before = {}};
}

radio::Options receiving(std::vector<radio::Fault> faults) {
    return {.mode = radio::Mode::receive, .faults = std::move(faults), .short_frames_before = {}};
}

CloneBench::CloneBench(radio::Options options, const MemoryImage& radio_memory)
    : radio(radio_memory, std::move(options)) {
    mnuSaveOnly.enabled = false;
    for (Control* control_shown : std::initializer_list<Control*>{&progress, &received, &button}) {
        control_shown->visible = false;
    }
    table.initgrid();
    port.told = [this](const std::string& what) { journal.push_back(what); };
    messages.while_shown = [this] { journal.push_back("box " + messages.shown.back().title); };
    connections_ = {
        Label1.caption.changed.connect(
            [this] { journal.push_back("Label1 \"" + Label1.caption.get() + "\""); }),
        Text1.text.changed.connect(
            [this] { journal.push_back("Text1 \"" + Text1.text.get() + "\""); }),
        grid.changed.connect([this](const GridChange&) {
            if (journal.empty() || journal.back() != "table") journal.emplace_back("table");
        }),
    };
}

void CloneBench::note_lock(const std::string& call) {
    journal.push_back(call);
    lock_calls.push_back(call);
}

void CloneBench::open_file(const MemoryImage& image) {
    files.overwrite("/radio/old.120", image.bytes());
    image_files.open_named("/radio/old.120");
    journal.clear();
    lock_calls.clear();
}

std::string CloneBench::run(std::vector<Answer> answers, const std::function<void()>& command) {
    messages.answers.assign(answers.begin(), answers.end());
    try {
        command();
    } catch (const PortError& error) {
        return error.what();
    }
    return "";
}

CloneBench::Kept CloneBench::kept() const {
    Kept kept{.image = store.MemoryImage,
              .cells = {},
              .colours = {},
              .path = image_files.current_path(),
              .caption = caption.caption,
              .change_check = table.ChangeCheckSum()};
    for (int row = 0; row < grid.Rows(); ++row) {
        for (int col = 0; col < grid.Cols(); ++col) {
            kept.cells.push_back(grid.TextMatrix(row, col));
            kept.colours.push_back(grid.colour(row, col));
        }
    }
    return kept;
}

void CloneBench::expect_idle() const {
    EXPECT_FALSE(port.PortOpen());
    EXPECT_FALSE(control.running());
    EXPECT_FALSE(progress.visible);
    EXPECT_FALSE(received.visible);
    EXPECT_FALSE(button.visible);
}

void CloneBench::expect_offers_unlock() const {
    EXPECT_FALSE(port.PortOpen());
    EXPECT_FALSE(control.running());
    EXPECT_FALSE(progress.visible);
    EXPECT_FALSE(received.visible);
    EXPECT_TRUE(button.visible);
    EXPECT_TRUE(button.enabled);
    EXPECT_EQ(button.caption.get(), "Unlock");
    EXPECT_THAT(lock_calls, testing::ElementsAre("DisableGui"));
}

}  // namespace memwright::link_tests
