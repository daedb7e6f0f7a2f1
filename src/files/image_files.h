#pragma once

// Image files: the 7392 bytes of the memory image and nothing else, under any extension. The
// commands Open, Save and Save As, and the question about unsaved changes that goes before whatever
// would lose them.

#include <optional>
#include <string>
#include <vector>

#include "files/user_interface.h"
#include "image/mod_vr120.h"
#include "platform/file_dialogs.h"
#include "platform/file_system.h"
#include "platform/message_box.h"
#include "table/channel_table.h"

namespace memwright {

class ImageFiles {
  public:
    // What the commands use of the platform.
    struct Services {
        MessageBox& messages;
        FileDialogs& dialogs;
        FileSystem& files;
    };

    ImageFiles(modVR120& store, ChannelTable& table, MSFlexGrid& grid, UserInterface& window,
               FormCaption& caption, Services services)
        : store_(store),
          table_(table),
          grid_(grid),
          window_(window),
          caption_(caption),
          services_(services) {}

    void mnuOpen_Click();
    void mnuSaveOnly_Click();
    void mnuSave_Click();

    // Opens a file named outside of the program, as Open does after its dialog.
    void open_named(const std::string& path);

    // Asks about unsaved changes and saves them if wanted. False if the user cancelled: the command
    // that asked is to end with nothing changed.
    bool may_go_on();

    // The question itself, and its answer; none if there is nothing to ask.
    std::optional<Message> question_about_changes();
    std::optional<Answer> ask_about_changes();

    // Save would ask for a name.
    bool needs_a_name() const { return current_path_.empty() || is_kept_copy(current_path_); }

    // Set when a save that was asked for did not happen.
    bool save_cancelled = false;

    // Where Open's dialog starts.
    std::string last_used_folder;

    // What image and table hold is in a file: one was opened, or it was saved.
    Signal<> in_a_file;

    // What an opened file, or an image without a file, has taken the place of: the image, and the
    // path of its file ("" if it had none).
    Signal<const MemoryImage&, const std::string&> replaced;

    // Goes on with an image that has no file: saving it asks for a name.
    void begin_without_file(const MemoryImage& image);

    // Goes on with a file that another run of the program had open.
    void resume(const std::string& path);

    // Folders with kept copies, which Open's dialog offers. A copy stays as it is: saving one that
    // is open asks for a name, in the folder that was current before.
    std::vector<std::string> places;

    const std::string& current_path() const { return current_path_; }

  private:
    bool is_kept_copy(const std::string& path) const;
    void open(const std::string& path);
    void show_image_in_place_of(const MemoryImage& old_image, const std::string& old_path);
    void save_as();
    bool save_as_confirmed(const std::string& path);
    void write(const std::string& path);

    modVR120& store_;
    ChannelTable& table_;
    MSFlexGrid& grid_;
    UserInterface& window_;
    FormCaption& caption_;
    Services services_;
    std::string current_path_;
};

}  // namespace memwright
