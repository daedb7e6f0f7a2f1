#pragma once

// Keeps what the user is doing on the disk, so that a crash loses nothing: while the table holds
// changes, a snapshot of it lies in the user's state folder, for the user alone to see, at most a
// second behind. It goes when what it holds is in a file and when the program ends as it should.
// What it finds of runs that did not is offered to the user.

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "files/changes_since.h"
#include "files/image_files.h"
#include "files/snapshot.h"
#include "platform/message_box.h"
#include "platform/run_lock.h"
#include "platform/time.h"
#include "table/edit_history.h"
#include "table/edit_recorder.h"

namespace memwright {

class Recovery {
  public:
    // What is kept, and put back.
    struct Work {
        ImageCodec& store;
        ChannelTable& table;
        MSFlexGrid& grid;
        EditRecorder& edits;  // of this grid and store
        EditHistory& history;
        ImageFiles& files;
        UserInterface& window;
    };

    // What it uses of the platform.
    struct Services {
        FileSystem& files;
        RunLocks& locks;
        Clock& clock;
        EventLoop& loop;
        MessageBox& messages;
        std::string folder;  // the user's state folder; "" if there is none
    };

    // `note` tells the user something in passing.
    Recovery(Work work, Services services, std::function<void(const std::string&)> note)
        : work_(work), services_(std::move(services)), note_(std::move(note)) {}

    // How long a change may wait for the disk.
    static constexpr std::chrono::milliseconds kDelay{500};
    // How long a declined snapshot is kept.
    static constexpr int kDaysAside = 30;

    // Watches the edits from here on.
    void begin();

    // Offers what runs left behind that ended without removing it. True if the user took one.
    bool offer();

    // The program ends as it should.
    void end();

  private:
    void content_changed();
    void content_is_in_a_file();
    bool is_in_a_file() const;
    void write();
    void write_snapshot();
    void choose_name();
    void remove_own();
    bool offer(const std::string& name);
    std::optional<Snapshot> read(const std::string& name, std::optional<Bytes>& bytes);
    void restore(const Snapshot& snapshot);
    void set_aside(const std::string& name, const std::optional<Bytes>& bytes);
    void forget_old_ones();
    std::vector<std::string> names() const { return services_.files.files_in(services_.folder); }
    std::string path(const std::string& name) const { return services_.folder + "/" + name; }

    Work work_;
    Services services_;
    std::function<void(const std::string&)> note_;
    std::string own_name_;  // of this run's snapshot, once there is one
    std::unique_ptr<RunLock> own_lock_;
    // Since what need not be kept: a file has it, or it is empty. None if there is no such moment.
    std::optional<ChangesSince> changes_;
    bool failed_ = false;  // the user knows that nothing is kept
    Connection timer_;
    std::vector<Connection> connections_;
};

}  // namespace memwright
