// CSV export and import from the main window's menu: the progress of a long import, and the ways
// out of it.

#include <gmock/gmock.h>

#include <fstream>

#include "app/notice_texts.h"
#include "app/program_under_test.h"

namespace memwright {
namespace {

using testing::StartsWith;
using Names = std::vector<std::string>;

constexpr const char* kHeader = "Ch,MHz,Mode,Pref,Label\r\n";
constexpr int kManyLines = 20000;

class Csv : public ProgramTest {
  protected:
    void SetUp() override { start_with_a_file(); }

    std::string put_text(const std::string& name, const std::string& text) {
        std::ofstream(folder.path() / name, std::ios::binary) << text;
        return folder.file(name);
    }
    void import_text(const std::string& text) {
        dialogs.names.emplace_back(put_text("in.csv", text));
        form.mnuImport.clicked();
    }
    // Long enough to show its progress a few times. The label of the first memory becomes "L19840".
    static std::string many_lines() {
        std::string text = kHeader;
        for (int line = 0; line < kManyLines; ++line) {
            const int memory = line % layout::kMemories;
            text += std::to_string(memory / 64 * 100 + memory % 64) + ",145.50000,NFM,p,\"L" +
                    std::to_string(line) + "\"\r\n";
        }
        return text;
    }
    void import_many_lines() { import_text(many_lines()); }

    // Runs `event` when the import looks after the window for the n-th time.
    void in_wait(int n, std::function<void()> event) {
        loop.while_waiting = [this, n, event = std::move(event)] {
            if (loop.waits == n) event();
            if (loop.waits > 1000) throw Error("It does not end.");
        };
    }

    void expect_free_again() {
        EXPECT_EQ(enabled_names(), enabled_before);
        EXPECT_FALSE(form.TransferButton.visible);
        EXPECT_FALSE(form.TransferProgress.visible);
    }
    void expect_cancelled(int waits) {
        EXPECT_EQ(loop.waits, waits) << "ends at once";
        EXPECT_EQ(shown_tag(), "A");
        EXPECT_EQ(form.Label1.caption.get(), "");
        EXPECT_TRUE(messages.shown.empty());
        EXPECT_EQ(noted(program.notices), Names{"Import cancelled. Nothing was taken over."});
        expect_free_again();
        form.Command5.clicked();
        EXPECT_EQ(shown_tag(), "A") << "the image";
        EXPECT_EQ(form.MSFlexGrid1.TextMatrix(2, columns::kTag), "");
    }

    Names enabled_before;
};

class LongCsv : public Csv {
  protected:
    void SetUp() override {
        Csv::SetUp();
        // Not among those that come with an image: it has to stay so.
        form.mnuWrite.enabled = false;
        enabled_before = enabled_names();
    }
};

TEST_F(Csv, Export_writes_the_table_to_the_file_that_is_chosen) {
    edit("B");
    dialogs.names.emplace_back(folder.file("list"));
    form.mnuExport.clicked();
    ASSERT_EQ(dialogs.asked.size(), 1U);
    EXPECT_EQ(dialogs.asked[0].request.title, "Save As...");
    const auto bytes = folder.get("list.csv");
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()),
              std::string(kHeader) + "0,145.51250,NFM,,\"B\"\r\n");
    EXPECT_EQ(saved_tag("mem.120"), "A");
    EXPECT_EQ(form.caption.caption.get(), "Memwright v1.0 - " + folder.file("mem.120"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Csv, an_export_that_fails_is_reported_and_the_program_goes_on) {
    files.writing_fails = true;
    messages.answers = {Answer::ok};
    dialogs.names.emplace_back(folder.file("list.csv"));
    form.mnuExport.clicked();
    const std::string report = "Cannot save " + folder.file("list.csv") + ": the disk is full.";
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, report);
    EXPECT_EQ(messages.shown[0].icon, Icon::critical);
    EXPECT_EQ(noted(program.notices), Names{report});
    EXPECT_EQ(folder.names(), Names{"mem.120"});
    files.writing_fails = false;
    dialogs.names.emplace_back(folder.file("list.csv"));
    form.mnuExport.clicked();
    EXPECT_EQ(folder.names(), (Names{"list.csv", "mem.120"}));
}

TEST_F(Csv, Import_reads_the_file_that_is_chosen_and_what_it_brought_is_not_saved) {
    import_text(std::string(kHeader) + "0,118.1,AM,p,\"NEW\"\r\n5,433.5,NFM,,\"MORE\"\r\n");
    EXPECT_EQ(dialogs.asked.at(0).request.title, "Import CSV");
    EXPECT_EQ(shown_tag(), "NEW");
    EXPECT_EQ(form.MSFlexGrid1.TextMatrix(6, columns::kFreq), "433.50000");
    EXPECT_EQ(saved_tag("mem.120"), "A");
    EXPECT_EQ(form.caption.caption.get(), "Memwright v1.0 - " + folder.file("mem.120"));

    messages.answers = {Answer::no};
    EXPECT_TRUE(program.close_allowed());
    EXPECT_EQ(messages.shown.size(), 1U) << "asked about changes";
}

TEST_F(Csv, a_short_import_shows_no_progress_and_leaves_the_status_line) {
    form.Label1.caption = "Read from VR-120 complete.";
    int shown = 0;
    const auto connection = form.TransferButton.visible.changed.connect([&] { ++shown; });
    import_text(std::string(kHeader) + "0,118.1,AM,p,\"NEW\"\r\n");
    EXPECT_EQ(loop.waits, 0);
    EXPECT_EQ(shown, 0);
    EXPECT_EQ(form.Label1.caption.get(), "Read from VR-120 complete.");
}

TEST_F(Csv, skipped_lines_are_one_notice_without_a_box) {
    import_text(std::string(kHeader) +
                "0,339.5,AM,p,\"X\"\r\n1,118.1,AM,,\"Y\"\r\n2,384,AM,,\"Z\"\r\n");
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(waiting(program.notices),
              Names{"2 lines of in.csv were skipped. Line 2 was skipped: the radio cannot receive "
                    "339.5 MHz. Line 4 was skipped: the radio cannot receive 384 MHz."});
    EXPECT_EQ(form.Text1.text.get(), "");
    EXPECT_EQ(form.MSFlexGrid1.TextMatrix(2, columns::kTag), "Y");
}

TEST_F(Csv, of_several_hundred_skipped_lines_the_notice_names_a_few_and_the_list_all) {
    std::string text = kHeader;
    for (int line = 0; line < 400; ++line) text += "0,339.5,AM,p,\"X\"\r\n";
    import_text(text);
    ASSERT_EQ(program.notices.waiting(), 1U);
    const Notice& notice = program.notices.of_this_run().front().notice;
    EXPECT_EQ(notice.text.find("400 lines of in.csv were skipped. Line 2 was skipped: "), 0U);
    EXPECT_NE(notice.text.find(" Line 4 was skipped: "), std::string::npos);
    EXPECT_EQ(notice.text.find("Line 5 "), std::string::npos);
    EXPECT_TRUE(notice.text.ends_with(" And so on."));
    EXPECT_NE(notice.details.find("Line 401 was skipped: "), std::string::npos);
}

TEST_F(Csv, the_notice_of_a_file_is_replaced_when_the_file_is_imported_again) {
    import_text(std::string(kHeader) + "0,339.5,AM,p,\"X\"\r\n");
    import_text(std::string(kHeader) + "0,384,AM,p,\"X\"\r\n");
    EXPECT_EQ(waiting(program.notices),
              Names{"in.csv: Line 2 was skipped: the radio cannot receive 384 MHz."});
}

TEST_F(Csv, a_bad_line_is_reported_behind_what_was_skipped_and_the_program_goes_on) {
    messages.answers = {Answer::ok};
    import_text(std::string(kHeader) +
                "0,145.5,nfm,,\"NEW\"\r\n0,339.5,AM,p,\"X\"\r\n964,118.1,AM,,\"Y\"\r\n");
    const std::string report = "Cannot import line 4 of " + folder.file("in.csv") +
                               ": channel 964 is no memory: banks are 0 to 9, memories 0 to 63."
                               "\n\n    964,118.1,AM,,\"Y\"\n\n"
                               "The lines before it are in the table. Correct this line and import "
                               "the file again.";
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, report);
    EXPECT_EQ(messages.shown[0].title, "Memwright");
    EXPECT_EQ(messages.shown[0].icon, Icon::critical);
    EXPECT_EQ(messages.shown[0].buttons, Buttons::ok);
    const std::string skipped = "in.csv: Line 3 was skipped: the radio cannot receive 339.5 MHz.";
    EXPECT_EQ(noted(program.notices), (Names{skipped, report}));
    EXPECT_EQ(waiting(program.notices), Names{skipped});
    EXPECT_EQ(shown_tag(), "NEW");
    EXPECT_EQ(form.MSFlexGrid1.TextMatrix(1, columns::kFreq), "145.5");
    form.Command5.clicked();
    EXPECT_EQ(shown_tag(), "A") << "the image is as it was";

    import_text(std::string(kHeader) + "0,118.1,AM,p,\"NEW\"\r\n");
    EXPECT_EQ(shown_tag(), "NEW");
}

TEST_F(LongCsv, shows_its_progress_and_a_way_out_and_locks_the_window) {
    form.TxtGrid.visible = true;
    in_wait(1, [this] {
        EXPECT_TRUE(form.TransferProgress.visible);
        EXPECT_FALSE(form.TransferProgress.busy);
        EXPECT_TRUE(form.TransferButton.visible);
        EXPECT_EQ(form.TransferButton.caption.get(), "Cancel");
        EXPECT_FALSE(form.ReceivedLabel.visible);
        EXPECT_FALSE(form.TxtGrid.visible) << "an open editor closes";
        EXPECT_FALSE(form.MSFlexGrid1.enabled);
        for (const auto& [menu, items] : form.menus()) EXPECT_FALSE(menu.enabled) << menu.name;
        EXPECT_EQ(shown_tag(), "A");
    });
    import_many_lines();
    EXPECT_GE(loop.waits, 5);
    EXPECT_EQ(shown_tag(), "L19840");
    EXPECT_EQ(form.Label1.caption.get(), "");
    EXPECT_TRUE(messages.shown.empty());
    expect_free_again();
}

TEST_F(LongCsv, tells_the_share_that_is_read_in_the_bar_and_leaves_the_status_line_alone) {
    std::vector<int> percents;
    form.Label1.caption = "Read from VR-120 complete.";
    loop.while_waiting = [&] { percents.push_back(form.TransferProgress.percent); };
    const std::string text = many_lines();
    import_text(text);
    std::vector<int> wanted;
    for (std::size_t read = 65536; read <= text.size(); read += 65536) {
        wanted.push_back(
            static_cast<int>(100.0 * static_cast<double>(read) / static_cast<double>(text.size())));
    }
    EXPECT_EQ(percents, wanted);
    EXPECT_EQ(form.Label1.caption.get(), "Read from VR-120 complete.");
}

TEST_F(LongCsv, its_button_cancels) {
    in_wait(2, [this] { form.TransferButton.clicked(); });
    import_many_lines();
    expect_cancelled(2);
}

TEST_F(LongCsv, escape_cancels) {
    in_wait(2, [this] { program.escape_pressed(); });
    import_many_lines();
    expect_cancelled(2);
}

TEST_F(LongCsv, cancelled_twice_is_cancelled_once) {
    in_wait(1, [this] {
        program.escape_pressed();
        program.escape_pressed();
    });
    import_many_lines();
    expect_cancelled(1);
    program.escape_pressed();
    EXPECT_TRUE(messages.shown.empty()) << "there is nothing left to cancel";
}

TEST_F(LongCsv, can_follow_a_cancelled_one) {
    in_wait(1, [this] { program.escape_pressed(); });
    import_many_lines();
    loop.while_waiting = nullptr;
    import_many_lines();
    EXPECT_EQ(shown_tag(), "L19840");
    EXPECT_EQ(waiting(program.notices), Names{}) << "what was cancelled is done now";
    expect_free_again();
}

TEST_F(LongCsv, ends_when_the_window_closes) {
    in_wait(2, [this] { EXPECT_TRUE(program.close_allowed()); });
    import_many_lines();
    EXPECT_EQ(loop.waits, 2);
    EXPECT_EQ(shown_tag(), "A");
    EXPECT_EQ(stored("WindowState"), "0");
}

TEST_F(LongCsv, goes_on_if_the_close_is_cancelled) {
    edit("B");
    in_wait(2, [this] {
        messages.answers = {Answer::cancel};
        EXPECT_FALSE(program.close_allowed());
    });
    import_many_lines();
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(shown_tag(), "L19840");
    expect_free_again();
}

TEST_F(LongCsv, a_close_that_saves_saves_the_table_as_it_was) {
    edit("B");
    in_wait(2, [this] {
        messages.answers = {Answer::yes};
        EXPECT_TRUE(program.close_allowed());
    });
    import_many_lines();
    EXPECT_EQ(saved_tag("mem.120"), "B");
    EXPECT_EQ(shown_tag(), "B");
    EXPECT_EQ(loop.waits, 2);
}

TEST_F(LongCsv, leaves_files_alone_that_are_named_meanwhile) {
    in_wait(1, [this] { program.open_named(folder.file("new.120")); });
    import_many_lines();
    EXPECT_EQ(folder.names(), (Names{"in.csv", "mem.120"}));
    EXPECT_EQ(form.caption.caption.get(), "Memwright v1.0 - " + folder.file("mem.120"));
}

TEST_F(LongCsv, a_bad_line_behind_many_gives_the_window_back_before_it_is_reported) {
    messages.answers = {Answer::ok};
    messages.while_shown = [this] { expect_free_again(); };
    import_text(many_lines() + "bad\r\n");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_THAT(messages.shown[0].text, StartsWith("Cannot import line 20002 of "));
    EXPECT_EQ(form.Label1.caption.get(), "");
    EXPECT_EQ(shown_tag(), "L19840");
    expect_free_again();
}

TEST_F(LongCsv, a_file_that_fails_in_the_middle_gives_the_window_back) {
    files.reading_fails = true;
    files.read_before_failure = 3 * 65536;
    messages.answers = {Answer::ok};
    import_many_lines();
    EXPECT_EQ(loop.waits, 3);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text,
              "Cannot read " + folder.file("in.csv") + ": the disk is gone.");
    EXPECT_THAT(shown_tag(), StartsWith("L"));
    expect_free_again();
}

TEST_F(LongCsv, the_cancel_button_belongs_to_transfers_again_afterwards) {
    form.mnuWrite.enabled = true;
    import_many_lines();
    in_wait(loop.waits + 2, [this] { form.TransferButton.clicked(); });
    messages.answers = {Answer::no, Answer::ok};
    form.mnuRead.clicked();
    EXPECT_FALSE(port.is_open);
    EXPECT_EQ(form.Label1.caption.get(), "Read from VR-120 cancelled.");
}

}  // namespace
}  // namespace memwright
