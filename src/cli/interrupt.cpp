#include "cli/interrupt.h"

#include <csignal>
#include <initializer_list>

namespace memwright::cli {
namespace {

volatile std::sig_atomic_t noted = 0;

void answer_by(void (*handler)(int)) {
    struct sigaction action {};
    // Without SA_RESTART: waiting for a key ends, too.
    action.sa_handler = handler;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
}

// What has not ended the program by the second one may never do so.
extern "C" void note(int /*signal*/) {
    noted = 1;
    answer_by(SIG_DFL);
}

}  // namespace

void catch_interrupts() { answer_by(note); }

bool interrupted() { return noted != 0; }

}  // namespace memwright::cli
