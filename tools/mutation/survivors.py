"""The list of mutants that change nothing that anybody could notice, each with its reason.

    src/folder/file.cpp: the line as it stands there
        original  ->  mutated
        original  ->  mutated  #2
      why they change nothing

"#2" tells the second of equal mutants in a file's equal lines."""

import re
import sys


def read(path):
    """The reasons by key."""
    reasons, waiting, place = {}, [], None
    for number, line in enumerate(path.read_text().splitlines() if path.exists() else [], 1):
        if not line.strip() or line.startswith('#'):
            continue
        if line.startswith('src/'):
            file, text = line.removeprefix('src/').split(': ', 1)
            place = (file, text.strip())
            if waiting and waiting[-1] in reasons:
                waiting = []
        elif line.startswith('    ') and '  ->  ' in line and place:
            original, shown = line.strip().split('  ->  ')
            again = re.search(r'  #(\d+)$', shown)
            shown = shown[:again.start()] if again else shown
            key = (*place, original, shown, int(again.group(1)) if again else 1)
            if waiting and waiting[-1] in reasons:
                waiting = []
            waiting.append(key)
        elif line.startswith('  ') and waiting:
            for key in waiting:
                reasons[key] = (reasons.get(key, '') + ' ' + line.strip()).strip()
        else:
            sys.exit(f'{path}:{number}: this line is not understood')
    return reasons


def tell_stale(outcomes, explained, copy):
    """Entries that no longer say the truth."""
    there = {m.key for m in copy.mutants}
    killed = {m.key for m, v in outcomes if v in ('killed', 'timed out')}
    for key in explained:
        what = f'src/{key[0]}: {key[1]}: {key[2]}  ->  {key[3]}'
        if key not in there:
            print(f'survivors.txt names what is no longer there: {what}', file=sys.stderr)
        elif key in killed:
            print(f'survivors.txt explains what a test notices: {what}', file=sys.stderr)
