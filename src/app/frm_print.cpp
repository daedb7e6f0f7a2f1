#include "app/frm_print.h"

#include <limits>
#include <string>

#include "base/error.h"
#include "base/number_text.h"

namespace memwright {
namespace {

void correct(TextBox& box) {
    constexpr int kFirst = frmPrint::kFirstRow, kLast = frmPrint::kLastRow;
    if (leading_number(box.text.get()) < kFirst) box.text = std::to_string(kFirst);
    if (leading_number(box.text.get()) > kLast) box.text = std::to_string(kLast);
}

bool accepts(char KeyAscii) {
    constexpr char kBackspace = 8;
    return is_digit(KeyAscii) || KeyAscii == kBackspace;
}

std::int16_t row_in(const TextBox& box) {
    const double number = leading_number(box.text.get());
    if (number > std::numeric_limits<std::int16_t>::max()) {
        throw ConversionError("\"" + box.text.get() + "\" is no row of the table: 1 to 240.");
    }
    return static_cast<std::int16_t>(number);
}

}  // namespace

frmPrint::frmPrint() {
    Option1.caption = "&All";
    Option1.selected = true;
    Option2.caption = "&Memory Range:";
    Text1.text = "1";
    Label1.caption = "to";
    Text2.text = "35";
    Command1.caption = "&OK";
    Command2.caption = "&Cancel";
    for (TextBox* box : {&Text1, &Text2}) {
        box->key_press = [](char& KeyAscii) { return accepts(KeyAscii); };
        connections_.push_back(box->focus_lost.connect([box] { correct(*box); }));
        // Whoever types a range wants it.
        connections_.push_back(box->edited.connect([this] {
            Option2.selected = true;
            Option1.selected = false;
        }));
    }
    connections_.push_back(Command1.clicked.connect([this] { Command1_Click(); }));
    connections_.push_back(Command2.clicked.connect([this] { closed(); }));
}

void frmPrint::Command1_Click() {
    if (!Option1.selected && !Option2.selected) return;
    confirmed_ = true;
    closed();
}

std::optional<frmPrint::Range> frmPrint::wanted() const {
    if (!confirmed_) return std::nullopt;
    if (Option1.selected) return Range{kFirstRow, kLastRow};
    return Range{row_in(Text1), row_in(Text2)};
}

}  // namespace memwright
