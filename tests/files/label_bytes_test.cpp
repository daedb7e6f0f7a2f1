// Every byte in every place of a label survives the way from the image through table and file.

#include <algorithm>
#include <array>
#include <vector>

#include "files/image_files_test.h"

namespace memwright {
namespace {

struct Case {
    int byte;
    int place;
};

std::vector<Case> all_cases() {
    std::vector<Case> cases;
    for (int place = 0; place < layout::kLabelSize; ++place) {
        for (int byte = 0; byte < 256; ++byte) cases.push_back({byte, place});
    }
    return cases;
}

std::string label_of(const Case& tried) {
    std::string label(layout::kLabelSize, 'x');
    label[static_cast<std::size_t>(tried.place)] = static_cast<char>(tried.byte);
    return label;
}

// An image in which memory i is a channel with the label of case `first` + i.
Bytes image_with(const std::vector<Case>& cases, std::size_t first) {
    Bytes bytes(layout::kImageSize, 0);
    for (std::size_t i = 0; i < layout::kMemories; ++i) {
        const std::array<std::uint8_t, 4> record = {0x14, 0x55, 0x12, 0x41};
        std::ranges::copy(record, bytes.begin() + static_cast<std::ptrdiff_t>(4 * i));
        const std::string label = label_of(cases[(first + i) % cases.size()]);
        std::ranges::transform(label,
                               bytes.begin() + layout::kLabels + static_cast<std::ptrdiff_t>(6 * i),
                               [](char c) { return static_cast<std::uint8_t>(c); });
    }
    return bytes;
}

class LabelBytes : public ImageFilesTest {};

TEST_F(LabelBytes, survive_image_table_save_and_open) {
    const std::vector<Case> cases = all_cases();
    for (std::size_t first = 0; first < cases.size(); first += layout::kMemories) {
        const Bytes bytes = image_with(cases, first);
        open_unasked(folder.put("radio.120", bytes));
        for (std::size_t i = 0; i < layout::kMemories; ++i) {
            const Case& tried = cases[(first + i) % cases.size()];
            std::string shown = label_of(tried);
            // A space at the end is padding, and not shown.
            if (tried.place == layout::kLabelSize - 1 && tried.byte == ' ') shown.pop_back();
            ASSERT_EQ(grid.TextMatrix(static_cast<int>(i) + 1, columns::kTag), shown)
                << "byte " << tried.byte << " in place " << tried.place;
        }

        const std::string saved = folder.file("saved.120");
        std::filesystem::remove(saved);
        dialogs.names.emplace_back(saved);
        image_files.mnuSave_Click();
        ASSERT_EQ(folder.get("saved.120"), bytes);

        store.set_image(MemoryImage{});
        table.ParseVR120Data();
        open_unasked(saved);
        table.SaveVR120Data();
        ASSERT_TRUE(std::ranges::equal(store.MemoryImage.bytes(), bytes));
    }
}

TEST_F(LabelBytes, spaces_at_the_end_are_not_shown_and_come_back) {
    Bytes bytes = image_bytes("");
    for (std::size_t length = 0; length <= 6; ++length) {
        for (std::size_t i = 0; i < 6; ++i) {
            bytes[layout::kLabels + i] = i < length ? std::uint8_t{0} : std::uint8_t{0x20};
        }
        open_unasked(folder.put("radio.120", bytes));
        EXPECT_EQ(shown_tag(), std::string(length, '\0'));
        image_files.mnuSaveOnly_Click();
        EXPECT_EQ(folder.get("radio.120"), bytes);
    }
}

}  // namespace
}  // namespace memwright
