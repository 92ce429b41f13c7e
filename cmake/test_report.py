#!/usr/bin/env python3
"""Adds up what a run of CTest left behind: cases, not programs; and where the time went.

usage: test_report.py RUN TABLE BUILD...

RUN      folder of the run:
           tests.json   what there is (ctest --show-only=json-v1)
           results.xml  what was run (ctest --output-junit)
           since        optional: time in seconds at which the builds began
           processor-*  optional: what the shell's `times` said before and after a part of the run
TABLE    the file for the whole table of times; the largest rows of it are printed
BUILD    build folders, for the times of their jobs

A test that has GoogleTest write an account of its cases counts as those cases; without that account
(it crashed) it counts as one that failed. Any other test is one case. The last line printed is
"N passed, N failed, N skipped"; the status is 1 when anything failed."""

import json
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

import job_times

ACCOUNT = "--gtest_output=xml:"
ROWS = 12


def parse(file):
    return ElementTree.fromstring(file.read_bytes().decode(errors="replace"))


class Report:
    def __init__(self):
        self.passed = 0
        self.failed = []
        self.skipped = {}  # (program, reason): cases
        self.counts = {}   # what tests counted by themselves
        self.times = []    # (program, seconds)

    def skip(self, program, reason, case):
        self.skipped.setdefault((program, reason), []).append(case)

    def add_account(self, program, root):
        """The cases that GoogleTest tells of; whether none failed."""
        before = len(self.failed)
        for name, value in root.attrib.items():
            if name.startswith("count_"):
                text = name.removeprefix("count_").replace("_", " ")
                self.counts[text] = self.counts.get(text, 0) + int(value)
        for case in root.iter("testcase"):
            full = f"{case.get('classname')}.{case.get('name')}"
            note = case.find("skipped")
            if case.find("failure") is not None:
                self.failed.append(f"{program}: {full}")
            elif note is not None or case.get("result") in ("skipped", "suppressed"):
                text = (note.get("message") or "") if note is not None else "disabled"
                # The first line is the place in the source.
                self.skip(program, " ".join(text.splitlines()[1:] or [text]).strip(), full)
            else:
                self.passed += 1
        return len(self.failed) == before

    def add_test(self, program, result, account):
        """One test of CTest: its element in the results, and the file of its account if it has one."""
        status = result.get("status")
        note = result.find("skipped")
        reason = note.get("message", "") if note is not None else ""
        if status == "disabled" or reason.startswith("SKIP_"):
            self.skip(program, reason or status, program)
        elif account is None and status == "run":
            self.passed += 1
        elif account is None or status == "notrun":
            self.failed.append(f"{program}: {reason or 'failed'}")
        elif not account.is_file():
            self.failed.append(f"{program}: ended without an account of its cases")
        elif self.add_account(program, parse(account)) and status != "run":
            self.failed.append(f"{program}: failed, though none of its cases did")

    def lines(self):
        for (program, reason), cases in sorted(self.skipped.items()):
            which = cases[0] if len(cases) == 1 else f"{len(cases)} cases"
            yield f"skipped: {program}: {which}: {reason}"
        for failure in self.failed:
            yield f"failed: {failure}"
        for name, count in sorted(self.counts.items()):
            yield f"{name}: {count}"

    def closing_line(self):
        skipped = sum(map(len, self.skipped.values()))
        return f"{self.passed} passed, {len(self.failed)} failed, {skipped} skipped"


def accounts(tests):
    """The account of each test of CTest that has one."""
    for test in tests["tests"]:
        for word in test.get("command", ()):
            if word.startswith(ACCOUNT):
                # Z: is Wine's name for the whole system.
                file = word.removeprefix(ACCOUNT).removeprefix("Z:")
                yield test["name"], pathlib.Path(file)


def processor_time(program, result, account):
    """(program without its shard, seconds): processor time where it was kept, else the time passed."""
    seconds = float(result.get("time", 0))
    kept = account.with_suffix(".time") if account else None
    if kept and kept.is_file():
        numbers = kept.read_text().split()[-2:]
        if len(numbers) == 2:
            seconds = sum(map(float, numbers))
    return re.sub(r"-\d+$", "", program), seconds


def spent(file):
    """Processor time of a shell and of what it waited for, as the shell's `times` says."""
    return sum(60 * float(minutes) + float(seconds)
               for minutes, seconds in re.findall(r"(\d+)m([\d.]+)s", file.read_text()))


def parts(run):
    """(name, processor time) of each part of the run between two calls of `times`."""
    files = sorted(run.glob("processor-*"))
    for before, after in zip(files, files[1:]):
        yield after.name.split("-", 2)[2], spent(after) - spent(before)


def read_run(run):
    report = Report()
    known = dict(accounts(json.loads((run / "tests.json").read_text())))
    for result in parse(run / "results.xml").iter("testcase"):
        name = result.get("name")
        report.add_test(name, result, known.get(name))
        report.times.append(processor_time(name, result, known.get(name)))
    return report


def main(arguments):
    run, table, builds = pathlib.Path(arguments[0]), pathlib.Path(arguments[1]), arguments[2:]
    try:
        report = read_run(run)
    except (OSError, ValueError, ElementTree.ParseError) as error:
        report = Report()
        report.failed.append(f"the results of the run cannot be read: {error}")
    since = run / "since"
    compiling = job_times.compile_rows(builds, float(since.read_text())) if since.is_file() else []
    testing = job_times.rows_of(report.times)
    whole = job_times.table(compiling, testing, list(parts(run)))
    table.write_text("\n".join(whole) + "\n")
    print("\n".join(job_times.table(compiling, testing, list(parts(run)), ROWS)))
    for line in report.lines():
        print(line)
    print(report.closing_line())
    return 1 if report.failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
