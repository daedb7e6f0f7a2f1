#include "system/memwright_desktop.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

#include "native/file_system.h"
#include "support/built_programs.h"
#include "support/quick_time.h"
#include "table/channel_table.h"

namespace memwright::systest {

namespace fs = std::filesystem;

Bytes file_bytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in.good()) << path;
    return {std::istreambuf_iterator<char>(in), {}};
}

void write_file(const fs::path& path, std::span<const std::uint8_t> bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

MemoryImage through_the_table(const MemoryImage& image) {
    ImageCodec store(image);
    MSFlexGrid grid("MSFlexGrid1");
    const MenuEntry mnuSaveOnly("mnuSaveOnly", "&Save");
    ChannelTable table(store, grid, mnuSaveOnly);
    table.ParseVR120Data();
    table.SaveVR120Data();
    return store.MemoryImage;
}

// Not the first start of all, which says how to begin.
MemwrightDesktop::MemwrightDesktop() {
    fs::create_directories(desktop.settings() / "Memwright");
    const std::string text = "[Notices]\nFirstSteps=dismissed\n";
    write_file(desktop.settings() / "Memwright" / "Memwright.ini", Bytes(text.begin(), text.end()));
}

void MemwrightDesktop::plug_in(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--save", radio_file().string(), "--pace", "none"});
    radio = std::make_unique<Program>(desktop, built_program("vr120-sim"), arguments);
    const std::string device = radio->wait_for_line("/dev/");
    fs::remove(file("cable"));
    fs::create_symlink(device, file("cable"));
}

void MemwrightDesktop::start(std::vector<std::string> arguments, const Environment& extra) {
    arguments.insert(arguments.begin(), {"--com", "1=" + file("cable").string()});
    program = std::make_unique<Application>(desktop, built_program("memwright"), arguments, extra);
}

void MemwrightDesktop::start_in_quick_time(std::vector<std::string> arguments, Environment extra) {
    pass_time_quickly(extra);
    start(std::move(arguments), extra);
}

void MemwrightDesktop::wait_for_caption(const std::string& caption) {
    title_ = caption;
    main();
}

void MemwrightDesktop::expect_status(const std::string& text, Milliseconds patience) const {
    const std::string name = text.empty() ? "Status line" : "Status line: " + text;
    EXPECT_NO_THROW(program->find({.role = Role::kLabel, .name = name}, patience));
}

std::string MemwrightDesktop::wait_for_status(const std::string& beginning) const {
    return program
        ->find({.role = Role::kLabel, .name_part = "Status line: " + beginning}, kTransferPatience)
        .name();
}

Accessible MemwrightDesktop::grid() const {
    return program->find({.role = Role::kTable, .name = "Channel memories"});
}

std::string MemwrightDesktop::cell(int row, int col) const {
    return grid().cell_text(row - 1, col);
}

Accessible MemwrightDesktop::transfer_button(const std::string& caption,
                                             Milliseconds patience) const {
    return program->find({.role = Role::kPushButton, .name = caption, .showing = true}, patience);
}

void MemwrightDesktop::choose(std::string_view menu, std::string_view entry) const {
    main();
    program->choose({menu, entry});
}

void MemwrightDesktop::answer(const std::string& title, const std::string& text,
                              const std::string& button) {
    mouse.click(program->message_box(title, text).button(button));
}

void MemwrightDesktop::read() {
    choose("Transfer", "Read from VR-120");
    answer("Read From VR-120", kReadInstructions, "OK");
}

void MemwrightDesktop::read_to_end() {
    read();
    expect_status("Read from VR-120 complete.", kTransferPatience);
}

void MemwrightDesktop::save_as(const fs::path& path) {
    choose("File", "Save As...");
    enter_path(*program, "Save File As..", path);
}

void MemwrightDesktop::open(const fs::path& path) {
    choose("File", "Open");
    enter_path(*program, "Open File", path);
    wait_for_caption(std::string(kTitle) + " - " + path.string());
}

fs::path MemwrightDesktop::changing_image() {
    const fs::path path = file("zeros.120");
    write_file(path, Bytes(layout::kImageSize, 0));
    return path;
}

std::string MemwrightDesktop::setting(const std::string& key) const {
    std::ifstream in(desktop.settings() / "Memwright" / "VR120.ini");
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with(key + "=")) return line.substr(key.size() + 1);
    }
    return "";
}

}  // namespace memwright::systest
