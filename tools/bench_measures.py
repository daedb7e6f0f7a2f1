"""Runs the measurements of tools/bench and prints their tables, in the form of docs/performance.md."""

import argparse
import json
import os
import pathlib
import re
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
BIN = ROOT / "build" / "release" / "bin"

BITS_PER_BYTE = 11  # start, 8 data, parity, stop
BAUD = 9600
PAUSE = 0.1
BLOCKS = 240
SHORT_FRAMES = 3  # before blocks 40, 120 and 200, as vr120-sim sends them
TRANSFERS = 3
IDLE = 30  # seconds
TIMER = 5  # seconds; the one timer of an idle program, which ticks once more than fits in


def line_time(byte_count):
    return byte_count * BITS_PER_BYTE / BAUD


def read_needs():
    """Seconds from the radio's opening frame to the end of a read, from docs/clone-protocol.md.

    Each answer is waited for until 11 bytes are there, 3 of them the echo, and 0.1 s more; the rest
    of a block arrives in that time.
    """
    answers = BLOCKS + SHORT_FRAMES
    opening, acknowledgement, closing = 8, 3, 8
    return (line_time(opening) + answers * (line_time(acknowledgement + 8) + PAUSE)
            + line_time(acknowledgement + closing))


def write_needs():
    """Seconds of a write: the opening, 240 blocks and the closing frame, 0.1 s after each."""
    return (1 + BLOCKS + 1) * PAUSE


class Failure(Exception):
    pass


class Table:
    def __init__(self, title, *columns):
        self.lines = [f"\n## {title}\n", "| " + " | ".join(columns) + " |",
                      "|" + "---|" * len(columns)]
        self.missed = []

    def row(self, *cells):
        self.lines.append("| " + " | ".join(str(cell) for cell in cells) + " |")

    def goal(self, name, value, limit, unit, form="{:.2f}"):
        """A row of a measure with its goal."""
        self.row(name, form.format(value) + unit, "at most " + form.format(limit) + unit)
        if value > limit:
            self.missed.append(name)

    def end(self):
        print("\n".join(self.lines), flush=True)
        return self.missed


def scaled(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


class Surroundings:
    """Folders of the run's own, a virtual X display, and the simulated radio."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="memwright-bench-"))
        self.processes = []
        self.environment = dict(os.environ, HOME=str(self.folder), QT_QPA_PLATFORM="xcb",
                                XDG_CONFIG_HOME=str(self.folder / "config"),
                                XDG_DATA_HOME=str(self.folder / "data"),
                                XDG_STATE_HOME=str(self.folder / "state"),
                                XDG_RUNTIME_DIR=str(self.folder), LC_ALL="C.UTF-8")
        for name in ("DBUS_SESSION_BUS_ADDRESS", "WAYLAND_DISPLAY", "QT_SCALE_FACTOR"):
            self.environment.pop(name, None)

    def start(self, *command, **options):
        process = subprocess.Popen([str(word) for word in command], env=self.environment,
                                   cwd=self.folder, **options)
        self.processes.append(process)
        return process

    def display(self):
        read, write = os.pipe()
        self.start("Xvfb", "-displayfd", write, "-screen", "0", "1280x1024x24", "-noreset",
                   pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as numbers:
            self.environment["DISPLAY"] = ":" + numbers.readline().strip()

    def radio(self, mode):
        radio = self.start(BIN / "vr120-sim", "--mode", mode, stdout=subprocess.PIPE, text=True)
        return radio, radio.stdout.readline().strip()

    def stop(self, process):
        process.send_signal(signal.SIGTERM)
        process.wait()
        self.processes.remove(process)

    def run(self, *command, begun=lambda: None):
        """Seconds, from the end of begun(), and processor seconds of a program that has to succeed."""
        process = subprocess.Popen([str(word) for word in command], env=self.environment,
                                   cwd=self.folder, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        begun()
        start = time.monotonic()
        output = process.stdout.read()
        _, status, usage = os.wait4(process.pid, 0)
        seconds = time.monotonic() - start
        if status != 0:
            raise Failure(f"{command[0]} failed: {output}")
        return seconds, usage.ru_utime + usage.ru_stime

    def end(self):
        for process in reversed(self.processes):
            process.kill()
            process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)


def operations(_):
    output = subprocess.run([BIN / "benchmarks", "--benchmark_format=json",
                             "--benchmark_repetitions=5", "--benchmark_min_time=0.1",
                             "--benchmark_report_aggregates_only=true"],
                            check=True, capture_output=True, text=True).stdout
    goals = {"table/from_image": 0.5e6, "table/to_image": 0.5e6, "table/find_text": 0.5e6,
             "table/find_range": 0.5e6, "table/find_nearest": 0.5e6, "csv/import_1000000": 1.5e9,
             "csv/import_1000000_skipped": 1.5e9}
    table = Table("The core's operations", "Operation", "A run", "An item", "Goal for a run")
    runs = {}
    for result in json.loads(output)["benchmarks"]:
        if result.get("aggregate_name") != "median":
            continue
        name = result["run_name"]
        runs[name] = result["cpu_time"]
        items = result["items_per_second"] * result["cpu_time"] / 1e9
        limit = goals.get(name)
        table.row(name, scaled(runs[name]), scaled(runs[name] / items),
                  "at most " + scaled(limit) if limit else "")
        if limit and runs[name] > limit:
            table.missed.append(name)
    longer = runs["csv/import_1000000"] / runs["csv/import_100000"]
    table.row("csv: ten times the lines", f"{longer:.1f} times the time", "", "about 10 times")
    if longer > 12:
        table.missed.append("csv grows faster than its lines")
    return table.end()


def window(around):
    around.display()
    table = Table("The window", "What", "Measured", "Goal")
    shown = subprocess.run([BIN / "shown_table"], env=around.environment, cwd=around.folder,
                           check=True, capture_output=True, text=True).stdout
    table.goal("640 channels shown, in one signal", statistics.median(map(float, shown.split())),
               10, " ms")

    results = {"memwright": [], "empty_window": []}
    for _ in range(11):
        for program, measured in results.items():
            printed = subprocess.run([BIN / "first_paint", BIN / program], env=around.environment,
                                     cwd=around.folder, check=True, capture_output=True, text=True)
            measured.append([float(number) for number in printed.stdout.split()])
    times, memories = ({program: statistics.median(pair[i] for pair in pairs)
                        for program, pairs in results.items()} for i in (0, 1))
    table.row("empty window: start", f"{times['empty_window']:.0f} ms", "")
    table.row("memwright: start", f"{times['memwright']:.0f} ms", "")
    table.goal("memwright: start", times["memwright"] / times["empty_window"], 1.5,
               " of the empty window's")
    table.row("empty window: memory", f"{memories['empty_window'] / 1024:.1f} MiB", "")
    table.row("memwright: memory", f"{memories['memwright'] / 1024:.1f} MiB", "")
    table.goal("memwright: memory", memories["memwright"] / memories["empty_window"], 1.25,
               " of the empty window's")

    program = around.start(BIN / "memwright")
    time.sleep(3)
    processor, wakeups = share(program.pid, IDLE)
    table.goal("idle: processor", processor, 0.05, " % of a core", "{:.3f}")
    table.goal("idle: wake-ups", wakeups, (IDLE / TIMER + 1) / IDLE, " a second")
    around.stop(program)
    return table.end()


def consumed(pid):
    """Processor seconds and voluntary waits of each thread of a process."""
    threads = {}
    for thread in pathlib.Path(f"/proc/{pid}/task").iterdir():
        nanoseconds = int((thread / "schedstat").read_text().split()[0])
        status = (thread / "status").read_text()
        waits = int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", status, re.M).group(1))
        threads[thread.name] = (nanoseconds / 1e9, waits)
    return threads


def share(pid, seconds):
    """Percents of a processor that a process takes, and how often in a second it wakes up."""
    before = consumed(pid)
    time.sleep(seconds)
    after = consumed(pid)
    processor, waits = (sum(now[i] - before.get(thread, (0, 0))[i] for thread, now in after.items())
                        for i in (0, 1))
    return processor / seconds * 100, waits / seconds


def sleeping_late():
    """Milliseconds by which this machine wakes a sleeper late: a transfer has some 240 pauses."""
    late = []
    for _ in range(50):
        start = time.monotonic()
        time.sleep(0.05)
        late.append(time.monotonic() - start - 0.05)
    return statistics.median(late) * 1000


def transfer(around, mode, command, image):
    """Seconds, from the first byte to the end of the program, and its processor seconds."""
    radio, device = around.radio(mode)
    measured = around.run(BIN / "memwright-cli", command, "--yes", "--port", device, image,
                          begun=radio.stdout.readline)
    around.stop(radio)
    return measured


def transfers(around):
    table = Table("Transfers with the paced simulated radio", "What", "Measured", "Goal")
    read = around.folder / "read.120"
    table.row("a sleep ends late by", f"{sleeping_late():.2f} ms", "")
    for mode, command, needs in (("send", "read", read_needs()), ("receive", "write", write_needs())):
        seconds, processor = min(transfer(around, mode, command, read) for _ in range(TRANSFERS))
        table.row(f"{command}: line and pauses need", f"{needs:.2f} s", "")
        table.row(f"{command}: the fastest of {TRANSFERS}", f"{seconds:.2f} s", "")
        table.goal(f"{command}: longer by", (seconds / needs - 1) * 100, 1, " %")
        table.goal(f"{command}: processor", processor / seconds * 100, 3, " % of a core")
    around.environment["QT_QPA_PLATFORM"] = "offscreen"
    # What a window without a screen lacks.
    around.environment["QT_LOGGING_RULES"] = "*.warning=false"
    pictures = around.folder / "pictures"
    pictures.mkdir()
    tour = around.start(BIN / "memwright-tour", BIN / "vr120-sim", pictures,
                        stdout=subprocess.DEVNULL)
    # It reads in its first half minute and writes in its last.
    for name, wait, seconds in (("read", 8, 16), ("write", 12, 14)):
        time.sleep(wait)
        table.goal(f"the window's {name}: processor", share(tour.pid, seconds)[0], 3,
                   " % of a core")
    if tour.wait() != 0:
        raise Failure("memwright-tour failed")
    return table.end()


def command_line(around):
    table = Table("memwright-cli", "What", "Measured", "Goal")
    image = around.folder / "image.120"
    image.write_bytes(bytes(7392))
    csv = around.folder / "channels.csv"
    lines = [f"{i // 64 * 100 + i % 64},{118 + i % 200}.{100 + i}25,NFM,p,\"CH{1000 + i}\""
             for i in range(640)]
    csv.write_bytes("\r\n".join(["Ch,MHz,Mode,Pref,Label", *lines, ""]).encode())
    around.run(BIN / "memwright-cli", "import", image, csv)
    printed = subprocess.run([BIN / "process_cost", BIN / "memwright-cli", "export", image, "-"],
                             env=around.environment, check=True, capture_output=True, text=True)
    seconds, processor, memory = map(float, printed.stdout.split())
    table.goal("export of 640 channels", seconds, 10, " ms")
    table.row("export: processor", f"{processor:.2f} ms", "")
    table.goal("export: memory", memory / 1024, 12, " MiB", "{:.1f}")
    return table.end()


def builds(around):
    table = Table("Builds on two processors", "What", "Measured", "Goal")
    copy = around.folder / "source"
    subprocess.run(["git", "clone", "-q", ROOT, copy], check=True)
    quiet = {"check": True, "cwd": copy, "stdout": subprocess.DEVNULL}
    environment = dict(os.environ, CCACHE_DISABLE="1")
    start = time.monotonic()
    subprocess.run(["cmake", "--preset", "release", "-DMEMWRIGHT_TESTS=OFF"], env=environment,
                   **quiet)
    subprocess.run(["cmake", "--build", "--preset", "release", "-j2"], env=environment, **quiet)
    table.goal("release from nothing", time.monotonic() - start, 120, " s", "{:.0f}")
    (copy / "src/image/mod_vr120.cpp").touch()
    start = time.monotonic()
    subprocess.run(["cmake", "--build", "--preset", "release", "-j2"], env=environment, **quiet)
    table.goal("after a change of a core source", time.monotonic() - start, 10, " s", "{:.1f}")
    return table.end()


def instructions(_):
    print("\n## Instructions of the core's operations, now and recorded\n", flush=True)
    counted = subprocess.run([ROOT / "tools" / "instruction-counts"], check=False)
    return ["instructions"] if counted.returncode != 0 else []


PARTS = {"operations": operations, "instructions": instructions, "window": window,
         "transfers": transfers, "command-line": command_line, "builds": builds}


def main():
    parser = argparse.ArgumentParser(
        prog="tools/bench",
        description="Measures what Memwright costs and prints tables as docs/performance.md holds "
                    "them. Ends with 1 if a goal is missed. Wants a machine on which nothing else "
                    "runs.")
    parser.add_argument("parts", nargs="*", metavar="PART",
                        help="one of " + ", ".join(PARTS) + "; without any, all of them")
    arguments = parser.parse_args()
    unknown = [part for part in arguments.parts if part not in PARTS]
    if unknown:
        parser.error("there is no part " + unknown[0])
    missed = []
    for part in arguments.parts or PARTS:
        around = Surroundings()
        try:
            missed += PARTS[part](around)
        finally:
            around.end()
    for name in missed:
        print(f"Missed: {name}", file=sys.stderr)
    return 1 if missed else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except (Failure, subprocess.CalledProcessError) as error:
        sys.exit(f"tools/bench: {error}")
