#include "image/search_limits.h"

#include "image/frequency_text.h"

namespace memwright {

const std::vector<std::string>& search_limit_modes() {
    static const std::vector<std::string> modes = {"AUTO", "NFM", "WFM", "AM"};
    return modes;
}

std::string Mem2Freq(const ImageCodec& image, int loffset) {
    return limit_from_digits(image.frequency_digits(loffset), image.fraction_code(loffset));
}

std::string RMode(const ImageCodec& image, int loffset) {
    const int flags = loffset + layout::kFlags;
    const bool high = image.GetBit(flags, layout::kModeHighBit) == 1;
    const bool low = image.GetBit(flags, layout::kModeLowBit) == 1;
    if (high) return low ? "AM" : "WFM";
    return low ? "NFM" : "AUTO";
}

void SMode(ImageCodec& image, int loffset, const std::string& Mode) {
    if (Mode != "AUTO" && Mode != "NFM" && Mode != "WFM" && Mode != "AM") return;
    const int flags = loffset + layout::kFlags;
    image.SetBit(flags, layout::kModeHighBit, Mode == "WFM" || Mode == "AM" ? 1 : 0);
    image.SetBit(flags, layout::kModeLowBit, Mode == "NFM" || Mode == "AM" ? 1 : 0);
}

void WriteFreq(ImageCodec& image, int loffset, const std::string& Freq) {
    std::string number = Freq;
    image.set_frequency(loffset, number);
}

}  // namespace memwright
