#include "app/dialogs.h"
#include "app/version.h"

namespace memwright {

Form5::Form5() {
    NameLabel.caption = "Memwright";
    VersionLabel.caption =
        "Version " + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor);
    CreditLabel.caption = "By the Memwright developers";
    Command1.caption = "&OK";
    close_ = Command1.clicked.connect([this] { closed(); });
}

}  // namespace memwright
