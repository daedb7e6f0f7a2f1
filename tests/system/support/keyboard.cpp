#include "system/support/keyboard.h"

#include <X11/keysym.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <vector>

#include "system/support/x_display.h"

namespace memwright::systest {
namespace {

const std::map<std::string, KeySym, std::less<>>& spoken_names() {
    static const std::map<std::string, KeySym, std::less<>> names{
        {"alt", XK_Alt_L},     {"ctrl", XK_Control_L}, {"control", XK_Control_L},
        {"shift", XK_Shift_L}, {"enter", XK_Return},   {"return", XK_Return},
        {"esc", XK_Escape},    {"escape", XK_Escape},  {"space", XK_space},
        {"tab", XK_Tab},       {"delete", XK_Delete},  {"backspace", XK_BackSpace},
        {"up", XK_Up},         {"down", XK_Down},      {"left", XK_Left},
        {"right", XK_Right},   {"home", XK_Home},      {"end", XK_End},
        {"pageup", XK_Prior},  {"pagedown", XK_Next},  {"insert", XK_Insert},
        {"menu", XK_Menu},
    };
    return names;
}

std::string lower(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return result;
}

std::vector<std::string_view> split_chord(std::string_view chord) {
    std::vector<std::string_view> keys;
    while (!chord.empty()) {
        const auto plus = chord.find('+', 1);  // from 1: the key may be the plus itself
        keys.push_back(chord.substr(0, plus));
        if (plus == std::string_view::npos) break;
        chord.remove_prefix(plus + 1);
    }
    return keys;
}

// Takes the first character off a UTF-8 text.
unsigned long take_character(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    std::size_t length = 1;
    unsigned long value = lead;
    if (lead >= 0xC0) {
        length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
        value = lead & (0x7FU >> length);
    }
    if (length > text.size()) throw std::runtime_error("Cannot type a cut-off UTF-8 character");
    for (std::size_t i = 1; i < length; ++i) {
        value = (value << 6) | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    text.remove_prefix(length);
    return value;
}

KeySym symbol_of_character(unsigned long character) {
    if (character == '\n') return XK_Return;
    if (character == '\t') return XK_Tab;
    const bool latin =
        (character >= 0x20 && character <= 0x7E) || (character >= 0xA0 && character <= 0xFF);
    return latin ? character : 0x01000000UL | character;
}

}  // namespace

KeySym Keyboard::symbol_named(std::string_view name) const {
    const auto spoken = spoken_names().find(lower(name));
    if (spoken != spoken_names().end()) return spoken->second;
    if (name.size() == 1) return symbol_of_character(static_cast<unsigned char>(lower(name)[0]));
    const KeySym symbol = XStringToKeysym(std::string(name).c_str());  // "F5" and the like
    if (symbol == NoSymbol)
        throw std::runtime_error("No key is called '" + std::string(name) + "'");
    return symbol;
}

Keyboard::Key Keyboard::key_for(KeySym symbol) {
    int first = 0;
    int last = 0;
    XDisplayKeycodes(display_.get(), &first, &last);
    for (const bool shifted : {false, true}) {
        for (int code = first; code <= last; ++code) {
            const auto key = static_cast<KeyCode>(code);
            if (XkbKeycodeToKeysym(display_.get(), key, 0, shifted ? 1 : 0) == symbol) {
                return {key, shifted};
            }
        }
    }
    return {code_for(symbol), false};
}

unsigned Keyboard::code_for(KeySym symbol) {
    const auto known = added_.find(symbol);
    if (known != added_.end()) return known->second;
    int first = 0;
    int last = 0;
    XDisplayKeycodes(display_.get(), &first, &last);
    for (int code = last; code >= first; --code) {
        const auto key = static_cast<KeyCode>(code);
        bool spare = true;
        for (int level = 0; level < 4 && spare; ++level) {
            spare = XkbKeycodeToKeysym(display_.get(), key, 0, level) == NoSymbol;
        }
        for (const auto& [other, taken] : added_) spare = spare && taken != key;
        if (!spare) continue;
        std::array<KeySym, 2> symbols{symbol, symbol};
        XChangeKeyboardMapping(display_.get(), code, 2, symbols.data(), 1);
        XSync(display_.get(), False);
        added_[symbol] = key;
        return key;
    }
    throw std::runtime_error("No spare key is left for another character");
}

void Keyboard::send(unsigned code, bool down) {
    XTestFakeKeyEvent(display_.get(), code, down ? True : False, CurrentTime);
}

void Keyboard::press(std::string_view chord) {
    std::vector<unsigned> codes;
    for (const std::string_view name : split_chord(chord)) {
        const Key key = key_for(symbol_named(name));
        if (key.shifted) codes.push_back(key_for(XK_Shift_L).code);
        codes.push_back(key.code);
    }
    for (const unsigned code : codes) send(code, true);
    std::reverse(codes.begin(), codes.end());
    for (const unsigned code : codes) send(code, false);
    XSync(display_.get(), False);
}

void Keyboard::type(std::string_view text) {
    const unsigned shift = key_for(XK_Shift_L).code;
    while (!text.empty()) {
        const Key key = key_for(symbol_of_character(take_character(text)));
        if (key.shifted) send(shift, true);
        send(key.code, true);
        send(key.code, false);
        if (key.shifted) send(shift, false);
    }
    XSync(display_.get(), False);
}

}  // namespace memwright::systest
