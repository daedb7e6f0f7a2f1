// The fields of a channel memory: frequency, fraction code, mode, preference and label. The first
// two stand in the search limits' records as well.

#include "base/number_text.h"
#include "image/image_codec.h"

namespace memwright {

std::string ImageCodec::frequency_digits(int loffset) const {
    std::string digits;
    for (int i = 0; i < layout::kFrequencySize; ++i) digits += lHex(MemoryImage.get(loffset + i));
    return digits;
}

std::string ImageCodec::fraction_code(int loffset) const {
    const int flags = loffset + layout::kFlags;
    const std::string code = std::to_string(GetBit(flags, layout::kFraction75Bit)) +
                             std::to_string(GetBit(flags, layout::kFraction50Bit)) +
                             std::to_string(GetBit(flags, layout::kFraction25Bit));
    if (code == "010") return "50";
    if (code == "001") return "25";
    if (code == "100") return "75";
    return "";
}

void ImageCodec::set_fraction_code(int loffset, const std::string& stp) {
    const int flags = loffset + layout::kFlags;
    SetBit(flags, layout::kFraction75Bit, stp == "75" ? 1 : 0);
    SetBit(flags, layout::kFraction50Bit, stp == "50" ? 1 : 0);
    SetBit(flags, layout::kFraction25Bit, stp == "25" ? 1 : 0);
}

void ImageCodec::set_frequency(int loffset, std::string& Freq) {
    const auto [digits, fraction] = digits_from_frequency(Freq);
    set_fraction_code(loffset, fraction);
    // 1600 MHz and more give more than six digits: the last byte is always the last two of them.
    const auto byte = [](const std::string& text) { return static_cast<std::uint8_t>(lLng(text)); };
    set_byte(loffset, byte(digits.substr(0, 2)));
    set_byte(loffset + 1, byte(digits.substr(2, 2)));
    set_byte(loffset + 2, byte(digits.substr(digits.size() - 2)));
}

std::string ImageCodec::GetMemFreq(int Bank, int Memnumber) const {
    const int first = record(Bank, Memnumber);
    return frequency_from_digits(frequency_digits(first), fraction_code(first));
}

void ImageCodec::SetMemFreq(int Bank, int Memnumber, std::string& Freq) {
    set_frequency(record(Bank, Memnumber), Freq);
}

std::string ImageCodec::GetRXStp(int Bank, int Memnumber) const {
    return fraction_code(record(Bank, Memnumber));
}

void ImageCodec::SetRxStp(int Bank, int Memnumber, const std::string& stp) {
    set_fraction_code(record(Bank, Memnumber), stp);
}

std::string ImageCodec::GetMode(int Bank, int Memnumber) const {
    const int flags = record(Bank, Memnumber) + layout::kFlags;
    const std::string code = std::to_string(GetBit(flags, layout::kModeHighBit)) +
                             std::to_string(GetBit(flags, layout::kModeLowBit));
    if (code == "01") return "NFM";
    if (code == "10") return "WFM";
    if (code == "11") return "AM";
    return "";
}

void ImageCodec::SetMode(int Bank, int Memnumber, const std::string& Mode) {
    if (Mode != "NFM" && Mode != "WFM" && Mode != "AM") return;
    const int flags = record(Bank, Memnumber) + layout::kFlags;
    SetBit(flags, layout::kModeHighBit, Mode == "NFM" ? 0 : 1);
    SetBit(flags, layout::kModeLowBit, Mode == "WFM" ? 0 : 1);
}

std::string ImageCodec::GetPref(int Bank, int Memnumber) const {
    const int flags = record(Bank, Memnumber) + layout::kFlags;
    return GetBit(flags, layout::kPreferenceBit) == 0 ? "Off" : "On";
}

void ImageCodec::SetPref(int Bank, int Memnumber, const std::string& Pref) {
    if (Pref != "Off" && Pref != "On") return;
    const int flags = record(Bank, Memnumber) + layout::kFlags;
    SetBit(flags, layout::kPreferenceBit, Pref == "On" ? 1 : 0);
}

std::string ImageCodec::GetMemTag(int Bank, int Memnumber) const {
    const int first = label(Bank, Memnumber);
    std::string tag;
    for (int i = 0; i < layout::kLabelSize; ++i) {
        tag += static_cast<char>(MemoryImage.get(first + i));
    }
    while (tag.ends_with(' ')) tag.pop_back();
    return tag;
}

void ImageCodec::SetMemTag(int Bank, int Memnumber, const std::string& tag) {
    const int first = label(Bank, Memnumber);
    std::string padded = tag;
    padded.resize(layout::kLabelSize, ' ');
    for (int i = 0; i < layout::kLabelSize; ++i) {
        set_byte(first + i, static_cast<std::uint8_t>(padded[static_cast<std::size_t>(i)]));
    }
}

}  // namespace memwright
