#include "files/image_files.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/error.h"
#include "files/current_folder.h"

namespace memwright {

std::optional<Message> ImageFiles::question_about_changes() {
    if (!table_.IsDataChanged()) return std::nullopt;
    return Message{.text = "The VR120 data has changed.\r\nDo you want to save the changes?",
                   .title = "Memwright",
                   .buttons = Buttons::yes_no_cancel,
                   .icon = Icon::exclamation};
}

std::optional<Answer> ImageFiles::ask_about_changes() {
    const auto question = question_about_changes();
    if (!question) return std::nullopt;
    return services_.messages.show(*question);
}

bool ImageFiles::may_go_on() {
    const auto answer = ask_about_changes();
    if (answer == Answer::cancel) return false;
    if (answer == Answer::yes) {
        save_cancelled = false;
        // Deliberate: the command goes on whatever the save did.
        mnuSaveOnly_Click();
    }
    return true;
}

void ImageFiles::mnuOpen_Click() {
    table_.SaveVR120Data();
    if (!may_go_on()) return;
    const auto name = services_.dialogs.open(
        {.title = "Open File",
         .filters = {{"VR-120 Files (*.120 *.tk1)", "*.120;*.tk1"}, kAllFiles},
         .folder = last_used_folder,
         .places = places});
    if (!name) return;
    const std::string path = up_to_nul(*name);
    if (!is_kept_copy(path)) enter_folder_of(path, services_.files);
    open(path);
}

void ImageFiles::open_named(const std::string& path) {
    table_.SaveVR120Data();
    if (may_go_on()) open(path);
}

void ImageFiles::open(const std::string& path) {
    const std::string old_path = current_path_;
    const std::string old_caption = caption_.caption;
    const MemoryImage old_image = store_.MemoryImage;
    try {
        current_path_ = path;
        caption_.show_path(path);
        store_.OpenVR120(path);
    } catch (...) {
        // What the user had stays open, under its own name.
        current_path_ = old_path;
        caption_.caption = old_caption;
        store_.set_image(old_image);
        throw;
    }
    show_image_in_place_of(old_image, old_path);
}

void ImageFiles::begin_without_file(const MemoryImage& image) {
    const std::string old_path = std::exchange(current_path_, "");
    const MemoryImage old_image = store_.MemoryImage;
    caption_.show_no_path();
    store_.set_image(image);
    show_image_in_place_of(old_image, old_path);
}

void ImageFiles::show_image_in_place_of(const MemoryImage& old_image, const std::string& old_path) {
    replaced(old_image, old_path);
    table_.ParseVR120Data();
    table_.SetChangeCheck();
    window_.EnableGui();
    grid_.enabled = true;
    in_a_file();
}

void ImageFiles::resume(const std::string& path) {
    current_path_ = path;
    if (!path.empty()) caption_.show_path(path);
}

void ImageFiles::mnuSaveOnly_Click() {
    table_.SaveVR120Data();
    if (needs_a_name()) {
        mnuSave_Click();
        return;
    }
    write(current_path_);
    table_.SetChangeCheck();
}

bool ImageFiles::is_kept_copy(const std::string& path) const {
    return std::ranges::any_of(
        places, [&](const std::string& place) { return path.starts_with(place + "/"); });
}

void ImageFiles::mnuSave_Click() {
    try {
        table_.SaveVR120Data();
    } catch (const std::exception&) {
        save_cancelled = true;
        return;
    }
    save_as();
}

void ImageFiles::save_as() {
    // Deliberate: Save As ends silently when it fails.
    try {
        const auto name =
            services_.dialogs.save({.title = "Save File As..",
                                    .filters = {{"VR-120 Files (*.120)", "*.120"}, kAllFiles},
                                    .folder = services_.files.current_folder()});
        if (!name) {
            save_cancelled = true;
            return;
        }
        const std::string path = with_extension(up_to_nul(*name), ".120");
        enter_folder_of(path, services_.files);
        if (!save_as_confirmed(path)) {
            save_cancelled = true;
            return;
        }
        current_path_ = path;
        caption_.show_path(path);
        table_.SetChangeCheck();
    } catch (const std::exception&) {
        save_cancelled = true;
    }
}

// False if the user cancelled at the question whether to replace a file.
bool ImageFiles::save_as_confirmed(const std::string& path) {
    if (store_.FileExists(path)) {
        const Answer answer = services_.messages.show(
            {.text = path + " already exists.\r\nDo you want to replace it?",
             .title = "Save As",
             .buttons = Buttons::yes_no_cancel,
             .icon = Icon::exclamation});
        if (answer == Answer::cancel) return false;
        if (answer == Answer::no) {
            // Deliberate: whatever comes of the second run, this one then takes over the declined
            // path as the current one.
            save_as();
            return true;
        }
    }
    write(path);
    return true;
}

void ImageFiles::write(const std::string& path) {
    services_.files.overwrite(path, store_.MemoryImage.bytes());
    in_a_file();
}

}  // namespace memwright
