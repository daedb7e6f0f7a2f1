#include "app/shell.h"

#include <algorithm>
#include <exception>
#include <string>
#include <utility>

#include "app/version.h"
#include "base/error.h"
#include "base/number_text.h"

namespace memwright {
namespace {

using settings::kApplication;
using settings::kSection;

// What the layout allows the window's frame and menu bar in height. Where they take more, the
// controls make do with so much less, so that the status line is never pushed out of the window.
constexpr double kDesignFrameHeight = 660;

// Distances from the window's outer size.
constexpr double kBesideGrid = 1800;
constexpr double kBelowGrid = 1300;
constexpr double kBelowGridWithStatusWindow = 3200;
constexpr double kStatusWindowTop = 2800;
constexpr double kStatusLineTop = 1000;

template <class Step>
void skip_if_it_fails(Step step) {
    try {
        step();
    } catch (const std::exception&) {
        // Deliberate: neither start nor resize reports anything.
    }
}

WindowState window_state_from_text(const std::string& text) {
    const int state = integer_from_text(text);
    if (state < 0 || state > 2) throw ConversionError("There is no window state " + text + ".");
    return static_cast<WindowState>(state);
}

}  // namespace

void Shell::Form_Load() {
    form_.caption.title =
        "Memwright v" + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor);
    form_.caption.at_start = form_.caption.title + " - By the Memwright developers";
    form_.caption.show_no_path();
    form_.Text1.read_only = true;
    form_.MSFlexGrid1.enabled = false;
    set_start_states();
    restore_status_window();
    skip_if_it_fails([&] {
        image_files_.last_used_folder = settings_.get(kApplication, kSection, "FilePath", "");
        if (image_files_.last_used_folder.empty()) return;
        files_.set_current_folder(image_files_.last_used_folder);
    });
    form_.Label1.caption = "";
    skip_if_it_fails([&] { table_.initgrid(); });
    skip_if_it_fails([&] {
        window_.set_state(
            window_state_from_text(settings_.get(kApplication, kSection, "WindowState", "0")));
    });
    if (window_.state() == WindowState::normal) {
        restore_geometry();
        // The screens may be others than those of the last run.
        window_.bring_into_sight();
    }
}

void Shell::set_start_states() {
    form_.mnuFile.enabled = true;
    form_.mnuVR120Settings.enabled = false;
    form_.mnuTransfer.enabled = true;
    for (MenuEntry* item : {&form_.mnuSaveOnly, &form_.mnuSave, &form_.mnuImport, &form_.mnuExport,
                            &form_.mnuPrint, &form_.mnuWrite}) {
        item->enabled = false;
    }
}

void Shell::restore_status_window() {
    skip_if_it_fails([&] {
        form_.mnuShwDbg.checked =
            boolean_from_text(settings_.get(kApplication, kSection, "DebugWin", "1"));
    });
    form_.Text1.visible = form_.mnuShwDbg.checked.get();
}

// Top before Height and Left before Width: the window is centred for the size it was designed with.
void Shell::restore_geometry() {
    const auto stored = [&](const char* key, const std::string& default_value) {
        return number_from_text(settings_.get(kApplication, kSection, key, default_value));
    };
    const auto centred = [](double screen, double window) {
        return shortest_text((screen - window) / 2);
    };
    skip_if_it_fails([&] {
        window_.set_top(stored("Top", centred(window_.screen_height(), window_.height())));
    });
    skip_if_it_fails(
        [&] { window_.set_height(stored("Height", shortest_text(Form1::kDesignHeight))); });
    skip_if_it_fails([&] {
        window_.set_left(stored("Left", centred(window_.screen_width(), window_.width())));
    });
    skip_if_it_fails(
        [&] { window_.set_width(stored("Width", shortest_text(Form1::kDesignWidth))); });
}

void Shell::Form_Resize() {
    const double H = window_.height() - std::max(0.0, window_.frame_height() - kDesignFrameHeight);
    const double W = window_.width();
    const double below = form_.mnuShwDbg.checked ? kBelowGridWithStatusWindow : kBelowGrid;
    skip_if_it_fails([&] { set_length(form_.MSFlexGrid1.height, H - below); });
    skip_if_it_fails([&] { set_length(form_.MSFlexGrid1.width, W - kBesideGrid); });
    skip_if_it_fails([&] { set_length(form_.Label1.width, W); });
    form_.Label1.top = H - kStatusLineTop;
    form_.Text1.width = form_.MSFlexGrid1.width.get();
    form_.Text1.top = H - kStatusWindowTop;
    lay_out_transfer_controls(form_.Label1.top);
}

// In line with the status line, whose text they stand beside.
void Shell::lay_out_transfer_controls(double status_line_top) {
    const double middle = status_line_top + form_.Label1.height / 2;
    for (PlacedControl* control : std::initializer_list<PlacedControl*>{
             &form_.ReceivedLabel, &form_.TransferProgress, &form_.TransferButton}) {
        control->top = middle - control->height / 2;
    }
}

void Shell::Form_Unload(bool& Cancel) {
    store_place();
    const auto answer = image_files_.ask_about_changes();
    if (answer && !may_close_after(*answer)) Cancel = true;
}

void Shell::store_place() {
    settings_.save(kApplication, kSection, "FilePath", files_.current_folder());
    const WindowState state = window_.state();
    if (state == WindowState::minimised) return;
    const auto save = [&](const char* key, const std::string& value) {
        settings_.save(kApplication, kSection, key, value);
    };
    save("WindowState", std::to_string(static_cast<int>(state)));
    if (state != WindowState::normal) return;
    save("Width", shortest_text(window_.width()));
    save("Height", shortest_text(window_.height()));
    save("Left", shortest_text(window_.left()));
    save("Top", shortest_text(window_.top()));
}

bool Shell::may_close_after(Answer answer) {
    if (answer != Answer::yes) return answer == Answer::no;
    image_files_.save_cancelled = false;
    image_files_.mnuSaveOnly_Click();
    return !std::exchange(image_files_.save_cancelled, false);
}

}  // namespace memwright
