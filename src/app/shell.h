#pragma once

// Starting, resizing and closing the main window. Lengths in twips; the window's width and height
// are those of the whole window with its frame.

#include "app/form1.h"
#include "files/image_files.h"
#include "platform/file_system.h"
#include "platform/form_window.h"
#include "platform/settings_store.h"
#include "table/channel_table.h"

namespace memwright {

class Shell {
  public:
    Shell(Form1& form, FormWindow& window, SettingsStore& settings, FileSystem& files,
          ChannelTable& table, ImageFiles& image_files)
        : form_(form),
          window_(window),
          settings_(settings),
          files_(files),
          table_(table),
          image_files_(image_files) {}

    // A step that fails is skipped.
    void Form_Load();

    // Lays the controls out for the window's size. A length that would be negative stays as it was.
    void Form_Resize();

    // Stores the window's place and asks about unsaved changes. `Cancel` becomes true if the window
    // is to stay open.
    void Form_Unload(bool& Cancel);

    // Its parts, for when the answer comes later: storing the window's place, and what the answer
    // to the question means. True if the window may close.
    void store_place();
    bool may_close_after(Answer answer);

  private:
    void set_start_states();
    void restore_status_window();
    void restore_geometry();
    void lay_out_transfer_controls(double status_line_top);

    Form1& form_;
    FormWindow& window_;
    SettingsStore& settings_;
    FileSystem& files_;
    ChannelTable& table_;
    ImageFiles& image_files_;
};

}  // namespace memwright
