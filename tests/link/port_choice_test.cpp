#include <gtest/gtest.h>

#include "app/dialogs.h"
#include "link/clone_bench.h"

namespace memwright::link_tests {
namespace {

class NoDevices final : public SerialDevices {
  public:
    std::vector<SerialDevice> list() override { return {}; }
    std::string describe(const std::string&) override { return ""; }
    bool numbers_name_devices() const override { return false; }
};

TEST(PortChoice, it_changes_what_the_dialog_shows_next_time_and_not_the_port_of_transfers) {
    CloneBench bench(sending());
    NoDevices devices;
    ComPorts ports(devices, bench.settings, {});
    {
        Form2 dialog(bench.settings, ports);
        EXPECT_EQ(dialog.Combo1.text.get(), "COM 1");
        dialog.Combo1.text = "COM 3";
        dialog.Command1.clicked();
    }
    EXPECT_EQ(Form2(bench.settings, ports).Combo1.text.get(), "COM 3");

    EXPECT_EQ(bench.click_read(), "");
    EXPECT_THAT(bench.journal, testing::Contains("CommPort = 1"));
    bench.journal.clear();
    radio::SimulatedRadio receiver({}, receiving());
    bench.port.plug(receiver);
    EXPECT_EQ(bench.click_write(), "");
    EXPECT_THAT(bench.journal, testing::Contains("CommPort = 1"));
}

}  // namespace
}  // namespace memwright::link_tests
