#include "files/image_files_test.h"

namespace memwright {

ImageFilesTest::ImageFilesTest() : folder_before(native.current_folder()) {
    native.set_current_folder(folder.path().string());
    caption.title = "Memwright v1.0";
    caption.caption = "Memwright v1.0 - as it starts";
    table.initgrid();
    mnuSaveOnly.enabled = false;
}

ImageFilesTest::~ImageFilesTest() { std::filesystem::current_path(folder_before); }

Bytes ImageFilesTest::image_bytes(const std::string& tag) {
    NativeFileSystem none;
    modVR120 image(none);
    for (int bank = 0; bank < layout::kBanks; ++bank) {
        for (int number = 0; number < layout::kMemoriesPerBank; ++number) {
            image.ClearMem(bank, number);
        }
    }
    std::string freq = "145.5125";
    image.SetMemByte(0, 0, 0);
    image.SetMemFreq(0, 0, freq);
    image.SetMemTag(0, 0, tag);
    image.SetMode(0, 0, "NFM");
    const auto bytes = image.MemoryImage.bytes();
    return {bytes.begin(), bytes.end()};
}

void ImageFilesTest::edit(const std::string& tag) {
    grid.set_text(1, columns::kFreq, "145.51250");
    grid.set_text(1, columns::kMode, "NFM");
    grid.set_text(1, columns::kTag, tag);
}

void ImageFilesTest::start_with(const std::string& name, const std::string& tag) {
    open_unasked(folder.put(name, image_bytes(tag)));
    ASSERT_EQ(shown_tag(), tag);
}

void ImageFilesTest::open_unasked(const std::string& path) {
    mnuSaveOnly.enabled = false;
    table.SetChangeCheck();
    image_files.open_named(path);
    mnuSaveOnly.enabled = true;
    window.calls.clear();
}

std::string ImageFilesTest::tag_in(const Bytes& bytes) {
    if (bytes.size() < layout::kLabels + layout::kLabelSize) return "(too short)";
    std::string tag;
    for (std::size_t i = 0; i < layout::kLabelSize; ++i) {
        tag += static_cast<char>(bytes[layout::kLabels + i]);
    }
    return tag.substr(0, tag.find_last_not_of(' ') + 1);
}

ImageFilesTest::Kept ImageFilesTest::kept() const {
    return {store.MemoryImage, image_files.current_path(), caption.caption,
            shown_tag(),       table.ChangeCheckSum(),     window.calls};
}

}  // namespace memwright
