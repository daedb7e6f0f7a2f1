#pragma once

// The channel list as comma-separated text, for spreadsheets: the header "Ch,MHz,Mode,Pref,Label",
// then one line for each occupied memory, lines ended by CR LF, texts in the radio's character set.
// Nothing is escaped: a label that holds a comma, or CR LF, does not come back whole.

#include <string>
#include <vector>

#include "platform/file_dialogs.h"
#include "platform/file_system.h"
#include "table/channel_table.h"

namespace memwright {

class CsvImport;
class LineReader;

// What the user sees of an import.
class ImportDisplay {
  public:
    virtual ~ImportDisplay() = default;

    // Shows how much of the file is read, 0 to 1, and lets the user act. False if the import is to
    // end. Not called for a file that is read in one go.
    virtual bool go_on(double share) = 0;

    // The import is over, if it was shown.
    virtual void end() = 0;

    // Lines of the file were skipped: a line of text for each, with line breaks between them.
    virtual void note_skipped(const std::string& path, const std::string& lines) = 0;
};

class CsvFiles {
  public:
    CsvFiles(ChannelTable& table, MSFlexGrid& grid, FileDialogs& dialogs, FileSystem& files,
             ImportDisplay& display)
        : table_(table), grid_(grid), dialogs_(dialogs), files_(files), display_(display) {}

    void mnuExport_Click();
    void mnuImport_Click() { ImportCsv(); }
    void ImportCsv();

    // The same without their dialogs. FileError if the file cannot be written: what was there
    // stays. FileError if the file cannot be read, InputError at the first line that cannot be
    // used: the lines before it are in the table. A cancelled import changes nothing.
    void export_to(const std::string& path);
    void import_from(const std::string& path);

    // What an export of these rows holds.
    std::string as_csv(const std::vector<int>& rows) const;

  private:
    std::string exported_line(int row) const;
    void import_lines(const std::string& path);
    void read_lines(LineReader& lines, CsvImport& import);
    void take_over(const std::string& path, const CsvImport& import);

    ChannelTable& table_;
    MSFlexGrid& grid_;
    FileDialogs& dialogs_;
    FileSystem& files_;
    ImportDisplay& display_;
};

}  // namespace memwright
