#pragma once

// Where a program keeps what belongs to a user, as the system has it. File names: see
// platform/file_system.h.

#include <string>

namespace memwright {

struct UserFolders {
    std::string state;  // what a run leaves for the next
    std::string data;   // what the program keeps for the user
};

// The folders of this program on this system. The environment decides: XDG_STATE_HOME and
// XDG_DATA_HOME, else HOME; LOCALAPPDATA on Windows. Empty texts where it says nothing.
UserFolders native_user_folders();

}  // namespace memwright
