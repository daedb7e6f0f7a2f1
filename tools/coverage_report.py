"""Prints the counts by folder, and each place that was not run through (see tools/coverage).

The list of reasons:

    src/folder/file.cpp: the line as it stands there
      why no test runs through it
"""

import re
import sys
from pathlib import Path

from coverage_counts import counts

# No code of their own: what ends a block, and what the compiler writes.
NO_LINE = re.compile(r'[\s})\];,]*')
NO_BRANCHES = re.compile(r'} catch \(|.*= default;')

FOLDERS = ['base', 'controls', 'platform', 'native', 'image', 'table', 'files', 'link', 'app', 'cli', 'radio']


def reasons_of(path):
    reasons, keys = {}, []
    for number, line in enumerate(Path(path).read_text().splitlines(), 1):
        if not line.strip() or line.startswith('#'):
            continue
        if line.startswith('src/'):
            if keys and keys[-1] in reasons:
                keys = []
            keys.append(tuple(line.split(': ', 1)))
        elif line.startswith('  ') and keys:
            for key in keys:
                reasons[key] = (reasons.get(key, '') + ' ' + line.strip()).strip()
        else:
            sys.exit(f'{path}:{number}: this line is not understood')
    return reasons


def branches_of(line, text):
    return [] if NO_BRANCHES.match(text) else line.branches()


def what_is_missing(line, branches):
    if line.count == 0:
        return 'never runs'
    missed = branches.count(False)
    return f'{missed} of {len(branches)} branches not taken' if missed else ''


def main():
    root = Path(__file__).resolve().parent.parent
    files = counts(root / sys.argv[1], root)
    reasons = reasons_of(sys.argv[2])
    sums = {folder: [0, 0, 0, 0] for folder in FOLDERS}
    explained, unexplained, used = [], [], set()
    for file in sorted(files):
        source = (root / file).read_text(encoding='utf-8').splitlines()
        row = sums[file.split('/')[1]]
        for number, line in sorted(files[file].items()):
            text = source[number - 1].strip()
            if NO_LINE.fullmatch(text):
                continue
            branches = branches_of(line, text)
            row[0] += 1
            row[1] += line.count > 0
            row[2] += len(branches)
            row[3] += branches.count(True)
            missing = what_is_missing(line, branches)
            if not missing:
                continue
            reason = reasons.get((file, text))
            used.add((file, text))
            place = f'{file}:{number}: {missing}: {text}'
            if reason:
                explained.append(f'{place}\n    {reason}')
            else:
                unexplained.append(place)
    print_table(sums)
    print_places('Not run through, and why:', explained)
    print_places('Not run through, without a reason:', unexplained)
    for file, text in sorted(set(reasons) - used):
        print(f'A reason for what is run through, or no longer there: {file}: {text}', file=sys.stderr)
    return 1 if unexplained else 0


def print_table(sums):
    sums = {**sums, 'all': [sum(column) for column in zip(*sums.values())]}
    print('| folder | lines | run | share | branches | taken | share |')
    print('|---|---:|---:|---:|---:|---:|---:|')
    for folder, (lines, run, branches, taken) in sums.items():
        print(f'| {folder} | {lines} | {run} | {share(run, lines)} '
              f'| {branches} | {taken} | {share(taken, branches)} |')


def share(part, whole):
    # Not rounded up: 100.0 % is all of them.
    return f'{part * 1000 // whole / 10:.1f} %' if whole else ''


def print_places(title, places):
    if places:
        print(f'\n{title}\n')
        print('\n'.join(places))


sys.exit(main())
