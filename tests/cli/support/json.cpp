#include "cli/support/json.h"

#include <charconv>
#include <regex>
#include <stdexcept>
#include <string_view>

namespace memwright::cli_tests {
namespace {

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    Json whole() {
        check_utf8();
        Json json = value();
        blanks();
        if (place_ != text_.size()) fail("something follows");
        return json;
    }

  private:
    [[noreturn]] void fail(const std::string& why) const {
        throw std::runtime_error("JSON, byte " + std::to_string(place_) + ": " + why);
    }

    char next() const { return place_ < text_.size() ? text_[place_] : '\0'; }

    void blanks() {
        while (place_ < text_.size() &&
               std::string_view(" \t\r\n").find(text_[place_]) < std::string_view::npos) {
            ++place_;
        }
    }

    bool take(std::string_view word) {
        if (!text_.substr(place_).starts_with(word)) return false;
        place_ += word.size();
        return true;
    }

    void demand(std::string_view word) {
        if (!take(word)) fail("no " + std::string(word));
    }

    Json value() {
        blanks();
        if (next() == '{') return {object()};
        if (next() == '[') return {array()};
        if (next() == '"') return {string()};
        if (take("true")) return {true};
        if (take("false")) return {false};
        if (take("null")) return {nullptr};
        return {number()};
    }

    JsonArray array() {
        JsonArray all;
        demand("[");
        blanks();
        if (take("]")) return all;
        do {
            all.push_back(value());
            blanks();
        } while (take(","));
        demand("]");
        return all;
    }

    JsonObject object() {
        JsonObject all;
        demand("{");
        blanks();
        if (take("}")) return all;
        do {
            blanks();
            const std::string name = string();
            for (const JsonMember& known : all) {
                if (known.name == name) fail("the name " + name + " comes twice");
            }
            blanks();
            demand(":");
            all.push_back({name, value()});
            blanks();
        } while (take(","));
        demand("}");
        return all;
    }

    double number() {
        static const std::regex form(R"(^-?(0|[1-9]\d*)(\.\d+)?([eE][-+]?\d+)?)");
        std::match_results<std::string_view::const_iterator> match;
        const std::string_view rest = text_.substr(place_);
        if (!std::regex_search(rest.begin(), rest.end(), match, form)) fail("no value");
        double number = 0;
        std::from_chars(rest.data(), rest.data() + match.length(), number);
        place_ += static_cast<std::size_t>(match.length());
        return number;
    }

    std::string string() {
        demand("\"");
        std::string all;
        while (!take("\"")) {
            if (place_ == text_.size()) fail("the string does not end");
            if (static_cast<unsigned char>(next()) < ' ') fail("a control character in a string");
            if (take("\\")) {
                all += escaped();
            } else {
                all += text_[place_++];
            }
        }
        return all;
    }

    std::string escaped() {
        constexpr std::string_view kSigns = "\"\\/bfnrt", kMeant = "\"\\/\b\f\n\r\t";
        const auto sign = kSigns.find(next());
        if (place_ < text_.size() && sign != std::string_view::npos) {
            ++place_;
            return {kMeant[sign]};
        }
        demand("u");
        unsigned code = 0;
        const std::string_view digits = text_.substr(place_, 4);
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
        if (error != std::errc{} || end != digits.data() + 4) fail("no four digits");
        if (code >= 0x80) fail("the character could stand for itself");
        place_ += 4;
        return {static_cast<char>(code)};
    }

    // Characters of the radio's character set take at most three bytes.
    void check_utf8() {
        for (place_ = 0; place_ < text_.size();) {
            const auto lead = static_cast<unsigned char>(text_[place_]);
            const std::size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : 3;
            if ((lead >= 0x80 && lead < 0xC2) || lead > 0xEF || place_ + size > text_.size()) {
                fail("no UTF-8");
            }
            for (std::size_t i = 1; i < size; ++i) {
                if ((static_cast<unsigned char>(text_[place_ + i]) & 0xC0) != 0x80)
                    fail("no UTF-8");
            }
            place_ += size;
        }
        place_ = 0;
    }

    std::string_view text_;
    std::size_t place_ = 0;
};

}  // namespace

const Json& Json::operator[](const std::string& name) const {
    for (const JsonMember& member : object()) {
        if (member.name == name) return member.value;
    }
    throw std::runtime_error("JSON: no member " + name);
}

std::vector<std::string> Json::names() const {
    std::vector<std::string> all;
    for (const JsonMember& member : object()) all.push_back(member.name);
    return all;
}

Json read_json(const std::string& text) { return Reader(text).whole(); }

}  // namespace memwright::cli_tests
