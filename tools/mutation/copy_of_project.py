"""The mutated copy of the project: every mutant is in it, and a variable of the environment chooses."""

import hashlib
import json
import re
import shutil
import subprocess
import sys
from pathlib import Path

import places

# Each file has numbers of its own, so that a change of one does not rebuild the others.
NUMBERS_PER_FILE = 1000
PROGRAMS = ['image_tests', 'table_tests', 'files_tests', 'link_tests', 'app_tests']
FOLDERS = ['image', 'table', 'files', 'link']


class Placed:
    """A mutant of a file under src/, with its number and what tells it from all others."""

    def __init__(self, number, path, source, mutant, counts):
        self.number, self.path, self.mutant = number, path, mutant
        begin, end = mutant.begin, mutant.end
        line_begin = source.rfind(b'\n', 0, begin) + 1
        line_end = source.find(b'\n', begin)
        self.line = source.count(b'\n', 0, begin) + 1
        self.line_text = source[line_begin:line_end].decode().strip()
        self.original = places.bare(source[begin:end].decode())
        self.shown = '(removed)' if mutant.kind == 'removed' else \
            re.sub(r'static_cast<.*>\((.*) \+ 1\)', r'\1 + 1', mutant.text)
        key = (path, self.line_text, self.original, self.shown)
        counts[key] = counts.get(key, 0) + 1
        self.key = key + (counts[key],)

    @property
    def folder(self):
        return self.path.split('/')[0]

    def __str__(self):
        again = f'  #{self.key[4]}' if self.key[4] > 1 else ''
        return f'{self.original}  ->  {self.shown}{again}'


def instrumented(source, placed):
    """The file with its mutants, and the offsets at which each begins there."""
    text = source.decode('latin-1')
    ranges = {}
    for one in placed:
        m = one.mutant
        ranges.setdefault((m.begin, m.end), []).append(one)
    order = sorted(ranges, key=lambda r: (r[0], -r[1]))
    position = 0

    def render(begin, end):
        nonlocal position
        out, at = [], begin
        while position < len(order) and order[position][0] < end:
            inner = order[position]
            position += 1
            out.append(text[at:inner[0]])
            out.append(wrap(ranges[inner], render(*inner)))
            at = inner[1]
        out.append(text[at:end])
        return ''.join(out)

    def wrap(mutants, inner):
        for one in mutants:
            if one.mutant.kind == 'expression':
                what = one.mutant.text.encode().decode('latin-1')
                inner_is_bool = what in ('true', 'false')
                kept = f'static_cast<bool>({inner})' if inner_is_bool else f'({inner})'
                inner = f'(mutated({one.number}) ? ({what}) : {kept})'
        for one in mutants:
            if one.mutant.kind == 'removed':
                inner = f'{{ if (!mutated({one.number})) {{ {inner} }} }}'
            elif one.mutant.kind == 'returned':
                inner = f'{{ if (mutated({one.number})) {{ {one.mutant.text} }} {inner} }}'
        return inner

    return ('#include "mutants.h"\n' + render(0, len(text))).encode('latin-1')


def write_if_new(path, content):
    if not path.exists() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


class Copy:
    def __init__(self, root):
        self.root = root
        self.work = root / 'build/mutate'
        self.tree = self.work / 'tree'
        self.out = self.work / 'out'
        self.work.mkdir(parents=True, exist_ok=True)
        self.refused_file = self.work / 'refused.json'
        self.refused = set()
        self.sources = {}
        self.mutants = []

    def find(self):
        """All mutants but those that do not compile, as far as is known."""
        self.sources = {str(p.relative_to(self.root / 'src')): p.read_bytes()
                        for folder in FOLDERS
                        for p in sorted((self.root / 'src' / folder).glob('*.[ch]*'))
                        if p.suffix in ('.h', '.cpp')}
        tool = Path(places.__file__).read_bytes()
        state = hashlib.sha256(tool + json.dumps(
            {p: s.decode('latin-1') for p, s in self.sources.items()}).encode()).hexdigest()
        cache = self.work / 'places.json'
        known = json.loads(cache.read_text()) if cache.exists() else {}
        if known.get('state') != state:
            units = [p for p in self.sources if p.endswith('.cpp')]
            found = places.find(self.root / 'src', units, list(self.sources))
            known = {'state': state, 'found': {p: [[m.begin, m.end, m.kind, m.text] for m in ms]
                                               for p, ms in found.items()}}
            cache.write_text(json.dumps(known))
        if self.refused_file.exists():
            refused = json.loads(self.refused_file.read_text())
            self.refused = {tuple(k) for k in refused}
        self.mutants = []
        for index, (path, source) in enumerate(self.sources.items()):
            counts = {}
            for n, values in enumerate(known['found'][path]):
                self.mutants.append(Placed(index * NUMBERS_PER_FILE + n, path, source,
                                           places.Mutant(*values), counts))
            assert len(known['found'][path]) <= NUMBERS_PER_FILE, path

    def usable(self):
        return [m for m in self.mutants if m.key not in self.refused]

    def write(self):
        by_path = {p: [] for p in self.sources}
        for m in self.usable():
            by_path[m.path].append(m)
        wanted = {}
        for part in ('src', 'tests', 'benchmarks', 'cmake'):
            for p in (self.root / part).rglob('*'):
                if p.is_file():
                    wanted[p.relative_to(self.root)] = p.read_bytes()
        wanted[Path('CMakeLists.txt')] = (self.root / 'CMakeLists.txt').read_bytes()
        wanted[Path('tests/CMakeLists.txt')] += (
            '\ntarget_include_directories(memwright_flags INTERFACE "{0}")\n'
            'target_sources(memwright_test_flags INTERFACE "{0}/runtime.cpp")\n'
        ).format(self.root / 'tools/mutation').encode()
        for path, mutants in by_path.items():
            if mutants:
                wanted[Path('src') / path] = instrumented(self.sources[path], mutants)
        for path, content in wanted.items():
            write_if_new(self.tree / path, content)
        for p in list(self.tree.rglob('*')):
            if p.is_file() and p.relative_to(self.tree) not in wanted:
                p.unlink()

    def configure(self):
        # The library's assertions tell what reads outside of an array.
        command = ['cmake', '-S', self.tree, '-B', self.out, '-G', 'Ninja', '-DCMAKE_BUILD_TYPE=',
                   '-DCMAKE_CXX_FLAGS=-O1 -w -Wno-narrowing -D_GLIBCXX_ASSERTIONS', '-DMEMWRIGHT_QT=OFF',
                   '-DMEMWRIGHT_TESTS=ON']
        if shutil.which('ccache'):
            command.append('-DCMAKE_CXX_COMPILER_LAUNCHER=ccache')
        configured = self.work / 'configured'
        state = ' '.join(map(str, command))
        known = configured.read_text() if configured.exists() else ''
        if (self.out / 'build.ninja').exists() and known == state:
            return
        self.call(command, 'configure.log')
        configured.write_text(state)

    def call(self, command, log):
        with open(self.work / log, 'w') as out:
            if subprocess.run(command, stdout=out, stderr=out, check=False).returncode != 0:
                sys.exit(f'The copy could not be configured; {self.work / log} tells more.')

    def build(self, jobs):
        """Builds the test programs; what does not compile is refused, until the rest does."""
        while True:
            self.write()
            self.configure()
            log = self.work / 'build.log'
            with open(log, 'w') as out:
                done = subprocess.run(['ninja', '-C', self.out, '-k', '0', '-j', str(jobs), *PROGRAMS],
                                      stdout=out, stderr=out, check=False)
            if done.returncode == 0:
                return
            before = len(self.refused)
            self.refuse(log.read_text(errors='replace'))
            if len(self.refused) == before:
                sys.exit(f'The mutated copy does not build; {log} tells more.')
            self.refused_file.write_text(json.dumps(sorted(self.refused)))

    def refuse(self, log):
        by_number = {m.number: m for m in self.mutants}
        places_of_errors = set(re.findall(r'/tree/src/(\S+?):(\d+):(\d+): error', log))
        for path, line, column in places_of_errors:
            lines = (self.tree / 'src' / path).read_text(encoding='latin-1').split('\n')
            before = '\n'.join(lines[:int(line) - 1] + [lines[int(line) - 1][:int(column) - 1]])
            here = lines[int(line) - 1][int(column) - 1:]
            numbers = re.findall(r'\bmutated\((\d+)\)', before + here[:here.find(')') + 1])
            if numbers:
                self.refused.add(by_number[int(numbers[-1])].key)
