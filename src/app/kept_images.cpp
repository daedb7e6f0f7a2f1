#include "app/kept_images.h"

#include <utility>

namespace memwright {

KeptImages::KeptImages(Work work, FileSystem& files, Clock& clock, const std::string& data_folder,
                       std::function<void(const std::string&)> note)
    : work_(work),
      clock_(clock),
      note_(std::move(note)),
      archive_(files, data_folder),
      unfiled_(files, archive_, clock, note_) {
    connections_ = {
        work_.clone_read.received.connect(
            [this](const MemoryImage& image) { keep(image, "read"); }),
        work_.clone_read.replacing.connect([this] { set_table_aside(); }),
        work_.clone_write.beginning.connect([this] { keep(work_.store.MemoryImage, "written"); }),
        work_.files.replaced.connect([this](const MemoryImage& image, const std::string& path) {
            if (work_.mnuSaveOnly.enabled) unfiled_.set_aside(image, path);
        })};
    if (!archive_.folder().empty()) work_.files.places = {archive_.folder()};
}

void KeptImages::keep(const MemoryImage& image, const char* what) {
    const std::string failure = archive_.try_to_keep(image, clock_.timestamp(), what);
    if (!failure.empty()) note_(failure);
}

// There is none before an image was opened or read.
void KeptImages::set_table_aside() {
    if (!work_.mnuSaveOnly.enabled) return;
    work_.table.SaveVR120Data();
    unfiled_.set_aside(work_.store.MemoryImage, work_.files.current_path());
}

}  // namespace memwright
