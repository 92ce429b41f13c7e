#!/usr/bin/env python3
"""Makes small changes to the plug-in's sources one at a time and tells which ones the tests notice.

usage: python3 -B tests/mutation/mutate.py [--count 80] [--seed 1] [--only src/ui]
                                           [--programs ui_test,flow_test] [--list]

Works on a copy of the tree in build/mutation, with a build of its own; the tree itself is only read.
For each change what depends on it is built again and the native tests that see src/ run until one
fails: the plug-in's unit programs, those of the changed room first, then flow, golden, faults and
actions. A program that the change does not reach is not run. Ends with the figures; the lines are
kept in build/mutation/report.txt.
"""
import argparse
import hashlib
import os
import random
import re
import resource
import shutil
import subprocess
import sys
import time
from pathlib import Path

from changes import changed, changes

ROOT = Path(__file__).resolve().parents[2]
WORK = ROOT / 'build/mutation'
COPY = WORK / 'tree'
BUILD = COPY / 'build/linux-release'
PLUGIN = 'KestrelScopes'
WHOLE = ['flow_test', 'golden_test', 'faults_test', 'actions_test']
LARGEST = 16 << 30  # bytes of a program's address space
# Nothing but texts.
LEFT_OUT = {'src/model/string_table.h'}


def tree_files():
    names = subprocess.run(['git', 'ls-files', '-z'], cwd=ROOT, check=True, capture_output=True)
    return [name for name in names.stdout.decode().split('\0') if name and (ROOT / name).is_file()]


def refresh_copy():
    """The copy becomes the tree; files that are equal keep their times, so that little is built."""
    files = tree_files()
    for name in files:
        source, target = ROOT / name, COPY / name
        if target.is_file() and target.read_bytes() == source.read_bytes():
            continue
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(source, target)
    kept = set(files)
    for path in COPY.rglob('*'):
        name = path.relative_to(COPY).as_posix()
        if path.is_file() and not name.startswith('build/') and name not in kept:
            path.unlink()


def unit_programs():
    """Programs of tests/plugin with the folder that declares each."""
    programs = {}
    for lists in sorted((ROOT / 'tests/plugin').rglob('CMakeLists.txt')):
        folder = lists.parent.relative_to(ROOT / 'tests/plugin').as_posix()
        for name in re.findall(r'\bks_test\((\w+)', lists.read_text()):
            programs[name] = folder
    return programs


def build(targets, **environment):
    command = ['cmake', '--build', str(BUILD), '--target', *targets]
    return subprocess.run(command, env={**os.environ, **environment}, capture_output=True, text=True)


def builds_changed(program):
    # What a change makes of a file is never wanted again: nothing for the cache.
    return build([program], CCACHE_DISABLE='1').returncode == 0


def limit_memory():
    """A change may ask for any number of bytes."""
    resource.setrlimit(resource.RLIMIT_AS, (LARGEST, LARGEST))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def digest(program):
    path = BUILD / (program + '.so' if program == PLUGIN else program)
    return hashlib.sha256(path.read_bytes()).digest()


class Tests:
    """The programs as they are without a change."""

    def __init__(self, chosen):
        self.units = {name: folder for name, folder in unit_programs().items() if name in chosen}
        self.whole = [name for name in WHOLE if name in chosen]
        self.digests = {}
        self.seconds = {}

    def prepare(self):
        everything = [PLUGIN, *self.units, *self.whole]
        done = build(everything)
        if done.returncode != 0:
            sys.exit(done.stdout[-3000:] + '\nthe tree does not build')
        for program in everything:
            self.digests[program] = digest(program)
        for program in everything[1:]:
            begin = time.monotonic()
            if not self.passes(program):
                sys.exit(program + ' fails without a change')
            self.seconds[program] = time.monotonic() - begin
            print(f'{program}: {self.seconds[program]:.1f} s', flush=True)

    def in_order(self, source):
        """Unit programs with those of the source's room first, then the whole plug-in's."""
        room = source.split('/')[1]
        near = [name for name, folder in self.units.items() if folder.split('/')[0] == room]
        return near + [name for name in self.units if name not in near] + self.whole

    def passes(self, program):
        limit = 30 + 5 * self.seconds.get(program, 600)
        try:
            run = subprocess.run([str(BUILD / program), '--gtest_brief=1', '--gtest_fail_fast'],
                                 cwd=BUILD, timeout=limit, stdout=subprocess.DEVNULL,
                                 stderr=subprocess.DEVNULL, preexec_fn=limit_memory)
        except subprocess.TimeoutExpired:
            return False
        return run.returncode == 0

    def verdict(self, source):
        """What comes of the change that stands in `source`: a word and the program that saw it."""
        if not builds_changed(PLUGIN):
            return 'does not build', ''
        plugin_differs = digest(PLUGIN) != self.digests[PLUGIN]
        reached = plugin_differs
        for program in self.in_order(source):
            # The plug-in builds, so it is the test that objects.
            if not builds_changed(program):
                return 'caught', program + ' (does not build)'
            loads_it = program in self.whole and plugin_differs
            if not loads_it and digest(program) == self.digests[program]:
                continue
            reached = True
            if not self.passes(program):
                return 'caught', program
        return ('survived' if reached else 'makes no difference'), ''


def all_changes(only):
    sites = []
    for name in tree_files():
        if not name.startswith(only) or not name.startswith('src/') or name in LEFT_OUT:
            continue
        if name.endswith(('.cpp', '.h')):
            sites += [(name, change) for change in changes((ROOT / name).read_text())]
    return sites


def described(name, change):
    old = (ROOT / name).read_text()[change.start:change.end]
    return f'{name}:{change.line}: "{old}" -> "{change.new}"'


def try_change(tests, name, change):
    target = COPY / name
    text = target.read_text()
    try:
        target.write_text(changed(text, change))
        return tests.verdict(name)
    finally:
        target.write_text(text)


def run(count, sites, chosen):
    tests = Tests(chosen)
    refresh_copy()
    subprocess.run(['cmake', '--preset', 'linux-release'], cwd=COPY, check=True,
                   stdout=subprocess.DEVNULL)
    tests.prepare()
    figures = {}
    with open(WORK / 'report.txt', 'w') as report:
        def say(line):
            print(line, flush=True)
            print(line, file=report, flush=True)

        try:
            for name, change in sites:
                if figures.get('caught', 0) + figures.get('survived', 0) == count:
                    break
                word, by = try_change(tests, name, change)
                figures[word] = figures.get(word, 0) + 1
                say(f'{word}: {described(name, change)}' + (f' by {by}' if by else ''))
        except KeyboardInterrupt:
            say('interrupted')
        caught, survived = figures.get('caught', 0), figures.get('survived', 0)
        others = ', '.join(f'{figures[word]} {word}' for word in sorted(figures)
                           if word not in ('caught', 'survived'))
        say(f'of {caught + survived} changes {caught} were caught, {survived} survived'
            + (f' (and {others})' if others else ''))


def main():
    parser = argparse.ArgumentParser(description=__doc__.split('\n\n')[0])
    parser.add_argument('--count', type=int, default=80, help='changes that build and differ')
    parser.add_argument('--seed', type=int, default=1, help='draws other changes')
    parser.add_argument('--only', default='src/', help='a folder or file of src/')
    parser.add_argument('--programs', default='', help='only these, parted by commas')
    parser.add_argument('--list', action='store_true', help='print the changes drawn, and no more')
    arguments = parser.parse_args()
    sites = all_changes(arguments.only)
    random.Random(arguments.seed).shuffle(sites)
    if arguments.list:
        for name, change in sites[:arguments.count]:
            print(described(name, change))
        print(f'{len(sites)} in all')
        return
    known = [*unit_programs(), *WHOLE]
    chosen = arguments.programs.split(',') if arguments.programs else known
    for name in chosen:
        if name not in known:
            parser.error(f'{name} is none of {", ".join(known)}')
    run(arguments.count, sites, chosen)


if __name__ == '__main__':
    main()
