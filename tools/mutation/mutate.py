"""Runs the tests against mutants of the project. See tools/mutate."""

import argparse
import json
import os
import shutil
import signal
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import survivors
from copy_of_project import FOLDERS, PROGRAMS, Copy

# Cases that a mutant meets first, and the milliseconds that count as slow.
FIRST_CASES = 25
SLOW = 100


class Programs:
    """The test programs: which case reaches which mutant, and how long it takes."""

    def __init__(self, copy):
        self.copy = copy
        self.cases = {p: {} for p in PROGRAMS}  # by name: milliseconds
        self.reached = {p: {} for p in PROGRAMS}  # by mutant: names
        self.outside = {p: set() for p in PROGRAMS}  # mutants reached outside of any case
        self.failed = []

    def look(self, jobs):
        with ThreadPoolExecutor(jobs) as pool:
            list(pool.map(self.look_at, PROGRAMS))

    def look_at(self, program):
        log = self.copy.work / f'{program}.reached'
        log.unlink(missing_ok=True)
        run(self.copy, program, {'REACH_LOG': str(log)}, 3600)
        lines = log.read_text().splitlines() if log.exists() else []
        if not lines or lines[-1] != 'end':
            sys.exit(f'{self.copy.out / "bin" / program} does not come to its end without a mutant.')
        for line in lines[:-1]:
            name, milliseconds, mutants = line.split('\t')
            if name.startswith('failed '):
                self.failed.append(f'{program}: {name[7:]}')
                continue
            numbers = [int(n) for n in mutants.split()]
            if not name:
                self.outside[program].update(numbers)
                continue
            self.cases[program][name] = int(milliseconds)
            for number in numbers:
                self.reached[program].setdefault(number, []).append(name)

    def reaching(self, program, number):
        if number in self.outside[program]:
            return list(self.cases[program])
        return self.reached[program].get(number, [])

    def milliseconds(self, program, names):
        return sum(self.cases[program][n] for n in names)


def run(copy, program, variables, seconds, names=None):
    """'passed', 'failed' or 'timed out'."""
    scratch = copy.work / 'scratch' / f'{os.getpid()}-{program}-{time.monotonic_ns()}'
    scratch.mkdir(parents=True)
    environment = {**os.environ, 'TMPDIR': str(scratch), 'HOME': str(scratch),
                   'GTEST_FAIL_FAST': '1' if names else '0', 'GTEST_BRIEF': '1',
                   'MEMWRIGHT_SEED': '1', **variables}
    for name in ('XDG_DATA_HOME', 'XDG_STATE_HOME', 'XDG_CONFIG_HOME', 'XDG_RUNTIME_DIR'):
        environment[name] = str(scratch)
    command = ['prlimit', f'--cpu={int(seconds)}', '--core=0', '--as=4000000000',
               '--fsize=70000000000', copy.out / 'bin' / program]
    if names:
        flags = scratch / 'flags'
        flags.write_text('--gtest_filter=' + ':'.join(names) + '\n')
        command.append(f'--gtest_flagfile={flags}')
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, env=environment, cwd=scratch,
                               start_new_session=True)
    try:
        code = process.wait(timeout=60 + 10 * seconds)
    except subprocess.TimeoutExpired:
        code = -signal.SIGXCPU
    try:
        os.killpg(process.pid, signal.SIGKILL)  # what it may have left behind
    except ProcessLookupError:
        pass
    process.wait()
    shutil.rmtree(scratch, ignore_errors=True)
    if code in (-signal.SIGXCPU, -signal.SIGKILL):
        return 'timed out'
    return 'passed' if code == 0 else 'failed'


def verdict(copy, programs, mutant, quick):
    """What becomes of a mutant: 'unreached', 'killed', 'timed out' or 'survived'."""
    later = []
    reached = False
    for program in PROGRAMS:
        names = sorted(programs.reaching(program, mutant.number),
                       key=lambda n: programs.cases[program][n])
        reached = reached or bool(names)
        fast = [n for n in names if programs.cases[program][n] < SLOW]
        slow = [] if quick else names[len(fast):]
        if fast:
            outcome = attempt(copy, programs, mutant, program, fast[:FIRST_CASES])
            if outcome != 'passed':
                return 'killed' if outcome == 'failed' else outcome
        later += [(program, part) for part in (fast[FIRST_CASES:], slow) if part]
    for program, names in later:
        outcome = attempt(copy, programs, mutant, program, names)
        if outcome != 'passed':
            return 'killed' if outcome == 'failed' else outcome
    return 'survived' if reached else 'unreached'


def attempt(copy, programs, mutant, program, names):
    seconds = 3 + 10 * programs.milliseconds(program, names) / 1000
    return run(copy, program, {'MUTANT': str(mutant.number)}, seconds, names)


def arguments():
    parser = argparse.ArgumentParser(
        prog='tools/mutate',
        description='Changes the sources of image/, table/, files/ and link/ in small ways, one at '
                    'a time, and runs the tests that reach the change. Names the changes that no '
                    'test notices and that tools/mutation/survivors.txt does not explain; exit '
                    'status 1 if there are any.')
    parser.add_argument('parts', nargs='*', metavar='FOLDER|FILE',
                        help='as under src/: "image", "files/snapshot.cpp"; all of them if none')
    parser.add_argument('--list', action='store_true', help='show the mutants and end')
    parser.add_argument('--only', type=int, metavar='N', help='only the mutant of this number')
    parser.add_argument('--open', action='store_true',
                        help='only those that were open after the last run')
    parser.add_argument('--quick', action='store_true',
                        help=f'without the cases that take more than {SLOW} ms')
    parser.add_argument('--jobs', type=int, default=os.cpu_count(), metavar='N',
                        help='test programs at a time')
    return parser.parse_args()


def chosen(copy, options, last):
    parts = [p.removeprefix('src/').rstrip('/') for p in options.parts]
    for part in parts:
        if part not in FOLDERS and part not in copy.sources:
            sys.exit(f'Nothing under src/ that is mutated is called "{part}".')
    mutants = [m for m in copy.usable()
               if not parts or m.folder in parts or m.path in parts]
    if options.only is not None:
        mutants = [m for m in mutants if m.number == options.only]
    if options.open:
        mutants = [m for m in mutants if last.get('\t'.join(map(str, m.key))) in ('survived', 'unreached')]
    return mutants


def table(outcomes, explained, refused):
    columns = ['mutants', 'killed', 'timed out', 'equivalent', 'open', 'of them unreached']
    rows = {}
    for mutant, outcome in outcomes:
        row = rows.setdefault(mutant.folder, dict.fromkeys(columns, 0))
        row['mutants'] += 1
        if outcome in ('killed', 'timed out'):
            row[outcome] += 1
        elif mutant.key in explained:
            row['equivalent'] += 1
        else:
            row['open'] += 1
            row['of them unreached'] += outcome == 'unreached'
    rows['all'] = {c: sum(r[c] for r in rows.values()) for c in columns}
    print('| folder | ' + ' | '.join(columns) + ' |')
    print('|---|' + '---:|' * len(columns))
    for name, row in rows.items():
        print(f'| {name} | ' + ' | '.join(str(row[c]) for c in columns) + ' |')
    if refused:
        print(f'{refused} more do not compile.')


def show_open(outcomes, explained):
    for mutant, outcome in outcomes:
        if outcome in ('survived', 'unreached') and mutant.key not in explained:
            where = ' (no test reaches it)' if outcome == 'unreached' else ''
            print(f'src/{mutant.path}:{mutant.line}: {mutant}{where}  [{mutant.number}]')


def main():
    options = arguments()
    root = Path(__file__).resolve().parent.parent.parent
    copy = Copy(root)
    copy.find()
    results = copy.work / 'results.json'
    last = json.loads(results.read_text()) if results.exists() else {}
    mutants = chosen(copy, options, last)
    if options.list:
        for m in mutants:
            print(f'[{m.number}] src/{m.path}:{m.line}: {m}')
        return 0
    explained = survivors.read(root / 'tools/mutation/survivors.txt')
    copy.build(options.jobs)
    mutants = [m for m in mutants if m.key not in copy.refused]
    programs = Programs(copy)
    programs.look(options.jobs)
    for name in programs.failed:
        print(f'Fails without a mutant, and is left out: {name}', file=sys.stderr)
    with ThreadPoolExecutor(options.jobs) as pool:
        verdicts = list(pool.map(lambda m: verdict(copy, programs, m, options.quick), mutants))
    outcomes = list(zip(mutants, verdicts))
    last.update({'\t'.join(map(str, m.key)): v for m, v in outcomes})
    results.write_text(json.dumps(last))
    show_open(outcomes, explained)
    table(outcomes, explained, len(copy.refused))
    survivors.tell_stale(outcomes, explained, copy)
    still_open = [m for m, v in outcomes if v in ('survived', 'unreached') and m.key not in explained]
    return 1 if still_open else 0


if __name__ == '__main__':
    sys.exit(main())
