// The channel list as a CSV file, out of and into the built program, with keys alone.

#include <gmock/gmock.h>

#include <fstream>

#include "image/mod_vr120.h"
#include "native/file_system.h"
#include "radio/demonstration.h"
#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

using testing::ElementsAreArray;
using testing::Eq;

constexpr const char* kHeader = "Ch,MHz,Mode,Pref,Label\r\n";

class SystemCsv : public MemwrightDesktop {
  protected:
    void SetUp() override {
        image_ = through_the_table(radio::demonstration_memory());
        write_file(file("mem.120"), image_.bytes());
        start({file("mem.120").string()});
        wait_for_caption(std::string(kTitle) + " - " + file("mem.120").string());
    }

    void choose_by_keys(const char* letter, std::string_view entry) {
        main();
        keyboard.press("Alt+F");
        program->find({.role = Role::kMenuItem, .name = std::string(entry), .showing = true});
        keyboard.press(letter);
    }
    void enter_by_keys(std::string_view title, const std::string& name) {
        const Accessible field =
            program->dialog(title).find({.role = Role::kText, .showing = true});
        field.wait_for(State::kFocused);
        keyboard.type(file(name).string());
        expect_eventually([&] { return field.text(); }, Eq(file(name).string()));
        keyboard.press("Enter");
    }
    void export_to(const std::string& name) {
        choose_by_keys("e", "Export To .CSV...");
        enter_by_keys("Save As...", name);
    }
    void import_from(const std::string& name) {
        choose_by_keys("i", "Import From .CSV...");
        enter_by_keys("Import CSV", name);
    }
    void put_text(const std::string& name, const std::string& text) {
        std::ofstream(file(name), std::ios::binary) << text;
    }
    std::string text_of(const std::string& name) const {
        std::ifstream in(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    // The image as CSV, by way of its fields alone.
    std::string listed() const {
        NativeFileSystem files;
        modVR120 store(files);
        store.set_image(image_);
        std::string text = kHeader;
        for (int bank = 0; bank < layout::kBanks; ++bank) {
            for (int number = 0; number < layout::kMemoriesPerBank; ++number) {
                const std::string frequency = store.GetMemFreq(bank, number);
                if (frequency.empty()) continue;
                text += std::to_string(100 * bank + number) + "," + frequency + "," +
                        store.GetMode(bank, number) + "," +
                        (store.GetPref(bank, number) == "On" ? "p" : "") + ",\"" +
                        store.GetMemTag(bank, number) + "\"\r\n";
            }
        }
        return text;
    }

    MemoryImage image_;
};

TEST_F(SystemCsv, the_channel_list_is_exported_whole_over_whatever_was_there) {
    put_text("list.csv", std::string(100000, 'x'));
    export_to("list.csv");
    expect_eventually([&] { return text_of("list.csv"); }, Eq(listed()));
    main();
    EXPECT_THAT(file_bytes(file("mem.120")), ElementsAreArray(image_.bytes()));
}

TEST_F(SystemCsv, an_edited_list_is_imported_and_saved) {
    put_text("in.csv", std::string(kHeader) +
                           "0,145.5125,NFM,p,\"NEW\"\r\n"
                           "7,446.00625,NFM,,\"PMR 1\"\n"
                           "100,339.5,AM,,\"BLOCK\"\r\n"
                           "963,88.3,WFM,P,LAST");
    import_from("in.csv");
    expect_eventually([&] { return cell(1, 1); }, Eq("NEW"));
    EXPECT_EQ(cell(1, 2), "145.51250");
    EXPECT_EQ(cell(2, 1), "TOWER2");
    EXPECT_EQ(cell(640, 4), "Off");
    choose_by_keys("s", "Save");
    program->settle();

    NativeFileSystem files;
    modVR120 wanted(files);
    wanted.set_image(image_);
    const auto store = [&](int bank, int number, std::string frequency, const char* mode,
                           const char* preference, const char* label) {
        wanted.SetMemByte(bank, number, 0);
        wanted.SetMemFreq(bank, number, frequency);
        wanted.SetMemTag(bank, number, label);
        wanted.SetMode(bank, number, mode);
        wanted.SetPref(bank, number, preference);
    };
    store(0, 0, "145.5125", "NFM", "On", "NEW");
    store(0, 7, "446.00625", "NFM", "Off", "PMR 1");
    store(9, 63, "88.3", "WFM", "Off", "LAST");
    EXPECT_THAT(file_bytes(file("mem.120")), ElementsAreArray(wanted.MemoryImage.bytes()));
}

TEST_F(SystemCsv, what_is_exported_and_imported_again_is_no_change) {
    export_to("list.csv");
    expect_eventually([&] { return text_of("list.csv"); }, Eq(listed()));
    import_from("list.csv");
    main();
    keyboard.press("Alt+F");
    keyboard.press("x");
    EXPECT_EQ(program->wait_for_exit(), ExitStatus{}) << "without a question";
}

}  // namespace
}  // namespace memwright::systest
