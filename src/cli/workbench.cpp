#include "cli/workbench.h"

#include "base/error.h"

namespace memwright::cli {

Answer SaidMessages::show(const Message& message) {
    console_.say(message.text);
    return message.buttons == Buttons::yes_no ? Answer::no : Answer::ok;
}

bool SaidImport::go_on(double share) {
    console_.show_progress(static_cast<int>(share * 100));
    return true;
}

Workbench::Workbench(Console& console, StreamFiles& files)
    : files_(files),
      messages_(console),
      import_display_(console),
      store(files),
      table(store, form.MSFlexGrid1, form.mnuSaveOnly),
      image_files(store, table, form.MSFlexGrid1, form, form.caption, {messages_, dialogs_, files}),
      csv_files(table, form.MSFlexGrid1, dialogs_, files, import_display_) {
    // As the window does at its start: what needs an image has to wait for one.
    form.mnuSaveOnly.enabled = false;
}

Bytes Workbench::bytes_of_image(const std::string& path) {
    Bytes bytes = files_.whole(path);
    if (bytes.size() < layout::kImageSize) {
        throw InputError(input_name(path) + " is no memory image: it has " +
                         std::to_string(bytes.size()) + " bytes, and an image has " +
                         std::to_string(layout::kImageSize) +
                         ".\nName a file that was saved or read as an image (*.120, *.tk1).");
    }
    rest_.assign(bytes.begin() + layout::kImageSize, bytes.end());
    return bytes;
}

void Workbench::load(const std::string& path) {
    store.set_image(MemoryImage(bytes_of_image(path)));
}

void Workbench::open(const std::string& path) {
    bytes_of_image(path);
    image_files.open_named(path);
}

Bytes Workbench::file_bytes() const {
    const auto image = store.MemoryImage.bytes();
    Bytes bytes(image.begin(), image.end());
    bytes.insert(bytes.end(), rest_.begin(), rest_.end());
    return bytes;
}

void Workbench::save(const std::string& path) { files_.replace(path, file_bytes()); }

}  // namespace memwright::cli
