#include <algorithm>

#include "files/image_files_test.h"

namespace memwright {
namespace {

using namespace std::string_literals;

class SaveAs : public ImageFilesTest {
  protected:
    SaveAs() {
        start_with("old.120", "OLD");
        edit("EDITED");
        std::filesystem::create_directory(folder.path() / "radio.d");
    }

    void save_as(const std::string& name) {
        dialogs.names.emplace_back(name);
        image_files.mnuSave_Click();
    }

    void expect_current(const std::string& path) const {
        EXPECT_EQ(image_files.current_path(), path);
        EXPECT_EQ(caption.caption.get(), "Memwright v1.0 - " + path);
    }

    void expect_nothing_taken_over() {
        expect_current(folder.file("old.120"));
        EXPECT_TRUE(table.IsDataChanged());
        EXPECT_EQ(shown_tag(), "EDITED");
    }
};

TEST_F(SaveAs, asks_for_a_file_with_two_filters_in_the_current_folder) {
    image_files.last_used_folder = "/home/elsewhere";
    dialogs.names.emplace_back(std::nullopt);
    image_files.mnuSave_Click();
    ASSERT_EQ(dialogs.asked.size(), 1U);
    const auto& [request, saving] = dialogs.asked[0];
    EXPECT_TRUE(saving);
    EXPECT_EQ(request.title, "Save File As..");
    ASSERT_EQ(request.filters.size(), 2U);
    EXPECT_EQ(request.filters[0].caption, "VR-120 Files (*.120)");
    EXPECT_EQ(request.filters[0].patterns, "*.120");
    EXPECT_EQ(request.filters[1].caption, "All Files (*.*)");
    EXPECT_EQ(request.filters[1].patterns, "*.*");
    EXPECT_EQ(request.folder, native.current_folder());
}

TEST_F(SaveAs, writes_a_new_file_and_takes_it_over_as_the_current_one) {
    save_as(folder.file("new.120"));
    EXPECT_EQ(folder.get("new.120"), image_bytes("EDITED"));
    expect_current(folder.file("new.120"));
    EXPECT_FALSE(table.IsDataChanged());
    EXPECT_FALSE(image_files.save_cancelled);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(window.calls.empty());
    EXPECT_EQ(tag_in(folder.get("old.120")), "OLD");
}

TEST_F(SaveAs, brings_the_table_into_the_image_before_it_asks_for_a_name) {
    dialogs.names.emplace_back(std::nullopt);
    image_files.mnuSave_Click();
    EXPECT_TRUE(std::ranges::equal(store.MemoryImage.bytes(), image_bytes("EDITED")));
}

TEST_F(SaveAs, appends_the_extension_to_a_name_without_a_dot) {
    save_as(folder.file("mem"));
    expect_current(folder.file("mem.120"));
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"mem.120", "old.120", "radio.d"}));
}

TEST_F(SaveAs, keeps_any_other_extension) {
    save_as(folder.file("mem.bak"));
    expect_current(folder.file("mem.bak"));
    EXPECT_EQ(folder.get("mem.bak"), image_bytes("EDITED"));
}

TEST_F(SaveAs, appends_no_extension_if_a_folder_has_a_dot) {
    save_as(folder.file("radio.d/mem"));
    expect_current(folder.file("radio.d/mem"));
    EXPECT_EQ(folder.get("radio.d/mem"), image_bytes("EDITED"));
}

TEST_F(SaveAs, cuts_the_name_at_its_first_NUL_before_it_looks_for_a_dot) {
    save_as(folder.file("mem") + "\0.bak\0"s);
    expect_current(folder.file("mem.120"));
}

TEST_F(SaveAs, asks_before_it_replaces_a_file) {
    const std::string path = folder.put("there.120", image_bytes("THERE"));
    messages.answers = {Answer::yes};
    save_as(path);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, path + " already exists.\r\nDo you want to replace it?");
    EXPECT_EQ(messages.shown[0].title, "Save As");
    EXPECT_EQ(messages.shown[0].buttons, Buttons::yes_no_cancel);
    EXPECT_EQ(messages.shown[0].icon, Icon::exclamation);
    EXPECT_EQ(folder.get("there.120"), image_bytes("EDITED"));
    expect_current(path);
}

TEST_F(SaveAs, asks_about_the_name_with_its_extension) {
    folder.put("there.120", image_bytes("THERE"));
    messages.answers = {Answer::cancel};
    save_as(folder.file("there"));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(messages.shown[0].text.starts_with(folder.file("there.120") + " already exists."));
}

TEST_F(SaveAs, keeps_what_a_longer_file_holds_behind_the_image) {
    Bytes bytes = image_bytes("THERE");
    bytes.resize(10000, 0xAA);
    messages.answers = {Answer::yes};
    save_as(folder.put("there.120", bytes));
    Bytes wanted = image_bytes("EDITED");
    wanted.resize(10000, 0xAA);
    EXPECT_EQ(folder.get("there.120"), wanted);
}

TEST_F(SaveAs, cancelled_in_the_dialog_changes_nothing_and_says_that_nothing_was_saved) {
    dialogs.names.emplace_back(std::nullopt);
    image_files.mnuSave_Click();
    expect_nothing_taken_over();
    EXPECT_TRUE(image_files.save_cancelled);
    EXPECT_TRUE(files.written.empty());
}

TEST_F(SaveAs, cancelled_at_the_replace_prompt_changes_nothing_and_says_so) {
    const std::string path = folder.put("there.120", image_bytes("THERE"));
    messages.answers = {Answer::cancel};
    save_as(path);
    expect_nothing_taken_over();
    EXPECT_TRUE(image_files.save_cancelled);
    EXPECT_EQ(folder.get("there.120"), image_bytes("THERE"));
}

TEST_F(SaveAs, declined_then_saved_elsewhere_takes_the_declined_name_over) {
    const std::string declined = folder.put("there.120", image_bytes("THERE"));
    messages.answers = {Answer::no};
    dialogs.names = {declined, folder.file("other.120")};
    image_files.mnuSave_Click();
    EXPECT_EQ(folder.get("other.120"), image_bytes("EDITED"));
    EXPECT_EQ(folder.get("there.120"), image_bytes("THERE")) << "it was declined";
    expect_current(declined);
    EXPECT_FALSE(table.IsDataChanged());
    EXPECT_FALSE(image_files.save_cancelled);
}

TEST_F(SaveAs, declined_passes_through_the_second_name_on_its_way) {
    const std::string declined = folder.put("there.120", image_bytes("THERE"));
    messages.answers = {Answer::no};
    dialogs.names = {declined, folder.file("other.120")};
    std::vector<std::string> captions;
    const Connection connection =
        caption.caption.changed.connect([&] { captions.push_back(caption.caption); });
    image_files.mnuSave_Click();
    EXPECT_EQ(captions, (std::vector<std::string>{"Memwright v1.0 - " + folder.file("other.120"),
                                                  "Memwright v1.0 - " + declined}));
}

TEST_F(SaveAs, declined_then_cancelled_takes_the_declined_name_over_and_says_so) {
    const std::string declined = folder.put("there.120", image_bytes("THERE"));
    messages.answers = {Answer::no};
    dialogs.names = {declined, std::nullopt};
    image_files.mnuSave_Click();
    expect_current(declined);
    EXPECT_FALSE(table.IsDataChanged());
    EXPECT_TRUE(image_files.save_cancelled);
    EXPECT_EQ(folder.get("there.120"), image_bytes("THERE"));
}

TEST_F(SaveAs, declined_twice_ends_with_the_first_declined_name) {
    const std::string first = folder.put("a.120", image_bytes("A"));
    const std::string second = folder.put("b.120", image_bytes("B"));
    messages.answers = {Answer::no, Answer::no};
    dialogs.names = {first, second, folder.file("c.120")};
    image_files.mnuSave_Click();
    expect_current(first);
    EXPECT_EQ(tag_in(folder.get("a.120")), "A");
    EXPECT_EQ(tag_in(folder.get("b.120")), "B");
    EXPECT_EQ(tag_in(folder.get("c.120")), "EDITED");
}

TEST_F(SaveAs, declined_then_failing_takes_the_declined_name_over_and_says_so) {
    const std::string declined = folder.put("there.120", image_bytes("THERE"));
    messages.answers = {Answer::no};
    dialogs.names = {declined, folder.file("no/such/folder.120")};
    image_files.mnuSave_Click();
    expect_current(declined);
    EXPECT_TRUE(image_files.save_cancelled);
}

TEST_F(SaveAs, does_not_bring_the_table_into_the_image_a_second_time_when_declined) {
    const std::string declined = folder.put("there.120", image_bytes("THERE"));
    messages.answers = {Answer::no};
    messages.while_shown = [this] { edit("LATE"); };
    dialogs.names = {declined, folder.file("other.120")};
    image_files.mnuSave_Click();
    EXPECT_EQ(tag_in(folder.get("other.120")), "EDITED");
}

TEST_F(SaveAs, that_cannot_write_ends_silently_and_says_that_nothing_was_saved) {
    files.writing_fails = true;
    save_as(folder.file("new.120"));
    expect_nothing_taken_over();
    EXPECT_TRUE(image_files.save_cancelled);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"old.120", "radio.d"}));
}

TEST_F(SaveAs, to_a_folder_asks_and_then_ends_silently) {
    messages.answers = {Answer::yes};
    save_as((folder.path() / "radio.d").string());
    EXPECT_EQ(messages.shown.size(), 1U);
    expect_nothing_taken_over();
    EXPECT_TRUE(image_files.save_cancelled);
}

TEST_F(SaveAs, without_a_current_folder_ends_silently) {
    files.asking_for_folder_fails = true;
    image_files.mnuSave_Click();
    EXPECT_TRUE(dialogs.asked.empty());
    expect_nothing_taken_over();
    EXPECT_TRUE(image_files.save_cancelled);
}

TEST_F(SaveAs, that_happens_leaves_the_flag_of_an_earlier_one_alone) {
    image_files.save_cancelled = true;
    save_as(folder.file("new.120"));
    EXPECT_TRUE(image_files.save_cancelled) << "who asks for a save clears it first";
}

class SaveAsFolders : public SaveAs {
  protected:
    std::filesystem::path current() { return files.current_folder(); }
    std::filesystem::path radio_folder() const {
        return std::filesystem::canonical(folder.path() / "radio.d");
    }
};

TEST_F(SaveAsFolders, the_chosen_files_folder_becomes_the_current_one) {
    save_as(folder.file("radio.d/new.120"));
    EXPECT_EQ(current(), radio_folder());
}

TEST_F(SaveAsFolders, also_if_the_replace_prompt_is_cancelled) {
    messages.answers = {Answer::cancel};
    save_as(folder.put("radio.d/there.120", image_bytes("THERE")));
    EXPECT_EQ(current(), radio_folder());
}

TEST_F(SaveAsFolders, also_if_the_save_fails) {
    files.writing_fails = true;
    save_as(folder.file("radio.d/new.120"));
    EXPECT_EQ(current(), radio_folder());
}

TEST_F(SaveAsFolders, a_declined_files_folder_is_where_the_next_dialog_starts) {
    messages.answers = {Answer::no};
    dialogs.names = {folder.put("radio.d/there.120", image_bytes("THERE")),
                     folder.file("other.120")};
    image_files.mnuSave_Click();
    ASSERT_EQ(dialogs.asked.size(), 2U);
    EXPECT_EQ(std::filesystem::path(dialogs.asked[1].request.folder), radio_folder());
    EXPECT_EQ(current(), std::filesystem::canonical(folder.path()));
}

TEST_F(SaveAsFolders, a_folder_that_cannot_be_entered_does_not_stop_the_save) {
    files.entering_fails = true;
    save_as(folder.file("radio.d/new.120"));
    EXPECT_EQ(folder.get("radio.d/new.120"), image_bytes("EDITED"));
    expect_current(folder.file("radio.d/new.120"));
}

TEST_F(SaveAsFolders, a_cancelled_dialog_stays_in_the_folder) {
    dialogs.names.emplace_back(std::nullopt);
    image_files.mnuSave_Click();
    EXPECT_EQ(current(), std::filesystem::canonical(folder.path()));
}

}  // namespace
}  // namespace memwright
