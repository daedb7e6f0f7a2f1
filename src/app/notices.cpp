#include "app/notices.h"

#include <algorithm>
#include <utility>

namespace memwright {

std::string one_line(const std::string& text) {
    std::string line;
    bool gap = false;
    for (const char c : text) {
        if (c == '\r' || c == '\n') {
            gap = true;
            continue;
        }
        if (gap && !line.empty() && c != ' ' && !line.ends_with(' ')) line += ' ';
        gap = false;
        line += c;
    }
    return line;
}

void Notices::add(Notice notice) {
    if (notice.about.empty()) notice.about = notice.text;
    const auto same = std::ranges::find_if(entries_, [&](const Entry& entry) {
        return entry.waiting && entry.notice.about == notice.about &&
               entry.notice.text == notice.text && entry.notice.details == notice.details;
    });
    if (same != entries_.end()) {
        same->notice = std::move(notice);
        same->when = clock_.date_and_time();
        changed();
        return;
    }
    end_of(notice.about);
    entries_.push_back({std::move(notice), clock_.date_and_time(), true, true});
    came(entries_.back().notice);  // whoever hears of it adds none
    changed();
}

void Notices::record(Notice notice) {
    entries_.push_back({std::move(notice), clock_.date_and_time(), false, true});
    changed();
}

void Notices::withdraw(const std::string& about) {
    end_of(about);
    changed();
}

void Notices::end_of(const std::string& about) {
    for (Entry& entry : entries_) {
        if (entry.notice.about == about) entry.waiting = entry.holds = false;
    }
}

std::size_t Notices::waiting() const {
    return static_cast<std::size_t>(std::ranges::count(entries_, true, &Entry::waiting));
}

std::optional<std::size_t> Notices::current() const {
    const auto first = std::ranges::find(entries_, true, &Entry::waiting);
    if (first == entries_.end()) return std::nullopt;
    return static_cast<std::size_t>(first - entries_.begin());
}

void Notices::dismiss() {
    const auto number = current();
    if (!number) return;
    entries_[*number].waiting = false;
    changed();
}

bool Notices::can_act(std::size_t number) const {
    return number < entries_.size() && entries_[number].holds && entries_[number].notice.act;
}

void Notices::act(std::size_t number) {
    if (!can_act(number)) return;
    // What is done may bring further notices.
    const auto act = entries_[number].notice.act;
    act();
}

}  // namespace memwright
