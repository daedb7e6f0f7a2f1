#pragma once

// The lock files by which programs share a serial port. QSerialPort makes one and opens one that is
// there, whatever it is. Where the system has no such files (Windows) there are none.

#include <string>
#include <vector>

namespace memwright {

// Every place where QSerialPort or another program may have one for a device, which is named as the
// system itself names it, in the order in which they are looked for.
std::vector<std::string> port_lock_files(const std::string& device);

// Is there a regular file? Reading what is none could take for ever.
bool is_lock_file(const std::string& path);

// What is in the place of a lock file and is none, and what to do about it; "" if there is nothing
// of the kind. A lock file of whatever program or user is not meant: QSerialPort knows those.
std::string no_lock_file(const std::string& device);

}  // namespace memwright
