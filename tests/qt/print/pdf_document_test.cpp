// A document as a file: whole or not at all.

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "fakes/child_process.h"
#include "qt/print/pdf_bench.h"

namespace memwright {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using PdfDocumentFile = PdfBench;

TEST_F(PdfDocumentFile, is_there_once_the_document_has_ended_and_not_before) {
    const auto document = begin();
    document->print_line("one");
    document->new_page();
    document->print_line("two");
    EXPECT_THAT(folder_.names(), IsEmpty());
    document->end();
    EXPECT_THAT(folder_.names(), ElementsAre("printed.pdf"));
    EXPECT_EQ(pdf().pages(), 2);
    EXPECT_EQ(pdf().title(), "Memwright");
    EXPECT_EQ(document->device_name(), path());
}

TEST_F(PdfDocumentFile, lies_on_the_paper_that_is_usual_here_in_either_orientation) {
    for (const auto orientation : {PaperOrientation::portrait, PaperOrientation::landscape}) {
        const auto document = begin(orientation);
        document->print_line("one");
        document->end();
        const QSizeF paper =
            orientation == PaperOrientation::portrait ? paper_size() : paper_size().transposed();
        // A4 is no whole number of points.
        EXPECT_NEAR(pdf().paper().width(), paper.width(), 20);
        EXPECT_NEAR(pdf().paper().height(), paper.height(), 20);
    }
}

TEST_F(PdfDocumentFile, without_a_page_there_is_no_file) {
    begin()->end();
    const auto document = begin();
    document->set_font({"Ariel", true, 12});
    document->set_x(100);
    document->new_page();
    document->end();
    EXPECT_THAT(folder_.names(), IsEmpty());
}

TEST_F(PdfDocumentFile, a_document_that_is_dropped_before_its_end_leaves_no_file) {
    {
        const auto document = begin();
        document->print_line("one");
        document->new_page();
        document->print_line("two");
    }
    EXPECT_THAT(folder_.names(), IsEmpty());
}

TEST_F(PdfDocumentFile, replaces_a_file_of_its_name_whole) {
    folder_.put("printed.pdf", std::vector<std::uint8_t>(2'000'000, 'x'));
    const auto document = begin();
    document->print_line("one");
    document->end();
    EXPECT_LT(folder_.get("printed.pdf").size(), 1'000'000U);
    EXPECT_EQ(pdf().pages(), 1);
}

TEST_F(PdfDocumentFile, that_cannot_be_written_is_a_file_error_that_names_it) {
    files_.writing_fails = true;
    const auto document = begin();
    document->print_line("one");
    try {
        document->end();
        FAIL() << "no error";
    } catch (const FileError& error) {
        EXPECT_EQ(std::string(error.what()), "Cannot save " + path() + ": the disk is full.");
    }
    EXPECT_THAT(folder_.names(), IsEmpty());
}

// Prints one page to a path in a child process.
std::string printing_to(const std::string& path) {
    NativeFileSystem files;
    try {
        qt::PdfDocument document(path, "Memwright", PaperOrientation::landscape, files);
        document.print_line("one");
        document.end();
    } catch (const FileError& error) {
        return error.what();
    }
    return "printed";
}

TEST_F(PdfDocumentFile, for_which_the_disk_has_no_room_does_not_come_into_being) {
    for (const rlim_t room : {0U, 100U, 4096U}) {
        const std::string report = in_child([&]() -> std::string {
            return limit_file_size(room) ? printing_to(path()) : "no limit";
        });
        EXPECT_THAT(report, HasSubstr("Cannot save " + path())) << room;
        EXPECT_THAT(report, HasSubstr("File too large")) << room;
        EXPECT_THAT(folder_.names(), IsEmpty()) << room;
    }
}

TEST_F(PdfDocumentFile, in_a_folder_that_may_not_be_written_to_is_a_file_error) {
    ASSERT_EQ(chmod(folder_.path().c_str(), 0555), 0);
    const std::string report = as_an_ordinary_user([&] { return printing_to(path()); });
    ASSERT_EQ(chmod(folder_.path().c_str(), 0777), 0);
    EXPECT_THAT(report, HasSubstr("Cannot save " + path()));
    EXPECT_THAT(report, HasSubstr("ermission denied"));
    EXPECT_THAT(folder_.names(), IsEmpty());
}

TEST_F(PdfDocumentFile, in_a_folder_that_does_not_exist_is_a_file_error) {
    EXPECT_THAT(printing_to(folder_.file("away/printed.pdf")),
                HasSubstr("Cannot save " + folder_.file("away/printed.pdf")));
    EXPECT_THAT(folder_.names(), IsEmpty());
}

}  // namespace
}  // namespace memwright
