#include "app/frm_limit_search.h"

#include "image/frequency_text.h"
#include "image/search_limits.h"

namespace memwright {
namespace {

int record(std::size_t limit) { return layout::search_limit(static_cast<int>(limit)); }

std::string element(const char* name, int index) {
    return std::string(name) + "(" + std::to_string(index) + ")";
}

}  // namespace

frmLimitSearch::frmLimitSearch(ImageCodec& image) : image_(image) {
    for (int i = 0; i < layout::kSearchLimitCount; ++i) {
        Text1.emplace_back(element("Text1", i));
        Combo1.emplace_back(element("Combo1", i));
    }
    for (std::size_t i = 0; i < Text1.size(); ++i) {
        connections_.push_back(Text1[i].focus_lost.connect([this, i] { Text1_LostFocus(i); }));
    }
    int row = 0;
    for (Label* label : row_labels()) label->caption = "L0&" + std::to_string(row++);
    Label9.caption = "L-&-";
    Command1.caption = "&OK";
    Command2.caption = "&Cancel";
    connections_.push_back(Command1.clicked.connect([this] { Command1_Click(); }));
    connections_.push_back(Command2.clicked.connect([this] { Command2_Click(); }));
    Form_Load();
}

std::vector<Label*> frmLimitSearch::row_labels() {
    return {&Label1, &Label2, &Label3, &Label4, &Label5, &Label6, &Label7, &Label8, &Label9};
}

void frmLimitSearch::Command1_Click() {
    SaveAll();
    closed();
}

void frmLimitSearch::Form_Load() {
    for (std::size_t i = 0; i < Text1.size(); ++i) {
        Text1[i].text = Mem2Freq(image_, record(i));
        Combo1[i].items = search_limit_modes();
        Combo1[i].text = RMode(image_, record(i));
    }
}

void frmLimitSearch::Text1_LostFocus(std::size_t Index) {
    std::string Freq = Text1[Index].text;
    Text1[Index].text = FormatFreq(Freq);
}

void frmLimitSearch::SaveAll() {
    for (std::size_t i = 0; i < Text1.size(); ++i) {
        WriteFreq(image_, record(i), Text1[i].text);
        SMode(image_, record(i), Combo1[i].text);
    }
}

}  // namespace memwright
