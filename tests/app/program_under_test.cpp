#include "app/program_under_test.h"

#include <filesystem>

namespace memwright {

ProgramTest::ProgramTest() : folder_before(native.current_folder()) {
    native.set_current_folder(folder.path().string());
    cells.grid = &form.MSFlexGrid1;
}

ProgramTest::~ProgramTest() { std::filesystem::current_path(folder_before); }

void ProgramTest::start_with_a_file() {
    Bytes bytes(layout::kImageSize, 0);
    bytes[0] = 0x14;
    bytes[1] = 0x55;
    bytes[2] = 0x12;
    bytes[3] = 0x41;
    for (std::size_t i = layout::kRecordSize; i < layout::kLabels; ++i) bytes[i] = 0xFF;
    for (std::size_t i = layout::kLabels; i < layout::kRadioSettings; ++i) bytes[i] = ' ';
    bytes[layout::kLabels] = 'A';
    program.start();
    program.open_named(folder.put("mem.120", bytes));
    ASSERT_EQ(shown_tag(), "A");
    ASSERT_TRUE(messages.shown.empty());
}

std::string ProgramTest::saved_tag(const std::string& name) const {
    const auto bytes = folder.get(name);
    if (bytes.size() < layout::kRadioSettings) return "(too short)";
    const auto label = bytes.begin() + layout::kLabels;
    const std::string tag(label, label + layout::kLabelSize);
    return tag.substr(0, tag.find_last_not_of(' ') + 1);
}

std::vector<std::string> ProgramTest::enabled_names() {
    std::vector<std::string> names;
    if (form.MSFlexGrid1.enabled) names.push_back(form.MSFlexGrid1.name);
    for (const auto& [menu, items] : form.menus()) {
        if (menu.enabled) names.push_back(menu.name);
        for (const MenuEntry* item : items) {
            const bool original = item->name.starts_with("mnu");
            if (original && item->enabled && item->caption.get() != kSeparatorCaption) {
                names.push_back(item->name);
            }
        }
    }
    return names;
}

}  // namespace memwright
