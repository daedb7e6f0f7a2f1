#include <algorithm>

#include "base/error.h"
#include "files/image_files_test.h"

namespace memwright {
namespace {

using namespace std::string_literals;

class Open : public ImageFilesTest {
  protected:
    void open(const std::string& path) {
        dialogs.names.emplace_back(path);
        image_files.mnuOpen_Click();
    }
};

TEST_F(Open, asks_for_a_file_with_two_filters_in_the_last_used_folder) {
    image_files.last_used_folder = "/home/radio";
    dialogs.names.emplace_back(std::nullopt);
    image_files.mnuOpen_Click();
    ASSERT_EQ(dialogs.asked.size(), 1U);
    const auto& [request, saving] = dialogs.asked[0];
    EXPECT_FALSE(saving);
    EXPECT_EQ(request.title, "Open File");
    ASSERT_EQ(request.filters.size(), 2U);
    EXPECT_EQ(request.filters[0].caption, "VR-120 Files (*.120 *.tk1)");
    EXPECT_EQ(request.filters[0].patterns, "*.120;*.tk1");
    EXPECT_EQ(request.filters[1].caption, "All Files (*.*)");
    EXPECT_EQ(request.filters[1].patterns, "*.*");
    EXPECT_EQ(request.folder, "/home/radio");
}

TEST_F(Open, finds_a_name_without_a_folder_in_the_current_one) {
    folder.put("mem.120", image_bytes("LOCAL"));
    open("mem.120");
    EXPECT_EQ(shown_tag(), "LOCAL");
    EXPECT_EQ(native.current_folder(), folder.path().string());
}

TEST_F(Open, shows_the_file_in_the_table_and_its_path_in_the_caption) {
    const std::string path = folder.put("mem.120", image_bytes("LOCAL"));
    grid.enabled = false;
    open(path);
    EXPECT_EQ(shown_tag(), "LOCAL");
    EXPECT_EQ(image_files.current_path(), path);
    EXPECT_EQ(caption.caption.get(), "Memwright v1.0 - " + path);
    EXPECT_TRUE(std::ranges::equal(store.MemoryImage.bytes(), image_bytes("LOCAL")));
    EXPECT_FALSE(table.IsDataChanged());
    EXPECT_EQ(window.calls, (std::vector<std::string>{"EnableGui"}));
    EXPECT_TRUE(grid.enabled);
}

TEST_F(Open, parses_checks_and_unlocks_in_this_order) {
    const std::string path = folder.put("mem.120", image_bytes("LOCAL"));
    grid.enabled = false;
    std::vector<std::string> order;
    const Connection captions = caption.caption.changed.connect([&] {
        EXPECT_EQ(image_files.current_path(), path);
        order.emplace_back("caption");
    });
    const Connection texts = grid.changed.connect([&](const GridChange& /*change*/) {
        EXPECT_TRUE(window.calls.empty());
        order.emplace_back("table");
    });
    const Connection enabled = grid.enabled.changed.connect([&] {
        EXPECT_EQ(window.calls.size(), 1U);
        order.emplace_back("grid");
    });
    open(path);
    EXPECT_EQ(order, (std::vector<std::string>{"caption", "table", "grid"}));
}

TEST_F(Open, cancelled_in_the_dialog_changes_nothing) {
    start_with("old.120", "OLD");
    const Kept before = kept();
    dialogs.names.emplace_back(std::nullopt);
    image_files.mnuOpen_Click();
    EXPECT_EQ(kept(), before);
}

TEST_F(Open, takes_the_name_up_to_its_first_NUL) {
    const std::string path = folder.put("mem.120", image_bytes("LOCAL"));
    open(path + "\0\0rest"s);
    EXPECT_EQ(image_files.current_path(), path);
    EXPECT_EQ(caption.caption.get(), "Memwright v1.0 - " + path);
    EXPECT_EQ(shown_tag(), "LOCAL");
}

TEST_F(Open, reads_both_extensions_alike) {
    Bytes bytes = image_bytes("LOCAL");
    for (std::size_t i = layout::kRadioSettings; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(i);
    }
    open(folder.put("a.120", bytes));
    const MemoryImage first = store.MemoryImage;
    store.set_image(MemoryImage{});
    messages.answers = {Answer::no};
    open(folder.put("b.tk1", bytes));
    EXPECT_EQ(store.MemoryImage, first);
    EXPECT_EQ(shown_tag(), "LOCAL");
}

TEST_F(Open, ignores_what_a_file_holds_behind_the_image) {
    Bytes bytes = image_bytes("LOCAL");
    bytes.resize(8000, 0xAA);
    open(folder.put("long.120", bytes));
    EXPECT_EQ(shown_tag(), "LOCAL");
    bytes.resize(layout::kImageSize);
    EXPECT_TRUE(std::ranges::equal(store.MemoryImage.bytes(), bytes));
    EXPECT_EQ(folder.get("long.120").size(), 8000U);
}

TEST_F(Open, takes_a_short_file_without_a_word_and_fills_with_zeros) {
    start_with("old.120", "OLD");
    open(folder.put("short.120", Bytes(100, 0x12)));
    EXPECT_EQ(store.MemoryImage.get(99), 0x12);
    for (int i = 100; i < layout::kImageSize; ++i) ASSERT_EQ(store.MemoryImage.get(i), 0) << i;
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Open, takes_an_empty_file_without_a_word) {
    start_with("old.120", "OLD");
    open(folder.put("empty.120", {}));
    EXPECT_EQ(store.MemoryImage, MemoryImage{});
    EXPECT_EQ(shown_tag(), "");
}

TEST_F(Open, creates_a_file_that_is_missing) {
    open(folder.file("new.120"));
    EXPECT_EQ(folder.get("new.120").size(), 0U);
    EXPECT_EQ(image_files.current_path(), folder.file("new.120"));
    EXPECT_EQ(store.MemoryImage, MemoryImage{});
}

TEST_F(Open, makes_the_files_folder_the_current_one) {
    std::filesystem::create_directory(folder.path() / "radio");
    open(folder.put("radio/mem.120", image_bytes("LOCAL")));
    EXPECT_EQ(std::filesystem::path(files.current_folder()),
              std::filesystem::canonical(folder.path() / "radio"));
    EXPECT_EQ(image_files.last_used_folder, "") << "stays as it was read at the start";
}

TEST_F(Open, goes_on_if_the_folder_cannot_be_entered) {
    files.entering_fails = true;
    open(folder.put("mem.120", image_bytes("LOCAL")));
    EXPECT_EQ(shown_tag(), "LOCAL");
}

TEST_F(Open, that_fails_reports_it_and_keeps_path_caption_and_image) {
    start_with("old.120", "OLD");
    edit("EDITED");
    messages.answers = {Answer::no};
    files.reading_fails = true;
    files.read_before_failure = 3000;
    const std::string path = folder.put("new.120", image_bytes("NEW"));
    dialogs.names.emplace_back(path);
    EXPECT_THROW(image_files.mnuOpen_Click(), FileError);
    EXPECT_EQ(image_files.current_path(), folder.file("old.120"));
    EXPECT_EQ(caption.caption.get(), "Memwright v1.0 - " + folder.file("old.120"));
    EXPECT_EQ(shown_tag(), "EDITED");
    EXPECT_TRUE(std::ranges::equal(store.MemoryImage.bytes(), image_bytes("EDITED")));
    EXPECT_TRUE(table.IsDataChanged()) << "the edit is still unsaved";
    EXPECT_TRUE(window.calls.empty());
}

TEST_F(Open, of_a_folder_fails_and_keeps_everything) {
    start_with("old.120", "OLD");
    const Kept before = kept();
    dialogs.names.emplace_back(folder.path().string());
    EXPECT_THROW(image_files.mnuOpen_Click(), FileError);
    EXPECT_EQ(kept(), before);
}

TEST_F(Open, of_a_file_named_outside_asks_for_no_name) {
    const std::string path = folder.put("mem.120", image_bytes("LOCAL"));
    grid.enabled = false;
    image_files.open_named(path);
    EXPECT_TRUE(dialogs.asked.empty());
    EXPECT_EQ(shown_tag(), "LOCAL");
    EXPECT_EQ(image_files.current_path(), path);
    EXPECT_EQ(caption.caption.get(), "Memwright v1.0 - " + path);
    EXPECT_EQ(window.calls, (std::vector<std::string>{"EnableGui"}));
    EXPECT_TRUE(grid.enabled);
}

TEST_F(Open, of_a_file_named_outside_asks_about_unsaved_changes) {
    start_with("old.120", "OLD");
    edit("EDITED");
    const std::string path = folder.put("new.120", image_bytes("NEW"));
    messages.answers = {Answer::cancel};
    image_files.open_named(path);
    EXPECT_EQ(shown_tag(), "EDITED");
    EXPECT_EQ(image_files.current_path(), folder.file("old.120"));
    messages.answers = {Answer::yes};
    image_files.open_named(path);
    EXPECT_EQ(shown_tag(), "NEW");
    EXPECT_EQ(tag_in(folder.get("old.120")), "EDITED");
}

TEST_F(Open, of_a_file_named_outside_that_fails_keeps_everything) {
    start_with("old.120", "OLD");
    const Kept before = kept();
    EXPECT_THROW(image_files.open_named(folder.file("no/such/folder.120")), FileError);
    EXPECT_EQ(kept(), before);
}

}  // namespace
}  // namespace memwright
