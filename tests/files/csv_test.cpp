#include "files/csv_test.h"

#include <fstream>

#include "base/error.h"

namespace memwright {

using namespace columns;

void CsvTest::fill(int row, const Channel& channel) {
    grid.set_text(row, kTag, channel.tag);
    grid.set_text(row, kFreq, channel.frequency);
    grid.set_text(row, kMode, channel.mode);
    grid.set_text(row, kPref, channel.preference);
}

CsvTest::Channel CsvTest::row(int number) const {
    return {grid.TextMatrix(number, kTag), grid.TextMatrix(number, kFreq),
            grid.TextMatrix(number, kMode), grid.TextMatrix(number, kPref)};
}

std::vector<std::string> CsvTest::texts() const {
    std::vector<std::string> found;
    for (int row = 0; row < grid.Rows(); ++row) {
        for (int col = 0; col < grid.Cols(); ++col) found.push_back(grid.TextMatrix(row, col));
    }
    return found;
}

std::string CsvTest::exported(const std::string& name) {
    dialogs.names.emplace_back(folder.file(name));
    csv.mnuExport_Click();
    return text_of(name);
}

std::string CsvTest::text_of(const std::string& name) const {
    const auto bytes = folder.get(name);
    return {bytes.begin(), bytes.end()};
}

std::string CsvTest::put_text(const std::string& name, const std::string& text) const {
    std::ofstream out(folder.path() / name, std::ios::binary);
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.close();
    EXPECT_TRUE(out.good()) << "cannot write " << name;
    return folder.file(name);
}

std::string CsvTest::import_text(const std::string& text) {
    return import_file(put_text("in.csv", text));
}

std::string CsvTest::import_file(const std::string& path) {
    dialogs.names.emplace_back(path);
    try {
        csv.mnuImport_Click();
        return "imported";
    } catch (const Error& error) {
        return error.what();
    }
}

}  // namespace memwright
