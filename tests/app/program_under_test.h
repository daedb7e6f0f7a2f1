#pragma once

// The whole program on a desktop that is all fakes but for the files, which lie in a folder of
// their own.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/faked_platform.h"
#include "fakes/faulty_file_system.h"
#include "fakes/held_locks.h"
#include "native/file_system.h"
#include "support/temporary_folder.h"
#include "table/columns.h"

namespace memwright {

class ProgramTest : public testing::Test, protected fakes::FakedPlatform {
  public:
    ~ProgramTest() override;

  protected:
    ProgramTest();

    // Starts the program and opens a file with one channel.
    void start_with_a_file();

    // Changes that channel's label, as typing over it would.
    void edit(const std::string& tag) { form.MSFlexGrid1.set_text(1, columns::kTag, tag); }
    std::string shown_tag() const { return form.MSFlexGrid1.TextMatrix(1, columns::kTag); }

    // The label of the first memory in a file of the folder.
    std::string saved_tag(const std::string& name) const;

    std::string stored(const std::string& key) const {
        const auto value = settings.values.find("VR120/Settings/" + key);
        return value == settings.values.end() ? "(absent)" : value->second;
    }
    void store(const std::string& key, const std::string& value) {
        settings.values["VR120/Settings/" + key] = value;
    }

    // Of the table, and of the menus and entries that are not added.
    std::vector<std::string> enabled_names();

    TemporaryFolder folder;
    std::string folder_before;  // the current folder
    NativeFileSystem native;
    fakes::FaultyFileSystem files{native};
    fakes::SilentPort port;
    fakes::IdleLoop loop;
    fakes::HeldLocks locks;
    Program program{platform(files, port, loop, locks, {folder.file("state"), folder.file("data")}),
                    ports};
    Form1& form{program.form};
};

}  // namespace memwright
