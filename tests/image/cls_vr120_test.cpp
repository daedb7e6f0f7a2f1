#include "image/cls_vr120.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "base/error.h"
#include "image/image_store.h"
#include "support/temporary_folder.h"

namespace memwright {
namespace {

// The result of an operation as text, or the kind of its error.
std::string outcome(const std::function<std::string()>& operation) {
    try {
        return "gave " + operation();
    } catch (const IndexError& error) {
        return std::string("index error ") + error.what();
    } catch (const ConversionError& error) {
        return std::string("conversion error ") + error.what();
    }
}

// The arguments of a round; each operation takes those that it knows.
struct Arguments {
    int offset, bit, bit_value, bank, number, byte;
    std::uint32_t any_number;
    std::string text, frequency, mode, preference, fraction, hex, bin;
};

Arguments random_arguments(SeededRandom& random) {
    const auto one_of = [&](const std::vector<std::string>& texts) {
        return texts[static_cast<std::size_t>(
            random.between(0, static_cast<int>(texts.size()) - 1))];
    };
    Arguments a;
    a.offset = random.between(-3, 7395);
    a.bit = random.between(-1, 8);
    a.bit_value = random.between(0, 9) == 0 ? random.between(-5, 20) : random.between(0, 1);
    a.bank = random.between(0, 40) == 0 ? random.between(-20, 60) : random.between(0, 9);
    a.number = random.between(0, 63);
    a.byte = random.between(-2, 258);
    a.any_number = static_cast<std::uint32_t>(random.between(0, 70000));
    a.text = random.text("AZaz09 .\x80\xFF", 8);
    a.frequency =
        random.text("0123456789", 4) + random.text(".", 2) + random.text("0123456789x", 7);
    a.mode = one_of({"NFM", "WFM", "AM", "nfm", "AUTO", ""});
    a.preference = one_of({"On", "Off", "on", ""});
    a.fraction = one_of({"25", "50", "75", "00", ""});
    a.hex = random.text("0123456789ABCDEFabcdefG", 4);
    a.bin = random.text("0011 ", 9);
    return a;
}

// Every operation that both interfaces have, on either.
template <class Store>
std::vector<std::function<std::string()>> operations_on_bytes(Store& store, const Arguments& a) {
    return {
        [&] { return std::to_string(store.GetBit(a.offset, a.bit)); },
        [&] {
            store.SetBit(a.offset, a.bit, a.bit_value);
            return "";
        },
        [&] { return store.GetMemByte(a.bank, a.number); },
        [&] {
            store.SetMemByte(a.bank, a.number, a.byte);
            return "";
        },
        [&] {
            store.ClearMem(a.bank, a.number);
            return "";
        },
    };
}

template <class Store>
std::vector<std::function<std::string()>> operations_on_fields(Store& store, const Arguments& a) {
    return {
        [&] {
            std::string f = a.frequency;
            store.SetMemFreq(a.bank, a.number, f);
            return f;
        },
        [&] { return store.GetMemFreq(a.bank, a.number); },
        [&] {
            store.SetMode(a.bank, a.number, a.mode);
            return "";
        },
        [&] { return store.GetMode(a.bank, a.number); },
        [&] {
            store.SetPref(a.bank, a.number, a.preference);
            return "";
        },
        [&] { return store.GetPref(a.bank, a.number); },
        [&] {
            store.SetRxStp(a.bank, a.number, a.fraction);
            return "";
        },
        [&] { return store.GetRXStp(a.bank, a.number); },
        [&] {
            store.SetMemTag(a.bank, a.number, a.text);
            return "";
        },
        [&] { return store.GetMemTag(a.bank, a.number); },
    };
}

TEST(SecondInterface, does_to_the_image_what_the_first_does) {
    SeededRandom random;
    ImageStore first;
    ImageStore second;
    first.fill(random);
    second->set_image(first->MemoryImage);
    clsVr120 object(*second);
    for (int round = 0; round < 400; ++round) {
        const Arguments a = random_arguments(random);
        for (const bool fields : {false, true}) {
            const auto of_module =
                fields ? operations_on_fields(*first, a) : operations_on_bytes(*first, a);
            const auto of_object =
                fields ? operations_on_fields(object, a) : operations_on_bytes(object, a);
            for (std::size_t i = 0; i < of_module.size(); ++i) {
                ASSERT_EQ(outcome(of_object[i]), outcome(of_module[i])) << fields << " " << i;
                ASSERT_EQ(second->MemoryImage, first->MemoryImage) << fields << " " << i;
            }
        }
    }
}

TEST(SecondInterface, converts_as_the_functions_beside_the_first_do) {
    SeededRandom random;
    ImageStore store;
    const clsVr120 object(*store);
    for (int round = 0; round < 1000; ++round) {
        const Arguments a = random_arguments(random);
        ASSERT_EQ(object.lHex(a.any_number), lHex(a.any_number));
        ASSERT_EQ(object.Hex2Bin(a.hex), Hex2Bin(a.hex));
        ASSERT_EQ(object.Bin2Hex(a.bin), Bin2Hex(a.bin));
        ASSERT_EQ(outcome([&] { return std::to_string(object.lLng(a.hex)); }),
                  outcome([&] { return std::to_string(lLng(a.hex)); }));
        ASSERT_EQ(outcome([&] { return object.Bin2Dec(a.bin); }),
                  outcome([&] { return Bin2Dec(a.bin); }));
        ASSERT_EQ(object.Mem2Row(a.text), Mem2Row(a.text));
        ASSERT_EQ(object.CheckBlocked(a.frequency), CheckBlocked(a.frequency));
        std::string of_object = a.frequency;
        std::string of_function = a.frequency;
        ASSERT_EQ(object.FormatFreq(of_object), FormatFreq(of_function));
        ASSERT_EQ(of_object, of_function);
    }
}

TEST(SecondInterface, opens_a_file_into_the_same_image) {
    const TemporaryFolder folder;
    ImageStore store;
    clsVr120 object(*store);
    const std::string path = folder.put("image.120", Bytes(7392, 0x5A));
    EXPECT_TRUE(object.FileExists(path));
    EXPECT_FALSE(object.FileExists(folder.file("missing.120")));
    object.OpenVR120(path);
    EXPECT_EQ(store->MemoryImage.get(0), 0x5A);
    EXPECT_EQ(store->MemoryImage.get(7391), 0x5A);
}

TEST(SecondInterface, calls_no_memory_valid) {
    ImageStore store;
    const clsVr120 object(*store);
    std::string Freq = "145.5";
    store->SetMemFreq(0, 0, Freq);
    store->ClearMem(0, 1);
    for (int index = 0; index < 640; ++index) {
        EXPECT_FALSE(object.IsMemoryValid(index / 64, index % 64));
    }
    EXPECT_FALSE(object.IsMemoryValid(-1, 1000));
}

TEST(SecondInterface, Mem2FreqB_reads_digits_with_the_fraction_of_a_memory) {
    ImageStore store;
    const clsVr120 object(*store);
    store->SetRxStp(3, 4, "50");
    EXPECT_EQ(object.Mem2FreqB("145512", 3, 4), "145.51250");
    EXPECT_EQ(object.Mem2FreqB("145512", 3, 5), "145.51200");
    EXPECT_EQ(object.Mem2FreqB("D00000", 3, 5), "1300.00000");
    EXPECT_EQ(object.Mem2FreqB("012345", 3, 5), "12.34500");
    EXPECT_EQ(object.Mem2FreqB("145100", 3, 4), "145.15000");
    EXPECT_EQ(object.Mem2FreqB("FFFFFF", 3, 4), "");
}

TEST(SecondInterface, Mem2FreqB_reads_as_the_record_with_these_digits_does) {
    SeededRandom random;
    ImageStore store;
    const clsVr120 object(*store);
    for (int round = 0; round < 2000; ++round) {
        std::string digits;
        for (int i = 0; i < 4; ++i) {
            const std::uint8_t byte = random.byte();
            store->set_byte(i, byte);
            if (i < 3) digits += lHex(byte);
        }
        ASSERT_EQ(object.Mem2FreqB(digits, 0, 0), store->GetMemFreq(0, 0)) << digits;
    }
}

TEST(SecondInterface, Freq2MemB_gives_digits_and_stores_the_fraction_alone) {
    ImageStore store;
    clsVr120 object(*store);
    store.put_record(64 + 2, {0x11, 0x22, 0x33, 0xFF});
    EXPECT_EQ(object.Freq2MemB("145.5125", 1, 2), "145512");
    EXPECT_EQ(store.record(64 + 2), (std::array<int, 4>{0x11, 0x22, 0x33, 0x5F}));
    EXPECT_EQ(object.Freq2MemB("1300", 1, 2), "D00000");
    EXPECT_EQ(store.record(64 + 2), (std::array<int, 4>{0x11, 0x22, 0x33, 0x1F}));
    EXPECT_EQ(object.Freq2MemB("45.5", 1, 2), "045500");
    EXPECT_EQ(object.Freq2MemB("1150.02575", 1, 2), "B50025");
    EXPECT_EQ(object.Freq2MemB("", 1, 2), "000000");
}

}  // namespace
}  // namespace memwright
