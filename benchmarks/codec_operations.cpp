// The codec, an operation on every one of the 640 memories in a run.

#include <memory>
#include <vector>

#include "base/number_text.h"
#include "image/blocked_ranges.h"
#include "occupied_memory.h"
#include "operation.h"

namespace memwright::benchmarks {
namespace {

class Image {
  public:
    Image() { occupy(store); }

    fakes::MemoryFiles files;
    modVR120 store{files};
};

using OnMemory = void (*)(modVR120& store, int bank, int number);
using OnText = void (*)(const std::string& text);

Operation on_memories(const char* name, OnMemory operation) {
    return {std::string("codec/") + name, layout::kMemories, true, [operation] {
                return [operation, image = std::make_shared<Image>()] {
                    for_each_memory(
                        [&](int bank, int number) { operation(image->store, bank, number); });
                };
            }};
}

std::vector<std::string> frequencies() {
    std::vector<std::string> texts;
    for (int i = 0; i < layout::kMemories; ++i) texts.push_back(Channel(i).frequency);
    return texts;
}

std::vector<std::string> numbers(std::string (*text)(std::uint32_t)) {
    std::vector<std::string> texts;
    for (std::uint32_t i = 0; i < layout::kMemories; ++i) texts.push_back(text(i % 256));
    return texts;
}

std::string memory_number(std::uint32_t number) { return std::to_string(number); }
std::string binary(std::uint32_t number) { return Hex2Bin(lHex(number)); }

Operation on_texts(const char* name, std::vector<std::string> texts, OnText operation) {
    return {std::string("codec/") + name, layout::kMemories, true,
            [operation, texts = std::move(texts)] {
                return [operation, texts] {
                    for (const std::string& text : texts) operation(text);
                };
            }};
}

int record(int bank, int number) {
    return layout::kRecordSize * (bank * layout::kMemoriesPerBank + number);
}

}  // namespace

void add_codec(Operations& operations) {
    using Store = modVR120&;
    const auto memories = [&](const char* name, OnMemory operation) {
        operations.push_back(on_memories(name, operation));
    };
    memories("GetBit", [](Store s, int b, int n) { use(s.GetBit(record(b, n) + 3, n % 8)); });
    memories("SetBit", [](Store s, int b, int n) { s.SetBit(record(b, n) + 3, n % 8, n % 2); });
    memories("GetMemByte", [](Store s, int b, int n) { use(s.GetMemByte(b, n)); });
    memories("SetMemByte", [](Store s, int b, int n) { s.SetMemByte(b, n, n); });
    memories("GetMemFreq", [](Store s, int b, int n) { use(s.GetMemFreq(b, n)); });
    memories("SetMemFreq", [](Store s, int b, int n) {
        std::string frequency = "145.58750";
        s.SetMemFreq(b, n, frequency);
    });
    memories("GetMode", [](Store s, int b, int n) { use(s.GetMode(b, n)); });
    memories("SetMode", [](Store s, int b, int n) { s.SetMode(b, n, "WFM"); });
    memories("GetPref", [](Store s, int b, int n) { use(s.GetPref(b, n)); });
    memories("SetPref", [](Store s, int b, int n) { s.SetPref(b, n, "On"); });
    memories("GetRXStp", [](Store s, int b, int n) { use(s.GetRXStp(b, n)); });
    memories("SetRxStp", [](Store s, int b, int n) { s.SetRxStp(b, n, "75"); });
    memories("GetMemTag", [](Store s, int b, int n) { use(s.GetMemTag(b, n)); });
    memories("SetMemTag", [](Store s, int b, int n) { s.SetMemTag(b, n, "TOWER"); });
    memories("ClearMem", [](Store s, int b, int n) { s.ClearMem(b, n); });
    memories("lHex", [](Store, int, int n) { use(lHex(static_cast<std::uint32_t>(n))); });

    const auto texts = [&](const char* name, std::vector<std::string> given, OnText operation) {
        operations.push_back(on_texts(name, std::move(given), operation));
    };
    texts("lLng", numbers(lHex), [](const std::string& text) { use(lLng(text)); });
    texts("Hex2Bin", numbers(lHex), [](const std::string& text) { use(Hex2Bin(text)); });
    texts("Bin2Hex", numbers(binary), [](const std::string& text) { use(Bin2Hex(text)); });
    texts("Bin2Dec", numbers(binary), [](const std::string& text) { use(Bin2Dec(text)); });
    texts("Mem2Row", numbers(memory_number), [](const std::string& text) { use(Mem2Row(text)); });
    texts("FormatFreq", frequencies(), [](const std::string& text) {
        std::string typed = text;
        use(FormatFreq(typed));
    });
    texts("CheckBlocked", frequencies(), [](const std::string& text) { use(CheckBlocked(text)); });
}

}  // namespace memwright::benchmarks
