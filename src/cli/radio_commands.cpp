// read, write and ports.

#include <functional>
#include <map>

#include "base/error.h"
#include "base/printable.h"
#include "cli/commands.h"
#include "cli/interrupt.h"
#include "cli/workbench.h"
#include "files/image_archive.h"
#include "link/clone_read.h"
#include "link/clone_write.h"
#include "link/com_ports.h"
#include "link/doubtful_blocks.h"
#include "native/modules.h"
#include "platform/user_folders.h"

namespace memwright::cli {
namespace {

constexpr std::chrono::milliseconds kLookForInterrupt{100};

// The instructions of a transfer: said, and followed by Enter.
class Instructions final : public MessageBox {
  public:
    Instructions(Console& console, bool begin_at_once)
        : console_(console), begin_at_once_(begin_at_once) {}

    Answer show(const Message& message) override {
        console_.say(message.text);
        if (!begin_at_once_) {
            console_.say("Press Enter for OK, Ctrl-C to stop.");
            declined_ = !console_.wait_for_enter(interrupted);
        }
        declined_ = declined_ || interrupted();
        if (declined_ && when_declined) when_declined();
        return declined_ ? Answer::cancel : Answer::ok;
    }

    // A write goes on whatever the answer to its instructions is, unless it is ended.
    std::function<void()> when_declined;

    bool declined() const { return declined_; }

  private:
    Console& console_;
    bool begin_at_once_;
    bool declined_ = false;
};

std::pair<int, std::string> port_from(const std::string& text) {
    if (const auto port = ComPorts::named_port(text)) return *port;
    throw WrongUsage("--com is N=DEVICE with N from 1 to 12, not \"" + text + "\".");
}

// A transfer's parts, put together as the window does.
class Transfer {
  public:
    Transfer(const Arguments& arguments, Session& session)
        : console_(session.console),
          files_(session.files),
          bench(session.console, session.files),
          instructions(session.console, arguments.has("--yes")),
          loaded_(open_ports_and_pages(ModuleUse::ports)),
          ports_(loaded_->devices(), loaded_->settings(), named(arguments, loaded_->settings())),
          port_(loaded_->port([this](int number) { return ports_.device_of(number); })),
          control_(
              {bench.form.TransferProgress, bench.form.ReceivedLabel, bench.form.TransferButton},
              *port_, bench.form, instructions),
          link(*port_, loaded_->settings(), loaded_->clock(), loaded_->loop(),
               {bench.form.Label1, bench.form.Text1}, control_) {
        progress_ = bench.form.TransferProgress.percent.changed.connect(
            [this] { console_.show_progress(bench.form.TransferProgress.percent); });
        interrupts_ = loaded_->loop().every(kLookForInterrupt, [this] {
            if (interrupted()) control_.end_now();
        });
        instructions.when_declined = [this] { control_.end_now(); };
        catch_interrupts();
    }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

  private:
    static std::map<int, std::string> named(const Arguments& arguments, SettingsStore& settings) {
        const auto device = arguments.value("--port");
        const auto com = arguments.value("--com");
        if (device && com) throw WrongUsage("--port and --com exclude each other.");
        if (device) return {{transfer_port(settings), *device}};
        if (com) return {port_from(*com)};
        return {};
    }

    Console& console_;
    StreamFiles& files_;

  public:
    Workbench bench;
    Instructions instructions;

  private:
    std::unique_ptr<PortsAndPages> loaded_;
    ComPorts ports_;
    std::unique_ptr<MSComm> port_;
    TransferControl control_;
    Connection progress_;
    Connection interrupts_;

  public:
    SerialLink link;

    // Keeps a dated copy of the image; what cannot be kept stands in no transfer's way.
    void archive(const MemoryImage& image, const char* what) {
        ImageArchive kept(files_, native_user_folders().data);
        const std::string failure = kept.try_to_keep(image, loaded_->clock().timestamp(), what);
        if (!failure.empty()) console_.say(failure);
        archived = failure.empty() && !kept.folder().empty();
    }
    bool archived = false;
};

void demand_somebody_or_yes(const Arguments& arguments) {
    if (arguments.has("--yes") || has_terminal()) return;
    throw WrongUsage("There is no terminal to press Enter at: give --yes to begin at once.");
}

}  // namespace

Status read_radio(const Arguments& arguments, Session& session) {
    demand_somebody_or_yes(arguments);
    Transfer transfer(arguments, session);
    Workbench& bench = transfer.bench;
    CloneRead clone_read(transfer.link, bench.store, bench.table, bench.image_files, bench.form,
                         transfer.instructions);
    const Connection received = clone_read.received.connect(
        [&](const MemoryImage& image) { transfer.archive(image, "read"); });
    try {
        if (clone_read.ReadFromVR120().empty()) throw TransferCancelled{};
    } catch (const TransferCancelled&) {
        session.console.say("Read from VR-120 cancelled. Nothing was written.");
        return kNoFileOrPort;
    }
    try {
        bench.save(arguments[0]);
    } catch (const FileError& error) {
        if (!transfer.archived) throw;
        throw FileError(std::string(error.what()) +
                        "\nWhat the radio sent is kept: memwright-cli archive restore 1 FILE makes "
                        "a file of it.");
    }
    session.console.say(bench.form.Label1.caption);
    const auto doubts = doubts_about(clone_read.doubtful_blocks());
    for (const std::string& doubt : doubts) session.console.say("Warning: " + doubt);
    if (!doubts.empty()) {
        session.console.say("Read again, or compare two reads with memwright-cli diff.");
    }
    return kDone;
}

Status write_radio(const Arguments& arguments, Session& session) {
    demand_somebody_or_yes(arguments);
    Transfer transfer(arguments, session);
    Workbench& bench = transfer.bench;
    bench.load(arguments[0]);
    CloneWrite clone_write(transfer.link, bench.store, bench.table, bench.form,
                           transfer.instructions);
    const Connection beginning = clone_write.beginning.connect(
        [&] { transfer.archive(bench.store.MemoryImage, "written"); });
    try {
        clone_write.WriteToVR120();
    } catch (const TransferCancelled&) {
        session.console.say(
            transfer.instructions.declined()
                ? "Write To VR-120 cancelled. Nothing was sent."
                : "Write To VR-120 cancelled. Write to the radio again before you use it.");
        return kNoFileOrPort;
    }
    session.console.say(bench.form.Label1.caption);
    return kDone;
}

Status ports(const Arguments& /*arguments*/, Session& session) {
    const auto loaded = open_ports_and_pages(ModuleUse::ports);
    const ComPorts ports(loaded->devices(), loaded->settings(), {});
    std::vector<SerialDevice> others = ports.devices();
    const auto print = [&](const std::string& name, const std::string& path,
                           const std::string& description) {
        std::string padded = name;
        padded.resize(8, ' ');
        session.console.print(padded + printable_in_line(path) +
                              (description.empty() ? "" : "  " + printable_in_line(description)) +
                              "\n");
    };
    for (int number = 1; number <= ComPorts::kPorts; ++number) {
        const ComPorts::Choice choice = ports.choice(number);
        if (choice.path.empty()) continue;
        print("COM " + std::to_string(number), choice.path, choice.description);
        std::erase_if(others,
                      [&](const SerialDevice& device) { return device.path == choice.path; });
    }
    for (const SerialDevice& device : others) print("-", device.path, device.description);
    return kDone;
}

}  // namespace memwright::cli
