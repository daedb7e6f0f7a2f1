// Printing with the built program: to a file where there is no printer, and over a real queue.

#include <gmock/gmock.h>

#include <optional>

#include "printing/support/print_queue.h"
#include "radio/demonstration.h"
#include "support/run_program.h"
#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

using printing::PrintQueue;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr const char* kDialog = "Print to Default Printer...";

class SystemPrint : public MemwrightDesktop {
  protected:
    void start_printing_on(const Environment& printers) {
        write_file(file("mem.120"), through_the_table(radio::demonstration_memory()).bytes());
        start({file("mem.120").string()}, printers);
        wait_for_caption(std::string(kTitle) + " - " + file("mem.120").string());
    }

    // Opens the dialog with keys alone, and types.
    void print(const std::vector<std::string>& keys) {
        main();
        keyboard.press("Alt+F");
        keyboard.press("p");
        program->dialog(kDialog);
        for (const std::string& key : keys) keyboard.press(key);
    }

    // Waits for a message that says the text, closes it with Enter; all that it says.
    std::string message(const std::string& part) {
        program->message_box("Memwright", part);
        const std::string text =
            program->find({.role = Role::kLabel, .name_part = part, .showing = true}).name();
        keyboard.press("Enter");
        return text;
    }
    // The same for the message at the end: the printer that it names.
    std::string printer_named(int pages) {
        const std::string words = "Printing " + std::to_string(pages) + " pages to ";
        const std::string text = message(words);
        EXPECT_THAT(text, StartsWith("Memwright\n" + words));
        return text.substr(std::min(text.size(), text.find(words) + words.size()));
    }

    static std::string facts(const std::filesystem::path& document) {
        return systest::output_of("/usr/bin/pdfinfo", {document});
    }
    static std::string text(const std::filesystem::path& document) {
        return systest::output_of("/usr/bin/pdftotext", {"-layout", document, "-"});
    }
    static std::string images(const std::filesystem::path& document) {
        const auto list = systest::output_of("/usr/bin/pdfimages", {"-list", document});
        std::size_t line = 0;
        for (int heading = 0; heading < 2; ++heading) line = list.find('\n', line) + 1;
        return list.substr(line);
    }
    static void expect_all_rows(const std::filesystem::path& document) {
        EXPECT_THAT(facts(document), ContainsRegex("Pages: +7\n"));
        const std::string all = text(document);
        EXPECT_THAT(all, HasSubstr("Page 1 of 7"));
        EXPECT_THAT(all, HasSubstr("Page 7 of 7"));
        EXPECT_THAT(all, ContainsRegex("Bank 0 - 0 +TOWER +118\\.10000 +AM +On"));
        EXPECT_THAT(all, HasSubstr("Bank 3 - 47"));
        EXPECT_THAT(all, Not(HasSubstr("Bank 3 - 48")));
        EXPECT_EQ(images(document), "") << "it is drawn, not photographed";
    }

    std::filesystem::path documents() const { return desktop.home() / "Documents"; }
};

class SystemPrintWithoutPrinter : public SystemPrint {
  protected:
    void SetUp() override { start_printing_on({{"CUPS_SERVER", "/no/such/socket"}}); }
};

TEST_F(SystemPrintWithoutPrinter, enter_prints_all_rows_to_a_file_in_the_documents_folder) {
    print({"Enter"});
    const std::filesystem::path document = printer_named(7);
    EXPECT_THAT(document.string(), StartsWith((documents() / "Memwright ").string()));
    EXPECT_EQ(document.extension(), ".pdf");
    expect_all_rows(document);
    EXPECT_THAT(text(document), HasSubstr(file("mem.120").string()));
    main();
    EXPECT_EQ(cell(1, 1), "TOWER");
}

TEST_F(SystemPrintWithoutPrinter, what_is_edited_is_what_is_printed) {
    keyboard.press("Enter");
    for (const char* const key : {"N", "E", "W", "Enter"}) keyboard.press(key);
    expect_eventually([&] { return cell(1, 1); }, testing::StrCaseEq("NEW"));
    print({"Enter"});
    EXPECT_THAT(text(printer_named(7)), ContainsRegex("Bank 0 - 0 +[Nn][Ee][Ww] +118"));
}

TEST_F(SystemPrintWithoutPrinter, a_folder_in_which_nothing_can_be_written_is_reported) {
    write_file(documents(), Bytes{1});
    print({"Enter"});
    EXPECT_THAT(message("Cannot save "), HasSubstr((documents() / "Memwright ").string()));
    main();
    EXPECT_EQ(cell(1, 1), "TOWER");
    std::filesystem::remove(documents());
    print({"Enter"});
    expect_all_rows(printer_named(7));
}

class SystemPrintOnAQueue : public SystemPrint {
  protected:
    void SetUp() override {
        if (const std::string reason = PrintQueue::why_not(); !reason.empty()) {
            GTEST_SKIP() << reason;
        }
        queue_.emplace();
        start_printing_on(queue_->environment());
    }
    void TearDown() override { program.reset(); }

    std::optional<PrintQueue> queue_;
};

TEST_F(SystemPrintOnAQueue, all_rows_arrive_on_the_default_printer) {
    print({"Enter"});
    EXPECT_EQ(printer_named(7), queue_->printer_name());
    const auto printed = queue_->wait_for_documents(1);
    ASSERT_EQ(printed.size(), 1U);
    expect_all_rows(printed[0]);
    EXPECT_FALSE(std::filesystem::exists(documents())) << "no file besides";
}

TEST_F(SystemPrintOnAQueue, a_range_and_then_another_are_two_jobs) {
    print({"Tab", "1", "Tab", "3", "Enter"});
    EXPECT_EQ(printer_named(1), queue_->printer_name());
    print({"Tab", "4", "Tab", "4", "Enter"});
    EXPECT_EQ(printer_named(1), queue_->printer_name());
    const auto printed = queue_->wait_for_documents(2);
    ASSERT_EQ(printed.size(), 2U);
    EXPECT_THAT(text(printed[0]), HasSubstr("Bank 0 - 2"));
    EXPECT_THAT(text(printed[0]), Not(HasSubstr("Bank 0 - 3")));
    EXPECT_THAT(text(printed[1]), HasSubstr("Bank 0 - 3"));
    EXPECT_THAT(text(printed[1]), Not(HasSubstr("Bank 0 - 2")));
}

TEST_F(SystemPrintOnAQueue, jobs_that_are_turned_away_are_reported_and_the_program_goes_on) {
    queue_->refuse_jobs();
    print({"Enter"});
    const std::string report = message("Cannot print on ");
    EXPECT_THAT(report, HasSubstr("Cannot print on Paper: "));
    EXPECT_THAT(report, HasSubstr("not accepting jobs"));
    main();
    EXPECT_EQ(cell(1, 1), "TOWER");
    EXPECT_THAT(queue_->wait_for_documents(0), IsEmpty());

    systest::output_of("/usr/sbin/cupsaccept", {queue_->printer_name()}, queue_->environment());
    print({"Enter"});
    EXPECT_EQ(printer_named(7), queue_->printer_name());
    expect_all_rows(queue_->wait_for_documents(1).at(0));
}

// Without its print service, the computer has no printer.
TEST_F(SystemPrintOnAQueue, when_the_service_has_gone_the_pages_become_a_file) {
    print({});
    queue_->stop();
    keyboard.press("Enter");
    const std::filesystem::path document = printer_named(7);
    EXPECT_THAT(document.string(), StartsWith((documents() / "Memwright ").string()));
    expect_all_rows(document);
}

}  // namespace
}  // namespace memwright::systest
