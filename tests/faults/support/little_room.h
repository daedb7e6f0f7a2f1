#pragma once

// Work in a child process that finds little room for its files: on a disk that is full, or under a
// limit for the length of a file.

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>

#include "support/temporary_folder.h"

namespace memwright::faults {

struct LittleRoom {
    const char* name;
    bool on_full_disk;  // else under a limit
    const char* cause;  // as the system calls it

    friend std::ostream& operator<<(std::ostream& out, const LittleRoom& room) {
        return out << room.name;
    }
};

inline const auto kBothRooms =
    testing::Values(LittleRoom{"on_a_full_disk", true, "No space left on device"},
                    LittleRoom{"under_a_limit", false, "File too large"});
inline std::string name_of_room(const testing::TestParamInfo<LittleRoom>& room) {
    return room.param.name;
}

// The file that fills the disk, all but 4096 bytes; as many may be written to a file under a limit.
inline constexpr const char* kFiller = "filler";

// Why a disk of little room cannot be had here; "" if it can, or none is needed.
std::string reason_against(const LittleRoom& room);

// What `work` returns, as in_child(). It begins where `prepare` ends, which has room; what it makes
// in `folder` is seen by the child alone if that is a disk of its own.
std::string with_little_room(const LittleRoom& room, const TemporaryFolder& folder,
                             const std::function<void()>& prepare,
                             const std::function<std::string()>& work);

}  // namespace memwright::faults
