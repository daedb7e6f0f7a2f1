#pragma once

// CSV export and import over a table of their own, in a folder of their own.

#include <functional>
#include <string>
#include <vector>

#include "files/csv_files.h"
#include "files/image_files_test.h"

namespace memwright {

// What an import shows, and a user who can end it.
class RecordedImport final : public ImportDisplay {
  public:
    std::vector<double> shares;
    std::vector<std::string> notes;
    int ends = 0;
    std::function<bool()> user_goes_on;  // always, if there is none

    bool go_on(double share) override {
        shares.push_back(share);
        return !user_goes_on || user_goes_on();
    }
    void end() override { ++ends; }
    void note_skipped(const std::string& /*path*/, const std::string& lines) override {
        notes.push_back(lines);
    }
};

class CsvTest : public ImageFilesTest {
  protected:
    static constexpr const char* kHeader = "Ch,MHz,Mode,Pref,Label\r\n";

    // The cells of a row that a line of the file stands for.
    struct Channel {
        std::string tag;
        std::string frequency;
        std::string mode = "NFM";
        std::string preference = "Off";

        friend bool operator==(const Channel&, const Channel&) = default;
        friend std::ostream& operator<<(std::ostream& out, const Channel& channel) {
            return out << channel.tag << " | " << channel.frequency << " | " << channel.mode
                       << " | " << channel.preference;
        }
    };

    CsvTest() { mnuSaveOnly.enabled = true; }

    void fill(int row, const Channel& channel);
    Channel row(int number) const;

    // Every text of the grid.
    std::vector<std::string> texts() const;

    // Runs the export into this file; gives what the file holds then.
    std::string exported(const std::string& name = "out.csv");
    std::string text_of(const std::string& name) const;

    std::string put_text(const std::string& name, const std::string& text) const;

    // Imports a file of this text. It gives "imported" or the text of the error.
    std::string import_text(const std::string& text);
    std::string import_file(const std::string& path);

    // The same for a file of the header and these lines.
    std::string import_lines(const std::string& lines) { return import_text(kHeader + lines); }

    RecordedImport display;
    CsvFiles csv{table, grid, dialogs, files, display};
};

}  // namespace memwright
