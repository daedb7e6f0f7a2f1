// limits: shows and changes the search limits. Those that are not named stay as they are.

#include <algorithm>
#include <string_view>

#include "base/enumeration.h"
#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/json.h"
#include "cli/show_or_change.h"
#include "image/frequency_text.h"
#include "image/search_limits.h"

namespace memwright::cli {
namespace {

// A limit as it is to be.
struct Change {
    int limit = 0;
    std::string frequency;
    std::string mode;  // "" to leave it
};

Change change_from(const std::string& text) {
    const auto wrong = [&](const std::string& why) {
        return WrongUsage("\"" + text + "\": " + why);
    };
    const auto equals = text.find('=');
    Change change;
    const auto limit = whole_number(std::string_view(text).substr(0, equals));
    if (equals == std::string::npos || text.front() == '-' || !limit ||
        *limit >= layout::kSearchLimitCount) {
        throw wrong("a change is N=FREQ or N=FREQ,MODE, with N from 0 to 17.");
    }
    change.limit = *limit;
    const std::string value = text.substr(equals + 1);
    const auto comma = value.find(',');
    change.frequency = value.substr(0, comma);
    const char first = change.frequency.empty() ? ' ' : change.frequency.front();
    if ((first < '0' || first > '9') && first != '.') {
        throw wrong("\"" + change.frequency + "\" is no frequency in MHz, such as 145.5.");
    }
    if (comma == std::string::npos) return change;
    change.mode = value.substr(comma + 1);
    const auto& modes = search_limit_modes();
    if (std::ranges::find(modes, change.mode) == modes.end()) {
        throw wrong("\"" + change.mode + "\" is no mode: it is " + enumeration(modes, "or") + ".");
    }
    return change;
}

void show(const ImageCodec& image, const std::string& format, Console& console) {
    std::vector<std::string> objects;
    std::string text;
    for (int limit = 0; limit < layout::kSearchLimitCount; ++limit) {
        const std::string frequency = Mem2Freq(image, layout::search_limit(limit));
        const std::string mode = RMode(image, layout::search_limit(limit));
        text += std::to_string(limit) + "=" + frequency + "," + mode + "\n";
        objects.push_back(json::object({{"limit", std::to_string(limit)},
                                        {"freq", json::string(frequency)},
                                        {"mode", json::string(mode)}}));
    }
    if (format == "json") {
        console.print_exactly(json::lines(objects) + "\n");
    } else {
        console.print(text);
    }
}

}  // namespace

Status limits(const Arguments& arguments, Session& session) {
    ShowOrChange work(arguments, session);
    Workbench& bench = work.bench;
    if (work.only_shows) {
        show(bench.store, work.format, session.console);
        return kDone;
    }
    std::vector<Change> changes;
    for (const std::string& text : work.changes) changes.push_back(change_from(text));
    for (Change& change : changes) {
        const int record = layout::search_limit(change.limit);
        WriteFreq(bench.store, record, FormatFreq(change.frequency));
        SMode(bench.store, record, change.mode);
    }
    bench.save(work.output);
    return kDone;
}

}  // namespace memwright::cli
