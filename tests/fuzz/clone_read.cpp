// A clone read: whatever arrives, it ends with an image, with an error that is one of the port or
// the radio, or when the user cancels it.

#include "link/clone_read.h"

#include <algorithm>

#include "base/error.h"
#include "fakes/memory_files.h"
#include "fakes/memory_settings.h"
#include "fakes/virtual_time.h"
#include "files/snapshot.h"
#include "fuzz/bench.h"
#include "fuzz/scripted_port.h"
#include "fuzz/target.h"
#include "radio/demonstration.h"

namespace memwright::fuzz {
namespace {

using namespace std::chrono_literals;

// A pause that meets midnight lasts a day, and the read does not see meanwhile that the other end
// hung up: a user who has waited for so long in vain cancels it.
constexpr auto kPatience = 1h;
constexpr auto kLongestRead = kPatience + 1h;
// After the button was pressed.
constexpr auto kLongestEnd = 250ms;

class ReadBench : public Bench {
  public:
    ReadBench(FileSystem& files_of_machine, Input script)
        : Bench(files_of_machine), port(time, script) {
        time.end = kLongestRead;
        port.silent = port.button_pressed = [this] { press(); };
        time.after(kPatience, [this] { press(); });
        form.TransferProgress.visible = false;
        form.ReceivedLabel.visible = false;
        form.TransferButton.visible = false;
    }

    struct Kept {
        MemoryImage image;
        std::vector<std::string> cells;
        std::string path;
        std::string caption;
        std::int32_t sum;
        friend bool operator==(const Kept&, const Kept&) = default;
    };
    Kept kept() const {
        return {store.MemoryImage, cells_of(grid), image_files.current_path(), form.caption.caption,
                table.ChangeCheckSum()};
    }

    void open_file() {
        files.overwrite("/old.120", radio::demonstration_memory().bytes());
        image_files.open_named("/old.120");
        settle(*this);
        table.SetChangeCheck();
        enabled_before = enabled();
    }

    std::vector<bool> enabled() {
        std::vector<bool> all;
        for (const auto& [menu, items] : form.menus()) {
            all.push_back(menu.enabled);
            for (const MenuEntry* item : items) all.push_back(item->enabled);
        }
        return all;
    }

    void expect_unlocked_and_idle() {
        EXPECT_FALSE(port.PortOpen());
        EXPECT_FALSE(control.running());
        EXPECT_FALSE(form.TransferProgress.visible);
        EXPECT_FALSE(form.ReceivedLabel.visible);
        EXPECT_FALSE(form.TransferButton.visible);
        EXPECT_EQ(enabled(), enabled_before);
    }

    fakes::VirtualTime time;
    ScriptedPort port;
    fakes::MemorySettings settings;
    TransferControl control{
        {form.TransferProgress, form.ReceivedLabel, form.TransferButton}, port, form, messages};
    SerialLink link{port, settings, time, time, {form.Label1, form.Text1}, control};
    CloneRead read{link, store, table, image_files, form, messages};
    bool pressed = false;
    std::vector<bool> enabled_before;

  private:
    void press() {
        if (!pressed) time.end = time.now() + kLongestEnd;
        pressed = true;
        control.button_click();
    }
};

void expect_read(ReadBench& bench) {
    bench.expect_unlocked_and_idle();
    EXPECT_EQ(bench.form.Label1.caption.get(), "Read from VR-120 complete.");
    const auto& doubtful = bench.read.doubtful_blocks();
    EXPECT_TRUE(std::ranges::is_sorted(doubtful));
    EXPECT_TRUE(std::ranges::all_of(
        doubtful, [](int block) { return block >= 0 && block < layout::kImageBlocks; }));
    // What came is in the table as it would be from a file.
    const auto shown = cells_of(bench.grid);
    bench.table.ParseVR120Data();
    EXPECT_EQ(cells_of(bench.grid), shown);
    settle(bench);
}

}  // namespace

void clone_read(Input input) {
    fakes::MemoryFiles files;
    ReadBench bench(files, input);
    bench.open_file();
    const auto before = bench.kept();
    int received = 0;
    const Connection counted = bench.read.received.connect([&](const MemoryImage&) { ++received; });
    bench.messages.answers = {Answer::ok};

    bool failed = false;
    try {
        bench.read.mnuRead_Click();
    } catch (const PortError& error) {
        failed = true;
        EXPECT_FALSE(error.what_is_wrong().empty());
    }
    EXPECT_EQ(bench.messages.shown.size(), 1U);
    EXPECT_FALSE(bench.port.PortOpen());
    EXPECT_LE(received, 1);
    if (received > 0 && !failed) {
        expect_read(bench);
        return;
    }
    EXPECT_TRUE(bench.kept() == before);
    EXPECT_TRUE(failed || bench.pressed);
    if (failed) {
        EXPECT_EQ(bench.form.TransferButton.caption.get(), "Unlock");
        EXPECT_TRUE(bench.form.TransferButton.visible);
        bench.control.button_click();
    } else {
        EXPECT_EQ(bench.form.Label1.caption.get(), "Read from VR-120 cancelled.");
    }
    bench.expect_unlocked_and_idle();
}

}  // namespace memwright::fuzz
