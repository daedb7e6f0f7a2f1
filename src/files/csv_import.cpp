#include "files/csv_import.h"

#include <algorithm>

#include "base/charset.h"
#include "image/blocked_ranges.h"
#include "image/frequency_text.h"
#include "image/layout.h"
#include "table/cell_rules.h"

namespace memwright {
namespace {

enum Field : std::size_t {
    kChannelField,
    kMegahertzField,
    kModeField,
    kPrefField,
    kLabelField,
    kFields
};

using Fields = std::array<std::string_view, kFields>;

// The first five fields; how many there are in all may be more or less.
std::size_t split(std::string_view line, Fields& fields) {
    std::size_t count = 0;
    for (std::size_t start = 0; start <= line.size(); ++count) {
        const std::size_t end = std::min(line.find(',', start), line.size());
        if (count < kFields) fields[count] = line.substr(start, end - start);
        start = end + 1;
    }
    return count;
}

std::string label_of(std::string_view field) {
    const bool quoted = field.size() >= 2 && field.front() == '"' && field.back() == '"';
    if (quoted) field = field.substr(1, field.size() - 2);
    return cell_rules::kept_text(columns::kTag, std::string(field));
}

// The field of a quoted label at the end of a line; empty if there is none.
std::string_view label_at_end(std::string_view line) {
    Fields fields;
    const bool quoted = split(line, fields) == kFields && fields[kLabelField].starts_with('"');
    return quoted ? fields[kLabelField] : std::string_view();
}

// A field as a message shows it.
std::string shown(std::string_view field) {
    constexpr std::size_t kLongest = 12;
    const bool cut = field.size() > kLongest;
    return utf8_from_radio(field.substr(0, kLongest)) + (cut ? "..." : "");
}

}  // namespace

bool CsvImport::take_line(LineReader& lines) {
    const auto line = lines.peek();
    if (!line) return false;
    if (line->feed_only && !label_at_end(line->text).empty()) {
        take_with_feeds(lines);
    } else {
        take(line->text, line->number);
        lines.skip();
    }
    return true;
}

void CsvImport::take(std::string_view line, std::size_t number) {
    const auto bad = [&](const std::string& cause) {
        return BadLine{number, std::string(line), cause};
    };
    Fields fields;
    const std::size_t count = split(line, fields);
    if (line.empty()) throw bad("it is empty");
    if (count < kFields) {
        throw bad("it has " + std::to_string(count) + (count == 1 ? " field" : " fields") +
                  " instead of five: Ch,MHz,Mode,Pref,Label");
    }
    const std::string channel(fields[kChannelField]);
    const std::string frequency(fields[kMegahertzField]);
    const int row = Mem2Row(channel);
    if (CheckBlocked(frequency) != frequency) {
        note_skipped(frequency, number);
        return;
    }
    if (row >= columns::kRows) {
        throw bad("channel " + shown(channel) +
                  " is no memory: banks are 0 to 9, memories 0 to 63");
    }
    // Deliberate: only a small "p" is a preference.
    channels_[static_cast<std::size_t>(row)] = {frequency, std::string(fields[kModeField]),
                                                label_of(fields[kLabelField]),
                                                fields[kPrefField] == "p"};
}

void CsvImport::note_skipped(const std::string& frequency, std::size_t number) {
    if (!skipped_.empty()) skipped_ += "\r\n";
    skipped_ += "Line " + std::to_string(number) + " was skipped: the radio cannot receive " +
                shown(frequency) + " MHz.";
}

// A line feed may stand in a label. What comes after it then is no line by itself, so lines are put
// together only where reading them one by one would fail.
void CsvImport::take_with_feeds(LineReader& lines) {
    const std::vector<Piece> pieces = pieces_of_label(lines);
    std::string line = pieces.front().text;
    std::string joined = line;
    std::size_t used = 1;
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        joined += '\n' + pieces[i].text;
        if (!joined.ends_with('"')) continue;
        line = joined;
        used = i + 1;
    }
    take(line, pieces.front().number);
    if (used < pieces.size()) take(pieces[used].text, pieces[used].number);
}

// The next line, and those behind it that can be no lines of their own but the rest of its label.
std::vector<CsvImport::Piece> CsvImport::pieces_of_label(LineReader& lines) {
    constexpr std::size_t kLongest = layout::kLabelSize + 2;  // with its quotes
    std::vector<Piece> pieces;
    std::size_t length = 0;
    bool more = true;
    while (more) {
        const auto line = lines.peek();
        if (!line) break;
        const auto part = pieces.empty() ? label_at_end(line->text) : line->text;
        length += part.size() + (pieces.empty() ? 0 : 1);
        if (!pieces.empty() && (length > kLongest || part.find(',') != part.npos)) break;
        more = line->feed_only;
        pieces.push_back({std::string(line->text), line->number});
        lines.skip();
    }
    return pieces;
}

void CsvImport::fill(MSFlexGrid& grid) const {
    using namespace columns;
    const MSFlexGrid::Batch batch(grid);
    for (int row = 1; row < kRows; ++row) {
        const auto& channel = channels_[static_cast<std::size_t>(row)];
        if (!channel) continue;
        grid.set_text(row, kFreq, channel->frequency);
        grid.set_text(row, kMode, channel->mode);
        grid.set_text(row, kPref, channel->preferred ? "On" : "Off");
        grid.set_text(row, kTag, channel->label);
    }
}

}  // namespace memwright
