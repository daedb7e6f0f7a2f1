#pragma once

// The file commands over a table of their own, in a folder of their own, answered from a script.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "fakes/faulty_file_system.h"
#include "fakes/recording_interface.h"
#include "fakes/scripted_dialogs.h"
#include "files/image_files.h"
#include "native/file_system.h"
#include "support/temporary_folder.h"
#include "table/columns.h"

namespace memwright {

class ImageFilesTest : public testing::Test {
  public:
    ~ImageFilesTest() override;

  protected:
    ImageFilesTest();

    // An image of one channel whose label is `tag`; all other memories are empty.
    static Bytes image_bytes(const std::string& tag);

    // Types a channel with this label into the first row.
    void edit(const std::string& tag);

    // Opens a file without a question or a dialog; from then on the save command is enabled.
    void open_unasked(const std::string& path);

    // The same with a file that holds `image_bytes(tag)`.
    void start_with(const std::string& name, const std::string& tag);

    std::string shown_tag() const { return grid.TextMatrix(1, columns::kTag); }
    static std::string tag_in(const Bytes& bytes);

    // Everything that a failed or cancelled command must leave alone.
    struct Kept {
        MemoryImage image;
        std::string path;
        std::string caption;
        std::string tag;
        std::int32_t check_sum = 0;
        std::vector<std::string> interface_calls;

        bool operator==(const Kept&) const = default;
    };
    Kept kept() const;

    TemporaryFolder folder;
    std::string folder_before;  // the program's current folder
    NativeFileSystem native;
    fakes::FaultyFileSystem files{native};
    modVR120 store{files};
    MSFlexGrid grid{"MSFlexGrid1"};
    MenuEntry mnuSaveOnly{"mnuSaveOnly", "&Save"};
    ChannelTable table{store, grid, mnuSaveOnly};
    fakes::RecordingInterface window;
    FormCaption caption;
    fakes::ScriptedMessageBox messages;
    fakes::ScriptedFileDialogs dialogs;
    ImageFiles image_files{store, table, grid, window, caption, {messages, dialogs, files}};
};

}  // namespace memwright
