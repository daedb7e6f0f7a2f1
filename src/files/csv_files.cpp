#include "files/csv_files.h"

#include <algorithm>

#include "base/charset.h"
#include "base/error.h"
#include "files/csv_import.h"
#include "files/current_folder.h"
#include "table/columns.h"

namespace memwright {
namespace {

using namespace columns;

constexpr const char* kHeader = "Ch,MHz,Mode,Pref,Label";
constexpr const char* kLineEnd = "\r\n";

FileRequest request(const char* title, FileSystem& files) {
    return {.title = title,
            .filters = {{"CSV Files (*.csv)", "*.csv"}, kAllFiles},
            .folder = files.current_folder()};
}

// "Bank 3 - 7" is memory number "307", without zeros in front of it.
std::string memory_number(const std::string& label) {
    constexpr std::size_t kBankPart = 1, kIndexPart = 3;
    std::vector<std::string> parts(1);
    for (const char c : label) {
        if (c == ' ') {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    const std::string& index = parts.at(kIndexPart);
    return std::to_string(std::stoi(parts.at(kBankPart) + (index.size() == 1 ? "0" : "") + index));
}

// A line of a file as a message shows it: not too long, without control characters.
std::string shown(std::string text) {
    constexpr std::size_t kLongest = 120;
    const bool cut = text.size() > kLongest;
    if (cut) text.resize(kLongest);
    std::ranges::replace_if(
        text, [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
    return utf8_from_radio(text) + (cut ? " ..." : "");
}

[[noreturn]] void fail(const std::string& path, const BadLine& line) {
    throw InputError("Cannot import line " + std::to_string(line.number) + " of " + path + ": " +
                         line.cause + ".\n\n    " + shown(line.text) + "\n",
                     "The lines before it are in the table. Correct this line and import the file "
                     "again.");
}

class ImportCancelled {};

}  // namespace

void CsvFiles::mnuExport_Click() {
    const auto name = dialogs_.save(request("Save As...", files_));
    if (!name) return;
    const std::string path = with_extension(up_to_nul(*name), ".csv");
    enter_folder_of(path, files_);
    export_to(path);
}

void CsvFiles::export_to(const std::string& path) {
    table_.SaveVR120Data();
    std::vector<int> occupied;
    for (int row = 1; row < grid_.Rows(); ++row) {
        if (is_occupied(grid_.TextMatrix(row, kFreq))) occupied.push_back(row);
    }
    const std::string text = as_csv(occupied);
    files_.replace(path, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

std::string CsvFiles::as_csv(const std::vector<int>& rows) const {
    std::string text = std::string(kHeader) + kLineEnd;
    for (const int row : rows) text += exported_line(row) + kLineEnd;
    return text;
}

std::string CsvFiles::exported_line(int row) const {
    const auto cell = [&](int col) { return grid_.TextMatrix(row, col); };
    // Deliberate: nothing is escaped, not even a comma or a quote in the label.
    return memory_number(cell(kLabel)) + "," + cell(kFreq) + "," + cell(kMode) + "," +
           (cell(kPref) == "On" ? "p" : "") + ",\"" + cell(kTag) + "\"";
}

void CsvFiles::ImportCsv() {
    const auto name = dialogs_.open(request("Import CSV", files_));
    if (!name) return;
    const std::string path = up_to_nul(*name);
    enter_folder_of(path, files_);
    import_from(path);
}

void CsvFiles::import_from(const std::string& path) {
    try {
        import_lines(path);
    } catch (const ImportCancelled&) {
        return;
    }
    table_.SaveVR120Data();
    table_.ParseVR120Data();
}

void CsvFiles::import_lines(const std::string& path) {
    LineReader lines(files_.open_input(path));
    CsvImport import;
    try {
        read_lines(lines, import);
    } catch (const ImportCancelled&) {
        throw;
    } catch (const BadLine& line) {
        take_over(path, import);
        fail(path, line);
    } catch (...) {
        take_over(path, import);
        throw;
    }
    take_over(path, import);
}

void CsvFiles::read_lines(LineReader& lines, CsvImport& import) {
    const struct Shown {
        ImportDisplay& display;
        ~Shown() { display.end(); }
    } shown{display_};
    lines.chunk_read = [this](double share) {
        if (!display_.go_on(share)) throw ImportCancelled{};
    };
    lines.skip();  // the header, whatever it holds
    while (import.take_line(lines)) {
    }
}

void CsvFiles::take_over(const std::string& path, const CsvImport& import) {
    import.fill(grid_);
    if (!import.skipped().empty()) display_.note_skipped(path, import.skipped());
}

}  // namespace memwright
