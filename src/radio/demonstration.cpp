#include "radio/demonstration.h"

#include <array>
#include <span>
#include <string>

#include "image/image_codec.h"

namespace memwright::radio {
namespace {

struct Channel {
    int number;  // within its bank
    char frequency[10];
    char mode[4];
    char label[layout::kLabelSize + 1];
    bool preferred = false;
};

constexpr Channel kAirBand[] = {
    {0, "118.100", "AM", "TOWER", true}, {1, "118.700", "AM", "TOWER2"},
    {2, "119.250", "AM", "APP N"},       {3, "120.500", "AM", "APP S"},
    {4, "121.500", "AM", "GUARD", true}, {5, "121.700", "AM", "GROUND"},
    {6, "121.900", "AM", "DELVRY"},      {8, "122.500", "AM", "GLIDER"},
    {9, "123.450", "AM", "CHAT"},        {10, "123.500", "AM", "CLUB"},
    {12, "126.025", "AM", "ATIS"},       {13, "127.875", "AM", "VOLMET"},
    {14, "128.375", "AM", "INFO"},       {16, "132.850", "AM", "RADAR"},
    {17, "135.975", "AM", "UPPER"},      {20, "243.000", "AM", "MIL GD"},
};

constexpr Channel kMarine[] = {
    {6, "156.300", "NFM", "CH 06"},         {8, "156.400", "NFM", "CH 08"},
    {9, "156.450", "NFM", "CH 09"},         {10, "156.500", "NFM", "CH 10"},
    {11, "156.550", "NFM", "VTS"},          {12, "156.600", "NFM", "PORT", true},
    {13, "156.650", "NFM", "BRIDGE"},       {14, "156.700", "NFM", "LOCK"},
    {16, "156.800", "NFM", "DISTRS", true}, {20, "161.600", "NFM", "CH 20"},
    {24, "161.800", "NFM", "COAST"},        {26, "161.900", "NFM", "CH 26"},
    {60, "160.625", "NFM", "CH 60"},        {63, "160.775", "NFM", "CH 63"},
};

constexpr Channel kWeather[] = {
    {0, "162.550", "NFM", "WX 1", true}, {1, "162.400", "NFM", "WX 2"},
    {2, "162.475", "NFM", "WX 3"},       {3, "162.425", "NFM", "WX 4"},
    {4, "162.450", "NFM", "WX 5"},       {5, "162.500", "NFM", "WX 6"},
    {6, "162.525", "NFM", "WX 7"},       {10, "137.100", "WFM", "SAT A"},
    {11, "137.6200", "WFM", "SAT B"},    {12, "137.91250", "WFM", "SAT C"},
};

constexpr Channel kTwoMetres[] = {
    {0, "144.300", "NFM", "SIMPLX"},      {1, "144.800", "NFM", "PACKET"},
    {2, "145.500", "NFM", "CALL", true},  {3, "145.51250", "NFM", "V41"},
    {4, "145.52500", "NFM", "V42"},       {5, "145.53750", "NFM", "V43"},
    {6, "145.55000", "NFM", "V44"},       {10, "145.58750", "NFM", "RV47"},
    {11, "145.600", "NFM", "RV48", true}, {12, "145.61250", "NFM", "RV49"},
    {13, "145.625", "NFM", "RV50"},       {14, "145.63750", "NFM", "RV51"},
    {18, "145.800", "NFM", "ORBIT"},      {19, "145.825", "NFM", "DIGI"},
};

constexpr Channel kSeventyCentimetres[] = {
    {0, "433.400", "NFM", "U272"},       {1, "433.450", "NFM", "U276"},
    {2, "433.500", "NFM", "CALL", true}, {3, "433.51250", "NFM", "U281"},
    {4, "433.53750", "NFM", "U283"},     {8, "438.650", "NFM", "RU692"},
    {9, "438.725", "NFM", "RU698"},      {10, "438.86250", "NFM", "RU709"},
    {11, "439.075", "NFM", "RU726"},     {12, "439.350", "NFM", "RU748"},
    {20, "1296.500", "NFM", "23 CM"},    {21, "1298.200", "NFM", "RS28"},
};

constexpr Channel kBroadcast[] = {
    {0, "88.300", "WFM", "NEWS", true}, {1, "89.700", "WFM", "CLASIC"},
    {2, "91.200", "WFM", "LOCAL"},      {3, "93.500", "WFM", "JAZZ"},
    {4, "95.800", "WFM", "TALK"},       {5, "98.100", "WFM", "ROCK", true},
    {6, "100.400", "WFM", "POP"},       {7, "102.700", "WFM", "CAMPUS"},
    {8, "105.300", "WFM", "OLDIES"},    {9, "107.900", "WFM", "TRAFIC"},
    {20, "0.567", "AM", "MW 1"},        {21, "0.999", "AM", "MW 2"},
    {22, "1.413", "AM", "MW 3"},        {30, "5.975", "AM", "49 M"},
    {31, "9.410", "AM", "31 M"},        {32, "11.780", "AM", "25 M"},
    {33, "15.245", "AM", "19 M"},
};

constexpr Channel kHandhelds[] = {
    {0, "446.00625", "NFM", "PMR 1", true}, {1, "446.01875", "NFM", "PMR 2"},
    {2, "446.03125", "NFM", "PMR 3"},       {3, "446.04375", "NFM", "PMR 4"},
    {4, "446.05625", "NFM", "PMR 5"},       {5, "446.06875", "NFM", "PMR 6"},
    {6, "446.08125", "NFM", "PMR 7"},       {7, "446.09375", "NFM", "PMR 8"},
    {16, "26.965", "AM", "CB 1"},           {17, "27.065", "AM", "CB 9"},
    {18, "27.185", "NFM", "CB 19"},         {19, "27.405", "NFM", "CB 40"},
};

constexpr Channel kTrials[] = {
    {0, "50.150", "AM", "6 M"},           {1, "74.79125", "NFM", "LOWBND"},
    {2, "223.500", "NFM", "1.25M"},       {8, "145.11250", "NFM", "PACKET"},
    {9, "433.51225", "NFM", "LINK"},      {62, "380.000", "AM", "MIL"},
    {63, "1299.000", "WFM", "TOP", true},
};

struct Bank {
    int number;
    std::span<const Channel> channels;
};

constexpr Bank kBanks[] = {
    {0, kAirBand},   {1, kMarine},    {2, kWeather}, {3, kTwoMetres}, {4, kSeventyCentimetres},
    {5, kBroadcast}, {6, kHandhelds}, {9, kTrials},
};

// Radio-wide settings that take a whole byte: the position in their list of choices.
struct Setting {
    int offset;
    std::uint8_t value;
};

constexpr Setting kSettings[] = {
    {layout::kFastStep, 1},     // 100 kHz
    {layout::kLamp, 0},         // automatic
    {layout::kBatterySave, 2},  // 3 s
    {layout::kScanResume, 4},   // 5 s
    {layout::kSearchWidth, 1},  // 10 MHz
};

// Those of one bit that are 1; the linked banks are set beside them.
constexpr layout::BitPlace kSetBits[] = {
    layout::kAmAntenna,    // bar antenna
    layout::kSearch,       // between limits
    layout::kSmartSearch,  // continues
    layout::kSMeterBeep,
};

constexpr int kLinkedBanks[] = {0, 1, 2, 3, 4, 5, 9};

// Search limits 0 to 17, of whose modes 0 means "automatic".
struct Limit {
    char frequency[10];
    std::uint8_t mode;
};

constexpr std::uint8_t kAutomatic = 0, kNarrow = 1, kWide = 2, kAm = 3;

constexpr Limit kLimits[layout::kSearchLimitCount] = {
    {"0.531", kAm},        {"1.602", kAm},           {"26.965", kAm},        {"27.405", kNarrow},
    {"76.000", kWide},     {"108.000", kWide},       {"108.000", kAm},       {"137.000", kAm},
    {"144.000", kNarrow},  {"146.000", kNarrow},     {"156.000", kNarrow},   {"162.02500", kNarrow},
    {"430.000", kNarrow},  {"440.000", kNarrow},     {"446.00625", kNarrow}, {"446.09375", kNarrow},
    {"0.100", kAutomatic}, {"1299.000", kAutomatic},
};

void store(const Channel& channel, int bank, ImageCodec& memory) {
    std::string frequency = channel.frequency;
    memory.SetMemByte(bank, channel.number, 0);
    memory.SetMemFreq(bank, channel.number, frequency);
    memory.SetMode(bank, channel.number, channel.mode);
    memory.SetPref(bank, channel.number, channel.preferred ? "On" : "Off");
    memory.SetMemTag(bank, channel.number, channel.label);
}

void store(const Limit& limit, int number, ImageCodec& memory) {
    std::string frequency = limit.frequency;
    const int record = layout::search_limit(number);
    memory.set_byte(record + layout::kFlags, limit.mode);
    memory.set_frequency(record, frequency);
}

void store_settings(ImageCodec& memory) {
    for (const auto& [offset, value] : kSettings) memory.set_byte(offset, value);
    for (const auto& [offset, bit] : kSetBits) memory.SetBit(offset, bit, 1);
    for (const int bank : kLinkedBanks) {
        memory.SetBit(layout::linked_bank(bank).offset, layout::linked_bank(bank).bit, 1);
    }
}

}  // namespace

MemoryImage demonstration_memory() {
    ImageCodec memory;
    for (int bank = 0; bank < layout::kBanks; ++bank) {
        for (int number = 0; number < layout::kMemoriesPerBank; ++number) {
            memory.ClearMem(bank, number);
        }
    }
    for (const Bank& bank : kBanks) {
        for (const Channel& channel : bank.channels) store(channel, bank.number, memory);
    }
    store_settings(memory);
    for (int i = 0; i < layout::kSearchLimitCount; ++i) store(kLimits[i], i, memory);
    return memory.MemoryImage;
}

}  // namespace memwright::radio
