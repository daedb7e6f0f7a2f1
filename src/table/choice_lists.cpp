#include "table/choice_lists.h"

#include <algorithm>
#include <map>

#include "table/columns.h"

namespace memwright {
namespace {

using Lists = std::map<int, std::vector<std::string>>;

const Lists kLists = {
    {columns::kMode, {"NFM", "WFM", "AM"}},
    {columns::kPref, {"Off", "On"}},
    // Deliberate: 9 KHz stands last.
    {columns::kStep,
     {"5 KHz", "10 KHz", "12.5 KHz", "15 KHz", "20 KHz", "25 KHz", "50 KHz", "100 KHz", "9 KHz"}},
    {columns::kMasked, {"True", "False"}},
    {columns::kRepeaterShift, {"SIMP", "-RPT", "+RPT", "DUP"}},
    {columns::kToneSquelch, {"OFF", "TONE", "TSQL", "DCS"}},
    {columns::kTone,
     {"67.0",  "69.3",  "71.9",  "74.4",  "77.0",  "79.7",  "82.5",  "85.4",  "88.5",  "91.5",
      "94.8",  "97.4",  "100.0", "103.5", "107.2", "110.9", "114.8", "118.8", "123.0", "127.3",
      "131.8", "136.5", "141.3", "146.2", "151.4", "156.7", "162.2", "167.9", "173.8", "179.9",
      "186.2", "189.9", "192.8", "203.5", "210.7", "218.1", "225.7", "233.6", "241.8", "250.3"}},
    {columns::kDcs,
     {"023", "025", "026", "031", "032", "036", "043", "047", "051", "053", "054", "065", "071",
      "072", "073", "074", "114", "115", "116", "122", "125", "131", "132", "134", "143", "145",
      "152", "155", "156", "162", "165", "172", "174", "205", "212", "223", "225", "226", "243",
      "244", "245", "246", "251", "252", "255", "261", "263", "265", "266", "271", "274", "306",
      "311", "315", "325", "331", "332", "343", "346", "351", "356", "364", "365", "371", "411",
      "412", "413", "423", "431", "432", "445", "446", "452", "454", "455", "462", "464", "465",
      "466", "503", "506", "516", "523", "526", "532", "546", "565", "606", "612", "624", "627",
      "631", "632", "654", "662", "664", "703", "712", "723", "731", "732", "734", "743", "754"}},
    {columns::kTransmitPower, {"L1", "L2", "L3", "MAX"}},
    {columns::kDeviation, {"NORM", "HALF"}}};

char capital(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

bool begins(std::string_view text, std::string_view beginning) {
    return text.size() >= beginning.size() &&
           std::ranges::equal(text.substr(0, beginning.size()), beginning, {}, capital, capital);
}

}  // namespace

const std::vector<std::string>& choices_of(int column) {
    static const std::vector<std::string> kNone;
    const auto list = kLists.find(column);
    return list == kLists.end() ? kNone : list->second;
}

std::string completed(const std::vector<std::string>& choices, std::string_view typed) {
    if (typed.empty()) return {};
    const std::string* found = nullptr;
    for (const std::string& choice : choices) {
        if (!begins(choice, typed)) continue;
        if (choice.size() == typed.size()) return choice;
        if (found == nullptr) found = &choice;
    }
    return found == nullptr ? std::string() : *found;
}

}  // namespace memwright
