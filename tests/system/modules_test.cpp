// The parts of the built program that are loaded when they are first used.

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

#include "radio/demonstration.h"
#include "support/built_programs.h"
#include "system/memwright_desktop.h"

namespace memwright::systest {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

class SystemModules : public MemwrightDesktop {
  protected:
    void SetUp() override { write_file(file("mem.120"), radio::demonstration_memory().bytes()); }

    // Everything that the program has loaded.
    std::string loaded() const {
        std::ifstream maps("/proc/" + std::to_string(program->pid()) + "/maps");
        return {std::istreambuf_iterator<char>(maps), {}};
    }

    void print_all_rows() {
        main();
        choose("File", "Print");
        program->dialog("Print to Default Printer...");
        keyboard.press("Enter");
    }
};

TEST_F(SystemModules, a_start_loads_neither_serial_ports_nor_printing) {
    start({file("mem.120").string()}, {{"CUPS_SERVER", "/no/such/socket"}});
    wait_for_caption(std::string(kTitle) + " - " + file("mem.120").string());
    for (const char* part : {"SerialPort", "PrintSupport", "memwright-"}) {
        EXPECT_THAT(loaded(), Not(HasSubstr(part)));
    }
    choose("Settings", "Port...");
    program->dialog("Comm Port");
    EXPECT_THAT(loaded(), HasSubstr("libQt6SerialPort"));
    EXPECT_THAT(loaded(), Not(HasSubstr("PrintSupport")));
    keyboard.press("Enter");
    print_all_rows();
    program->message_box("Memwright", "Printing 7 pages to ");
    EXPECT_THAT(loaded(), HasSubstr("libQt6PrintSupport"));
    keyboard.press("Enter");
    main();
}

TEST_F(SystemModules, that_are_missing_are_named_and_the_rest_works) {
    fs::copy_file(built_program("memwright"), file("memwright"));
    program = std::make_unique<Application>(desktop, file("memwright"),
                                            std::vector<std::string>{file("mem.120").string()});
    wait_for_caption(std::string(kTitle) + " - " + file("mem.120").string());
    print_all_rows();
    program->message_box("Memwright", "memwright-printing.so");
    keyboard.press("Enter");
    main();
    choose("Settings", "Port...");
    program->message_box("Memwright", "Install Memwright again");
    keyboard.press("Enter");
    main();
    EXPECT_EQ(cell(1, 1), "TOWER");
}

}  // namespace
}  // namespace memwright::systest
