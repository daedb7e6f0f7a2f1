// What the window writes and what memwright-cli writes is the same, byte for byte.

#include <gtest/gtest.h>

#include "app/program_under_test.h"
#include "cli/support/cli_test.h"
#include "fakes/seeded_random.h"

namespace memwright::cli_tests {
namespace {

constexpr int kImages = 20;

// Every other image has channels that a user could have put there; the others are any bytes.
Image random_image(SeededRandom& random) {
    Image image;
    const bool any_bytes = random.coin();
    for (int i = any_bytes ? 0 : layout::kRadioSettings; i < layout::kImageSize; ++i) {
        image.set(i, {random.byte()});
    }
    for (int row = 1; row <= layout::kMemories && !any_bytes; ++row) {
        if (random.coin()) continue;
        const char* const modes[] = {"NFM", "WFM", "AM", ""};
        const std::string frequency = std::to_string(random.between(0, 1299)) + "." +
                                      random.text("0123456789", 3, 3) +
                                      (random.coin() ? "25" : "00");
        image.channel(row, random.text("ABCxyz019 .-/\"\xFC\x80", 6), frequency,
                      modes[random.between(0, 3)], random.coin() ? "On" : "Off");
    }
    if (random.coin()) image.rest(random.text("more", 50));
    return image;
}

// A list as people leave it: some lines are gone, some are not what they should be.
std::string edited(std::string list, SeededRandom& random) {
    const int changes = random.coin() ? 0 : random.between(1, 3);
    for (int i = 0; i < changes && list.size() > 100; ++i) {
        const auto place =
            static_cast<std::size_t>(random.between(30, static_cast<int>(list.size()) - 40));
        if (random.coin()) {
            list.erase(place, static_cast<std::size_t>(random.between(1, 30)));
        } else {
            list.insert(place, random.text("0123456789.,\"p\n", 3));
        }
    }
    return list;
}

class Agreement : public ProgramTest {
  protected:
    void SetUp() override { program.start(); }

    Ended run(const Words& arguments) const {
        return run_to_end(cli_command(arguments, folder, home_));
    }

    // Opens a file, whatever becomes of what was open.
    void open(const std::string& name) {
        messages.answers = {Answer::no};
        program.open_named(folder.file(name));
        messages.answers.clear();
        messages.shown.clear();
    }

    void export_in_window(const std::string& name) {
        dialogs.names.push_back(folder.file(name));
        form.mnuExport.clicked();
    }

    // Import, then Save. False if the window reports an error.
    bool import_in_window(const std::string& name) {
        messages.answers = {Answer::ok};
        dialogs.names.push_back(folder.file(name));
        form.mnuImport.clicked();
        const bool well = messages.shown.empty();
        messages.answers.clear();
        messages.shown.clear();
        form.mnuSaveOnly.clicked();
        return well;
    }

  private:
    TemporaryFolder home_;
};

TEST_F(Agreement, of_exports) {
    SeededRandom random;
    for (int i = 0; i < kImages; ++i) {
        folder.put("a.120", random_image(random).bytes());
        open("a.120");
        export_in_window("window.csv");
        EXPECT_EQ(run({"export", "a.120", "cli.csv"}), done());
        ASSERT_EQ(folder.get("cli.csv"), folder.get("window.csv")) << "image " << i;
        const auto bytes = folder.get("window.csv");
        ASSERT_TRUE(run({"export", "a.120"}).output == std::string(bytes.begin(), bytes.end()))
            << "image " << i;
    }
}

TEST_F(Agreement, of_imports) {
    SeededRandom random;
    int imported = 0;
    for (int i = 0; i < kImages; ++i) {
        const auto before = random_image(random).bytes();
        folder.put("window.120", before);
        folder.put("cli.120", before);
        folder.put("other.120", random_image(random).bytes());
        const std::string list = edited(run({"export", "other.120"}).output, random);
        folder.put("list.csv", {list.begin(), list.end()});

        open("window.120");
        const bool well = import_in_window("list.csv");
        const Ended ended = run({"import", "cli.120", "list.csv"});
        ASSERT_EQ(ended.status, well ? 0 : 3) << "image " << i << '\n' << ended;
        ASSERT_EQ(ended.output, "");
        // The window keeps the lines before a bad one in its table; a script has nobody to look.
        ASSERT_EQ(folder.get("cli.120"), well ? folder.get("window.120") : before) << "image " << i;
        if (well) ++imported;
    }
    EXPECT_GT(imported, 0);
    EXPECT_LT(imported, kImages);
}

}  // namespace
}  // namespace memwright::cli_tests
