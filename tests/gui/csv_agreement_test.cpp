// Export and Import from the real window's menu give the bytes that memwright-cli gives.

#include <gtest/gtest.h>

#include "fakes/seeded_random.h"
#include "gui/support/window_test.h"
#include "support/built_programs.h"
#include "support/run_program.h"

namespace memwright::gui {
namespace {

using Bytes = std::vector<std::uint8_t>;

class CsvAgreement : public StartedWindowTest {
  protected:
    void choosing(const char* entry, const std::string& name) {
        answering({type_name(qt::from_file_name(folder_.file(name)))},
                  [&] { choose("mnuFile", entry); });
    }

    // Runs memwright-cli in the folder of the files; gives its exit status.
    int run_cli(std::vector<std::string> arguments) {
        const auto ended = systest::run_apart({.program = systest::built_program("memwright-cli"),
                                               .arguments = std::move(arguments),
                                               .environment = systest::inherited_environment(),
                                               .folder = folder_.path()});
        return ended.status.signal == 0 ? ended.status.code : -1;
    }

    // Channels whose labels are any bytes that a list can hold; the table encodes them as they are,
    // so nothing is asked about changes.
    Bytes image_with_random_labels(SeededRandom& random) {
        MemoryImage image = some_image();
        for (int memory = 0; memory < layout::kMemories; ++memory) {
            if (image.get(layout::kRecords + layout::kRecordSize * memory) == 0xFF) continue;
            for (int i = 0; i < layout::kLabelSize; ++i) {
                const std::uint8_t byte = random.byte();
                const bool plain = byte != ',' && byte != '\r' && byte != '\n';
                image.set(layout::kLabels + layout::kLabelSize * memory + i, plain ? byte : '-');
            }
        }
        return {image.bytes().begin(), image.bytes().end()};
    }
};

TEST_F(CsvAgreement, of_window_and_command_line) {
    constexpr int kImages = 5;
    SeededRandom random;
    for (int i = 0; i < kImages; ++i) {
        const Bytes image = image_with_random_labels(random);
        folder_.put("window.120", image);
        program().open_named(folder_.file("window.120"));
        choosing("mnuExport", "window.csv");
        ASSERT_EQ(run_cli({"export", "window.120", "cli.csv"}), 0);
        EXPECT_EQ(folder_.get("cli.csv"), folder_.get("window.csv"));
        std::filesystem::remove(folder_.file("window.csv"));

        const Bytes other = image_with_random_labels(random);
        folder_.put("window.120", other);
        folder_.put("cli.120", other);
        program().open_named(folder_.file("window.120"));
        choosing("mnuImport", "cli.csv");
        choose("mnuFile", "mnuSaveOnly");
        ASSERT_EQ(run_cli({"import", "cli.120", "cli.csv"}), 0);
        EXPECT_EQ(folder_.get("cli.120"), folder_.get("window.120"));
        EXPECT_NE(folder_.get("cli.120"), other);
    }
}

}  // namespace
}  // namespace memwright::gui
