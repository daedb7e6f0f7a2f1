#pragma once

// The parts of the platform that these tests hardly use, as plain as they can be: a port on which
// nothing answers, a clock that goes on while something waits, devices from a list, and dialogs
// that a test works while they are open.

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/dialog_views.h"
#include "base/error.h"
#include "platform/ms_comm.h"
#include "platform/serial_devices.h"
#include "platform/time.h"

namespace memwright::fakes {

class SilentPort final : public MSComm {
  public:
    int number = 0;
    bool is_open = false;
    std::string open_error;  // if it is not empty, opening fails with it
    int opened = 0;

    void set_properties(const PortProperties& properties) override { number = properties.CommPort; }
    void PortOpen(bool open) override {
        if (open && !open_error.empty()) throw PortError(open_error);
        is_open = open;
        if (open) ++opened;
    }
    bool PortOpen() const override { return is_open; }
    void Output(std::span<const std::uint8_t> /*bytes*/) override {}
    int unsent_bytes() override { return 0; }
    int InBufferCount() override { return 0; }
    std::vector<std::uint8_t> Input() override { return {}; }
};

class IdleLoop final : public Clock, public EventLoop {
  public:
    std::function<void()> while_waiting;  // the events that come
    int waits = 0;

    struct Timer {
        std::chrono::milliseconds interval;
        std::function<void()> tick;
        std::weak_ptr<const void> alive;
    };
    std::vector<Timer> timers;

    double seconds_since_midnight() override { return now_; }
    std::string date_and_time() override { return "21.11.26 12:34"; }
    std::string timestamp() override { return "2026-11-21 12.34.56"; }
    void wait(std::chrono::microseconds at_most) override {
        ++waits;
        now_ += std::chrono::duration<double>(at_most).count();
        // What comes may say what is to come next.
        if (const auto event = while_waiting) event();
    }
    Connection every(std::chrono::milliseconds interval, std::function<void()> tick) override {
        auto connection = std::make_shared<const int>(0);
        timers.push_back({interval, std::move(tick), connection});
        return connection;
    }

  private:
    double now_ = 3600;
};

class ListedDevices final : public SerialDevices {
  public:
    std::vector<SerialDevice> present;
    bool numbered = false;

    std::vector<SerialDevice> list() override { return present; }
    std::string describe(const std::string& path) override {
        for (const SerialDevice& device : present) {
            if (device.path == path) return device.description;
        }
        return "not present";
    }
    bool numbers_name_devices() const override { return numbered; }
};

class WorkedDialogs final : public DialogViews {
  public:
    std::function<void(Form2&)> in_form2;
    std::function<void(Form5&)> in_form5;
    std::function<void(frmMiscSetting&)> in_settings;
    std::function<void(frmLimitSearch&)> in_limits;
    std::function<void(frmPrint&)> in_print;
    std::function<void(FillSeries&)> in_fill_series;
    std::function<void(MoveTo&)> in_move_to;
    int shown = 0;

    void show_modal(Form2& form) override { work(in_form2, form); }
    void show_modal(Form5& form) override { work(in_form5, form); }
    void show_modal(frmMiscSetting& form) override { work(in_settings, form); }
    void show_modal(frmLimitSearch& form) override { work(in_limits, form); }
    void show_modal(frmPrint& form) override { work(in_print, form); }
    void show_modal(FillSeries& form) override { work(in_fill_series, form); }
    void show_modal(MoveTo& form) override { work(in_move_to, form); }

  private:
    template <class Form>
    void work(const std::function<void(Form&)>& in_form, Form& form) {
        ++shown;
        if (in_form) in_form(form);
    }
};

}  // namespace memwright::fakes
