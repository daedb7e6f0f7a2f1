// The settings store's texts: a start of the program, its port dialog, a read and its end with
// whatever is stored; and the next start with what this one has stored.

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <optional>
#include <utility>

#include "app/dialogs.h"
#include "app/faked_platform.h"
#include "base/error.h"
#include "base/number_text.h"
#include "fakes/faulty_file_system.h"
#include "fakes/held_locks.h"
#include "fuzz/target.h"
#include "native/file_system.h"

namespace memwright::fuzz {
namespace {

constexpr std::array kKeys = {
    "VR120/Settings/WindowState", "VR120/Settings/Top",      "VR120/Settings/Height",
    "VR120/Settings/Left",        "VR120/Settings/Width",    "VR120/Settings/DebugWin",
    "VR120/Settings/FilePath",    "VR120/Settings/CommPort", "VR120Clone/Settings/CommPort",
    "Memwright/Ports/COM1",       "Memwright/Ports/COM12",   "Memwright/Ports/COM0",
    "Memwright/Ports/COM-1",      "Memwright/Ports/COM32767"};

std::vector<std::string> texts_of(Input input) {
    std::vector<std::string> texts;
    for (auto start = input.begin(); start < input.end();) {
        const auto end = std::find(start, input.end(), 0);
        texts.emplace_back(start, end);
        start = end == input.end() ? end : end + 1;
    }
    return texts;
}

// False if the text does not convert. Anything else that is thrown is a fault.
bool converts(const std::function<void()>& convert) {
    try {
        convert();
        return true;
    } catch (const ConversionError&) {
        return false;
    }
}

void expect_reading_is_sound(const std::string& text) {
    std::optional<double> number;
    converts([&] { number = number_from_text(text); });
    converts([&] { boolean_from_text(text); });
    const bool whole = converts([&] {
        const int value = integer_from_text(text);
        EXPECT_GE(value, -32768);
        EXPECT_LE(value, 32767);
        EXPECT_LE(std::abs(value - number.value()), 0.5);
    });
    EXPECT_TRUE(!whole || number);
    if (!number) return;
    EXPECT_TRUE(std::isfinite(*number));
    EXPECT_EQ(number_from_text(shortest_text(*number)), *number);
}

// A run of the program on a desktop of fakes.
struct Run : fakes::FakedPlatform {
    explicit Run(fakes::MemorySettings stored) : FakedPlatform(std::move(stored)) {
        devices.present = {{"/dev/ttyUSB0", "a cable", true}, {"/dev/ttyS0", "", false}};
        cells.grid = &program.form.MSFlexGrid1;
        program.start();
        program.resized();
    }

    void expect_seemly() {
        EXPECT_TRUE(messages.shown.empty());
        for (const PlacedControl* control : std::initializer_list<PlacedControl*>{
                 &program.form.MSFlexGrid1, &program.form.Label1, &program.form.Text1}) {
            EXPECT_GE(control->width, 0) << control->name;
            EXPECT_GE(control->height, 0) << control->name;
        }
        EXPECT_EQ(program.form.Text1.visible.get(), program.form.mnuShwDbg.checked.get());
        EXPECT_EQ(window.times_brought_into_sight, window.its_state == WindowState::normal ? 1 : 0);
    }

    // Opens the port dialog, and begins a read that is not gone on with: both work, or say why not
    // in a box.
    void use_port() {
        bool opened = false;
        views.in_form2 = [&](Form2& form) {
            opened = true;
            EXPECT_FALSE(form.DeviceList.items.get().empty());
            form.Command1.clicked();
        };
        messages.answers = {Answer::ok};
        program.form.mnuPort.clicked();
        EXPECT_EQ(messages.shown.size(), opened ? 0U : 1U);
        messages.shown.clear();
        messages.answers = {Answer::cancel};
        program.form.mnuRead.clicked();
        EXPECT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown.back().buttons == Buttons::ok_cancel, opened);
        messages.shown.clear();
        if (opened) expect_device(transfer_port(settings));
    }

    void expect_device(int number) const {
        try {
            EXPECT_FALSE(ports.device_of(number).empty());
        } catch (const PortError&) {
            // There are not so many.
        }
    }

    NativeFileSystem native;
    fakes::FaultyFileSystem files{native};
    fakes::SilentPort port;
    fakes::IdleLoop loop;
    fakes::HeldLocks locks;
    Program program{platform(files, port, loop, locks, {}), ports};
};

void expect_same_place(const fakes::FakeWindow& first, const fakes::FakeWindow& second) {
    // A minimised window is not stored.
    if (first.its_state == WindowState::minimised) return;
    EXPECT_EQ(second.its_state, first.its_state);
    if (first.its_state != WindowState::normal) return;
    EXPECT_EQ(second.its_left, first.its_left);
    EXPECT_EQ(second.its_top, first.its_top);
    EXPECT_EQ(second.its_width, first.its_width);
    EXPECT_EQ(second.its_height, first.its_height);
}

}  // namespace

void settings(Input input) {
    const auto folder = std::filesystem::current_path();
    constexpr const char* kAbsent = "\x7F";
    fakes::MemorySettings stored;
    std::size_t place = 0;
    for (const std::string& text : texts_of(input)) {
        expect_reading_is_sound(text);
        if (place < kKeys.size() && text != kAbsent) stored.values[kKeys[place]] = text;
        ++place;
    }

    Run first(std::move(stored));
    first.expect_seemly();
    first.use_port();
    EXPECT_TRUE(first.program.close_allowed());
    EXPECT_TRUE(first.messages.shown.empty());
    EXPECT_TRUE(first.files.written.empty());

    Run second(first.settings);
    second.expect_seemly();
    expect_same_place(first.window, second.window);
    EXPECT_TRUE(second.files.written.empty());
    std::filesystem::current_path(folder);
}

}  // namespace memwright::fuzz
