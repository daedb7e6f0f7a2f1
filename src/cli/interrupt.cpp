#include "cli/interrupt.h"

#include <csignal>
#include <initializer_list>

namespace memwright::cli {
namespace {

volatile std::sig_atomic_t noted = 0;

extern "C" void note(int /*signal*/) { noted = 1; }

}  // namespace

void catch_interrupts() {
    struct sigaction action {};
    // Without SA_RESTART: waiting for a key ends, too.
    action.sa_handler = note;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
}

bool interrupted() { return noted != 0; }

}  // namespace memwright::cli
