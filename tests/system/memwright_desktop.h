#pragma once

// The built program and the built simulated radio on a desktop of their own, as an owner has them:
// the radio at the end of a cable that can be unplugged and plugged in again.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "image/memory_image.h"
#include "platform/file_system.h"
#include "system/support/application.h"
#include "system/support/file_dialog.h"
#include "system/support/mouse.h"

namespace memwright::systest {

inline constexpr Milliseconds kTransferPatience{150000};
inline constexpr const char* kTitle = "Memwright v1.0";
inline constexpr const char* kFreshCaption = "Memwright v1.0 - By the Memwright developers";
inline constexpr const char* kChanged =
    "The VR120 data has changed.\nDo you want to save the changes?";
inline constexpr const char* kReadInstructions =
    "1. Hold down [Func] + [Band] on the VR-120 and power it on. It should say RX TX.\n"
    "2. Click OK to close this box.\n"
    "3. Press [Mode] on the VR-120 to start the read.";
inline constexpr const char* kWriteInstructions =
    "1. Hold down [Func] + [Band] on the VR-120 and power it on. It should say RX TX.\n"
    "2. Press [Scan] on the VR-120. It should say R.\n"
    "3. Click OK on this box to begin.";

Bytes file_bytes(const std::filesystem::path& path);
void write_file(const std::filesystem::path& path, std::span<const std::uint8_t> bytes);

// What an image becomes by being shown in the table and encoded again.
MemoryImage through_the_table(const MemoryImage& image);

class MemwrightDesktop : public testing::Test {
  protected:
    MemwrightDesktop();

    // Connects a radio to the cable.
    void plug_in(std::vector<std::string> arguments = {});
    void start(std::vector<std::string> arguments = {}, const Environment& extra = {});
    // For a whole transfer in the middle of something else.
    void start_in_quick_time(std::vector<std::string> arguments = {}, Environment extra = {});

    std::filesystem::path file(const std::string& name) const { return desktop.folder() / name; }
    std::filesystem::path radio_file() const { return file("radio.120"); }

    Accessible main() const { return program->main_window(title_); }
    void wait_for_caption(const std::string& caption);
    void expect_status(const std::string& text, Milliseconds patience = kPatience) const;
    // The name of the status line once its text begins so.
    std::string wait_for_status(const std::string& beginning) const;
    std::string cell(int row, int col) const;
    Accessible grid() const;
    Accessible transfer_button(const std::string& caption, Milliseconds patience = kPatience) const;

    void choose(std::string_view menu, std::string_view entry) const;
    void answer(const std::string& title, const std::string& text, const std::string& button);
    void read();
    void read_to_end();
    void save_as(const std::filesystem::path& path);
    void open(const std::filesystem::path& path);

    // An image of zeros: its memories are no empty ones, so showing it makes changes.
    std::filesystem::path changing_image();

    // The stored text of a setting; "" if there is none.
    std::string setting(const std::string& key) const;

    Desktop desktop;
    Keyboard& keyboard = desktop.keyboard();
    Mouse mouse{desktop};
    std::unique_ptr<Program> radio;
    std::unique_ptr<Application> program;

  private:
    std::string title_ = kFreshCaption;
};

}  // namespace memwright::systest
