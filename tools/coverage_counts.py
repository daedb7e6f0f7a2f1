"""What gcov counted: for each line of src/ without qt/ how often it ran, and which branches were taken.

Left out is what the compiler adds for exceptions: the branches into them, and those of the blocks
that only an exception leads to, which take an expression's values down."""

import os
import re
import subprocess
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

LINE = re.compile(r' *([^:]+?)\*?: *(\d+):')
BLOCK = re.compile(r' *([^:]+?)\*?: *(\d+)-block +\d+')
BRANCH = re.compile(r'branch +(\d+) (never executed|taken (\d+))(.*)')
NEVER = ('#####', '=====')
ONLY_BY_EXCEPTIONS = '$$$$$'


class Line:
    def __init__(self):
        self.count = 0
        self.taken = {}  # by the branches' numbers
        self.thrown = set()  # those of exceptions; what never ran does not tell that they are

    def branches(self):
        return [taken for number, taken in self.taken.items() if number not in self.thrown]


def read(text, build, root, files):
    """Adds what gcov says of one object file."""
    lines, line, hidden = None, None, False
    for row in text.splitlines():
        if '0:Source:' in row:
            path = os.path.relpath(os.path.normpath(build / row.split('0:Source:', 1)[1]), root)
            wanted = path.startswith('src/') and not path.startswith('src/qt/')
            lines = files.setdefault(path, {}) if wanted else None
            continue
        if lines is None:
            continue
        if BLOCK.match(row):
            hidden = BLOCK.match(row)[1] == ONLY_BY_EXCEPTIONS
        elif LINE.match(row):
            count, number = LINE.match(row).groups()
            line = None if count == '-' or number == '0' else lines.setdefault(int(number), Line())
            if line and count not in NEVER:
                line.count += int(count)
            hidden = False
        elif BRANCH.match(row) and line and not hidden:
            number, _, taken, rest = BRANCH.match(row).groups()
            number = int(number)
            line.taken[number] = line.taken.get(number, False) or int(taken or 0) > 0
            if 'throw' in rest:
                line.thrown.add(number)


def counts(build, root):
    """By path and line number."""
    def gcov(data):
        done = subprocess.run(['gcov', '--stdout', '--all-blocks', '--branch-probabilities',
                               '--branch-counts', data], capture_output=True, check=True)
        return done.stdout.decode(errors='replace')

    files = {}
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        for text in pool.map(gcov, sorted(Path(build).rglob('*.gcda'))):
            read(text, build, root, files)
    return files
