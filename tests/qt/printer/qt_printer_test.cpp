// The default printer of a desktop that has a print queue, and of one that has none. Each case is a
// process of its own: a process stays with the print service that it found first.

#include "qt/printing/qt_printer.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <stdexcept>

#include "base/error.h"
#include "fakes/child_process.h"
#include "native/file_system.h"
#include "printing/support/print_queue.h"
#include "support/eventually.h"
#include "support/read_file.h"
#include "support/run_program.h"
#include "support/temporary_folder.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;
using printing::PrintQueue;
using systest::output_of;
using systest::read_file;
using systest::run_program;
using testing::HasSubstr;
using testing::StartsWith;

class QtPrinterTest : public testing::Test {
  protected:
    // What `work` says, in a process with such an environment and a home folder of its own.
    std::string with_printer(const systest::Environment& environment,
                             const std::function<std::string(Printer&)>& work) const {
        return in_child([&]() -> std::string {
            for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
            setenv("HOME", home().c_str(), 1);
            unsetenv("XDG_CONFIG_HOME");
            setenv("LC_ALL", "C.UTF-8", 1);
            setenv("QT_QPA_PLATFORM", "offscreen", 1);
            int count = 1;
            char name[] = "qt_printer_tests";
            char* arguments[] = {name, nullptr};
            const QApplication application(count, arguments);
            NativeFileSystem files;
            qt::QtPrinter printer(files);
            return work(printer);
        });
    }

    // Prints pages that say "page 1" and so on; what the device is called.
    static std::string print(Printer& printer, int pages,
                             const std::function<void()>& before_end = {}) {
        const auto document = printer.begin("Memwright", PaperOrientation::landscape);
        for (int page = 1; page <= pages; ++page) {
            document->set_font({"MS Sans Seriff", false, 10});
            document->set_x(600);
            document->set_y(900);
            document->print_line("page " + std::to_string(page));
            document->new_page();
        }
        if (before_end) before_end();
        document->end();
        return document->device_name();
    }

    static std::string text_of(const fs::path& document) {
        return output_of("/usr/bin/pdftotext", {document, "-"});
    }

    fs::path home() const { return folder_.path() / "home"; }
    static systest::Environment no_service() { return {{"CUPS_SERVER", "/no/such/socket"}}; }

    TemporaryFolder folder_;
};

class QtPrinterWithAQueue : public QtPrinterTest {
  protected:
    void SetUp() override {
        if (const std::string reason = PrintQueue::why_not(); !reason.empty()) {
            GTEST_SKIP() << reason;
        }
        queue_.emplace();
    }

    // At once, and from any process.
    void kill_service() const {
        const fs::path folder = fs::path(queue_->environment().at("CUPS_SERVER")).parent_path();
        kill(std::stoi(read_file(folder / "state/cupsd.pid")), SIGKILL);
        systest::wait_until([&] {
            return run_program("/usr/bin/lpstat", {"-r"}, queue_->environment())
                .output.starts_with("scheduler is not running");
        });
    }

    std::optional<PrintQueue> queue_;
};

TEST_F(QtPrinterWithAQueue, a_document_goes_to_the_default_printer_with_its_pages) {
    EXPECT_EQ(with_printer(queue_->environment(), [](Printer& it) { return print(it, 3); }),
              queue_->printer_name());
    const auto documents = queue_->wait_for_documents(1);
    ASSERT_EQ(documents.size(), 1U);
    EXPECT_THAT(documents[0].filename().string(), HasSubstr("Memwright"));
    for (const char* const page : {"page 1", "page 2", "page 3"}) {
        EXPECT_THAT(text_of(documents[0]), HasSubstr(page));
    }
    const std::string facts = output_of("/usr/bin/pdfinfo", {documents[0]});
    EXPECT_THAT(facts, testing::ContainsRegex("Pages: +3\n"));
}

TEST_F(QtPrinterWithAQueue, a_document_without_pages_is_no_job) {
    EXPECT_EQ(with_printer(queue_->environment(), [](Printer& it) { return print(it, 0); }),
              queue_->printer_name());
    EXPECT_EQ(output_of("/usr/bin/lpstat", {"-W", "all", "-o"}, queue_->environment()), "");
}

TEST_F(QtPrinterWithAQueue, a_document_that_is_dropped_prints_the_pages_that_it_has) {
    EXPECT_EQ(with_printer(queue_->environment(),
                           [](Printer& it) -> std::string {
                               return print(it, 2, [] { throw std::runtime_error("stop"); });
                           }),
              "error: stop");
    const auto documents = queue_->wait_for_documents(1);
    ASSERT_EQ(documents.size(), 1U);
    EXPECT_THAT(text_of(documents[0]), HasSubstr("page 2"));
}

TEST_F(QtPrinterWithAQueue, a_queue_that_takes_no_jobs_is_an_error_that_says_so) {
    queue_->refuse_jobs();
    const std::string report =
        with_printer(queue_->environment(), [](Printer& it) { return print(it, 2); });
    EXPECT_EQ(report,
              "error: Cannot print on Paper: Destination \"Paper\" is not accepting jobs.\n"
              "The table is as it was. Check that the printer is on, has paper and accepts jobs, "
              "then print again.");
}

TEST_F(QtPrinterWithAQueue, a_service_that_goes_away_meanwhile_is_an_error) {
    const std::string report = with_printer(
        queue_->environment(), [&](Printer& it) { return print(it, 2, [&] { kill_service(); }); });
    EXPECT_THAT(report, StartsWith("error: Cannot print on Paper: the print service fails: "));
}

TEST_F(QtPrinterWithAQueue, after_an_error_the_next_document_is_printed) {
    const std::string report = with_printer(queue_->environment(), [&](Printer& it) -> std::string {
        queue_->refuse_jobs();
        try {
            print(it, 1);
            return "no error";
        } catch (const PrinterError&) {
        }
        output_of("/usr/sbin/cupsaccept", {queue_->printer_name()}, queue_->environment());
        return print(it, 1);
    });
    ASSERT_EQ(report, queue_->printer_name());
    EXPECT_EQ(queue_->wait_for_documents(1).size(), 1U);
}

using QtPrinterWithoutAService = QtPrinterTest;

TEST_F(QtPrinterWithoutAService, documents_become_pdf_files_in_the_documents_folder) {
    const std::string report = with_printer(no_service(), [](Printer& it) { return print(it, 2); });
    const std::string beginning = (home() / "Documents/Memwright ").string();
    ASSERT_THAT(report, StartsWith(beginning));
    EXPECT_THAT(report.substr(beginning.size()),
                testing::MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2} "
                                      "[0-9]{2}\\.[0-9]{2}\\.[0-9]{2}\\.pdf"));
    ASSERT_TRUE(fs::exists(report)) << report;
    EXPECT_THAT(text_of(report), HasSubstr("page 2"));
}

TEST_F(QtPrinterWithoutAService, the_documents_folder_is_the_one_that_the_user_has_chosen) {
    fs::create_directories(home() / ".config");
    std::ofstream(home() / ".config/user-dirs.dirs")
        << "XDG_DOCUMENTS_DIR=\"$HOME/Dokumente \xC3\xA4\"\n";
    const std::string report = with_printer(no_service(), [](Printer& it) { return print(it, 1); });
    EXPECT_THAT(report, StartsWith((home() / "Dokumente \xC3\xA4/Memwright ").string()));
    EXPECT_TRUE(fs::exists(report)) << report;
}

TEST_F(QtPrinterWithoutAService, no_file_replaces_another_of_the_same_second) {
    const std::string report = with_printer(no_service(), [](Printer& it) {
        std::string names;
        for (int i = 0; i < 5; ++i) names += print(it, 1) + "\n";
        return names;
    });
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& file : fs::directory_iterator(home() / "Documents")) ++files;
    EXPECT_EQ(files, 5U) << report;
}

TEST_F(QtPrinterWithoutAService, a_documents_folder_that_cannot_be_made_is_an_error) {
    fs::create_directories(home());
    std::ofstream(home() / "Documents") << "in the way";
    const std::string report = with_printer(no_service(), [](Printer& it) { return print(it, 1); });
    EXPECT_THAT(report, StartsWith("error: Cannot save " + (home() / "Documents/").string()));
    EXPECT_THAT(with_printer(no_service(), [](Printer& it) { return print(it, 0); }),
                StartsWith((home() / "Documents/").string()))
        << "no page needs no folder";
}

}  // namespace
}  // namespace memwright
