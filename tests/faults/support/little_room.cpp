#include "faults/support/little_room.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "fakes/child_process.h"
#include "fakes/small_disk.h"

namespace memwright::faults {
namespace {

constexpr int kKilobytes = 512;
constexpr std::size_t kRoom = 4096;

// False if the disk took more than it has room for.
bool fill_up(const std::string& path) {
    std::ofstream out(path, std::ios::binary);
    const std::string page(kRoom, 'f');
    int pages = 0;
    while (out.write(page.data(), static_cast<std::streamsize>(page.size())).flush()) {
        if (++pages > kKilobytes) return false;
    }
    out.clear();
    out.close();
    return truncate(path.c_str(), static_cast<off_t>(kRoom) * (pages - 1)) == 0;
}

}  // namespace

std::string reason_against(const LittleRoom& room) {
    if (!room.on_full_disk) return "";
    const TemporaryFolder folder;
    const std::string mounted =
        in_child([&] { return mount_small_disk(folder.path().string()) ? "yes" : "no"; });
    return mounted == "yes" ? ""
                            : "no disk can be mounted here: that takes the system's administrator, "
                              "or name spaces for every user";
}

std::string with_little_room(const LittleRoom& room, const TemporaryFolder& folder,
                             const std::function<void()>& prepare,
                             const std::function<std::string()>& work) {
    return in_child([&]() -> std::string {
        if (room.on_full_disk && !mount_small_disk(folder.path().string(), kKilobytes)) {
            return "no disk";
        }
        prepare();
        const bool small =
            room.on_full_disk ? fill_up(folder.file(kFiller)) : limit_file_size(kRoom);
        return small ? work() : "there is room";
    });
}

}  // namespace memwright::faults
