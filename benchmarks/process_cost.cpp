// process_cost PROGRAM [ARGUMENT]...
// Runs a program 51 times without its output, and prints what a run costs in the median, from
// before it is started to its end: milliseconds, milliseconds of a processor, and the most resident
// memory in KiB. A small program of its own, because the kernel counts the memory of whoever starts
// a program as the program's.

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <optional>

namespace {

constexpr int kRuns = 51;

struct Cost {
    double milliseconds;
    double processor;
    double memory;
};

double milliseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

std::optional<Cost> run(char** command) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t process = fork();
    if (process == 0) {
        dup2(open("/dev/null", O_RDWR | O_CLOEXEC), STDOUT_FILENO);
        execv(command[0], command);
        std::perror(command[0]);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (wait4(process, &status, 0, &usage) != process || status != 0) return std::nullopt;
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    return Cost{taken.count(), milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime),
                static_cast<double>(usage.ru_maxrss)};
}

template <class Runs>
double median(Runs runs, double Cost::*what) {
    std::ranges::nth_element(runs, runs.begin() + kRuns / 2, {}, what);
    return runs[kRuns / 2].*what;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) {
        std::fprintf(stderr, "Usage: process_cost PROGRAM [ARGUMENT]...\n");
        return 2;
    }
    std::array<Cost, kRuns> runs{};
    for (Cost& cost : runs) {
        const auto measured = run(argv + 1);
        if (!measured) {
            std::fprintf(stderr, "process_cost: %s failed.\n", argv[1]);
            return 1;
        }
        cost = *measured;
    }
    std::printf("%.2f %.2f %.0f\n", median(runs, &Cost::milliseconds),
                median(runs, &Cost::processor), median(runs, &Cost::memory));
}
