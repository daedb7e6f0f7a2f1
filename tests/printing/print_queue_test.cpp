#include "printing/support/print_queue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "fakes/child_process.h"
#include "support/eventually.h"
#include "support/read_file.h"
#include "support/run_program.h"
#include "support/temporary_folder.h"

namespace memwright::printing {
namespace {

namespace fs = std::filesystem;
using systest::Outcome;
using systest::output_of;
using systest::read_file;
using systest::run_program;
using systest::wait_until;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// One page of A4 that says the text.
std::string page_saying(const std::string& text) {
    const std::string drawing = "BT /F1 24 Tf 100 700 Td (" + text + ") Tj ET";
    const std::vector<std::string> objects = {
        "<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R"
        " /Resources << /Font << /F1 5 0 R >> >> >>",
        "<< /Length " + std::to_string(drawing.size()) + " >>\nstream\n" + drawing + "\nendstream",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"};
    std::string file = "%PDF-1.4\n";
    std::string places = "0000000000 65535 f \n";
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const std::string place = std::to_string(file.size());
        places += std::string(10 - place.size(), '0') + place + " 00000 n \n";
        file += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::string size = std::to_string(objects.size() + 1);
    return file + "xref\n0 " + size + "\n" + places + "trailer\n<< /Size " + size +
           " /Root 1 0 R >>\nstartxref\n" + std::to_string(file.size()) + "\n%%EOF\n";
}

std::string text_of(const fs::path& document) {
    const std::string text = output_of("/usr/bin/pdftotext", {document, "-"});
    return text.substr(0, text.find('\n'));
}

std::vector<std::string> names_in(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        names.push_back(entry.path());
    }
    std::ranges::sort(names);
    return names;
}

// The folders in /proc of processes that know the folder, by their arguments or environment.
std::vector<fs::path> processes_of(const fs::path& folder) {
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::string all =
            read_file(entry.path() / "cmdline") + read_file(entry.path() / "environ");
        if (all.find(folder.string()) != std::string::npos) found.push_back(entry.path());
    }
    return found;
}

// Has Ghostscript, the last program of a job, opened what it makes the document of?
bool is_rendering(const fs::path& folder) {
    const std::string input = folder / "work/cups2pdf-";
    for (const auto& process : processes_of(folder)) {
        if (!read_file(process / "cmdline").starts_with("/usr/bin/gs")) continue;
        std::error_code gone;
        for (fs::directory_iterator file(process / "fd", gone), end; !gone && file != end;
             file.increment(gone)) {
            std::error_code closed;
            if (fs::read_symlink(*file, closed).string().starts_with(input)) return true;
        }
    }
    return false;
}

fs::path folder_of(const PrintQueue& queue) {
    return fs::path(queue.environment().at("CUPS_SERVER")).parent_path();
}

class PrintQueueTest : public testing::Test {
  protected:
    void SetUp() override {
        if (const std::string reason = PrintQueue::why_not(); !reason.empty()) {
            GTEST_SKIP() << reason;
        }
    }

    Outcome try_to_print(const PrintQueue& queue, const std::string& content,
                         const std::string& title) const {
        const fs::path file = folder_.path() / "page";
        std::ofstream(file, std::ios::binary) << content;
        return run_program("/usr/bin/lp", {"-t", title, file}, queue.environment());
    }

    Outcome try_to_print(const PrintQueue& queue, const std::string& text) const {
        return try_to_print(queue, page_saying(text), text);
    }

    void print(const PrintQueue& queue, const std::string& text) const {
        const Outcome outcome = try_to_print(queue, text);
        EXPECT_TRUE(outcome.status.success()) << outcome.output;
    }

    bool begin_an_endless_job(const PrintQueue& queue) const {
        const fs::path folder = folder_of(queue);
        return try_to_print(queue, "%!PS\n{} loop\n", "Endless").status.success() &&
               wait_until([&] { return is_rendering(folder); });
    }

  private:
    TemporaryFolder folder_;
};

TEST_F(PrintQueueTest, a_printed_page_becomes_one_document_of_one_page) {
    const PrintQueue queue;
    print(queue, "Paper (1) & \"ink\"; $HOME 'a'");
    const auto documents = queue.wait_for_documents(1);
    ASSERT_EQ(documents.size(), 1U);
    const std::string facts = output_of("/usr/bin/pdfinfo", {documents[0]});
    EXPECT_THAT(facts, testing::ContainsRegex("Pages: +1\n"));
    EXPECT_THAT(facts, testing::ContainsRegex("Page size: +59[45].* x 84[12].* pts \\(A4\\)"));
}

TEST_F(PrintQueueTest, the_text_of_a_page_can_be_read_from_its_document) {
    const PrintQueue queue;
    print(queue, "Memory 640");
    EXPECT_EQ(text_of(queue.wait_for_documents(1).at(0)), "Memory 640");
}

TEST_F(PrintQueueTest, documents_come_in_the_order_of_their_jobs) {
    const PrintQueue queue;
    std::vector<std::string> printed;
    for (int i = 11; i > 0; --i) {
        printed.push_back("Number " + std::to_string(i));
        print(queue, printed.back());
    }
    std::vector<std::string> read;
    for (const auto& document : queue.wait_for_documents(11)) read.push_back(text_of(document));
    EXPECT_EQ(read, printed);
}

TEST_F(PrintQueueTest, it_is_the_default_printer_of_a_program_in_its_environment) {
    const PrintQueue queue;
    EXPECT_EQ(output_of("/usr/bin/lpstat", {"-d"}, queue.environment()),
              "system default destination: " + queue.printer_name() + "\n");
    EXPECT_EQ(output_of("/usr/bin/lpstat", {"-d"},
                        {{"CUPS_SERVER", queue.environment().at("CUPS_SERVER")}}),
              "system default destination: " + queue.printer_name() + "\n");
}

TEST_F(PrintQueueTest, queues_side_by_side_keep_their_documents_apart) {
    const PrintQueue one;
    const PrintQueue other;
    print(one, "For one");
    print(other, "For the other");
    print(one, "For one again");
    const auto of_one = one.wait_for_documents(2);
    const auto of_other = other.wait_for_documents(1);
    ASSERT_EQ(of_one.size(), 2U);
    ASSERT_EQ(of_other.size(), 1U);
    EXPECT_EQ(text_of(of_one[0]), "For one");
    EXPECT_EQ(text_of(of_one[1]), "For one again");
    EXPECT_EQ(text_of(of_other[0]), "For the other");
}

TEST_F(PrintQueueTest, a_queue_that_refuses_jobs_says_so_and_makes_nothing) {
    PrintQueue queue;
    queue.refuse_jobs();
    const Outcome outcome = try_to_print(queue, "Refused");
    EXPECT_FALSE(outcome.status.success());
    EXPECT_THAT(outcome.output, HasSubstr("not accepting jobs"));
    EXPECT_THAT(queue.wait_for_documents(0), IsEmpty());
}

TEST_F(PrintQueueTest, a_stopped_queue_cannot_be_reached) {
    PrintQueue queue;
    print(queue, "Before");
    EXPECT_EQ(queue.wait_for_documents(1).size(), 1U);
    queue.stop();
    EXPECT_FALSE(try_to_print(queue, "Too late").status.success());
    EXPECT_THAT(processes_of(folder_of(queue) / "server"), IsEmpty());
}

TEST_F(PrintQueueTest, a_job_without_a_document_is_reported_with_the_log) {
    const PrintQueue queue;
    fs::remove(folder_of(queue) / "work");
    std::ofstream(folder_of(queue) / "work") << "in the way of the PDF printer";
    print(queue, "Lost");
    try {
        queue.wait_for_documents(1);
        ADD_FAILURE() << "it waited for nothing";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("1 have ended and made 0 documents"));
        EXPECT_THAT(error.what(), HasSubstr("Backend failed"));
    }
}

TEST_F(PrintQueueTest, nothing_is_left_of_a_queue_that_has_printed) {
    const std::vector<fs::path> common = {"/etc/cups", "/var/spool/cups-pdf", "/var/log/cups"};
    std::vector<std::vector<std::string>> before;
    for (const auto& folder : common) before.push_back(names_in(folder));
    fs::path folder;
    {
        const PrintQueue queue;
        folder = folder_of(queue);
        print(queue, "A page");
        queue.wait_for_documents(1);
        EXPECT_THAT(processes_of(folder), Not(IsEmpty()));
    }
    EXPECT_FALSE(fs::exists(folder));
    EXPECT_THAT(processes_of(folder), IsEmpty());
    for (std::size_t i = 0; i < common.size(); ++i) EXPECT_EQ(names_in(common[i]), before[i]);
}

TEST_F(PrintQueueTest, nothing_is_left_of_a_queue_that_ends_in_the_middle_of_a_job) {
    fs::path folder;
    {
        const PrintQueue queue;
        folder = folder_of(queue);
        EXPECT_TRUE(begin_an_endless_job(queue));
    }
    EXPECT_FALSE(fs::exists(folder));
    EXPECT_THAT(processes_of(folder), IsEmpty());
}

TEST_F(PrintQueueTest, nothing_is_left_of_a_queue_whose_scheduler_hangs) {
    fs::path folder;
    {
        const PrintQueue queue;
        folder = folder_of(queue);
        EXPECT_TRUE(begin_an_endless_job(queue));
        EXPECT_EQ(kill(std::stoi(read_file(folder / "state/cupsd.pid")), SIGSTOP), 0);
    }
    EXPECT_FALSE(fs::exists(folder));
    EXPECT_THAT(processes_of(folder), IsEmpty());
}

TEST_F(PrintQueueTest, no_process_is_left_of_a_queue_whose_test_dies_in_the_middle_of_a_job) {
    const std::string folder = in_child([this]() -> std::string {
        const auto* left_alone = new PrintQueue;  // NOLINT: the child ends without a destructor
        return begin_an_endless_job(*left_alone) ? folder_of(*left_alone) : "no job";
    });
    ASSERT_THAT(folder, StartsWith("/"));
    EXPECT_TRUE(wait_until([&] { return processes_of(folder).empty(); }));
    fs::remove_all(folder);
}

TEST(ReadFile, a_file_that_fails_while_it_is_read_ends_there) {
    EXPECT_EQ(read_file("/proc/self/mem"), "");
    EXPECT_EQ(read_file("/proc/self/not/there"), "");
    EXPECT_NE(read_file("/proc/self/environ"), "");
}

TEST_F(PrintQueueTest, an_ordinary_user_is_told_why_there_is_none) {
    EXPECT_THAT(as_an_ordinary_user([] { return PrintQueue::why_not(); }), HasSubstr("root"));
    EXPECT_THAT(as_an_ordinary_user([]() -> std::string {
                    const PrintQueue queue;
                    return "there is one";
                }),
                StartsWith("error: Only root"));
}

}  // namespace
}  // namespace memwright::printing
