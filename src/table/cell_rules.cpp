#include "table/cell_rules.h"

#include <algorithm>
#include <utility>

#include "base/number_text.h"
#include "image/frequency_text.h"
#include "table/columns.h"

namespace memwright::cell_rules {
namespace {

using namespace columns;

constexpr std::size_t kMostFrequencyCharacters = 10;
constexpr char kBackspace = 8;

struct Default {
    int col;
    const char* text;
};

constexpr Default kOfTyped[] = {{kMode, "NFM"}, {kPref, "Off"}};
constexpr Default kOfCopied[] = {
    {kMode, "NFM"},         {kPref, "Off"},           {kStep, "5 KHz"},
    {kMasked, "False"},     {kRepeaterShift, "SIMP"}, {kShift, "000000"},
    {kToneSquelch, "OFF"},  {kTone, "100.0"},         {kDcs, "023"},
    {kTransmitPower, "MAX"}};

bool is_number(int col) { return col == kFreq || col == kShift; }

bool is_control(char character) {
    constexpr unsigned char kFirstPrintable = 32, kDelete = 127;
    const auto code = static_cast<unsigned char>(character);
    return code < kFirstPrintable || code == kDelete;
}

bool takes_in_tag(char& character) {
    if (character >= 'a' && character <= 'z') {
        character = static_cast<char>(character - 'a' + 'A');
    }
    const bool letter = character >= 'A' && character <= 'Z';
    return letter || is_digit(character) || character == kBackspace ||
           std::string_view(" ()*+-/").find(character) != std::string_view::npos;
}

// A tab ends a cell, as a line end does, where a table is copied from.
std::string_view first_cell(std::string_view text) {
    constexpr std::string_view kEnds("\t\n\v\f\r\0", 6), kBlanks = " \xA0";
    text = text.substr(0, text.find_first_of(kEnds));
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// With a point for the decimal comma. Where there are points and commas, those that come first
// divide thousands.
std::string with_point(std::string text) {
    const auto first = text.find_first_of(".,");
    if (first == std::string::npos) return text;
    const char mark = text[first];
    if (text.find(mark == '.' ? ',' : '.') != std::string::npos) std::erase(text, mark);
    std::ranges::replace(text, ',', '.');
    return text;
}

void add(MSFlexGrid& grid, int row, std::span<const Default> defaults) {
    if (!grid.TextMatrix(row, kMode).empty()) return;
    for (const auto& [col, text] : defaults) grid.set_text(row, col, text);
}

}  // namespace

bool is_edited_as_text(int col) { return col < kMode || col == kShift || col == kNameless; }

std::size_t most_characters(int col) { return is_number(col) ? kMostFrequencyCharacters : 0; }

bool takes(int col, std::string_view text, char& character) {
    if (col == kTag) return takes_in_tag(character);
    if (!is_number(col)) return true;
    if (character == '.') return text.find('.') == std::string_view::npos;
    return is_digit(character) || character == kBackspace;
}

std::string pasted_text(int col, std::string_view text, std::string_view around) {
    std::string given(first_cell(text));
    if (is_number(col)) given = with_point(std::move(given));
    std::string whole(around);
    for (char character : given) {
        if (!is_control(character) && takes(col, whole, character)) whole += character;
    }
    return whole.substr(around.size());
}

std::string kept_text(int col, std::string text) {
    if (col == kTag && text.size() > layout::kLabelSize) text.resize(layout::kLabelSize);
    return text;
}

std::string cell_text(int col, std::string text) {
    return col == kFreq ? FormatFreq(text) : kept_text(col, std::move(text));
}

void add_defaults_of_typed_frequency(MSFlexGrid& grid, int row) { add(grid, row, kOfTyped); }

void add_defaults_of_copied_frequency(MSFlexGrid& grid, int row) { add(grid, row, kOfCopied); }

}  // namespace memwright::cell_rules
