#pragma once

// A second, object-shaped interface to the memory image: the operations of modVR120 and of the
// conversions beside it, and three more of its own. It holds nothing and delegates everything.

#include <string>
#include <string_view>

#include "base/number_text.h"
#include "image/blocked_ranges.h"
#include "image/frequency_text.h"
#include "image/mod_vr120.h"

namespace memwright {

class clsVr120 {
  public:
    explicit clsVr120(modVR120& store) : store_(store) {}

    void OpenVR120(const std::string& FilePath) { store_.OpenVR120(FilePath); }
    bool FileExists(const std::string& fpath) const noexcept { return store_.FileExists(fpath); }

    std::int16_t GetBit(int loffset, int BitNum70) const {
        return store_.GetBit(loffset, BitNum70);
    }
    void SetBit(int loffset, int BitNum70, int BitVal01) {
        store_.SetBit(loffset, BitNum70, BitVal01);
    }
    std::string GetMemByte(int Bank, int Memnumber) const {
        return store_.GetMemByte(Bank, Memnumber);
    }
    void SetMemByte(int Bank, int Memnumber, int byteval) {
        store_.SetMemByte(Bank, Memnumber, byteval);
    }

    std::string GetMemFreq(int Bank, int Memnumber) const {
        return store_.GetMemFreq(Bank, Memnumber);
    }
    void SetMemFreq(int Bank, int Memnumber, std::string& Freq) {
        store_.SetMemFreq(Bank, Memnumber, Freq);
    }
    std::string GetMode(int Bank, int Memnumber) const { return store_.GetMode(Bank, Memnumber); }
    void SetMode(int Bank, int Memnumber, const std::string& Mode) {
        store_.SetMode(Bank, Memnumber, Mode);
    }
    std::string GetPref(int Bank, int Memnumber) const { return store_.GetPref(Bank, Memnumber); }
    void SetPref(int Bank, int Memnumber, const std::string& Pref) {
        store_.SetPref(Bank, Memnumber, Pref);
    }
    std::string GetRXStp(int Bank, int Memnumber) const { return store_.GetRXStp(Bank, Memnumber); }
    void SetRxStp(int Bank, int Memnumber, const std::string& stp) {
        store_.SetRxStp(Bank, Memnumber, stp);
    }
    std::string GetMemTag(int Bank, int Memnumber) const {
        return store_.GetMemTag(Bank, Memnumber);
    }
    void SetMemTag(int Bank, int Memnumber, const std::string& tag) {
        store_.SetMemTag(Bank, Memnumber, tag);
    }
    void ClearMem(int Bank, int Memnumber) { store_.ClearMem(Bank, Memnumber); }

    std::string lHex(std::uint32_t lNumber) const { return memwright::lHex(lNumber); }
    std::int32_t lLng(std::string_view HexNumber) const { return memwright::lLng(HexNumber); }
    std::string Bin2Dec(std::string_view bin) const { return memwright::Bin2Dec(bin); }
    std::string Hex2Bin(std::string_view hex) const { return memwright::Hex2Bin(hex); }
    std::string Bin2Hex(std::string_view bin) const { return memwright::Bin2Hex(bin); }
    std::int16_t Mem2Row(const std::string& mem) const { return memwright::Mem2Row(mem); }
    std::string FormatFreq(std::string& Freq) const { return memwright::FormatFreq(Freq); }
    std::string CheckBlocked(const std::string& Freq) const {
        return memwright::CheckBlocked(Freq);
    }

    // Deliberate: always false, whatever the memory holds.
    bool IsMemoryValid(int Bank, int Memnumber) const;

    // The frequency text of six hexadecimal digits, with the fraction code of the given memory.
    std::string Mem2FreqB(const std::string& mem, int Bank, int Memnumber) const;

    // The digits of a frequency text. Writes the fraction code of the given memory, and no
    // frequency bytes.
    std::string Freq2MemB(const std::string& Freq, int Bank, int Memnumber);

  private:
    modVR120& store_;
};

}  // namespace memwright
