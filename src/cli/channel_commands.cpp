// channels, export and import.

#include <algorithm>

#include "base/charset.h"
#include "base/printable.h"
#include "cli/commands.h"
#include "cli/json.h"
#include "cli/kept_input.h"
#include "cli/workbench.h"
#include "table/columns.h"

namespace memwright::cli {
namespace {

using namespace columns;

constexpr int kShownColumns[] = {kLabel, kTag, kFreq, kMode, kPref};

std::string as_text(const MSFlexGrid& grid, const std::vector<int>& rows) {
    constexpr std::size_t kWidths[] = {13, 8, 12, 6, 0};
    std::string text;
    const auto add = [&](int row) {
        std::string line;
        std::size_t width = 0;
        for (std::size_t i = 0; i < std::size(kShownColumns); ++i) {
            // Each byte of a cell is one character on the screen.
            const std::string& cell = grid.TextMatrix(row, kShownColumns[i]);
            line += printable_in_line(utf8_from_radio(cell));
            width = kWidths[i] > cell.size() ? kWidths[i] - cell.size() : 1;
            line += std::string(width, ' ');
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    };
    add(0);
    for (const int row : rows) add(row);
    return text;
}

std::string as_json(const MSFlexGrid& grid, const std::vector<int>& rows) {
    std::vector<std::string> objects;
    for (const int row : rows) {
        const auto cell = [&](int col) {
            return json::string(utf8_from_radio(grid.TextMatrix(row, col)));
        };
        const int memory = row - 1;
        objects.push_back(
            json::object({{"row", std::to_string(row)},
                          {"bank", std::to_string(memory / layout::kMemoriesPerBank)},
                          {"index", std::to_string(memory % layout::kMemoriesPerBank)},
                          {"tag", cell(kTag)},
                          {"freq", cell(kFreq)},
                          {"mode", cell(kMode)},
                          {"pref", cell(kPref)}}));
    }
    return json::lines(objects) + "\n";
}

}  // namespace

Status channels(const Arguments& arguments, Session& session) {
    const std::string format = arguments.choice("--format", {"text", "csv", "json"});
    Workbench bench(session.console, session.files);
    bench.open(arguments[0]);
    const MSFlexGrid& grid = bench.form.MSFlexGrid1;
    std::vector<int> rows;
    for (int row = 1; row < grid.Rows(); ++row) {
        if (arguments.has("--all") || is_occupied(grid.TextMatrix(row, kFreq))) rows.push_back(row);
    }
    if (format == "text") {
        session.console.print(as_text(grid, rows));
    } else {
        session.console.print_exactly(
            format == "json" ? as_json(grid, rows) : utf8_from_radio(bench.csv_files.as_csv(rows)));
    }
    return kDone;
}

Status export_csv(const Arguments& arguments, Session& session) {
    const std::string output = arguments.size() > 1 ? arguments[1] : kStandardStream;
    keep_input(session.files, {"IMAGE", arguments[0]}, {"CSV", output, "the channel list"});
    Workbench bench(session.console, session.files);
    bench.open(arguments[0]);
    bench.csv_files.export_to(output);
    return kDone;
}

Status import_csv(const Arguments& arguments, Session& session) {
    const std::string& image = arguments[0];
    if (image == kStandardStream && arguments[1] == kStandardStream) {
        throw WrongUsage("IMAGE and CSV cannot both be standard input.");
    }
    const std::string output = arguments.value("--output").value_or(image);
    keep_input(session.files, {"CSV", arguments[1]},
               {arguments.has("--output") ? "--output" : "CSV", output, "the image"});
    const auto lock = session.files.lock(output, {image, arguments[1]});
    Workbench bench(session.console, session.files);
    bench.open(image);
    try {
        bench.csv_files.import_from(arguments[1]);
    } catch (const InputError& error) {
        throw InputError(error.what_is_wrong() +
                         "\nNothing was written. Correct this line and import the file again.");
    }
    bench.table.SaveVR120Data();
    bench.save(output);
    return kDone;
}

}  // namespace memwright::cli
