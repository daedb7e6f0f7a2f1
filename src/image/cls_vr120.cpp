#include "image/cls_vr120.h"

namespace memwright {

bool clsVr120::IsMemoryValid(int /*Bank*/, int /*Memnumber*/) const { return false; }

std::string clsVr120::Mem2FreqB(const std::string& mem, int Bank, int Memnumber) const {
    return frequency_from_digits(mem, GetRXStp(Bank, Memnumber));
}

std::string clsVr120::Freq2MemB(const std::string& Freq, int Bank, int Memnumber) {
    std::string number = Freq;
    const auto [digits, fraction] = digits_from_frequency(number);
    SetRxStp(Bank, Memnumber, fraction);
    return digits;
}

}  // namespace memwright
