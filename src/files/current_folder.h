#pragma once

#include <string>

#include "platform/file_system.h"

namespace memwright {

// As the system's own dialogs do: the folder of a chosen file becomes the current one. Where that
// fails, opening or saving there will say what is wrong.
void enter_folder_of(const std::string& path, FileSystem& files);

}  // namespace memwright
