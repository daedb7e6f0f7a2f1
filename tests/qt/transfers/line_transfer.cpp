// A transfer with a fault on a pseudo-terminal: line_transfer read|write FAULT, with a fault as
// vr120-sim has them. Ends with 0 if it came to what the rules of the protocol make of it.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <cstdio>
#include <string>

#include "base/error.h"
#include "qt/transfers/real_transfer.h"

namespace memwright::transfer_tests {
namespace {

Plan plan;

TEST(LineTransfer, comes_to_what_the_rules_make_of_it) {
    RealTransfer transfer(plan);
    transfer.run();
}

int run(const std::string& direction, const std::string& fault) {
    if (direction != "read" && direction != "write") {
        throw ConversionError("A transfer is a read or a write.");
    }
    plan.radio_is = direction == "read" ? radio::Direction::sending : radio::Direction::receiving;
    plan.faults.push_back(radio::fault_from_text(fault));
    return RUN_ALL_TESTS();
}

}  // namespace
}  // namespace memwright::transfer_tests

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    testing::InitGoogleTest(&count, arguments);
    constexpr int kWrongArguments = 2;
    try {
        if (count == 3) return memwright::transfer_tests::run(arguments[1], arguments[2]);
        std::fprintf(stderr, "Usage: line_transfer read|write FAULT\n");
    } catch (const memwright::Error& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return kWrongArguments;
}
