// What is no regular file is refused, at once and untouched.

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

#include "fakes/child_process.h"
#include "native/files.h"

namespace memwright {
namespace {

class NativeSpecialFiles : public BothWaysToSave {};

TEST_P(NativeSpecialFiles, a_named_pipe_is_refused_without_waiting_for_its_other_end) {
    const TemporaryFolder folder;
    const std::string path = folder.file("pipe.120");
    ASSERT_EQ(mkfifo(path.c_str(), 0666), 0);
    for (const auto& read : {&reading, &opening}) {
        const std::string error = in_child([&] { return read(path); });
        EXPECT_TRUE(has(error, "Cannot open " + path + ": it is a named pipe.")) << error;
    }
    const std::string save_error = in_child([&] { return saving(path, pattern(7392)); });
    EXPECT_TRUE(has(save_error, path)) << save_error;
    EXPECT_TRUE(has(save_error, "it is a named pipe")) << save_error;
    EXPECT_TRUE(std::filesystem::is_fifo(path));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"pipe.120"});
}

TEST_P(NativeSpecialFiles, a_link_to_a_named_pipe_is_refused_as_the_pipe_is) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.file("pipe").c_str(), 0666), 0);
    std::filesystem::create_symlink("pipe", folder.path() / "link.120");
    const std::string path = folder.file("link.120");
    EXPECT_TRUE(has(in_child([&] { return reading(path); }), "it is a named pipe"));
    EXPECT_TRUE(has(in_child([&] { return opening(path); }), "it is a named pipe"));
    EXPECT_TRUE(has(in_child([&] { return saving(path, pattern(10)); }), "it is a named pipe"));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_TRUE(std::filesystem::is_fifo(path));
}

TEST_P(NativeSpecialFiles, a_device_is_refused) {
    const TemporaryFolder folder;
    // A link, so that a replacement that went wrong would hit the folder of the test alone.
    std::filesystem::create_symlink("/dev/null", folder.path() / "link.120");
    for (const std::string& path : {std::string("/dev/null"), folder.file("link.120")}) {
        for (const auto& read : {&reading, &opening}) {
            const std::string error = read(path);
            EXPECT_TRUE(has(error, "Cannot open " + path + ": it is a device.")) << error;
        }
    }
    const std::string error =
        as_an_ordinary_user([&] { return saving(folder.file("link.120"), pattern(7392)); });
    EXPECT_TRUE(has(error, "it is a device")) << error;
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "link.120"));
}

TEST_P(NativeSpecialFiles, a_socket_is_refused) {
    const TemporaryFolder folder;
    const std::string path = folder.file("socket");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(descriptor, 0);
    const void* const generic = &address;
    EXPECT_EQ(bind(descriptor, static_cast<const sockaddr*>(generic), sizeof address), 0);
    EXPECT_TRUE(has(reading(path), "it is a socket"));
    EXPECT_TRUE(has(opening(path), "it is a socket"));
    EXPECT_TRUE(has(saving(path, pattern(7392)), "it is a socket"));
    EXPECT_TRUE(std::filesystem::is_socket(path));
    close(descriptor);
}

INSTANTIATE_TEST_SUITE_P(Saving, NativeSpecialFiles, kBothWays, name_of_way);

}  // namespace
}  // namespace memwright
