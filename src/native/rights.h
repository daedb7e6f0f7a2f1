#pragma once

// Who may do what with a new file (POSIX). All of it is set by the file's descriptor, so that
// nobody can have the rights of another file changed by giving that the name of this one.

#include <sys/stat.h>

#include "native/descriptor.h"

namespace memwright::native {

// With these a new file is made.
inline constexpr mode_t kForTheUserAlone = 0600;

// Gives a new file the owner and the rights of an old one, as far as the system lets that be. Where
// the owner or the group stays another, nobody gets more rights than the old file gave. False if
// the file does not tell whose it is.
bool take_over_rights(const Descriptor& file, const struct stat& old);

// Those that the user gives new files (umask).
void take_usual_rights(const Descriptor& file);

// The user's alone, also where new files would not even be that.
void take_private_rights(const Descriptor& file);

}  // namespace memwright::native
