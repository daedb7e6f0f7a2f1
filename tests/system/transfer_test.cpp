// Clone transfers as an owner sees them: the built program, the built simulated radio, real keys
// and clicks.

#include <gmock/gmock.h>

#include "image/mod_vr120.h"
#include "native/file_system.h"
#include "radio/demonstration.h"
#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

using testing::ElementsAreArray;
using testing::Eq;
using testing::HasSubstr;

using SystemTransfer = MemwrightDesktop;

TEST_F(SystemTransfer, the_memories_of_a_radio_are_read_saved_opened_and_written_to_a_radio) {
    plug_in();
    start();
    EXPECT_FALSE(grid().enabled());
    read_to_end();
    EXPECT_TRUE(grid().enabled());
    EXPECT_EQ(cell(1, 1), "TOWER");
    EXPECT_EQ(cell(1, 2), "118.10000");
    EXPECT_EQ(cell(1, 3), "AM");
    EXPECT_EQ(cell(1, 4), "On");

    const auto saved = file("mine.120");
    save_as(file("mine"));
    wait_for_caption(std::string(kTitle) + " - " + file("mine").string() + ".120");
    const MemoryImage expected = through_the_table(radio::demonstration_memory());
    EXPECT_THAT(file_bytes(saved), ElementsAreArray(expected.bytes()));

    open(saved);
    EXPECT_EQ(cell(1, 1), "TOWER");
    choose("Transfer", "Write To VR-120");
    answer("Write To VR-120", kWriteInstructions, "OK");
    expect_status("Write To VR-120 complete.", kTransferPatience);
    radio->wait_for_line("received");
    EXPECT_EQ(file_bytes(radio_file()), file_bytes(saved));
    EXPECT_TRUE(grid().enabled());
}

TEST_F(SystemTransfer, a_radio_that_hangs_up_gives_one_report_and_the_port_opens_again) {
    plug_in({"--fault", "hang-up@3:17"});
    start();
    read();
    const Accessible report = program->message_box("Memwright", "COM 1", kTransferPatience);
    EXPECT_THAT(report.tree(), HasSubstr("hung up"));
    mouse.click(report.button("OK"));
    report.wait_gone();
    program->settle();
    EXPECT_FALSE(program->has_window("Memwright"));
    EXPECT_FALSE(grid().enabled());
    EXPECT_FALSE(main().menu_item("File").enabled());

    mouse.click(transfer_button("Unlock"));
    main().menu_item("File").wait_for(State::kEnabled);
    plug_in();
    read();
    wait_for_status("Reading from VR-120: ");
    keyboard.press("Esc");
    expect_status("Read from VR-120 cancelled.");
}

TEST_F(SystemTransfer, a_cancelled_read_leaves_the_table_and_the_file_name_as_they_were) {
    plug_in();
    const auto image = file("demo.120");
    write_file(image, through_the_table(radio::demonstration_memory()).bytes());
    start({image.string()});
    const std::string caption = std::string(kTitle) + " - " + image.string();
    wait_for_caption(caption);
    read();
    wait_for_status("Reading from VR-120: ");
    mouse.click(transfer_button("Cancel"));
    expect_status("Read from VR-120 cancelled.");
    wait_for_caption(caption);
    EXPECT_TRUE(grid().enabled());
    EXPECT_EQ(cell(1, 1), "TOWER");
    choose("File", "Save");
    program->settle();
    EXPECT_THAT(file_bytes(image),
                ElementsAreArray(through_the_table(radio::demonstration_memory()).bytes()));
}

TEST_F(SystemTransfer, cancelling_a_write_is_asked_about_first) {
    plug_in({"--mode", "receive"});
    const auto image = file("demo.120");
    write_file(image, through_the_table(radio::demonstration_memory()).bytes());
    start({image.string()});
    wait_for_caption(std::string(kTitle) + " - " + image.string());
    choose("Transfer", "Write To VR-120");
    answer("Write To VR-120", kWriteInstructions, "OK");
    wait_for_status("Writing To VR-120: ");
    keyboard.press("Esc");
    const Accessible question =
        program->message_box("Write To VR-120", "Stop writing to the VR-120?");
    const std::string before = wait_for_status("Writing To VR-120: ");
    mouse.click(question.button("No"));
    expect_eventually([&] { return wait_for_status("Writing To VR-120: "); }, testing::Ne(before));
    mouse.click(transfer_button("Cancel"));
    answer("Write To VR-120", "Stop writing to the VR-120?", "Yes");
    expect_status("Write To VR-120 cancelled.");
    EXPECT_TRUE(grid().enabled());
    EXPECT_FALSE(std::filesystem::exists(radio_file()));
}

TEST_F(SystemTransfer, closing_the_window_ends_a_transfer_and_the_program) {
    plug_in();
    start();
    read();
    wait_for_status("Reading from VR-120: ");
    desktop.window(kFreshCaption).close();
    EXPECT_EQ(program->wait_for_exit(), ExitStatus{});
}

}  // namespace
}  // namespace memwright::systest
