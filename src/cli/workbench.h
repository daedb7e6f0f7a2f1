#pragma once

// The program without its window: the same controls and procedures, whose questions are answered
// from the command line.

#include <string>

#include "app/form1.h"
#include "cli/console.h"
#include "cli/stream_files.h"
#include "files/csv_files.h"
#include "files/image_files.h"
#include "image/mod_vr120.h"
#include "table/channel_table.h"

namespace memwright::cli {

// A message is said, and answered with OK; there is nobody to ask anything else.
class SaidMessages final : public MessageBox {
  public:
    explicit SaidMessages(Console& console) : console_(console) {}
    Answer show(const Message& message) override;

  private:
    Console& console_;
};

class NoFileDialogs final : public FileDialogs {
  public:
    std::optional<std::string> open(const FileRequest& /*request*/) override { return {}; }
    std::optional<std::string> save(const FileRequest& /*request*/) override { return {}; }
};

class SaidImport final : public ImportDisplay {
  public:
    explicit SaidImport(Console& console) : console_(console) {}
    bool go_on(double share) override;
    void end() override { console_.end_progress(); }
    void note_skipped(const std::string& /*path*/, const std::string& lines) override {
        console_.say(lines);
    }

  private:
    Console& console_;
};

class Workbench {
  public:
    Workbench(Console& console, StreamFiles& files);
    Workbench(const Workbench&) = delete;
    Workbench& operator=(const Workbench&) = delete;

    // Takes a file into the memory image, byte for byte. FileError if it cannot be read, InputError
    // if it is too short to be an image.
    void load(const std::string& path);

    // Opens a file as the window does: the table shows it.
    void open(const std::string& path);

    // What a loaded file holds with the image as it is now.
    Bytes file_bytes() const;

    // Writes a loaded file with the image as it is now; what the file holds behind the image
    // follows it.
    void save(const std::string& path);

  private:
    Bytes bytes_of_image(const std::string& path);

    StreamFiles& files_;
    SaidMessages messages_;
    NoFileDialogs dialogs_;
    SaidImport import_display_;
    Bytes rest_;  // of the loaded file, behind the image

  public:
    Form1 form;
    modVR120 store;
    ChannelTable table;
    ImageFiles image_files;
    CsvFiles csv_files;
};

}  // namespace memwright::cli
