#include "app/new_table.h"

#include "image/layout.h"

namespace memwright {
namespace {

constexpr const char* kUnknownRadio = "new table without a radio";

MemoryImage with_empty_memories(const MemoryImage& image) {
    ImageCodec codec(image);
    for (int bank = 0; bank < layout::kBanks; ++bank) {
        for (int number = 0; number < layout::kMemoriesPerBank; ++number) {
            codec.ClearMem(bank, number);
        }
    }
    return codec.MemoryImage;
}

}  // namespace

NewTable::NewTable(Work work, FileSystem& files, const std::string& data_folder, Events& events,
                   Notices& notices)
    : work_(work), archive_(files, data_folder), notices_(notices) {
    events.connect(work_.form.added.new_table.clicked, "New", [this] { begin(); });
}

void NewTable::begin() {
    const auto radio = archive_.latest_of_a_radio();
    if (!radio) {
        notices_.add({.text = "A new table keeps the settings of your radio, which are not known "
                              "yet. Read the radio first (Transfer menu).",
                      .about = kUnknownRadio});
        return;
    }
    notices_.withdraw(kUnknownRadio);
    work_.table.SaveVR120Data();
    if (work_.files.may_go_on()) work_.files.begin_without_file(with_empty_memories(*radio));
}

}  // namespace memwright
