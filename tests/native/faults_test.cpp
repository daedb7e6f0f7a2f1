// Disks that take no more, and folders that do not let go of a file.

#include <sys/stat.h>
#include <unistd.h>

#include <vector>

#include "fakes/child_process.h"
#include "fakes/small_disk.h"
#include "native/files.h"

namespace memwright {
namespace {

using Names = std::vector<std::string>;

class NativeFaults : public BothWaysToSave {};

// Where no disk can be mounted, files get a limit instead.
TEST_P(NativeFaults, a_full_disk_keeps_the_old_file_and_leaves_nothing_behind) {
    const TemporaryFolder folder;
    const std::string report = in_child([&]() -> std::string {
        const bool small_disk = mount_small_disk(folder.path().string());
        const std::string path = folder.put("a.120", pattern(7392));
        if (!small_disk && !limit_file_size(4096)) return "no limit";
        const std::string error = saving(path, pattern(7392, 1));
        if (folder.names() != Names{"a.120"}) return "left something behind";
        if (folder.get("a.120") != pattern(7392)) return "changed the old file";
        return (small_disk ? "disk: " : "limit: ") + error;
    });
    std::cout << report << '\n';
    EXPECT_TRUE(has(report, "Cannot save " + folder.file("a.120"))) << report;
    EXPECT_TRUE(has(report, report.starts_with("disk") ? "No space left" : "File too large"));
    EXPECT_TRUE(has(report, "Nothing was changed there. Free some space")) << report;
}

TEST_P(NativeFaults, a_new_file_for_which_there_is_no_room_does_not_come_into_being) {
    const TemporaryFolder folder;
    const std::string error = in_child([&]() -> std::string {
        return limit_file_size(5000) ? saving(folder.file("new.120"), pattern(7392)) : "no limit";
    });
    EXPECT_TRUE(has(error, "Cannot save " + folder.file("new.120"))) << error;
    EXPECT_TRUE(folder.names().empty());
}

// Wherever the room ends, within the new bytes or within those that are kept.
TEST_P(NativeFaults, a_write_that_stops_at_any_byte_is_an_error_and_keeps_the_old_file) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.120", pattern(10000));
    const rlim_t needed = GetParam().keeps_rest() ? 10000 : 7392;
    for (const rlim_t room : {0U, 1U, 4095U, 4096U, 7391U, 7392U, 7393U, 9999U}) {
        if (room >= needed) continue;
        const std::string error = in_child([&]() -> std::string {
            return limit_file_size(room) ? saving(path, pattern(7392, 1)) : "no limit";
        });
        EXPECT_TRUE(has(error, "Cannot save " + path)) << room << ": " << error;
        EXPECT_EQ(folder.get("a.120"), pattern(10000)) << room;
        EXPECT_EQ(folder.names(), Names{"a.120"}) << room;
    }
    EXPECT_EQ(in_child([&]() -> std::string {
                  return limit_file_size(needed) ? saving(path, pattern(7392, 1)) : "no limit";
              }),
              "saved");
    EXPECT_EQ(read_all(path, 7392), pattern(7392, 1));
}

// In a folder such as /tmp nobody can replace the file of another, even one that all may write to.
// Only the administrator can make a file of another; any other user's own is saved.
TEST_P(NativeFaults, a_file_that_cannot_be_replaced_is_an_error_and_stays) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.120", pattern(7392));
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 01777), 0);
    const bool of_another = geteuid() == 0;
    const std::string result = as_an_ordinary_user([&] { return saving(path, pattern(7392, 1)); });
    if (of_another) {
        EXPECT_TRUE(has(result, "Cannot save " + path)) << result;
        EXPECT_TRUE(has(result, "Save to a folder that you may write to")) << result;
    } else {
        EXPECT_EQ(result, "saved");
    }
    EXPECT_EQ(folder.get("a.120"), pattern(7392, of_another ? 0 : 1));
    EXPECT_EQ(folder.names(), Names{"a.120"});
}

INSTANTIATE_TEST_SUITE_P(Saving, NativeFaults, kBothWays, name_of_way);

}  // namespace
}  // namespace memwright
