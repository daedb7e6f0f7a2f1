#pragma once

// Says at the first start how to begin: once, until it is dismissed or there is an image.

#include "app/notices.h"
#include "controls/controls.h"
#include "platform/settings_store.h"

namespace memwright {

class FirstSteps {
  public:
    // `table`: enabled when there is an image.
    FirstSteps(Control& table, Notices& notices, SettingsStore& settings)
        : table_(table), notices_(notices), settings_(settings) {}

    // To be called when it is known whether there is an image.
    void begin();

  private:
    void look();

    Control& table_;
    Notices& notices_;
    SettingsStore& settings_;
    std::vector<Connection> connections_;
};

}  // namespace memwright
